#pragma once

#include <QHash>
#include <QObject>

#include <functional>

class QAction;
class QMenu;
class QMenuBar;
class QToolBar;
class frmDocument;
struct CommandRow;
struct CommandTarget;
struct DocumentState;
struct FrameParts;

/// The commands as entries of the menu bar and buttons of the tool bar, made from the command table. Owned by the
/// frame. Enabled flags and check marks live in the entries and nowhere else; SetDocumentEnv rebuilds them from a
/// document.
class Commands : public QObject {
    Q_OBJECT

 public:
    /// `run` carries out a target; the entries call it.
    using Runner = std::function<void(const CommandTarget&)>;

    Commands(FrameParts& parts, QMenuBar& menuBar, QToolBar& toolBar, Runner run, QObject* parent = nullptr);

    /// The entry or button of that name or key; null when there is none.
    QAction* entry(const char* name) const;
    QAction* button(const char* key) const;
    QMenu* menu(const char* name) const;

    void CheckMenuItem(const char* name, bool checked);
    /// Without a document everything stays as it was.
    void SetDocumentEnv(const frmDocument* document);
    /// Shows the document's mode on the button for it.
    void SetEditModeIcon(const frmDocument* document);
    /// Every mark whose truth is not the document, from that truth.
    void RefreshCheckedItems();

 private:
    void buildMenus(QMenuBar& menuBar);
    void buildButtons(QToolBar& toolBar);
    void addRow(QMenuBar& menuBar, const CommandRow& row);
    void addMenu(QMenuBar& menuBar, const CommandRow& row);
    void addEntry(QMenu& parent, const CommandRow& row);
    void enableFor(const DocumentState& state);

    FrameParts& m_parts;
    Runner m_run;
    QHash<QByteArray, QAction*> m_entries;
    QHash<QByteArray, QAction*> m_buttons;
    QHash<QByteArray, QMenu*> m_menus;
};
