#include "editor/control/TextSpans.h"

#include "editor/control/ScintillaCalls.h"

#include <algorithm>

using ScintillaCalls::ask;
using ScintillaCalls::caret;

namespace {

qint64 scintillaWordStart(const TextControl& control, qint64 byte) {
    return ask(control, TextControl::SCI_WORDSTARTPOSITION, byte, 1);
}

qint64 scintillaWordEnd(const TextControl& control, qint64 byte) {
    return ask(control, TextControl::SCI_WORDENDPOSITION, byte, 1);
}

/// Scintilla's words end at a joint: goes on with what lies on its other side.
qint64 wordStart(const TextControl& control, qint64 byte) {
    qint64 start = scintillaWordStart(control, byte);
    while (control.map().joints().isJoint(start - 1)) {
        const qint64 before = scintillaWordStart(control, start - 1);
        if (before == start - 1)
            break;
        start = before;
    }
    return start;
}

qint64 wordEnd(const TextControl& control, qint64 byte) {
    qint64 end = scintillaWordEnd(control, byte);
    while (control.map().joints().isJoint(end)) {
        const qint64 behind = scintillaWordEnd(control, end + 1);
        if (behind == end + 1)
            break;
        end = behind;
    }
    return end;
}

bool isBlankLine(const TextControl& control, qint64 line) {
    const qint64 begin = control.map().lineBegin(line);
    const qint64 end = control.map().lineEndOf(begin);
    bool blank = true;
    control.heldText().forEachRun(begin, end, [&](std::string_view run) {
        blank = blank && run.find_first_not_of(" \t\r\n") == std::string_view::npos;
    });
    return blank;
}

}  // namespace

namespace TextSpans {

Span selection(const TextControl& control) {
    Span whole{ask(control, TextControl::SCI_GETSELECTIONSTART), ask(control, TextControl::SCI_GETSELECTIONEND)};
    const qint64 count = ask(control, TextControl::SCI_GETSELECTIONS);
    for (qint64 part = 0; part < count; ++part) {
        whole.from = std::min(whole.from, ask(control, TextControl::SCI_GETSELECTIONNSTART, part));
        whole.to = std::max(whole.to, ask(control, TextControl::SCI_GETSELECTIONNEND, part));
    }
    return whole;
}

Span wordAtCaret(const TextControl& control) {
    const qint64 at = caret(control);
    return {wordStart(control, at), wordEnd(control, at)};
}

LineRange selectedLineNumbers(const TextControl& control) {
    const Span chosen = selection(control);
    const TextMap& map = control.map();
    const bool endsAtStart = !chosen.empty() && map.lineBeginOf(chosen.to) == chosen.to;
    return {map.lineOf(chosen.from), map.lineOf(chosen.to) - (endsAtStart ? 1 : 0)};
}

Span selectedLines(const TextControl& control) {
    const auto [first, last] = selectedLineNumbers(control);
    const TextMap& map = control.map();
    return {map.lineBegin(first), map.nextLineOf(map.lineBegin(last))};
}

Span paragraphAtCaret(const TextControl& control) {
    const TextMap& map = control.map();
    qint64 first = map.lineOf(caret(control));
    if (isBlankLine(control, first))
        return {caret(control), caret(control)};
    qint64 last = first;
    while (first > 0 && !isBlankLine(control, first - 1))
        --first;
    while (last + 1 < map.lineCount() && !isBlankLine(control, last + 1))
        ++last;
    return {map.lineBegin(first), map.nextLineOf(map.lineBegin(last))};
}

}  // namespace TextSpans
