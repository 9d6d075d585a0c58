#pragma once

#include "editor/control/TextControl.h"
#include "editor/control/TextSpans.h"

/// Commands of the control speak to Scintilla by these.
namespace ScintillaCalls {

inline qint64 ask(const TextControl& control, unsigned message, qint64 first = 0, qint64 second = 0) {
    return control.SendScintilla(message, static_cast<unsigned long>(first), static_cast<long>(second));
}

inline qint64 caret(const TextControl& control) {
    return ask(control, TextControl::SCI_GETCURRENTPOS);
}

inline qint64 anchor(const TextControl& control) {
    return ask(control, TextControl::SCI_GETANCHOR);
}

/// Without bringing the caret into view, which lays out all of a line that is about to be cut.
inline void select(TextControl& control, qint64 anchor, qint64 caret) {
    ask(control, TextControl::SCI_CLEARSELECTIONS);
    ask(control, TextControl::SCI_SETSELECTION, caret, anchor);
}

inline void remove(TextControl& control, Span span) {
    ask(control, TextControl::SCI_DELETERANGE, span.from, span.to - span.from);
}

/// Any bytes, NUL among them; the selection is where Scintilla leaves it.
inline void replace(TextControl& control, Span span, const QByteArray& utf8) {
    ask(control, TextControl::SCI_SETTARGETRANGE, span.from, span.to);
    control.SendScintilla(TextControl::SCI_REPLACETARGET, static_cast<uintptr_t>(utf8.size()), utf8.constData());
}

}  // namespace ScintillaCalls
