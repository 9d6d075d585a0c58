#pragma once

#include "editor/control/CodeMax.h"
#include "editor/control/TextSpans.h"

/// Commands of the control speak to Scintilla by these.
namespace ControlText {

inline qint64 ask(const CodeMax& control, unsigned message, qint64 first = 0, qint64 second = 0) {
    return control.SendScintilla(message, static_cast<unsigned long>(first), static_cast<long>(second));
}

inline qint64 caret(const CodeMax& control) {
    return ask(control, CodeMax::SCI_GETCURRENTPOS);
}

inline qint64 anchor(const CodeMax& control) {
    return ask(control, CodeMax::SCI_GETANCHOR);
}

/// Without bringing the caret into view, which lays out all of a line that is about to be cut.
inline void select(CodeMax& control, qint64 anchor, qint64 caret) {
    ask(control, CodeMax::SCI_CLEARSELECTIONS);
    ask(control, CodeMax::SCI_SETSELECTION, caret, anchor);
}

inline void remove(CodeMax& control, Span span) {
    ask(control, CodeMax::SCI_DELETERANGE, span.from, span.to - span.from);
}

/// Any bytes, NUL among them; the selection is where Scintilla leaves it.
inline void replace(CodeMax& control, Span span, const QByteArray& utf8) {
    ask(control, CodeMax::SCI_SETTARGETRANGE, span.from, span.to);
    control.SendScintilla(CodeMax::SCI_REPLACETARGET, static_cast<uintptr_t>(utf8.size()), utf8.constData());
}

}  // namespace ControlText
