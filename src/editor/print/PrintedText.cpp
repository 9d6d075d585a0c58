#include "editor/print/PrintedText.h"

#include "editor/control/ControlLineNumbers.h"
#include "editor/control/TextControl.h"
#include "editor/held/Colouring.h"

#include <QChar>

#include <algorithm>
#include <utility>

using Sci = QsciScintillaBase;

namespace {

constexpr char FormFeed = '\f';
constexpr char32_t Delete = 0x7F;
constexpr char32_t AfterControls = 0xA0;  // the first character after the second block of control characters
constexpr int Hexadecimal = 16;

constexpr const char* ControlNames[] = {
    "NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "HT", "LF",  "VT",  "FF", "CR", "SO", "SI",
    "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB", "CAN", "EM", "SUB", "ESC", "FS", "GS", "RS", "US",
};

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

qint64 lengthOfCharacter(char lead) {
    const auto byte = static_cast<unsigned char>(lead);
    if (byte < 0xC0)
        return 1;
    if (byte < 0xE0)
        return 2;
    return byte < 0xF0 ? 3 : 4;
}

/// The name that is printed instead of a character that is invisible or would break the row; empty for any other.
QString nameOf(char32_t character) {
    if (character < U' ')
        return character == U'\t' ? QString() : QString::fromLatin1(ControlNames[character]);
    if (character == Delete)
        return u"DEL"_qs;
    const bool isSeparator = character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
    if (isSeparator || (character > Delete && character < AfterControls))
        return QString::number(character, Hexadecimal).toUpper();
    return {};
}

char32_t decoded(const QByteArray& character) {
    const QList<uint> points = QString::fromUtf8(character).toUcs4();
    return points.size() == 1 ? points.front() : char32_t{QChar::ReplacementCharacter};
}

void append(PrintedText::Stretch& stretch, char32_t character, char style, qint64 byte) {
    const QString name = nameOf(character);
    const QString units = name.isEmpty() ? QString::fromUcs4(&character, 1) : name;
    stretch.text += units;
    stretch.styles.append(units.size(), name.isEmpty() ? style : char{Sci::STYLE_CONTROLCHAR});
    stretch.bytes.insert(stretch.bytes.end(), static_cast<std::size_t>(units.size()), byte);
}

/// The same for what most texts consist of.
void appendPlain(PrintedText::Stretch& stretch, char character, char style, qint64 byte) {
    stretch.text += QLatin1Char(character);
    stretch.styles += style;
    stretch.bytes.push_back(byte);
}

bool isPlain(char byte) {
    return (byte >= ' ' && byte <= '~') || byte == '\t';
}

}  // namespace

PrintedText::PrintedText(const TextControl& control, std::vector<TextMatch> ranges)
    : m_control(control), m_ranges(std::move(ranges)) {
    std::erase_if(m_ranges, [](const TextMatch& range) { return range.empty(); });
}

PrintPlace PrintedText::begin() const {
    return placeAt(0, m_ranges.empty() ? 0 : m_ranges.front().from);
}

double PrintedText::partBefore(const PrintPlace& place) const {
    if (isAtEnd(place))
        return 1;
    const qint64 first = m_ranges.front().from;
    return static_cast<double>(place.byte - first) / static_cast<double>(m_ranges.back().to - first);
}

std::optional<qint64> PrintedText::numberAt(const PrintPlace& place) const {
    const TextMap& map = m_control.map();
    if (place.byte != m_ranges[place.range].from && place.byte != map.lineBeginOf(place.byte))
        return std::nullopt;
    return map.lineOf(place.byte) + m_control.lineNumbers().LineNumberStart();
}

qint64 PrintedText::largestNumber() const {
    return m_control.TotalLines() - 1 + m_control.lineNumbers().LineNumberStart();
}

/// A range that ends here is followed by the next one.
PrintPlace PrintedText::placeAt(std::size_t range, qint64 byte) const {
    if (range >= m_ranges.size() || byte < m_ranges[range].to)
        return {range, byte};
    return {range + 1, range + 1 < m_ranges.size() ? m_ranges[range + 1].from : byte};
}

PrintedText::Extent PrintedText::extentAt(const PrintPlace& place) const {
    const TextMap& map = m_control.map();
    const HeldText& text = m_control.heldText();
    const qint64 lineEnd = std::min(map.lineEndOf(place.byte), m_ranges[place.range].to);
    Extent extent{place.byte, std::min(lineEnd, place.byte + LongestExtent), false, false, {}};
    while (extent.to < lineEnd && continuesCharacter(text.range(extent.to, 1).front()))
        --extent.to;
    qint64 before = extent.from;
    text.forEachRun(extent.from, extent.to, [&](std::string_view run) {
        const std::size_t found = extent.endsPage ? std::string_view::npos : run.find(FormFeed);
        if (found != std::string_view::npos) {
            extent.to = before + static_cast<qint64>(found);
            extent.endsPage = true;
        }
        before += static_cast<qint64>(run.size());
    });
    extent.endsLine = extent.endsPage || extent.to == lineEnd;
    qint64 next = extent.to + (extent.endsPage ? 1 : 0);
    // The end of the line belongs to the form feed before it.
    if (extent.endsLine && next == lineEnd)
        next = map.nextLineOf(extent.from);
    extent.next = placeAt(place.range, next);
    return extent;
}

std::optional<qint64> PrintedText::mostColumns(const Extent& extent, int tabWidth) const {
    if (!extent.endsLine)
        return std::nullopt;
    qint64 columns = 0;
    bool plain = true;
    m_control.heldText().forEachRun(extent.from, extent.to, [&](std::string_view run) {
        for (const char byte : run) {
            plain = plain && isPlain(byte);
            columns += byte == '\t' ? tabWidth : 1;
        }
    });
    return plain ? std::optional(columns) : std::nullopt;
}

PrintedText::Stretch PrintedText::read(const Extent& extent) const {
    const qint64 length = extent.to - extent.from;
    m_control.colouring().completeTo(extent.to);
    QByteArray cells(2 * (length + 1), '\0');  // byte and style by turns
    m_control.SendScintilla(Sci::SCI_GETSTYLEDTEXT, static_cast<long>(extent.from), static_cast<long>(extent.to),
                            cells.data());
    const JointList& joints = m_control.map().joints();
    Stretch stretch;
    stretch.text.reserve(length);
    stretch.styles.reserve(length);
    stretch.bytes.reserve(static_cast<std::size_t>(length) + 1);
    qint64 size = 1;
    for (qint64 i = 0; i < length; i += size) {
        size = 1;
        if (!joints.empty() && joints.isJoint(extent.from + i))
            continue;
        const char style = cells[2 * i + 1];
        if (isPlain(cells[2 * i])) {
            appendPlain(stretch, cells[2 * i], style, extent.from + i);
            continue;
        }
        size = std::min(lengthOfCharacter(cells[2 * i]), length - i);
        QByteArray character;
        for (qint64 part = i; part < i + size; ++part)
            character.append(cells[2 * part]);
        append(stretch, decoded(character), style, extent.from + i);
    }
    stretch.bytes.push_back(extent.to);
    return stretch;
}
