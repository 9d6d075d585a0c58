#include "editor/commands/LineCommands.h"

#include "editor/control/KeptBookmarks.h"
#include "editor/control/ScintillaCalls.h"

#include <algorithm>

using ScintillaCalls::ask;
using ScintillaCalls::caret;

namespace {

void selectSpan(TextControl& control, Span span) {
    if (span.empty())
        return;
    ScintillaCalls::select(control, span.from, span.to);
    ask(control, TextControl::SCI_SCROLLCARET);
}

qint64 levelWidth(const TextControl& control) {
    const qint64 width = ask(control, TextControl::SCI_GETINDENT);
    return width > 0 ? width : ask(control, TextControl::SCI_GETTABWIDTH);
}

QByteArray indentation(const TextControl& control) {
    const bool tabs = ask(control, TextControl::SCI_GETUSETABS) != 0;
    return tabs ? QByteArray("\t") : QByteArray(levelWidth(control), ' ');
}

/// How many bytes at the front of a line, of which no more than one step is given, make one step of indentation.
qint64 indentedBytes(std::string_view front) {
    const std::size_t blanks = std::min(front.find_first_not_of(' '), front.size());
    const bool tab = blanks < front.size() && front[blanks] == '\t';
    return static_cast<qint64>(blanks) + (tab ? 1 : 0);
}

}  // namespace

namespace LineCommands {

void deleteToStart(TextControl& control) {
    const qint64 at = caret(control);
    ScintillaCalls::remove(control, {control.map().lineBeginOf(at), at});
    ask(control, TextControl::SCI_SETEMPTYSELECTION, caret(control));
}

void deleteToEnd(TextControl& control) {
    const qint64 at = caret(control);
    ask(control, TextControl::SCI_SETEMPTYSELECTION, at);
    ScintillaCalls::remove(control, {at, control.map().lineEndOf(at)});
}

void deleteLines(TextControl& control) {
    const Span lines = TextSpans::selectedLines(control);
    ask(control, TextControl::SCI_SETEMPTYSELECTION, lines.from);
    ScintillaCalls::remove(control, lines);
}

void cutLines(TextControl& control) {
    const Span lines = TextSpans::selectedLines(control);
    if (lines.empty())
        return;
    ScintillaCalls::select(control, lines.from, lines.to);
    control.Cut();
}

void selectLines(TextControl& control) {
    selectSpan(control, TextSpans::selectedLines(control));
}

void selectParagraph(TextControl& control) {
    selectSpan(control, TextSpans::paragraphAtCaret(control));
}

void selectWord(TextControl& control) {
    selectSpan(control, TextSpans::wordAtCaret(control));
}

void indent(TextControl& control) {
    const QByteArray step = indentation(control);
    const auto [first, last] = TextSpans::selectedLineNumbers(control);
    const qint64 at = caret(control);
    const bool follows = TextSpans::selection(control).empty() && control.map().lineBeginOf(at) == at;
    for (qint64 line = last; line >= first; --line) {
        const qint64 begin = control.map().lineBegin(line);
        if (first == last || control.map().lineEndOf(begin) > begin)
            ScintillaCalls::replace(control, {begin, begin}, step);
    }
    if (follows)
        ask(control, TextControl::SCI_SETEMPTYSELECTION, at + step.size());
}

void unindent(TextControl& control) {
    const qint64 width = levelWidth(control);
    const auto [first, last] = TextSpans::selectedLineNumbers(control);
    for (qint64 line = last; line >= first; --line) {
        const qint64 begin = control.map().lineBegin(line);
        const qint64 length = std::min(width, control.map().lineEndOf(begin) - begin);
        const qint64 bytes = indentedBytes(control.heldText().range(begin, length));
        if (bytes > 0)
            ScintillaCalls::remove(control, {begin, begin + bytes});
    }
}

void sort(TextControl& control, LineSort::Order order) {
    if (TextSpans::selection(control).empty())
        return;
    const KeptBookmarks kept(control);
    const Span lines = TextSpans::selectedLines(control);
    const QByteArray before = control.bytes(lines.from, lines.to);
    const std::string after = LineSort::sorted({before.constData(), static_cast<std::size_t>(before.size())}, order);
    const auto size = static_cast<qsizetype>(after.size());
    const QByteArray sorted = QByteArray::fromRawData(after.data(), size);
    if (sorted != before)
        ScintillaCalls::replace(control, lines, sorted);
    ScintillaCalls::select(control, lines.from, sorted == before ? lines.to : lines.from + size);
}

}  // namespace LineCommands
