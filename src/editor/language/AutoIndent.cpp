#include "editor/language/AutoIndent.h"

#include "text/held/HeldText.h"

#include <algorithm>

namespace {

/// Bytes of a text that are examined to find out how it is indented.
constexpr qint64 LookedAt = 64 * 1024;

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

bool isWordByte(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           (static_cast<unsigned char>(c) & 0x80U) != 0;
}

QByteArrayView withoutFront(QByteArrayView line) {
    return line.sliced(AutoIndent::frontOf(line).size());
}

/// Case-sensitive languages write these marks in one case.
bool isSame(QByteArrayView one, QByteArrayView other) {
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

bool endsWith(QByteArrayView line, QByteArrayView mark) {
    if (line.size() < mark.size() || !isSame(line.last(mark.size()), mark))
        return false;
    return line.size() == mark.size() || !isWordByte(mark.front()) || !isWordByte(line[line.size() - mark.size() - 1]);
}

bool beginsWith(QByteArrayView line, QByteArrayView mark) {
    if (line.size() < mark.size() || !isSame(line.first(mark.size()), mark))
        return false;
    return line.size() == mark.size() || !isWordByte(mark.back()) || !isWordByte(line[mark.size()]);
}

}  // namespace

namespace AutoIndent {

QByteArrayView frontOf(QByteArrayView line) {
    return {line.begin(), std::find_if_not(line.begin(), line.end(), isBlank)};
}

int columnsOf(QByteArrayView front, const Unit& unit) {
    int columns = 0;
    for (const char c : front)
        columns += c == '\t' ? unit.tabWidth - columns % unit.tabWidth : 1;
    return columns;
}

QByteArray frontOfColumns(int columns, const Unit& unit) {
    if (!unit.tabs)
        return {columns, ' '};
    return QByteArray(columns / unit.tabWidth, '\t') + QByteArray(columns % unit.tabWidth, ' ');
}

QByteArray oneLevelMore(QByteArrayView front, const Unit& unit) {
    const bool tabs = front.isEmpty() ? unit.tabs : front.back() == '\t';
    return front.toByteArray() + (tabs ? QByteArray("\t") : QByteArray(unit.width, ' '));
}

bool opensLevel(QByteArrayView line, const LanguageDefinition& language) {
    while (!line.isEmpty() && isBlank(line.back()))
        line.chop(1);
    return std::ranges::any_of(language.indentAfter, [line](const QByteArray& mark) { return endsWith(line, mark); });
}

bool closesLevel(QByteArrayView line, const LanguageDefinition& language) {
    return std::ranges::any_of(language.unindentAt,
                               [text = withoutFront(line)](const QByteArray& mark) { return isSame(text, mark); });
}

bool beginsClosing(QByteArrayView line, const LanguageDefinition& language) {
    return std::ranges::any_of(language.unindentAt,
                               [text = withoutFront(line)](const QByteArray& mark) { return beginsWith(text, mark); });
}

bool endsByItself(QByteArrayView line) {
    return !line.isEmpty() && !isWordByte(line.back());
}

std::optional<bool> indentedByTabs(const HeldText& text) {
    int tabs = 0;
    int blanks = 0;
    int column = 0;  ///< of blanks at the front, -1 after it
    text.forEachRun(0, std::min(text.length(), LookedAt), [&](std::string_view bytes) {
        for (const char c : bytes) {
            if (c == '\n' || c == '\r') {
                column = 0;
                continue;
            }
            tabs += column == 0 && c == '\t' ? 1 : 0;
            // A single blank is no level: so comments of several lines begin.
            blanks += column == 1 && c == ' ' ? 1 : 0;
            column = c == ' ' && column >= 0 ? column + 1 : -1;
        }
    });
    if (tabs == blanks)
        return std::nullopt;
    return tabs > blanks;
}

}  // namespace AutoIndent
