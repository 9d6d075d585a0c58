#include "editor/commands/LineCommands.h"

#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlClipboard.h"
#include "editor/control/ScintillaCalls.h"
#include "editor/control/SelectedRanges.h"
#include "editor/control/TextSpans.h"
#include "editor/held/MarkHistory.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

using ScintillaCalls::ask;
using TextSpans::selectedLines;
using TextSpans::spanOf;

namespace {

/// As long as this exists, what is deleted are whole lines.
class LineRemoval {
 public:
    explicit LineRemoval(EditView& view) : m_view(view) { view.marks().setRemovesLines(true); }
    ~LineRemoval() { m_view.marks().setRemovesLines(false); }
    LineRemoval(const LineRemoval&) = delete;
    LineRemoval& operator=(const LineRemoval&) = delete;

 private:
    EditView& m_view;
};

qint64 startOfMain(const EditView& view) {
    return ask(view, EditView::SCI_GETSELECTIONNSTART, ask(view, EditView::SCI_GETMAINSELECTION));
}

/// The last span that begins at or before a place, else the first.
std::size_t spanAt(const std::vector<Span>& spans, qint64 byte) {
    const auto behind = std::ranges::upper_bound(spans, byte, {}, &Span::from);
    return behind == spans.begin() ? 0 : static_cast<std::size_t>(behind - spans.begin()) - 1;
}

/// Removes spans, given from the top and apart from each other, and leaves a caret where each was. `main` is a place
/// whose span gets the main caret.
void removeEach(EditView& view, const std::vector<Span>& spans, qint64 main) {
    const Span& mainSpan = spans[spanAt(spans, main)];
    std::size_t mainCaret = 0;
    std::vector<ByteSelection> carets;
    qint64 removed = 0;
    for (const Span& span : spans) {
        const qint64 at = span.from - removed;
        removed += span.to - span.from;
        if (carets.empty() || carets.back().caret != at)
            carets.push_back({at, at});
        if (&span == &mainSpan)
            mainCaret = carets.size() - 1;
    }
    // To remove what is selected, all of a line too long would be laid out.
    ScintillaCalls::select(view, spans.front().from, spans.front().from);
    for (auto span = spans.rbegin(); span != spans.rend(); ++span) {
        if (!span->empty())
            ScintillaCalls::remove(view, *span);
    }
    SelectedRanges::set(view, carets, mainCaret);
}

std::vector<Span> spansOf(const EditView& view, const std::vector<LineRange>& ranges) {
    std::vector<Span> spans;
    spans.reserve(ranges.size());
    for (const LineRange& lines : ranges)
        spans.push_back(spanOf(view, lines));
    return spans;
}

/// The text of the selected lines, or of those of the carets, with their line ends.
QByteArray textOfLines(const EditView& view) {
    QByteArray text;
    for (const Span& span : spansOf(view, selectedLines(view)))
        text += view.bytes(span.from, span.to);
    return text;
}

/// Selects spans, given from the top; those that are empty or lie in another are left out.
void selectEach(EditView& view, const std::vector<Span>& spans, qint64 main) {
    std::vector<Span> apart;
    for (const Span& span : spans) {
        if (!span.empty() && (apart.empty() || span.from >= apart.back().to))
            apart.push_back(span);
    }
    if (apart.empty())
        return;
    std::vector<ByteSelection> ranges;
    ranges.reserve(apart.size());
    for (const Span& span : apart)
        ranges.push_back({span.from, span.to});
    SelectedRanges::set(view, ranges, spanAt(apart, main));
}

void selectAround(EditView& view, Span (*around)(const EditView& view, qint64 byte)) {
    std::vector<Span> spans;
    for (const qint64 caret : TextSpans::carets(view))
        spans.push_back(around(view, caret));
    selectEach(view, spans, ScintillaCalls::caret(view));
    view.state().scrollDue = true;
}

qint64 levelWidth(const EditView& view) {
    const qint64 width = ask(view, EditView::SCI_GETINDENT);
    return width > 0 ? width : ask(view, EditView::SCI_GETTABWIDTH);
}

QByteArray indentation(const EditView& view) {
    const bool tabs = ask(view, EditView::SCI_GETUSETABS) != 0;
    return tabs ? QByteArray("\t") : QByteArray(levelWidth(view), ' ');
}

/// The number of bytes at the front of a line that make one step of indentation. `front` is at most one step long.
qint64 indentedBytes(std::string_view front) {
    const std::size_t blanks = std::min(front.find_first_not_of(' '), front.size());
    const bool tab = blanks < front.size() && front[blanks] == '\t';
    return static_cast<qint64>(blanks) + (tab ? 1 : 0);
}

/// The library leaves a caret in front of what is inserted there.
void moveBehindStep(EditView& view, qint64 lineBegin, qint64 length) {
    if (ask(view, EditView::SCI_SELECTIONISRECTANGLE) != 0)
        return;
    for (qint64 range = 0; range < ask(view, EditView::SCI_GETSELECTIONS); ++range) {
        const qint64 caret = ask(view, EditView::SCI_GETSELECTIONNCARET, range);
        if (caret != lineBegin || ask(view, EditView::SCI_GETSELECTIONNANCHOR, range) != caret)
            continue;
        ask(view, EditView::SCI_SETSELECTIONNCARET, range, caret + length);
        ask(view, EditView::SCI_SETSELECTIONNANCHOR, range, caret + length);
    }
}

void indentLines(EditView& view, const LineRange& lines, const QByteArray& step) {
    for (qint64 line = lines.last; line >= lines.first; --line) {
        const qint64 begin = view.map().lineBegin(line);
        if (lines.first < lines.last && view.map().lineEndOf(begin) == begin)
            continue;
        ScintillaCalls::replace(view, {begin, begin}, step);
        if (lines.first == lines.last)
            moveBehindStep(view, begin, step.size());
    }
}

void unindentLines(EditView& view, const LineRange& lines, qint64 width) {
    for (qint64 line = lines.last; line >= lines.first; --line) {
        const qint64 begin = view.map().lineBegin(line);
        const qint64 length = std::min(width, view.map().lineEndOf(begin) - begin);
        const qint64 bytes = indentedBytes(view.heldText().range(begin, length));
        if (bytes > 0)
            ScintillaCalls::remove(view, {begin, begin + bytes});
    }
}

void sortLines(EditView& view, const LineRange& lines, LineSort::Order order) {
    const Span span = spanOf(view, lines);
    const QByteArray before = view.bytes(span.from, span.to);
    ControlBookmarks bookmarks(view);
    std::vector<qint64> marked = bookmarks.markedLines(lines.first, lines.last);
    std::vector<std::size_t> followed;
    followed.reserve(marked.size());
    for (const qint64 line : marked)
        followed.push_back(static_cast<std::size_t>(line - lines.first));
    const std::string after =
        LineSort::sorted({before.constData(), static_cast<std::size_t>(before.size())}, order, followed);
    const QByteArray sorted = QByteArray::fromRawData(after.data(), static_cast<qsizetype>(after.size()));
    if (sorted == before)
        return;
    ScintillaCalls::replace(view, span, sorted);
    for (std::size_t mark = 0; mark < marked.size(); ++mark)
        marked[mark] = lines.first + static_cast<qint64>(followed[mark]);
    bookmarks.setMarkedLines(lines.first, lines.last, marked);
}

}  // namespace

