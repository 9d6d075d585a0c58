#pragma once

#include <QtGlobal>

class TextControl;

/// Bytes of the held text, from the first to before the last.
struct Span {
    qint64 from = 0;
    qint64 to = 0;

    bool empty() const { return from >= to; }
    bool operator==(const Span&) const = default;
};

/// Numbers of lines, both taken in.
struct LineRange {
    qint64 first = 0;
    qint64 last = 0;
};

/// Stretches of a control's text that commands act on. Joints inside a long line never end one.
namespace TextSpans {

/// From the first to the last place that is selected, in whatever way.
Span selection(const TextControl& control);

/// The word around the caret, or the one that begins or ends there; empty when there is none.
Span wordAtCaret(const TextControl& control);

/// The lines that the selection touches. A line at whose start the selection ends is not touched.
LineRange selectedLineNumbers(const TextControl& control);
/// The same with their line ends.
Span selectedLines(const TextControl& control);

/// The lines around the caret up to the next ones that hold nothing but blanks; empty when the caret's does so itself.
Span paragraphAtCaret(const TextControl& control);

}  // namespace TextSpans
