#include "document/ContextMenus.h"

#include "document/DocumentHost.h"
#include "document/frmDocument.h"
#include "widgets/Icons.h"
#include "widgets/MenuStyle.h"

#include <QAction>
#include <QMenu>

#include <span>

namespace {

enum class Rule {
    Always,
    Unlocked,   ///< enabled exactly when the document is not read-only
    ShowsLock,  ///< checked when it is
};

/// One entry; the entries are in the order of the menu.
struct Entry {
    const char* menu;     ///< name of its sub-menu; empty: the menu itself
    const char* name;     ///< also the entry's object name; empty: a separator
    const char* caption;  ///< of a sub-menu when nothing is run
    const char* icon = "";
    void (*run)(frmDocument&) = nullptr;
    Rule rule = Rule::Always;
};

template <auto operation>
void call(frmDocument& document) {
    (document.*operation)();
}

void changeReadOnly(frmDocument& document) {
    document.gParent->ChangeReadOnly();
}

using Document = frmDocument;

constexpr Entry Gap = {"", "", "-"};

constexpr Entry TextEntries[] = {
    {"", "mnuCopy", "Copy", "copy", call<&Document::Copy>},
    {"", "mnuPaste", "Paste", "paste", call<&Document::Paste>, Rule::Unlocked},
    {"", "mnuCut", "Cut", "cut", call<&Document::Cut>, Rule::Unlocked},
    Gap,
    {"", "mnuUndo", "Undo", "undo", call<&Document::Undo>, Rule::Unlocked},
    {"", "mnuRedo", "Redo", "redo", call<&Document::Redo>, Rule::Unlocked},
    Gap,
    {"", "mnuFind", "Find...", "search", call<&Document::Find>},
    {"", "mnuReplace", "Replace...", "", call<&Document::ReplaceText>},
    {"", "mnuIncSearch", "Incremental Search", "", call<&Document::IncrementalSearch>},
    {"", "mnuRevIncSearch", "Reverse Incremental Search", "", call<&Document::ReverseIncrementalSearch>},
    {"", "mnuGoto", "Go to...", "", call<&Document::GotoLine>},
    Gap,
    {"", "mnuSelectWord", "Select Word", "", call<&Document::SelectWord>},
    {"", "mnuSelectLine", "Select Line", "selectline", call<&Document::SelectLine>},
    {"", "mnuSelectPara", "Select Paragraph", "", call<&Document::SelectPara>},
    {"", "mnuSelectAll", "Select All", "selectall", call<&Document::SelectAll>},
    Gap,
    {"", "mnuIndent", "Indent", "indent", call<&Document::Indent>, Rule::Unlocked},
    {"", "mnuUnindent", "Unindent", "unindent", call<&Document::Unindent>, Rule::Unlocked},
    {"", "mnuChangeCase", "Change Case", "", nullptr, Rule::Unlocked},
    {"mnuChangeCase", "mnuToUpper", "Change to upper case", "toupper", call<&Document::ToUppercaseSel>},
    {"mnuChangeCase", "mnuToLower", "Change to lower case", "tolower", call<&Document::ToLowercaseSel>},
    {"", "mnuLineDelete", "Line Delete", "", nullptr, Rule::Unlocked},
    {"mnuLineDelete", "mnuCutLine", "Cut Line", "", call<&Document::LineCut>},
    {"mnuLineDelete", "mnuDeleteLine", "Delete Line", "", call<&Document::LineDelete>},
    {"mnuLineDelete", "mnuDeleteToStart", "Delete to Start of Line", "", call<&Document::LineDeleteToStart>},
    {"mnuLineDelete", "mnuDeleteToEnd", "Delete to End of Line", "", call<&Document::LineDeleteToEnd>},
    Gap,
    {"", "mnuToggleBookmark", "Toggle Bookmark", "bookmark", call<&Document::ToggleBookmark>},
    {"", "mnuFirstBookmark", "First Bookmark", "", call<&Document::FirstBookmark>},
    {"", "mnuLastBookmark", "Last Bookmark", "", call<&Document::LastBookmark>},
    Gap,
    {"", "mnuReadonly", "ReadOnly", "readonly", changeReadOnly, Rule::ShowsLock},
    {"", "mnuProp", "Properties...", "prop", call<&Document::Properties>},
};

constexpr Entry HexEntries[] = {
    {"", "mnuHexCopy", "Copy", "copy", call<&Document::Copy>},
    {"", "mnuHexUndo", "Undo", "undo", call<&Document::Undo>, Rule::Unlocked},
    Gap,
    {"", "mnuHexFind", "Find...", "search", call<&Document::Find>},
    {"", "mnuHexReplace", "Replace...", "", call<&Document::ReplaceText>},
    {"", "mnuHexGotoPage", "Goto Page...", "", call<&Document::GotoPage>},
    {"", "mnuHexGotoOffset", "Goto Offset...", "", call<&Document::GotoOffset>},
    Gap,
    {"", "mnuHexToggleBookmark", "Toggle Bookmark", "bookmark", call<&Document::ToggleBookmark>},
    {"", "mnuHexDelBookmark", "Delete Selected Bookmark", "", call<&Document::DeleteBookmark>},
    {"", "mnuHexDelAllBookmark", "Bookmark Clear", "bookclear", call<&Document::ClearAllBookmark>},
    Gap,
    {"", "mnuHexReadonly", "ReadOnly", "readonly", changeReadOnly, Rule::ShowsLock},
};

constexpr Entry BookmarkEntries[] = {
    {"", "mnuHexDelBookmark", "Delete Selected Bookmark", "", call<&Document::DeleteBookmark>},
    {"", "mnuHexDelAllBookmark", "Bookmark Clear", "bookclear", call<&Document::ClearAllBookmark>},
};

struct MenuRow {
    const char* key;  ///< also the menu's object name
    std::span<const Entry> entries;
};

constexpr MenuRow MenuRows[] = {{"EditText", TextEntries}, {"HEX", HexEntries}, {"BOOK", BookmarkEntries}};

void addCommand(QMenu& menu, const Entry& entry, frmDocument& document) {
    QAction* action = menu.addAction(QString::fromLatin1(entry.caption));
    action->setObjectName(QString::fromLatin1(entry.name));
    action->setCheckable(entry.rule == Rule::ShowsLock);
    if (*entry.icon != '\0')
        action->setIcon(Icons::named(entry.icon));
    QObject::connect(action, &QAction::triggered, &document, [&document, run = entry.run] { run(document); });
}

void addSubMenu(QMenu& menu, const Entry& entry) {
    QMenu* added = menu.addMenu(QString::fromLatin1(entry.caption));
    MenuStyle::giveTo(*added);
    added->setObjectName(QString::fromLatin1(entry.name));
    added->menuAction()->setObjectName(QString::fromLatin1(entry.name));
}

QMenu* build(const char* name, std::span<const Entry> entries, frmDocument& document) {
    auto* menu = new QMenu(&document);
    menu->setObjectName(QString::fromLatin1(name));
    MenuStyle::giveTo(*menu);
    for (const Entry& entry : entries) {
        QMenu* place = *entry.menu == '\0' ? menu : menu->findChild<QMenu*>(QString::fromLatin1(entry.menu));
        if (*entry.name == '\0')
            place->addSeparator();
        else if (entry.run == nullptr)
            addSubMenu(*place, entry);
        else
            addCommand(*place, entry, document);
    }
    return menu;
}

void follow(const QMenu& menu, std::span<const Entry> entries, bool readOnly) {
    for (const Entry& entry : entries) {
        if (entry.rule == Rule::Always)
            continue;
        auto* action = menu.findChild<QAction*>(QString::fromLatin1(entry.name));
        if (entry.rule == Rule::ShowsLock)
            action->setChecked(readOnly);
        else
            action->setEnabled(!readOnly);
    }
}

}  // namespace

ContextMenus::ContextMenus(frmDocument& document) : QObject(&document), m_document(document) {
    for (const MenuRow& row : MenuRows)
        m_menus.append(build(row.key, row.entries, document));
}

void ContextMenus::show(const QString& key, const QPoint& globalPosition) {
    for (const MenuRow& row : MenuRows) {
        if (key != QLatin1String(row.key))
            continue;
        QMenu* menu = m_menus.at(&row - MenuRows);
        follow(*menu, row.entries, m_document.isReadOnly);
        menu->popup(globalPosition);
    }
}
