#include "editor/commands/MacroPlayer.h"

#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlGlobals.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "editor/held/Colouring.h"
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
        if (!playStep(step) && !m_stopped) {
            m_remark = whyNothingWasDone(step);
            m_stopped = true;
        }
        if (!m_stopped && m_pace.due())
            yield();
        if (m_stopped)
            return;
    }
}

/// When typed text ends a level of indentation, each character is typed separately, as when it was recorded.
void MacroPlayer::playText(const QString& text) {
    ControlTyping& typing = m_control->typing();
    const LanguageDefinition* language = typing.AutoIndent() ? m_control->colouring().language() : nullptr;
    if (m_control->repeatCount() > 1 || language == nullptr || language->unindentAt.isEmpty())
        return typing.type(text);
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype length = text[at].isHighSurrogate() ? 2 : 1;
        typing.type(text.mid(at, length));
        at += length;
    }
}

/// False when the step failed and left everything unchanged. A step that plays another macro runs the event loop, and
/// the control may be destroyed by it: then the player ends.
bool MacroPlayer::playStep(const MacroStep& step) {
    EditState& state = m_control->state();
    state.failed = false;
    const quint64 changes = state.changes;
    const ByteSelection before = m_control->selection();
    if (step.kind == MacroStep::Kind::Text) {
        playText(step.text);
    } else {
        const Command::Info* info = Command::infoOf(step.command);
        if (info != nullptr && Command::canBePlayed(*info, step.text))
            m_control->ExecuteCmd(step.command, step.text);
    }
    if (!m_control)
        return true;
    return !state.failed || state.changes != changes || m_control->selection() != before;
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
    const Command::Info* info = Command::infoOf(step.command);
    if (info != nullptr && info->kind == Command::Kind::Searches)
        return TextControl::tr("The macro has ended: \"%1\" was not found.").arg(m_control->search().searchText());
    return TextControl::tr("The macro has ended: there was nothing to do for \"%1\".")
        .arg(Command::captionOf(step.command));
}
