#include "shell/commands/MenuSlots.h"

#include "shell/commands/CommandEntries.h"
#include "shell/commands/FrameCommands.h"

#include <QAction>

namespace {

using Frame = FrameCommands;

constexpr SlotArray Arrays[] = {
    {"mnuRecentFiles", "mnuFiles", 0, 10, "Files(s)", &Frame::OpenRecentFile},
    {"mnuRecentWorkspace", "mnuWorkspaces", 0, 10, "Project(s)", &Frame::OpenRecentProject},
    {"mnuFavorites", "mnuFavoriteProject", 1, 30, "", &Frame::OpenFavorite},
    {"mnuMacro", "mnuExecMacro", 0, 10, "Macro(s)", &Frame::ExecMacro},
    {"mnuWindow", "mnuOpenWindows", 0, 0, "-", &Frame::SelectOpenWindow},
};

QByteArray nameOf(const char* array, int number) {
    return QByteArray(array) + '(' + QByteArray::number(number) + ')';
}

}  // namespace

std::span<const SlotArray> MenuSlots::table() {
    return Arrays;
}

MenuSlots::MenuSlots(CommandEntries& commands, FrameCommands& run) : m_commands(commands) {
    QAction* projects = commands.addItem("mnuFavorites", "mnuProjects", [] {});
    projects->setText(u"Project(s)"_qs);
    projects->setEnabled(false);
    for (const SlotArray& array : Arrays)
        addArray(array, run);
    slot("mnuOpenWindows", 0)->setVisible(false);
}

void MenuSlots::addArray(const SlotArray& array, FrameCommands& run) {
    for (int number = array.first; number <= array.last; ++number) {
        QAction* action = m_commands.addItem(array.menu, nameOf(array.name, number),
                                             [&run, chosen = array.chosen, number] { (run.*chosen)(number); });
        const bool placeholder = number == 0;
        action->setVisible(placeholder);
        action->setEnabled(!placeholder);
        if (placeholder)
            action->setText(QString::fromLatin1(array.placeholder));
    }
}

QAction* MenuSlots::slot(const char* array, int number) const {
    return m_commands.entry(nameOf(array, number));
}
