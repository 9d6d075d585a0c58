#include "editor/control/MacroRecorder.h"

#include "editor/control/CommandNumbers.h"
#include "editor/control/EditView.h"

#include <utility>

bool MacroRecorder::follows(const EditView& view) const {
    return m_recording && m_view.data() == &view;
}

void MacroRecorder::begin(EditView& view) {
    m_steps.clear();
    m_missed = 0;
    m_view = &view;
    m_recording = true;
    m_death = connect(&view, &QObject::destroyed, this, [this] {
        m_steps.clear();
        end();
    });
    Q_EMIT changed();
}

QList<MacroStep> MacroRecorder::finish() {
    disconnect(m_death);
    end();
    return std::exchange(m_steps, {});
}

void MacroRecorder::end() {
    m_recording = false;
    m_view = nullptr;
    Q_EMIT changed();
}

/// Whether the typed text is added to the text of the last step; a repeated step stays by itself.
bool MacroRecorder::typingGoesOn() const {
    if (m_steps.isEmpty() || m_steps.last().kind != MacroStep::Kind::Text)
        return false;
    const qsizetype count = m_steps.size();
    return count == 1 || m_steps[count - 2].kind == MacroStep::Kind::Text ||
           m_steps[count - 2].command != Command::SetRepeatCount;
}

void MacroRecorder::add(const MacroStep& step, bool mayGoOn) {
    const bool wasOpen = std::exchange(m_open, mayGoOn);
    const bool goesOn = mayGoOn && wasOpen && step.kind == MacroStep::Kind::Text && typingGoesOn();
    if (goesOn)
        m_steps.last().text += step.text;
    else
        m_steps.append(step);
    Q_EMIT changed();
}

/// A macro that was played may have set it otherwise.
void MacroRecorder::addSetting(const MacroStep& step) {
    // The two commands that switch one thing on and off have neighbouring numbers.
    static_assert(Command::RegExpOn % 2 == 0);
    const auto group = [](int command) { return command < Command::RegExpOn ? command : command / 2 * 2; };
    for (auto known = m_steps.crbegin(); known != m_steps.crend(); ++known) {
        const Command::Info* row = known->kind == MacroStep::Kind::Command ? Command::infoOf(known->command) : nullptr;
        if (row == nullptr)
            continue;
        if (row->kind == Command::Kind::Plays)
            break;
        if (row->kind == Command::Kind::Sets && group(known->command) == group(step.command)) {
            if (*known == step)
                return;
            break;
        }
    }
    add(step);
}

void MacroRecorder::cutTo(qsizetype count) {
    if (count >= m_steps.size())
        return;
    m_steps.resize(count);
    Q_EMIT changed();
}

void MacroRecorder::missed() {
    ++m_missed;
    Q_EMIT changed();
}
