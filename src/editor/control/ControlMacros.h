#pragma once

#include <QString>

class ControlGlobals;
class ControlSelection;
class EditView;
class MacroRecorder;
class QKeyEvent;
struct MacroStep;
struct SearchState;

/// Hot keys of a control, and its notes for the recording of a macro. Without globals there are neither, and keys are
/// those of EditorKeys. Owned by the control. Macros are played by MacroCommands.
class ControlMacros {
 public:
    /// All three outlive this object.
    ControlMacros(EditView& view, const ControlSelection& selection, const SearchState& search)
        : m_view(view), m_selection(selection), m_search(search) {}

    ControlGlobals* globals() const { return m_globals; }
    /// The globals outlive the control.
    void setGlobals(ControlGlobals& globals) { m_globals = &globals; }

    /// Whether the key is used up: it is part of a hot key, or a key to which no other command can be assigned.
    bool takeHotKey(const QKeyEvent& key);
    /// Whether a hot key waits for this key as its second stroke. Any other key cancels it.
    bool isAwaited(const QKeyEvent& key);
    void leaveHotKey();

    /// The recording that follows this control; null: none does.
    MacroRecorder* recording() const;
    /// Notes a command that was carried out, unless it failed without effect. Called before the outermost scope of the
    /// action closes; parts of a larger action are not noted.
    void noteCommand(int number, const QString& argument, int times);
    void noteTyped(const QString& text, int times);
    /// Notes a search that was carried out, as a command that uses the present text and flags.
    void noteSearch(int command);

 private:
    void showBegunHotKey();
    bool failedIdly() const;
    void noteSteps(MacroRecorder& recorder, const MacroStep& step, int times);
    void noteSearchState(MacroRecorder& recorder, int command) const;

    EditView& m_view;
    const ControlSelection& m_selection;
    const SearchState& m_search;
    ControlGlobals* m_globals = nullptr;
};
