#pragma once

#include "editor/control/Span.h"

#include <cstddef>
#include <vector>

class EditView;

/// Parts of a control's text that commands act on, in held bytes. Joints inside a long line never end one.
namespace TextSpans {

/// The word around a place, or the one that begins or ends there; empty when there is none.
Span wordAt(const EditView& view, qint64 byte);

/// The lines around a place up to the next ones that hold nothing but blanks; empty when the place's does so itself.
Span paragraphAt(const EditView& view, qint64 byte);

/// The lines that each selected range touches, from the top; a line at whose start a range ends is not touched by it.
/// Ranges that share a line are one element, and so are all ranges of a rectangle.
std::vector<LineRange> selectedLines(const EditView& view);
/// The bytes of lines, with their line ends.
Span spanOf(const EditView& view, const LineRange& lines);

/// The carets of all ranges, from the top, each place once; and which of them is the main one's.
std::vector<qint64> carets(const EditView& view);
std::size_t mainCaret(const EditView& view);

}  // namespace TextSpans
