#pragma once

class MacroPlayer;
class TextControl;

/// Records and plays the macros of one control. Owned by the runner of its commands, which may outlive the control
/// while a macro is played. Playing runs the event loop; the control may be destroyed then.
class MacroCommands {
 public:
    /// Begins a recording or ends the one under way. A recording that follows another control is ended too: there is
    /// one for the user.
    void record(TextControl& control);
    /// Plays macro `n`, from 1, as often as the repeat count says, as one undo step.
    void play(TextControl& control, int n);

 private:
    MacroPlayer* m_player = nullptr;  ///< while a macro is played
};
