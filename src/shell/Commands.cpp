#include "shell/Commands.h"

#include "document/frmDocument.h"
#include "shell/CommandTable.h"
#include "shell/CoolBar.h"
#include "shell/FrameParts.h"
#include "shell/Icons.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include <utility>

namespace {

bool isSeparator(const CommandRow& row) {
    return qstrcmp(row.caption, "-") == 0;
}

bool isMenu(const CommandRow& row) {
    return row.target.frame == nullptr && row.target.document == nullptr && !isSeparator(row);
}

}  // namespace

Commands::Commands(FrameParts& parts, QMenuBar& menuBar, QToolBar& toolBar, Runner run, QObject* parent)
    : QObject(parent), m_parts(parts), m_run(std::move(run)) {
    buildMenus(menuBar);
    buildButtons(toolBar);
}

QAction* Commands::entry(const char* name) const {
    return m_entries.value(QByteArray(name));
}

QAction* Commands::button(const char* key) const {
    return m_buttons.value(QByteArray(key));
}

QMenu* Commands::menu(const char* name) const {
    return m_menus.value(QByteArray(name));
}

void Commands::buildMenus(QMenuBar& menuBar) {
    for (const CommandRow& row : commandTable())
        addRow(menuBar, row);
}

void Commands::addRow(QMenuBar& menuBar, const CommandRow& row) {
    if (isMenu(row)) {
        addMenu(menuBar, row);
        return;
    }
    if (QMenu* parent = menu(row.parent))
        addEntry(*parent, row);
}

void Commands::addMenu(QMenuBar& menuBar, const CommandRow& row) {
    auto* added = new QMenu(QString::fromLatin1(row.caption), &menuBar);
    added->setObjectName(QString::fromLatin1(row.name));
    added->menuAction()->setObjectName(QString::fromLatin1(row.name));
    if (QMenu* parent = menu(row.parent))
        parent->addMenu(added);
    else
        menuBar.addMenu(added);
    m_menus.insert(row.name, added);
    m_entries.insert(row.name, added->menuAction());
}

void Commands::addEntry(QMenu& parent, const CommandRow& row) {
    auto* action = isSeparator(row) ? parent.addSeparator() : parent.addAction(QString::fromLatin1(row.caption));
    action->setObjectName(QString::fromLatin1(row.name));
    m_entries.insert(row.name, action);
    if (isSeparator(row))
        return;
    action->setMenuRole(QAction::NoRole);
    action->setCheckable(row.checkable);
    if (*row.icon != '\0')
        action->setIcon(Icons::named(row.icon));
    if (*row.key != '\0')
        action->setShortcut(QKeySequence(QString::fromLatin1(row.key), QKeySequence::PortableText));
    connect(action, &QAction::triggered, this, [this, action, &row](bool checked) {
        if (row.checkable)
            action->setChecked(!checked);  // the mark follows what the command did, not the click
        m_run(row.target);
    });
}

void Commands::buildButtons(QToolBar& toolBar) {
    for (const ToolRow& row : toolTable()) {
        if (*row.key == '\0') {
            toolBar.addSeparator();
            continue;
        }
        QAction* action = toolBar.addAction(Icons::named(row.icon), QString::fromLatin1(row.tip));
        action->setCheckable(row.checkable);
        toolBar.widgetForAction(action)->setObjectName(QStringLiteral("tbToolBar.") + QLatin1String(row.key));
        m_buttons.insert(row.key, action);
        connect(action, &QAction::triggered, this, [this, action, &row](bool checked) {
            if (row.checkable)
                action->setChecked(!checked);
            m_run(findCommand(row.command)->target);
        });
    }
}

void Commands::CheckMenuItem(const char* name, bool checked) {
    if (QAction* action = entry(name))
        action->setChecked(checked);
}

void Commands::SetDocumentEnv(const frmDocument* document) {
    if (document == nullptr)
        return;
    const DocumentState state{document->TextEdit(), document->Locked()};
    enableFor(state);
    CheckMenuItem("mnuReadonly", state.locked);
    CheckMenuItem("mnuToggleHex", !state.text);
    RefreshCheckedItems();
    SetEditModeIcon(document);
}

void Commands::enableFor(const DocumentState& state) {
    for (const CommandRow& row : commandTable()) {
        if (row.when != Enabled::Always)
            entry(row.name)->setEnabled(isEnabled(row.when, state));
    }
    for (const ToolRow& row : toolTable()) {
        if (row.when != Enabled::Always)
            button(row.key)->setEnabled(isEnabled(row.when, state));
    }
}

void Commands::SetEditModeIcon(const frmDocument* document) {
    QAction* action = button("ShowHex");
    const bool hex = !document->TextEdit();
    if (action->isChecked() != hex)
        action->setChecked(hex);
}

void Commands::RefreshCheckedItems() {
    CheckMenuItem("mnuShowEditToolbar", m_parts.coolBar->isBandVisible(CoolBar::Tool));
    CheckMenuItem("mnuShowFilesTab", m_parts.coolBar->isBandVisible(CoolBar::Tab));
}
