#pragma once

#include <QString>

class DocumentOpening;
class frmDocument;
struct FrameParts;

/// Saving documents: under their name, under another, in an encoding, all of them. Owned by the frame. Dialogs run the
/// event loop; a cancelled one leaves everything as it was.
class DocumentSaving {
 public:
    DocumentSaving(FrameParts& parts, const DocumentOpening& files);

    /// `format` is one of SaveFormats. An untitled document raises the save dialog.
    void SaveDocument(frmDocument* document, bool activeTab, int format);
    /// The plain save command, on the active document.
    void SaveActive();
    void SaveAs();
    /// Every document in the order of the tabs, changed or not.
    void SaveAll();

    /// Where file dialogs start: the folder of the active document, when the person wants that.
    QString dialogFolder() const;

 private:
    /// Asks until the name is free or may be overwritten; empty: cancelled.
    QString askPath(const QString& title, const QString& initialName) const;
    bool save(frmDocument& document, const QString& path, int format, bool force);
    void showSaved(frmDocument* document, const QString& path);
    void saveTab(int index);

    FrameParts& m_parts;
    const DocumentOpening& m_files;
};
