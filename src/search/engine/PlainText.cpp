#include "search/engine/PlainText.h"

#include "text/codec/Utf16Units.h"

#include <limits>

namespace {

constexpr qint64 NoMoreLines = std::numeric_limits<qint64>::max();

}  // namespace

std::string_view PlainText::range(qint64 from, qint64 length) const {
    return m_text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(length));
}

qint64 PlainText::lineCount() const {
    return lineOf(length()) + 1;
}

qint64 PlainText::lineOf(qint64 byte) const {
    return PlaceFinder(m_text, false).placeOf(byte).line;
}

qint64 PlainText::lineStart(qint64 line) const {
    qint64 low = 0;
    qint64 high = length();
    while (low < high) {
        const qint64 middle = low + (high - low) / 2;
        if (lineOf(middle) < line)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

PlaceFinder::PlaceFinder(std::string_view utf8, bool ascii)
    : m_text(utf8), m_ascii(ascii), m_hasCr(utf8.find('\r') != std::string_view::npos) {}

qint64 PlaceFinder::unitsBetween(qint64 from, qint64 to) const {
    if (m_ascii)
        return to - from;
    return countUtf16Units(m_text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)));
}

/// The first byte behind the first line end from this byte on.
qint64 PlaceFinder::behindLineEnd(qint64 from) const {
    const auto start = static_cast<std::size_t>(from);
    const std::size_t end = m_hasCr ? m_text.find_first_of("\r\n", start) : m_text.find('\n', start);
    if (end == std::string_view::npos)
        return NoMoreLines;
    return static_cast<qint64>(end) + (m_text.substr(end, 2) == "\r\n" ? 2 : 1);
}

void PlaceFinder::countLinesTo(qint64 byte) {
    if (m_lineEnd == 0)
        m_lineEnd = behindLineEnd(0);
    while (m_lineEnd <= byte) {
        ++m_place.line;
        m_place.lineStart = m_lineEnd;
        m_lineEnd = behindLineEnd(m_lineEnd);
    }
}

TextPlace PlaceFinder::placeOf(qint64 byte) {
    if (byte < m_countedTo) {
        m_place = {};
        m_countedTo = 0;
        m_lineEnd = 0;
    }
    const qint64 lineBefore = m_place.lineStart;
    countLinesTo(byte);
    if (m_place.lineStart != lineBefore) {
        m_place.linePosition = m_place.position + unitsBetween(m_countedTo, m_place.lineStart);
        m_place.position = m_place.linePosition + unitsBetween(m_place.lineStart, byte);
    } else {
        m_place.position += unitsBetween(m_countedTo, byte);
    }
    m_countedTo = byte;
    return m_place;
}

std::string_view PlaceFinder::lineAt(qint64 start) const {
    const std::string_view rest = m_text.substr(static_cast<std::size_t>(start));
    return rest.substr(0, rest.find_first_of("\r\n"));
}
