#include "editor/commands/LineCommands.h"

#include "editor/control/ControlText.h"
#include "editor/control/KeptBookmarks.h"

#include <algorithm>

using ControlText::ask;
using ControlText::caret;

namespace {

void selectSpan(CodeMax& control, Span span) {
    if (span.empty())
        return;
    ControlText::select(control, span.from, span.to);
    ask(control, CodeMax::SCI_SCROLLCARET);
}

qint64 levelWidth(const CodeMax& control) {
    const qint64 width = ask(control, CodeMax::SCI_GETINDENT);
    return width > 0 ? width : ask(control, CodeMax::SCI_GETTABWIDTH);
}

QByteArray indentation(const CodeMax& control) {
    const bool tabs = ask(control, CodeMax::SCI_GETUSETABS) != 0;
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

void deleteToStart(CodeMax& control) {
    const qint64 at = caret(control);
    ControlText::remove(control, {control.map().lineBeginOf(at), at});
    ask(control, CodeMax::SCI_SETEMPTYSELECTION, caret(control));
}

void deleteToEnd(CodeMax& control) {
    const qint64 at = caret(control);
    ask(control, CodeMax::SCI_SETEMPTYSELECTION, at);
    ControlText::remove(control, {at, control.map().lineEndOf(at)});
}

void deleteLines(CodeMax& control) {
    const Span lines = TextSpans::selectedLines(control);
    ask(control, CodeMax::SCI_SETEMPTYSELECTION, lines.from);
    ControlText::remove(control, lines);
}

void cutLines(CodeMax& control) {
    const Span lines = TextSpans::selectedLines(control);
    if (lines.empty())
        return;
    ControlText::select(control, lines.from, lines.to);
    control.Cut();
}

void selectLines(CodeMax& control) {
    selectSpan(control, TextSpans::selectedLines(control));
}

void selectParagraph(CodeMax& control) {
    selectSpan(control, TextSpans::paragraphAtCaret(control));
}

void selectWord(CodeMax& control) {
    selectSpan(control, TextSpans::wordAtCaret(control));
}

void indent(CodeMax& control) {
    const QByteArray step = indentation(control);
    const auto [first, last] = TextSpans::selectedLineNumbers(control);
    const qint64 at = caret(control);
    const bool follows = TextSpans::selection(control).empty() && control.map().lineBeginOf(at) == at;
    for (qint64 line = last; line >= first; --line) {
        const qint64 begin = control.map().lineBegin(line);
        if (first == last || control.map().lineEndOf(begin) > begin)
            ControlText::replace(control, {begin, begin}, step);
    }
    if (follows)
        ask(control, CodeMax::SCI_SETEMPTYSELECTION, at + step.size());
}

void unindent(CodeMax& control) {
    const qint64 width = levelWidth(control);
    const auto [first, last] = TextSpans::selectedLineNumbers(control);
    for (qint64 line = last; line >= first; --line) {
        const qint64 begin = control.map().lineBegin(line);
        const qint64 length = std::min(width, control.map().lineEndOf(begin) - begin);
        const qint64 bytes = indentedBytes(control.heldText().range(begin, length));
        if (bytes > 0)
            ControlText::remove(control, {begin, begin + bytes});
    }
}

void sort(CodeMax& control, LineSort::Order order) {
    if (TextSpans::selection(control).empty())
        return;
    const KeptBookmarks kept(control);
    const Span lines = TextSpans::selectedLines(control);
    const QByteArray before = control.bytes(lines.from, lines.to);
    const std::string after = LineSort::sorted({before.constData(), static_cast<std::size_t>(before.size())}, order);
    const auto size = static_cast<qsizetype>(after.size());
    const QByteArray sorted = QByteArray::fromRawData(after.data(), size);
    if (sorted != before)
        ControlText::replace(control, lines, sorted);
    ControlText::select(control, lines.from, sorted == before ? lines.to : lines.from + size);
}

}  // namespace LineCommands
