// Hot keys of the control, and the recording and playing of macros.

#include "editor/commands/MacroPlayer.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlGlobals.h"
#include "editor/control/EditScope.h"
#include "editor/control/EditorKeys.h"
#include "editor/control/MacroRecorder.h"
#include "editor/control/TextControl.h"
#include "editor/language/LanguageDefinition.h"
#include "editor/windows/ControlPrompts.h"

#include <QPointer>

#include <utility>

// Hot keys

/// Whether the key is spent: it is a part of a hot key, or one of the keys that no other command can have.
bool TextControl::takeHotKey(const QKeyEvent& key) {
    using Kind = ControlGlobals::KeyAnswer::Kind;
    const auto answer = m_globals == nullptr ? ControlGlobals::KeyAnswer() : m_globals->press(key);
    if (!EditorKeys::isModifier(key))
        tellBegunHotKey();
    const int fixed = answer.kind == Kind::NoStroke ? EditorKeys::commandFor(key) : 0;
    const int command = answer.command.value_or(fixed);
    if (command != 0)
        ExecuteCmd(command);
    return command != 0 || answer.kind == Kind::Taken;
}

void TextControl::tellBegunHotKey() {
    const QString begun = m_globals == nullptr ? QString() : m_globals->begunHotKey();
    notice(begun.isEmpty() ? QString() : tr("%1: press the second key, or Esc to leave.").arg(begun));
}

void TextControl::leaveHotKey() {
    if (m_globals == nullptr)
        return;
    m_globals->forgetHotKey();
    notice({});
}

void TextControl::notice(const QString& text) {
    if (std::exchange(m_noticed, !text.isEmpty()) || !text.isEmpty())
        Q_EMIT Notice(text);
}

// Recording

MacroRecorder* TextControl::recording() const {
    if (m_globals == nullptr || !m_globals->recorder().follows(*this))
        return nullptr;
    return &m_globals->recorder();
}

/// A recording that follows another control is ended too: a person knows of one.
void TextControl::recordMacro() {
    if (m_globals == nullptr || m_player != nullptr)
        return;
    MacroRecorder& recorder = m_globals->recorder();
    if (recorder.isRecording()) {
        const QList<MacroStep> steps = recorder.finish();
        if (steps.isEmpty())
            notice(tr("Nothing was recorded."));
        else
            m_globals->keepMacro(*this, steps);
    } else if (m_globals->mayRecord(*this)) {
        recorder.begin(*this);
    }
}

/// A command that could not do what it is for, and did nothing else either.
bool TextControl::failedIdly() const {
    return m_failed && !m_changed && selection() == m_toldSelection;
}

void TextControl::commandFailed() {
    m_failed = true;
    Q_EMIT CommandFailed();
}

/// Called before the outermost scope of what was done closes; parts of something larger are not noted.
void TextControl::noteCommand(int number, const QString& argument, int times) {
    MacroRecorder* recorder = m_scopes == 1 ? recording() : nullptr;
    const Command::Info* row = recorder == nullptr ? nullptr : Command::infoOf(number);
    if (row == nullptr || !Command::canBePlayed(*row, argument))
        return;
    m_noted = true;
    if (failedIdly())
        return;
    if (row->kind == Command::Kind::Searches)
        noteSearchState(*recorder, number);
    noteSteps(*recorder, {MacroStep::Kind::Command, number, argument}, times);
}

void TextControl::noteTyped(const QString& text, int times) {
    MacroRecorder* recorder = m_scopes == 1 ? recording() : nullptr;
    if (recorder == nullptr || Locked() || text.isEmpty())
        return;
    m_noted = true;
    noteSteps(*recorder, {MacroStep::Kind::Text, 0, text}, times);
}

void TextControl::noteSteps(MacroRecorder& recorder, const MacroStep& step, int times) {
    if (times > 1)
        recorder.add({MacroStep::Kind::Command, Command::SetRepeatCount, QString::number(times)});
    // At several carets a text that is typed as a whole may come out otherwise than piece by piece.
    recorder.add(step, isStream());
}

void TextControl::noteSearch(int command) {
    const EditScope scope(*this);
    noteCommand(command, {}, 1);
}

/// What the search goes by, as far as the macro does not know it yet.
void TextControl::noteSearchState(MacroRecorder& recorder, int command) const {
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

// Playing

void TextControl::playMacro(int n) {
    if (m_globals == nullptr)
        return;
    const int times = takeRepeatCount();
    if (m_player != nullptr)
        return m_player->play(n, times);
    QString remark;
    QString warning;
    {
        MacroPlayer player(*this, *m_globals);
        const EditScope scope(*this, EditScope::Grouped);
        m_typing = false;
        m_player = &player;
        player.play(n, times);
        if (!player.controlLives())
            return;
        m_player = nullptr;
        m_repeatCount = 1;
        noteCommand(Command::MacroBase + n, {}, times);
        remark = player.remark();
        warning = player.warning();
    }
    notice(remark);
    if (!warning.isEmpty())
        ControlPrompts::tell(*this, warning);
}

/// Where a level of indentation ends by what is typed, each character is looked at by itself, as when it was recorded.
void TextControl::playText(const QString& text) {
    const LanguageDefinition* language = m_options.autoIndent ? colouring().language() : nullptr;
    if (m_repeatCount > 1 || language == nullptr || language->unindentAt.isEmpty())
        return type(text);
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype length = text[at].isHighSurrogate() ? 2 : 1;
        type(text.mid(at, length));
        at += length;
    }
}

/// False when the step failed and left everything as it was. A step that plays another macro yields, and the control
/// may be gone behind it: then it is the player that ends.
bool TextControl::playStep(const MacroStep& step) {
    const QPointer<TextControl> alive(this);
    m_failed = false;
    const quint64 changes = m_changes;
    const Selection before = selection();
    if (step.kind == MacroStep::Kind::Text) {
        playText(step.text);
    } else {
        const Command::Info* row = Command::infoOf(step.command);
        if (row != nullptr && Command::canBePlayed(*row, step.text))
            ExecuteCmd(step.command, step.text);
    }
    if (!alive)
        return true;
    return !m_failed || m_changes != changes || selection() != before;
}
