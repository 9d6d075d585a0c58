// The numbered commands of the control, and the count by which the next of them is repeated.

#include "editor/commands/ControlCommands.h"
#include "editor/control/EditScope.h"
#include "editor/control/TextControl.h"

#include <QPointer>

#include <algorithm>
#include <utility>

void TextControl::ExecuteCmd(int number, const QString& argument) {
    using ControlCommands::Kind;
    const ControlCommands::Row* row = ControlCommands::find(number);
    if (row == nullptr || (row->kind == Kind::Edits && Locked()))
        return;
    if (number >= ControlCommands::FirstMessage)
        return runCommand(number);
    if (row->kind == Kind::Records)
        return recordMacro();
    if (row->kind == Kind::Plays)
        return playMacro(number - ControlCommands::MacroBase);
    const EditScope scope(*this, EditScope::Grouped);
    m_typing = false;
    const bool leavesCount = row->kind == Kind::Sets || row->kind == Kind::Asks;
    const int times = leavesCount ? 1 : takeRepeatCount();
    const QPointer<TextControl> alive(this);
    for (int done = 0; done < times && !(row->kind == Kind::Searches && m_failed); ++done) {
        row->run(*this, argument);
        if (!alive)
            return;
    }
    if (row->kind == Kind::Edits)
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
