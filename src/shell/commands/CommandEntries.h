#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>

#include <functional>
#include <span>

class CoolBar;
class QAction;
class QMenu;
class QMenuBar;
class QToolBar;
class QWidget;
class SearchPanel;
class SidePanel;
class frmDocument;
struct CommandRow;
struct CommandTarget;
struct DocumentState;
struct ToolRow;
struct ViewToggle;

/// The commands as entries of the menu bar and buttons of the tool bar, made from their tables. Owned by the frame.
/// Enabled flags and check marks are stored only in the entries; SetDocumentEnv rebuilds them from a document.
///
/// An entry's check is kept apart from the mark that is shown, since marking a language clears all other marks;
/// RefreshCheckedItems restores them from the checks.
class CommandEntries : public QObject {
    Q_OBJECT

 public:
    /// `run` carries out a target; the entries call it.
    using Runner = std::function<void(const CommandTarget&)>;

    /// The marks of what panels and bands show are read from them; the table outlives the entries.
    CommandEntries(std::span<const CommandRow> table, const CoolBar& coolBar, const SidePanel& sidePanel,
                   const SearchPanel& searchPanel, QMenuBar& menuBar, QToolBar& toolBar, Runner run);

    /// The entry or button of that name or key; null when there is none.
    QAction* entry(const QByteArray& name) const;
    QAction* button(const QByteArray& key) const;
    QMenu* menu(const QByteArray& name) const;
    /// The place of the find bar in the tool bar.
    QWidget* searchPlace() const { return m_searchPlace; }

    /// An entry beyond the table, at the end of its menu; it can be found and marked like the others.
    QAction* addItem(const QByteArray& menuName, const QByteArray& name, std::function<void()> chosen);
    void removeItem(QAction* item);

    void CheckMenuItem(const QByteArray& name, bool checked);
    /// The entry's check, whatever mark is shown.
    bool isChecked(const QByteArray& name) const;
    /// Marks the entries of that caption, of whatever kind, and no others; none for an empty one.
    void markOnly(const QString& caption);

    /// Without a document nothing changes.
    void SetDocumentEnv(const frmDocument* document);
    /// The entries that need a project; `changed`: there is something to save though no project has a name.
    void SetProjectMenus(const QString& projectFilename, bool changed);
    /// Shows the document's mode on the button for it.
    void SetEditModeIcon(const frmDocument* document);
    void showViewToggle(const ViewToggle& option, const frmDocument& document);
    /// Sets every mark from the state that it shows.
    void RefreshCheckedItems();

 private:
    const CommandRow& rowOf(const char* name) const;
    QString toolTip(const ToolRow& row) const;
    void buildMenus(QMenuBar& menuBar);
    void buildButtons(QToolBar& toolBar);
    void addRow(QMenuBar& menuBar, const CommandRow& row);
    void addMenu(QMenuBar& menuBar, const CommandRow& row);
    void addEntry(const CommandRow& row);
    void addButton(QToolBar& toolBar, const ToolRow& row);
    void addPlace(QToolBar& toolBar, const ToolRow& row);
    void enlist(const QByteArray& name, QAction* action);
    void enableFor(const DocumentState& state);
    /// An entry without a mark of its own has a box only while it is marked.
    void showMark(QAction* action, bool marked);

    std::span<const CommandRow> m_table;
    const CoolBar& m_coolBar;
    const SidePanel& m_sidePanel;
    const SearchPanel& m_searchPanel;
    Runner m_run;
    QList<QAction*> m_items;
    QHash<QByteArray, QAction*> m_entries;
    QHash<QByteArray, QAction*> m_buttons;
    QHash<QByteArray, QMenu*> m_menus;
    QSet<QAction*> m_markable;
    QSet<QByteArray> m_checks;
    QWidget* m_searchPlace = nullptr;
};
