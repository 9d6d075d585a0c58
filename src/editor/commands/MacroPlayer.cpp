#include "editor/commands/MacroPlayer.h"

#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlGlobals.h"
#include "editor/control/TextControl.h"
#include "platform/Yield.h"
#include "widgets/InputStop.h"

#include <algorithm>

MacroPlayer::MacroPlayer(TextControl& control, ControlGlobals& globals) : m_control(&control), m_globals(globals) {}

MacroPlayer::~MacroPlayer() {
    if (m_control && m_input)
        m_control->setUpdatesEnabled(true);
}

void MacroPlayer::play(int n, int times) {
    if (m_stopped)
        return;
    if (std::ranges::find(m_running, n) != m_running.end()) {
        m_warning = TextControl::tr("Macro %1 runs into itself. It was stopped.").arg(n);
        m_stopped = true;
        return;
    }
    const QList<MacroStep> steps = m_globals.macro(n);
    if (steps.isEmpty())
        return;
    m_running.push_back(n);
    for (int done = 0; done < times && !m_stopped; ++done)
        playOnce(steps);
    m_running.pop_back();
}

void MacroPlayer::playOnce(const QList<MacroStep>& steps) {
    for (const MacroStep& step : steps) {
        if (!m_control->playStep(step) && !m_stopped) {
            m_remark = whyNothingWasDone(step);
            m_stopped = true;
        }
        if (!m_stopped && m_pace.due())
            yield();
        if (m_stopped)
            return;
    }
}

bool MacroPlayer::goesOn() {
    yield();
    return !m_stopped;
}

void MacroPlayer::yield() {
    if (!m_input) {
        m_input = std::make_unique<InputStop>();
        m_control->setUpdatesEnabled(false);
        m_control->notice(TextControl::tr("Playing a macro. Esc stops it."));
    }
    yieldOnce();
    if (m_input->escaped())
        m_remark = TextControl::tr("The macro was stopped.");
    m_stopped = m_stopped || !m_control || m_input->escaped();
}

QString MacroPlayer::whyNothingWasDone(const MacroStep& step) const {
    const Command::Info* row = Command::infoOf(step.command);
    if (row != nullptr && row->kind == Command::Kind::Searches)
        return TextControl::tr("The macro has ended: \"%1\" was not found.").arg(m_control->searchText());
    return TextControl::tr("The macro has ended: there was nothing to do for \"%1\".")
        .arg(Command::captionOf(step.command));
}
