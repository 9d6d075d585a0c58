#include "editor/commands/MacroCommands.h"

#include "editor/commands/MacroPlayer.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlGlobals.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/EditScope.h"
#include "editor/control/MacroRecorder.h"
#include "editor/control/TextControl.h"
#include "editor/windows/ControlPrompts.h"

void MacroCommands::record(TextControl& control) {
    ControlGlobals* globals = control.macros().globals();
    if (globals == nullptr || m_player != nullptr)
        return;
    MacroRecorder& recorder = globals->recorder();
    if (recorder.isRecording()) {
        const QList<MacroStep> steps = recorder.finish();
        if (steps.isEmpty())
            control.notice(TextControl::tr("Nothing was recorded."));
        else
            globals->keepMacro(control, steps);
    } else if (globals->mayRecord(control)) {
        recorder.begin(control);
    }
}

void MacroCommands::play(TextControl& control, int n) {
    ControlGlobals* globals = control.macros().globals();
    if (globals == nullptr)
        return;
    const int times = control.state().takeRepeatCount();
    if (m_player != nullptr)
        return m_player->play(n, times);
    QString remark;
    QString warning;
    {
        MacroPlayer player(control, *globals);
        const EditScope scope(control, EditScope::Grouped);
        control.state().typing = false;
        m_player = &player;
        control.state().playGoesOn = [&player] { return player.goesOn(); };
        player.play(n, times);
        m_player = nullptr;
        if (!player.controlLives())
            return;
        control.state().playGoesOn = nullptr;
        control.state().repeatCount = 1;
        control.macros().noteCommand(Command::MacroBase + n, {}, times);
        remark = player.remark();
        warning = player.warning();
    }
    control.notice(remark);
    if (!warning.isEmpty())
        ControlPrompts::tell(control, warning);
}
