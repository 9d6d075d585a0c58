#include "editor/commands/LineCommands.h"

#include "editor/control/ControlClipboard.h"
#include "editor/control/KeptBookmarks.h"
#include "editor/control/ScintillaCalls.h"
#include "editor/control/TextSpans.h"

#include <algorithm>

using ScintillaCalls::ask;
using ScintillaCalls::caret;

namespace {

void selectSpan(EditView& view, Span span) {
    if (span.empty())
        return;
    ScintillaCalls::select(view, span.from, span.to);
    ask(view, EditView::SCI_SCROLLCARET);
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

}  // namespace

namespace LineCommands {

void deleteToStart(EditView& view) {
    const qint64 at = caret(view);
    ScintillaCalls::remove(view, {view.map().lineBeginOf(at), at});
    ask(view, EditView::SCI_SETEMPTYSELECTION, caret(view));
}

void deleteToEnd(EditView& view) {
    const qint64 at = caret(view);
    ask(view, EditView::SCI_SETEMPTYSELECTION, at);
    ScintillaCalls::remove(view, {at, view.map().lineEndOf(at)});
}

void deleteLines(EditView& view) {
    const Span lines = TextSpans::selectedLines(view);
    ask(view, EditView::SCI_SETEMPTYSELECTION, lines.from);
    ScintillaCalls::remove(view, lines);
}

void cutLines(EditView& view, ControlClipboard& clipboard) {
    const Span lines = TextSpans::selectedLines(view);
    if (lines.empty())
        return;
    ScintillaCalls::select(view, lines.from, lines.to);
    clipboard.Cut();
}

void selectLines(EditView& view) {
    selectSpan(view, TextSpans::selectedLines(view));
}

void selectParagraph(EditView& view) {
    selectSpan(view, TextSpans::paragraphAtCaret(view));
}

void selectWord(EditView& view) {
    selectSpan(view, TextSpans::wordAtCaret(view));
}

void indent(EditView& view) {
    const QByteArray step = indentation(view);
    const auto [first, last] = TextSpans::selectedLineNumbers(view);
    const qint64 at = caret(view);
    const bool follows = TextSpans::selection(view).empty() && view.map().lineBeginOf(at) == at;
    for (qint64 line = last; line >= first; --line) {
        const qint64 begin = view.map().lineBegin(line);
        if (first == last || view.map().lineEndOf(begin) > begin)
            ScintillaCalls::replace(view, {begin, begin}, step);
    }
    if (follows)
        ask(view, EditView::SCI_SETEMPTYSELECTION, at + step.size());
}

void unindent(EditView& view) {
    const qint64 width = levelWidth(view);
    const auto [first, last] = TextSpans::selectedLineNumbers(view);
    for (qint64 line = last; line >= first; --line) {
        const qint64 begin = view.map().lineBegin(line);
        const qint64 length = std::min(width, view.map().lineEndOf(begin) - begin);
        const qint64 bytes = indentedBytes(view.heldText().range(begin, length));
        if (bytes > 0)
            ScintillaCalls::remove(view, {begin, begin + bytes});
    }
}

void sort(EditView& view, LineSort::Order order) {
    if (TextSpans::selection(view).empty())
        return;
    const KeptBookmarks kept(view);
    const Span lines = TextSpans::selectedLines(view);
    const QByteArray before = view.bytes(lines.from, lines.to);
    const std::string after = LineSort::sorted({before.constData(), static_cast<std::size_t>(before.size())}, order);
    const auto size = static_cast<qsizetype>(after.size());
    const QByteArray sorted = QByteArray::fromRawData(after.data(), size);
    if (sorted != before)
        ScintillaCalls::replace(view, lines, sorted);
    ScintillaCalls::select(view, lines.from, sorted == before ? lines.to : lines.from + size);
}

}  // namespace LineCommands
