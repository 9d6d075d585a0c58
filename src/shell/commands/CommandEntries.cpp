#include "shell/commands/CommandEntries.h"

#include "document/frmDocument.h"
#include "shell/bars/CoolBar.h"
#include "shell/bars/SearchPanel.h"
#include "shell/bars/SidePanel.h"
#include "shell/commands/CommandRow.h"
#include "shell/commands/MenuText.h"
#include "shell/commands/ToolTable.h"
#include "shell/commands/ViewToggles.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Icons.h"
#include "widgets/MenuStyle.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include <algorithm>
#include <utility>

namespace {

/// Entries whose check is the truth of their mark.
constexpr const char* OwnChecks[] = {"mnuWholeWord",    "mnuCaseSensitive", "mnuRegExp",         "mnuReadonly",
                                     "mnuToggleHex",    "mnuShowTabSpace",  "mnuShowLeftMargin", "mnuShowLineNumber",
                                     "mnuHighlightRow", "mnuBraceMatching", "mnuSearchContinue", "mnuRecordMarco"};

bool isSeparator(const CommandRow& row) {
    return qstrcmp(row.caption, "-") == 0;
}

/// The mark shows the state after the command, not after the click.
void undoClick(QAction& action, bool checked) {
    if (action.isCheckable())
        action.setChecked(!checked);
}

}  // namespace

CommandEntries::CommandEntries(std::span<const CommandRow> table, const CoolBar& coolBar, const SidePanel& sidePanel,
                               const SearchPanel& searchPanel, QMenuBar& menuBar, QToolBar& toolBar, Runner run)
    : m_table(table), m_coolBar(coolBar), m_sidePanel(sidePanel), m_searchPanel(searchPanel), m_run(std::move(run)) {
    buildMenus(menuBar);
    buildButtons(toolBar);
}

const CommandRow& CommandEntries::rowOf(const char* name) const {
    return *std::ranges::find_if(m_table, [name](const CommandRow& row) { return qstrcmp(row.name, name) == 0; });
}

QAction* CommandEntries::entry(const QByteArray& name) const {
    return m_entries.value(name);
}

QAction* CommandEntries::button(const QByteArray& key) const {
    return m_buttons.value(key);
}

QMenu* CommandEntries::menu(const QByteArray& name) const {
    return m_menus.value(name);
}

void CommandEntries::buildMenus(QMenuBar& menuBar) {
    for (const CommandRow& row : m_table)
        addRow(menuBar, row);
}

void CommandEntries::addRow(QMenuBar& menuBar, const CommandRow& row) {
    if (isSeparator(row))
        enlist(row.name, menu(row.parent)->addSeparator());
    else if (row.target.isEmpty())
        addMenu(menuBar, row);
    else
        addEntry(row);
}

void CommandEntries::addMenu(QMenuBar& menuBar, const CommandRow& row) {
    auto* added = new QMenu(QString::fromLatin1(row.caption), &menuBar);
    added->setObjectName(QString::fromLatin1(row.name));
    MenuStyle::giveTo(*added);
    if (QMenu* parent = menu(row.parent))
        parent->addMenu(added);
    else
        menuBar.addMenu(added);
    m_menus.insert(row.name, added);
    enlist(row.name, added->menuAction());
}

void CommandEntries::addEntry(const CommandRow& row) {
    QAction* action = addItem(row.parent, row.name, [this, &row] { m_run(row.target); });
    action->setText(QString::fromLatin1(row.caption));
    action->setCheckable(row.checkable);
    if (row.checkable)
        m_markable.insert(action);
    action->setVisible(row.visible);
    if (*row.icon != '\0')
        action->setIcon(Icons::named(row.icon));
    if (*row.key != '\0')
        action->setShortcut(QKeySequence(QString::fromLatin1(row.key), QKeySequence::PortableText));
}

QAction* CommandEntries::addItem(const QByteArray& menuName, const QByteArray& name, std::function<void()> chosen) {
    QAction* action = menu(menuName)->addAction(QString());
    action->setMenuRole(QAction::NoRole);
    enlist(name, action);
    connect(action, &QAction::triggered, this, [action, name, run = std::move(chosen)](bool checked) {
        undoClick(*action, checked);
        ignoringErrors(name.constData(), run);
    });
    return action;
}

void CommandEntries::enlist(const QByteArray& name, QAction* action) {
    action->setObjectName(QString::fromLatin1(name));
    m_entries.insert(name, action);
    m_items.append(action);
}

void CommandEntries::removeItem(QAction* item) {
    m_entries.remove(item->objectName().toLatin1());
    m_items.removeOne(item);
    item->deleteLater();  // it may be the one that was chosen
    item->setVisible(false);
}

