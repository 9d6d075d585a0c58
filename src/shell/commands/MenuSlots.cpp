#include "shell/commands/MenuSlots.h"

#include "shell/commands/CommandEntries.h"

#include <QAction>

namespace {

QByteArray nameOf(const char* array, int number) {
    return QByteArray(array) + '(' + QByteArray::number(number) + ')';
}

}  // namespace

MenuSlots::MenuSlots(CommandEntries& commands, std::span<const SlotArray> table, const Runner& run)
    : m_commands(commands) {
    QAction* projects = commands.addItem("mnuFavorites", "mnuProjects", [] {});
    projects->setText(u"Project(s)"_qs);
    projects->setEnabled(false);
    for (const SlotArray& array : table)
        addArray(array, run);
    slot("mnuOpenWindows", 0)->setVisible(false);
}

void MenuSlots::addArray(const SlotArray& array, const Runner& run) {
    for (int number = array.first; number <= array.last; ++number) {
        QAction* action =
            m_commands.addItem(array.menu, nameOf(array.name, number), [run, &array, number] { run(array, number); });
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
