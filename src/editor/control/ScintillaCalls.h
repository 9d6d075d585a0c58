#pragma once

#include "editor/control/EditView.h"
#include "editor/control/Span.h"

/// Short forms of what commands often send to Scintilla.
namespace ScintillaCalls {

inline qint64 ask(const EditView& view, unsigned message, qint64 first = 0, qint64 second = 0) {
    return view.send(message, first, second);
}

inline qint64 caret(const EditView& view) {
    return view.selection().caret;
}

/// Without scrolling the caret into view, which lays out all of a line that is about to be cut.
inline void select(EditView& view, qint64 anchor, qint64 caret) {
    view.send(EditView::SCI_CLEARSELECTIONS);
    view.send(EditView::SCI_SETSELECTION, caret, anchor);
}

inline void remove(EditView& view, Span span) {
    view.send(EditView::SCI_DELETERANGE, span.from, span.to - span.from);
}

/// The selection is where Scintilla leaves it.
inline void replace(EditView& view, Span span, const QByteArray& utf8) {
    view.replaceBytes(span.from, span.to, utf8);
}

}  // namespace ScintillaCalls
