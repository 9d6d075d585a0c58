#include "editor/control/LanguageIndent.h"

#include "editor/control/ScintillaCalls.h"
#include "editor/control/TextControl.h"
#include "editor/language/AutoIndent.h"
#include "editor/language/BraceScan.h"

#include <algorithm>
#include <optional>

using ScintillaCalls::ask;

namespace {

/// Blanks at the start of a line that are looked at, in bytes.
constexpr qint64 FrontLimit = 4096;
/// Empty lines that are passed over on the way up.
constexpr qint64 EmptyLines = 1000;

AutoIndent::Unit unitOf(const TextControl& control) {
    const auto tabWidth = static_cast<int>(ask(control, TextControl::SCI_GETTABWIDTH));
    const auto width = static_cast<int>(ask(control, TextControl::SCI_GETINDENT));
    return {width > 0 ? width : tabWidth, tabWidth, ask(control, TextControl::SCI_GETUSETABS) != 0};
}

QByteArray frontAt(const TextControl& control, qint64 begin, qint64 end) {
    const QByteArray looked = control.bytes(begin, std::min(end, begin + FrontLimit));
    return AutoIndent::frontOf(looked).toByteArray();
}

QByteArray frontOfLineAt(const TextControl& control, qint64 byte) {
    const qint64 begin = control.map().lineBeginOf(byte);
    return frontAt(control, begin, control.map().lineEndOf(byte));
}

bool isBlankByte(const TextControl& control, qint64 byte) {
    const char c = control.heldText().range(byte, 1).front();
    return c == ' ' || c == '\t';
}

/// The end of what stands in front of a byte in its line, blanks and comments aside.
qint64 codeEnd(const TextControl& control, qint64 begin, qint64 byte) {
    const Colouring& colouring = control.colouring();
    colouring.completeNear(byte);
    const auto isComment = [&](qint64 at) {
        const auto token = colouring.classAt(at);
        return token == TokenClass::Comment || token == TokenClass::Documentation;
    };
    while (byte > begin && (isBlankByte(control, byte - 1) || isComment(byte - 1)))
        --byte;
    return byte;
}

bool lineOpensLevel(const TextControl& control, qint64 begin, qint64 byte) {
    const LanguageDefinition* language = control.colouring().language();
    const qint64 end = codeEnd(control, begin, byte);
    return language != nullptr && end > begin && !control.colouring().isProse(end - 1) &&
           AutoIndent::opensLevel(control.bytes(begin, end), *language);
}

/// Front of the line that holds the partner of a closing bracket.
std::optional<QByteArray> frontOfPartner(const TextControl& control, qint64 bracket) {
    const Colouring& colouring = control.colouring();
    const BraceScan::Match match = BraceScan::matchAt(
        control.heldText(), bracket, [&](qint64 byte) { return !colouring.isProse(byte); }, colouring.brackets());
    if (match.kind != BraceScan::Match::Kind::Pair || match.partner > bracket)
        return std::nullopt;
    return frontOfLineAt(control, match.partner);
}

/// Front of a line a level before the last line above that is not empty, or as that one when it has just opened a
/// level.
std::optional<QByteArray> frontByLineAbove(const TextControl& control, qint64 begin) {
    for (qint64 passed = 0; begin > 0 && passed < EmptyLines; ++passed) {
        const qint64 above = control.map().lineBeginOf(begin - 1);
        const qint64 end = control.map().lineEndOf(above);
        QByteArray front = frontAt(control, above, end);
        begin = above;
        if (front.size() >= end - above)
            continue;
        if (lineOpensLevel(control, above, end))
            return front;
        AutoIndent::Unit unit = unitOf(control);
        unit.tabs = front.isEmpty() ? unit.tabs : front.back() == '\t';
        const int columns = AutoIndent::columnsOf(front, unit) - (unit.tabs ? unit.tabWidth : unit.width);
        return AutoIndent::frontOfColumns(std::max(columns, 0), unit);
    }
    return std::nullopt;
}

/// The caret, where it stands at the front's end, stays there.
void replaceFront(TextControl& control, Span front, const QByteArray& wanted) {
    const bool follows = ScintillaCalls::caret(control) == front.to;
    ScintillaCalls::replace(control, front, wanted);
    if (follows)
        ask(control, TextControl::SCI_SETEMPTYSELECTION, front.from + wanted.size());
}

bool isClosingBracket(const LanguageDefinition& language, char c) {
    const qsizetype at = language.brackets.indexOf(c);
    return at >= 0 && at % 2 == 1;
}

}  // namespace

namespace LanguageIndent {

QByteArray frontBehind(const TextControl& control, qint64 byte) {
    const qint64 begin = control.map().lineBeginOf(byte);
    QByteArray front = frontAt(control, begin, byte);
    if (!lineOpensLevel(control, begin, byte))
        return front;
    return AutoIndent::oneLevelMore(front, unitOf(control));
}

void closeLevel(TextControl& control) {
    const LanguageDefinition* language = control.colouring().language();
    const qint64 begin = control.map().lineBeginOf(ScintillaCalls::caret(control));
    const qint64 end = control.map().lineEndOf(begin);
    const QByteArray front = frontAt(control, begin, end);
    const qint64 mark = begin + front.size();
    if (language == nullptr || mark >= end ||
        !AutoIndent::beginsClosing(control.bytes(mark, std::min(end, mark + FrontLimit)), *language))
        return;
    control.colouring().completeNear(mark + 1);
    if (control.colouring().isProse(mark))
        return;
    const bool isBracket = isClosingBracket(*language, control.heldText().range(mark, 1).front());
    const auto wanted = isBracket ? frontOfPartner(control, mark) : frontByLineAbove(control, begin);
    const AutoIndent::Unit unit = unitOf(control);
    if (wanted && AutoIndent::columnsOf(*wanted, unit) < AutoIndent::columnsOf(front, unit))
        replaceFront(control, {begin, mark}, *wanted);
}

void closeTypedLevel(TextControl& control) {
    const LanguageDefinition* language = control.colouring().language();
    if (language == nullptr || language->unindentAt.isEmpty())
        return;
    const qint64 caret = ScintillaCalls::caret(control);
    const qint64 begin = control.map().lineBeginOf(caret);
    if (caret - begin > FrontLimit)
        return;
    QByteArray line = control.bytes(begin, caret);
    if (!AutoIndent::endsByItself(line))
        return;
    const bool closes = AutoIndent::closesLevel(line, *language);
    line.chop(1);
    if (closes || (!AutoIndent::endsByItself(line) && AutoIndent::closesLevel(line, *language)))
        closeLevel(control);
}

void closeLevelAtLineEnd(TextControl& control) {
    const LanguageDefinition* language = control.colouring().language();
    const qint64 caret = ScintillaCalls::caret(control);
    const qint64 begin = control.map().lineBeginOf(caret);
    if (language == nullptr || caret - begin > FrontLimit)
        return;
    const QByteArray line = control.bytes(begin, caret);
    if (!AutoIndent::endsByItself(line) && AutoIndent::closesLevel(line, *language))
        closeLevel(control);
}

}  // namespace LanguageIndent
