#include "editor/control/ControlMacros.h"

#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlGlobals.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/EditScope.h"
#include "editor/control/EditView.h"
#include "editor/control/EditorKeys.h"
#include "editor/control/MacroRecorder.h"
#include "text/search/SearchState.h"

#include <QKeyEvent>

bool ControlMacros::takeHotKey(const QKeyEvent& key) {
    using Kind = ControlGlobals::KeyAnswer::Kind;
    const auto answer = m_globals == nullptr ? ControlGlobals::KeyAnswer() : m_globals->press(key);
    if (!EditorKeys::isModifier(key))
        showBegunHotKey();
    const int fixed = answer.kind == Kind::NoStroke ? EditorKeys::commandFor(key) : 0;
    const int command = answer.command.value_or(fixed);
    if (command != 0)
        m_view.ExecuteCmd(command, {});
    return command != 0 || answer.kind == Kind::Taken;
}

bool ControlMacros::isAwaited(const QKeyEvent& key) {
    if (m_globals == nullptr)
        return false;
    if (m_globals->isAwaited(key))
        return true;
    if (!EditorKeys::isModifier(key))
        leaveHotKey();
    return false;
}

void ControlMacros::showBegunHotKey() {
    const QString begun = m_globals == nullptr ? QString() : m_globals->begunHotKey();
    m_view.notice(begun.isEmpty() ? QString() : EditView::tr("%1: press the second key, or Esc to leave.").arg(begun));
}

void ControlMacros::leaveHotKey() {
    if (m_globals == nullptr)
        return;
    m_globals->forgetHotKey();
    m_view.notice({});
}

MacroRecorder* ControlMacros::recording() const {
    if (m_globals == nullptr || !m_globals->recorder().follows(m_view))
        return nullptr;
    return &m_globals->recorder();
}

/// A command that had nothing to do, and had no other effect.
bool ControlMacros::failedIdly() const {
    return m_view.state().failed && !m_view.state().changed && m_view.selection() == m_view.state().reported;
}

void ControlMacros::noteCommand(int number, const QString& argument, int times) {
    MacroRecorder* recorder = m_view.state().scopes == 1 ? recording() : nullptr;
    const Command::Info* info = recorder == nullptr ? nullptr : Command::infoOf(number);
    if (info == nullptr || !Command::canBePlayed(*info, argument))
        return;
    m_view.state().noted = true;
    if (failedIdly())
        return;
    if (info->kind == Command::Kind::Searches)
        noteSearchState(*recorder, number);
    noteSteps(*recorder, {MacroStep::Kind::Command, number, argument}, times);
}

void ControlMacros::noteTyped(const QString& text, int times) {
    MacroRecorder* recorder = m_view.state().scopes == 1 ? recording() : nullptr;
    if (recorder == nullptr || m_view.Locked() || text.isEmpty())
        return;
    m_view.state().noted = true;
    noteSteps(*recorder, {MacroStep::Kind::Text, 0, text}, times);
}

void ControlMacros::noteSteps(MacroRecorder& recorder, const MacroStep& step, int times) {
    if (times > 1)
        recorder.add({MacroStep::Kind::Command, Command::SetRepeatCount, QString::number(times)});
    // With several carets, text typed as a whole may have another result than the same text typed in parts.
    recorder.add(step, m_selection.isStream());
}

void ControlMacros::noteSearch(int command) {
    const EditScope scope(m_view);
    noteCommand(command, {}, 1);
}

/// Notes text and flags of the search, unless the steps have set them already.
void ControlMacros::noteSearchState(MacroRecorder& recorder, int command) const {
    const auto note = [&recorder](int number, const QString& argument = {}) {
        recorder.addSetting({MacroStep::Kind::Command, number, argument});
    };
    note(Command::SetSearchText, m_search.text);
    note(m_search.flags.regExp ? Command::RegExpOn : Command::RegExpOff);
    note(m_search.flags.wholeWord ? Command::WholeWordOn : Command::WholeWordOff);
    note(m_search.flags.caseSensitive ? Command::MatchCaseOn : Command::MatchCaseOff);
    if (command == Command::FindNext || command == Command::FindPrevious)
        return;
    note(m_search.preserveCase ? Command::PreserveCaseOn : Command::PreserveCaseOff);
    note(Command::SetReplacementText, m_search.replacement);
}
