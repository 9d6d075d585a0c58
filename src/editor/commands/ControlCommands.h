#pragma once

#include "editor/commands/MacroCommands.h"

#include <QString>

class TextControl;

/// Carries out the numbered commands of one control that are no Scintilla messages. Owned by the control's command
/// runner (see makeEditor()). Searches and macros run the event loop; the control may be destroyed then.
class ControlCommands {
 public:
    /// Does nothing for a number that is none of these (see CommandNumbers.h).
    void run(TextControl& control, int number, const QString& argument);

 private:
    MacroCommands m_macros;
};
