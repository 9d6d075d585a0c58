#include "editor/control/LanguageIndent.h"

#include "editor/control/EditView.h"
#include "editor/control/ScintillaCalls.h"
#include "editor/held/Colouring.h"
#include "editor/language/AutoIndent.h"
#include "editor/language/BraceScan.h"

#include <algorithm>
#include <optional>

using ScintillaCalls::ask;

namespace {

/// Blanks at the start of a line that are examined, in bytes.
constexpr qint64 FrontLimit = 4096;
/// Empty lines that are passed over on the way up.
constexpr qint64 EmptyLines = 1000;

AutoIndent::Unit unitOf(const EditView& view) {
    const auto tabWidth = static_cast<int>(ask(view, EditView::SCI_GETTABWIDTH));
    const auto width = static_cast<int>(ask(view, EditView::SCI_GETINDENT));
    return {width > 0 ? width : tabWidth, tabWidth, ask(view, EditView::SCI_GETUSETABS) != 0};
}

QByteArray frontAt(const EditView& view, qint64 begin, qint64 end) {
    const QByteArray looked = view.bytes(begin, std::min(end, begin + FrontLimit));
    return AutoIndent::frontOf(looked).toByteArray();
}

QByteArray frontOfLineAt(const EditView& view, qint64 byte) {
    const qint64 begin = view.map().lineBeginOf(byte);
    return frontAt(view, begin, view.map().lineEndOf(byte));
}

bool isBlankByte(const EditView& view, qint64 byte) {
    const char c = view.heldText().range(byte, 1).front();
    return c == ' ' || c == '\t';
}

/// The end of the code before a byte in its line, without blanks and comments.
qint64 codeEnd(const EditView& view, qint64 begin, qint64 byte) {
    const Colouring& colouring = view.colouring();
    colouring.completeNear(byte);
    const auto isComment = [&](qint64 at) {
        const auto token = colouring.classAt(at);
        return token == TokenClass::Comment || token == TokenClass::Documentation;
    };
    while (byte > begin && (isBlankByte(view, byte - 1) || isComment(byte - 1)))
        --byte;
    return byte;
}

bool lineOpensLevel(const EditView& view, qint64 begin, qint64 byte) {
    const LanguageDefinition* language = view.colouring().language();
    const qint64 end = codeEnd(view, begin, byte);
    return language != nullptr && end > begin && !view.colouring().isProse(end - 1) &&
           AutoIndent::opensLevel(view.bytes(begin, end), *language);
}

/// Front of the line that holds the partner of a closing bracket.
std::optional<QByteArray> frontOfPartner(const EditView& view, qint64 bracket) {
    const Colouring& colouring = view.colouring();
    const BraceScan::Match match = BraceScan::matchAt(
        view.heldText(), bracket, [&](qint64 byte) { return !colouring.isProse(byte); }, colouring.brackets());
    if (match.kind != BraceScan::Match::Kind::Pair || match.partner > bracket)
        return std::nullopt;
    return frontOfLineAt(view, match.partner);
}

/// Front of a line a level before the last line above that is not empty, or as that one when it has just opened a
/// level.
std::optional<QByteArray> frontByLineAbove(const EditView& view, qint64 begin) {
    for (qint64 passed = 0; begin > 0 && passed < EmptyLines; ++passed) {
        const qint64 above = view.map().lineBeginOf(begin - 1);
        const qint64 end = view.map().lineEndOf(above);
        QByteArray front = frontAt(view, above, end);
        begin = above;
        if (front.size() >= end - above)
            continue;
        if (lineOpensLevel(view, above, end))
            return front;
        AutoIndent::Unit unit = unitOf(view);
        unit.tabs = front.isEmpty() ? unit.tabs : front.back() == '\t';
        const int columns = AutoIndent::columnsOf(front, unit) - (unit.tabs ? unit.tabWidth : unit.width);
        return AutoIndent::frontOfColumns(std::max(columns, 0), unit);
    }
    return std::nullopt;
}

/// A caret at the end of the front stays at the end.
void replaceFront(EditView& view, Span front, const QByteArray& wanted) {
    const bool follows = ScintillaCalls::caret(view) == front.to;
    ScintillaCalls::replace(view, front, wanted);
    if (follows)
        ask(view, EditView::SCI_SETEMPTYSELECTION, front.from + wanted.size());
}

bool isClosingBracket(const LanguageDefinition& language, char c) {
    const qsizetype at = language.brackets.indexOf(c);
    return at >= 0 && at % 2 == 1;
}

}  // namespace

namespace LanguageIndent {

QByteArray frontBehind(const EditView& view, qint64 byte) {
    const qint64 begin = view.map().lineBeginOf(byte);
    QByteArray front = frontAt(view, begin, byte);
    if (!lineOpensLevel(view, begin, byte))
        return front;
    return AutoIndent::oneLevelMore(front, unitOf(view));
}

void closeLevel(EditView& view) {
    const LanguageDefinition* language = view.colouring().language();
    const qint64 begin = view.map().lineBeginOf(ScintillaCalls::caret(view));
    const qint64 end = view.map().lineEndOf(begin);
    const QByteArray front = frontAt(view, begin, end);
    const qint64 mark = begin + front.size();
    if (language == nullptr || mark >= end ||
        !AutoIndent::beginsClosing(view.bytes(mark, std::min(end, mark + FrontLimit)), *language))
        return;
    view.colouring().completeNear(mark + 1);
    if (view.colouring().isProse(mark))
        return;
    const bool isBracket = isClosingBracket(*language, view.heldText().range(mark, 1).front());
    const auto wanted = isBracket ? frontOfPartner(view, mark) : frontByLineAbove(view, begin);
    const AutoIndent::Unit unit = unitOf(view);
    if (wanted && AutoIndent::columnsOf(*wanted, unit) < AutoIndent::columnsOf(front, unit))
        replaceFront(view, {begin, mark}, *wanted);
}

void closeTypedLevel(EditView& view) {
    const LanguageDefinition* language = view.colouring().language();
    if (language == nullptr || language->unindentAt.isEmpty())
        return;
    const qint64 caret = ScintillaCalls::caret(view);
    const qint64 begin = view.map().lineBeginOf(caret);
    if (caret - begin > FrontLimit)
        return;
    QByteArray line = view.bytes(begin, caret);
    if (!AutoIndent::endsByItself(line))
        return;
    const bool closes = AutoIndent::closesLevel(line, *language);
    line.chop(1);
    if (closes || (!AutoIndent::endsByItself(line) && AutoIndent::closesLevel(line, *language)))
        closeLevel(view);
}

void closeLevelAtLineEnd(EditView& view) {
    const LanguageDefinition* language = view.colouring().language();
    const qint64 caret = ScintillaCalls::caret(view);
    const qint64 begin = view.map().lineBeginOf(caret);
    if (language == nullptr || caret - begin > FrontLimit)
        return;
    const QByteArray line = view.bytes(begin, caret);
    if (!AutoIndent::endsByItself(line) && AutoIndent::closesLevel(line, *language))
        closeLevel(view);
}

}  // namespace LanguageIndent