void CommandEntries::buildButtons(QToolBar& toolBar) {
    for (const ToolRow& row : toolTable()) {
        if (row.isGap())
            toolBar.addSeparator();
        else if (row.isPlace())
            addPlace(toolBar, row);
        else
            addButton(toolBar, row);
    }
}

void CommandEntries::addPlace(QToolBar& toolBar, const ToolRow& row) {
    m_searchPlace = new QWidget(&toolBar);
    m_searchPlace->setObjectName(u"tbToolBar."_qs + QLatin1String(row.key));
    m_buttons.insert(row.key, toolBar.addWidget(m_searchPlace));
}

QString CommandEntries::toolTip(const ToolRow& row) const {
    const QString tip = QString::fromLatin1(row.tip);
    const QKeySequence key(QString::fromLatin1(rowOf(row.command).key), QKeySequence::PortableText);
    return key.isEmpty() ? tip : u"%1 (%2)"_qs.arg(tip, key.toString(QKeySequence::NativeText));
}

void CommandEntries::addButton(QToolBar& toolBar, const ToolRow& row) {
    QAction* action = toolBar.addAction(Icons::named(row.icon), QString::fromLatin1(row.tip));
    action->setToolTip(toolTip(row));
    action->setCheckable(row.checkable);
    toolBar.widgetForAction(action)->setObjectName(u"tbToolBar."_qs + QLatin1String(row.key));
    m_buttons.insert(row.key, action);
    connect(action, &QAction::triggered, this, [this, action, &row](bool checked) {
        undoClick(*action, checked);
        ignoringErrors(row.command, [&] { m_run(rowOf(row.command).target); });
    });
}

void CommandEntries::CheckMenuItem(const QByteArray& name, bool checked) {
    QAction* action = entry(name);
    if (action == nullptr)
        return;
    if (checked)
        m_checks.insert(name);
    else
        m_checks.remove(name);
    showMark(action, checked);
}

void CommandEntries::showMark(QAction* action, bool marked) {
    action->setCheckable(marked || m_markable.contains(action));
    action->setChecked(marked);
}

bool CommandEntries::isChecked(const QByteArray& name) const {
    return m_checks.contains(name);
}

void CommandEntries::markOnly(const QString& caption) {
    for (QAction* item : m_items)
        showMark(item, !caption.isEmpty() && MenuText::captionOf(*item) == caption);
}

void CommandEntries::SetDocumentEnv(const frmDocument* document) {
    if (document == nullptr)
        return;
    const DocumentState state{document->TextEdit(), document->Locked()};
    enableFor(state);
    CheckMenuItem("mnuReadonly", state.locked);
    CheckMenuItem("mnuToggleHex", !state.text);
    for (const ViewToggle& option : viewToggles())
        showViewToggle(option, *document);
    RefreshCheckedItems();
    SetEditModeIcon(document);
}

void CommandEntries::enableFor(const DocumentState& state) {
    for (const CommandRow& row : m_table) {
        if (row.when != Enabled::Always)
            entry(row.name)->setEnabled(isEnabled(row.when, state));
    }
    for (const ToolRow& row : toolTable()) {
        if (row.when != Enabled::Always)
            button(row.key)->setEnabled(isEnabled(row.when, state));
    }
}

void CommandEntries::SetProjectMenus(const QString& projectFilename, bool changed) {
    const bool open = !projectFilename.isEmpty();
    for (const char* name : {"mnuAddFavorite", "mnuCloseProject", "mnuDeleteFavorite"})
        entry(name)->setEnabled(open);
    for (const char* name : {"mnuSaveProject", "mnuSaveProjectAs"})
        entry(name)->setEnabled(open || changed);
}

void CommandEntries::SetEditModeIcon(const frmDocument* document) {
    QAction* action = button("ShowHex");
    const bool hex = !document->TextEdit();
    if (action->isChecked() != hex)
        action->setChecked(hex);
}

void CommandEntries::showViewToggle(const ViewToggle& option, const frmDocument& document) {
    const bool on = (document.*option.isOn)();
    CheckMenuItem(option.entry, on);
    if (QAction* shown = button(option.button))
        shown->setChecked(on);
}

void CommandEntries::RefreshCheckedItems() {
    CheckMenuItem("mnuEditExplorer", m_sidePanel.isShown());
    CheckMenuItem("mnulFindReplacePanel", m_searchPanel.isShown());
    CheckMenuItem("mnuShowEditToolbar", m_coolBar.isBandVisible(CoolBar::Tool));
    CheckMenuItem("mnuShowFilesTab", m_coolBar.isBandVisible(CoolBar::Tab));
    for (const char* name : OwnChecks)
        CheckMenuItem(name, isChecked(name));
}
