#include "shell/commands/TabMenu.h"

#include "document/frmDocument.h"
#include "shell/commands/FileCommands.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Icons.h"
#include "widgets/MenuStyle.h"

namespace {

struct TabEntry {
    const char* key;  ///< empty: a separator
    const char* caption;
    const char* icon;
    void (FileCommands::*command)();
};

constexpr TabEntry Entries[] = {
    {"mnuCloseFile", "Close File", "close", &FileCommands::Close},
    {"mnuCloseFileExcept", "Close All Files Except This", "", &FileCommands::CloseExcept},
    {"", "-", "", nullptr},
    {"mnuSaveFile", "Save File", "save", &FileCommands::Save},
    {"", "-", "", nullptr},
    {"mnuReadonly", "ReadOnly", "readonly", &FileCommands::ChangeReadOnly},
};

}  // namespace

TabMenu::TabMenu(const ActiveDocument& active, FileCommands& commands, QWidget* parent)
    : QMenu(parent), m_active(active), m_commands(commands) {
    setObjectName(u"Tab"_qs);
    MenuStyle::giveTo(*this);
    BuildTabMenu();
}

void TabMenu::BuildTabMenu() {
    for (const TabEntry& entry : Entries) {
        if (*entry.key == '\0') {
            addSeparator();
            continue;
        }
        QAction* action = addAction(QString::fromLatin1(entry.caption));
        action->setObjectName(QString::fromLatin1(entry.key));
        if (*entry.icon != '\0')
            action->setIcon(Icons::named(entry.icon));
        connect(action, &QAction::triggered, this, [this, &entry] { run(entry.key, entry.command); });
    }
    findChild<QAction*>(u"mnuReadonly"_qs)->setCheckable(true);
}

// Not in the slot itself, and without a copy of `this`: there gcc's check of the member call reads memory that it never
// wrote.
void TabMenu::run(const char* key, void (FileCommands::*command)()) {
    FileCommands& commands = m_commands;
    ignoringErrors(key, [&commands, command] { (commands.*command)(); });
}

void TabMenu::showAt(const QPoint& globalPosition) {
    const frmDocument* document = m_active.get();
    const bool readOnly = document != nullptr && document->isReadOnly;
    findChild<QAction*>(u"mnuReadonly"_qs)->setChecked(readOnly);
    findChild<QAction*>(u"mnuSaveFile"_qs)->setEnabled(!readOnly);
    popup(globalPosition);
}
