#pragma once

#include <QString>

class ActiveDocument;
class DocumentOpening;
class MdiChildren;
class QWidget;
class RegistryStore;
class SystemClose;
class frmDocument;
struct DocumentServices;

/// Saving documents: under their name, under another, in an encoding, all of them. Owned by the frame. Dialogs run the
/// event loop; a cancelled one changes nothing.
class DocumentSaving {
 public:
    /// `window` is the parent of boxes; the registry holds the filters of the dialogs.
    DocumentSaving(QWidget& window, const DocumentServices& services, RegistryStore& registry, MdiChildren& children,
                   ActiveDocument& active, SystemClose& systemClose, const DocumentOpening& opening);

    /// `format` is one of SaveFormats. An untitled document raises the save dialog, and so does one whose view does not
    /// hold the document's file, since that file is another than what is shown.
    void SaveDocument(frmDocument* document, bool activeTab, int format);
    /// The plain save command, on the active document.
    void SaveActive();
    void SaveAs();
    /// Every document in the order of the tabs, changed or not.
    void SaveAll();

    /// The first folder of file dialogs: that of the active document, if that option is on.
    QString dialogFolder() const;

 private:
    /// Asks until the name is unused or may be overwritten; empty: cancelled.
    QString askPath(const QString& title, const QString& initialName) const;
    bool mayOverwrite(frmDocument& document, const QString& path) const;
    bool save(frmDocument& document, const QString& path, int format, bool force);
    void saveTurn(frmDocument* turn);

    QWidget& m_window;
    const DocumentServices& m_services;
    RegistryStore& m_registry;
    MdiChildren& m_children;
    ActiveDocument& m_active;
    SystemClose& m_systemClose;
    const DocumentOpening& m_opening;
};
