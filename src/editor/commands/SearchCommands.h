#pragma once

#include "editor/control/ControlSearch.h"

class TextControl;

/// Searches by command, without a window: the matches stay marked in the text. The control may be destroyed when they
/// return.
namespace SearchCommands {

enum class Direction { Forwards, Backwards };

/// One search, for a command that runs inside a scope of the control.
SearchOutcome findAndMark(TextControl& control, Direction direction, ControlSearch::Wrap wrap);

/// A whole command: the repeat count is used up, and a recording notes it. Ends at the first search that fails.
SearchOutcome find(TextControl& control, Direction direction, ControlSearch::Wrap wrap);

}  // namespace SearchCommands