namespace LineCommands {

void deleteToStart(EditView& view) {
    std::vector<Span> spans;
    for (const qint64 caret : TextSpans::carets(view)) {
        const qint64 begin = view.map().lineBeginOf(caret);
        if (spans.empty() || spans.back().from != begin)
            spans.push_back({begin, caret});
        else
            spans.back().to = caret;
    }
    removeEach(view, spans, ScintillaCalls::caret(view));
}

void deleteToEnd(EditView& view) {
    std::vector<Span> spans;
    for (const qint64 caret : TextSpans::carets(view)) {
        if (spans.empty() || caret > spans.back().to)
            spans.push_back({caret, view.map().lineEndOf(caret)});
    }
    removeEach(view, spans, ScintillaCalls::caret(view));
}

void deleteLines(EditView& view) {
    const LineRemoval removal(view);
    removeEach(view, spansOf(view, selectedLines(view)), startOfMain(view));
}

void cutLines(EditView& view, ControlClipboard& clipboard) {
    const int times = view.state().takeRepeatCount();
    QByteArray text;
    for (int done = 0; done < times; ++done) {
        const QByteArray lines = textOfLines(view);
        if (lines.isEmpty())
            break;
        // The last line of the text may be cut before others.
        if (!text.isEmpty() && !text.endsWith('\n') && !text.endsWith('\r'))
            text += view.withOwnLineEnds(u"\n"_qs);
        text += lines;
        deleteLines(view);
    }
    if (!text.isEmpty())
        clipboard.put(QString::fromUtf8(text));
}

void selectLines(EditView& view) {
    selectEach(view, spansOf(view, selectedLines(view)), startOfMain(view));
    view.state().scrollDue = true;
}

void selectParagraphs(EditView& view) {
    selectAround(view, TextSpans::paragraphAt);
}

void selectWords(EditView& view) {
    selectAround(view, TextSpans::wordAt);
}

void indent(EditView& view) {
    const QByteArray step = indentation(view);
    const std::vector<LineRange> ranges = selectedLines(view);
    for (auto lines = ranges.rbegin(); lines != ranges.rend(); ++lines)
        indentLines(view, *lines, step);
}

void unindent(EditView& view) {
    const qint64 width = levelWidth(view);
    const std::vector<LineRange> ranges = selectedLines(view);
    for (auto lines = ranges.rbegin(); lines != ranges.rend(); ++lines)
        unindentLines(view, *lines, width);
}

void sort(EditView& view, LineSort::Order order) {
    const bool rectangle = ask(view, EditView::SCI_SELECTIONISRECTANGLE) != 0;
    if (ask(view, EditView::SCI_GETSELECTIONEMPTY) != 0 && !rectangle)
        return;
    const std::vector<LineRange> ranges = selectedLines(view);
    const qint64 main = startOfMain(view);
    // Sorting moves no other line, so that the lines of the ranges keep their numbers and places.
    ScintillaCalls::select(view, main, main);
    for (auto lines = ranges.rbegin(); lines != ranges.rend(); ++lines)
        sortLines(view, *lines, order);
    selectEach(view, spansOf(view, ranges), main);
}

}  // namespace LineCommands
