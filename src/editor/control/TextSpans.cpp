#include "editor/control/TextSpans.h"

#include "editor/control/ScintillaCalls.h"

#include <algorithm>

using ScintillaCalls::ask;

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

LineRange linesOfRange(const EditView& view, qint64 range) {
    const qint64 from = ask(view, EditView::SCI_GETSELECTIONNSTART, range);
    const qint64 to = ask(view, EditView::SCI_GETSELECTIONNEND, range);
    const bool endsAtStart = from < to && view.map().lineBeginOf(to) == to;
    return {view.map().lineOf(from), view.map().lineOf(to) - (endsAtStart ? 1 : 0)};
}

}  // namespace

namespace TextSpans {

Span wordAt(const EditView& view, qint64 byte) {
    return {wordStart(view, byte), wordEnd(view, byte)};
}

Span paragraphAt(const EditView& view, qint64 byte) {
    const TextMap& map = view.map();
    qint64 first = map.lineOf(byte);
    if (isBlankLine(view, first))
        return {byte, byte};
    qint64 last = first;
    while (first > 0 && !isBlankLine(view, first - 1))
        --first;
    while (last + 1 < map.lineCount() && !isBlankLine(view, last + 1))
        ++last;
    return spanOf(view, {first, last});
}

std::vector<LineRange> selectedLines(const EditView& view) {
    std::vector<LineRange> touched;
    for (qint64 range = 0; range < ask(view, EditView::SCI_GETSELECTIONS); ++range)
        touched.push_back(linesOfRange(view, range));
    std::ranges::sort(touched, {}, &LineRange::first);
    // Of a rectangle there is a range in each line, which may be an empty one.
    const qint64 reach = ask(view, EditView::SCI_SELECTIONISRECTANGLE) != 0 ? 1 : 0;
    std::vector<LineRange> joined;
    for (const LineRange& lines : touched) {
        if (!joined.empty() && lines.first <= joined.back().last + reach)
            joined.back().last = std::max(joined.back().last, lines.last);
        else
            joined.push_back(lines);
    }
    return joined;
}

Span spanOf(const EditView& view, const LineRange& lines) {
    const TextMap& map = view.map();
    return {map.lineBegin(lines.first), map.nextLineOf(map.lineBegin(lines.last))};
}

std::vector<qint64> carets(const EditView& view) {
    std::vector<qint64> places;
    for (qint64 range = 0; range < ask(view, EditView::SCI_GETSELECTIONS); ++range)
        places.push_back(ask(view, EditView::SCI_GETSELECTIONNCARET, range));
    std::ranges::sort(places);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

std::size_t mainCaret(const EditView& view) {
    const std::vector<qint64> places = carets(view);
    const qint64 main = ask(view, EditView::SCI_GETSELECTIONNCARET, ask(view, EditView::SCI_GETMAINSELECTION));
    return static_cast<std::size_t>(std::ranges::lower_bound(places, main) - places.begin());
}

}  // namespace TextSpans
