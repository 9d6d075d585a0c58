#include "editor/control/TextSpans.h"

#include "editor/control/ScintillaCalls.h"

#include <algorithm>

using ScintillaCalls::ask;
using ScintillaCalls::caret;

namespace {

qint64 scintillaWordStart(const EditView& view, qint64 byte) {
    return ask(view, EditView::SCI_WORDSTARTPOSITION, byte, 1);
}

qint64 scintillaWordEnd(const EditView& view, qint64 byte) {
    return ask(view, EditView::SCI_WORDENDPOSITION, byte, 1);
}

/// Scintilla's words end at a joint: continues on its other side.
qint64 wordStart(const EditView& view, qint64 byte) {
    qint64 start = scintillaWordStart(view, byte);
    while (view.map().joints().isJoint(start - 1)) {
        const qint64 before = scintillaWordStart(view, start - 1);
        if (before == start - 1)
            break;
        start = before;
    }
    return start;
}

qint64 wordEnd(const EditView& view, qint64 byte) {
    qint64 end = scintillaWordEnd(view, byte);
    while (view.map().joints().isJoint(end)) {
        const qint64 behind = scintillaWordEnd(view, end + 1);
        if (behind == end + 1)
            break;
        end = behind;
    }
    return end;
}

bool isBlankLine(const EditView& view, qint64 line) {
    const qint64 begin = view.map().lineBegin(line);
    const qint64 end = view.map().lineEndOf(begin);
    bool blank = true;
    view.heldText().forEachRun(begin, end, [&](std::string_view run) {
        blank = blank && run.find_first_not_of(" \t\r\n") == std::string_view::npos;
    });
    return blank;
}

}  // namespace

namespace TextSpans {

Span selection(const EditView& view) {
    Span whole{ask(view, EditView::SCI_GETSELECTIONSTART), ask(view, EditView::SCI_GETSELECTIONEND)};
    const qint64 count = ask(view, EditView::SCI_GETSELECTIONS);
    for (qint64 part = 0; part < count; ++part) {
        whole.from = std::min(whole.from, ask(view, EditView::SCI_GETSELECTIONNSTART, part));
        whole.to = std::max(whole.to, ask(view, EditView::SCI_GETSELECTIONNEND, part));
    }
    return whole;
}

Span wordAtCaret(const EditView& view) {
    const qint64 at = caret(view);
    return {wordStart(view, at), wordEnd(view, at)};
}

LineRange selectedLineNumbers(const EditView& view) {
    const Span chosen = selection(view);
    const TextMap& map = view.map();
    const bool endsAtStart = !chosen.empty() && map.lineBeginOf(chosen.to) == chosen.to;
    return {map.lineOf(chosen.from), map.lineOf(chosen.to) - (endsAtStart ? 1 : 0)};
}

Span selectedLines(const EditView& view) {
    const auto [first, last] = selectedLineNumbers(view);
    const TextMap& map = view.map();
    return {map.lineBegin(first), map.nextLineOf(map.lineBegin(last))};
}

Span paragraphAtCaret(const EditView& view) {
    const TextMap& map = view.map();
    qint64 first = map.lineOf(caret(view));
    if (isBlankLine(view, first))
        return {caret(view), caret(view)};
    qint64 last = first;
    while (first > 0 && !isBlankLine(view, first - 1))
        --first;
    while (last + 1 < map.lineCount() && !isBlankLine(view, last + 1))
        ++last;
    return {map.lineBegin(first), map.nextLineOf(map.lineBegin(last))};
}

}  // namespace TextSpans
