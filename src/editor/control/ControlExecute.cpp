// The numbered commands of the control, and the count by which the next of them is repeated.

#include "editor/commands/ControlCommands.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/EditScope.h"
#include "editor/control/TextControl.h"

#include <QPointer>

#include <algorithm>
#include <utility>

void TextControl::ExecuteCmd(int number, const QString& argument) {
    using Command::Kind;
    const Command::Info* info = Command::infoOf(number);
    if (info == nullptr || (info->kind == Kind::Edits && Locked()))
        return;
    if (number >= Command::FirstMessage)
        return runCommand(number);
    if (info->kind == Kind::Records)
        return recordMacro();
    if (info->kind == Kind::Plays)
        return playMacro(number - Command::MacroBase);
    const EditScope scope(*this, EditScope::Grouped);
    m_typing = false;
    const bool leavesCount = info->kind == Kind::Sets || info->kind == Kind::Asks;
    const int times = leavesCount ? 1 : takeRepeatCount();
    const QPointer<TextControl> alive(this);
    for (int done = 0; done < times && !(info->kind == Kind::Searches && m_failed); ++done) {
        ControlCommands::run(*this, number, argument);
        if (!alive)
            return;
    }
    if (info->kind == Kind::Edits)
        cutRectangleAnew();
    noteCommand(number, argument, times);
}

void TextControl::setRepeatCount(int times) {
    m_repeatCount = std::clamp(times, 1, LargestRepeatCount);
}

/// What stands for more than one is used up by being asked for.
int TextControl::takeRepeatCount() {
    return std::exchange(m_repeatCount, 1);
}
