#pragma once

#include "editor/control/Span.h"

class EditView;

/// Stretches of a control's text that commands act on. Joints inside a long line never end one.
namespace TextSpans {

/// From the first to the last selected place, whatever the kind of selection.
Span selection(const EditView& view);

/// The word around the caret, or the one that begins or ends there; empty when there is none.
Span wordAtCaret(const EditView& view);

/// The lines that the selection touches. A line at whose start the selection ends is not touched.
LineRange selectedLineNumbers(const EditView& view);
/// The same with their line ends.
Span selectedLines(const EditView& view);

/// The lines around the caret up to the next ones that hold nothing but blanks; empty when the caret's does so itself.
Span paragraphAtCaret(const EditView& view);

}  // namespace TextSpans
