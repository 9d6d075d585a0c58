#include "editor/rtf/RtfWriter.h"

#include <algorithm>
#include <iterator>

namespace {

void appendUnicode(QByteArray& target, char16_t unit) {
    target += "\\u" + QByteArray::number(static_cast<qint16>(unit)) + '?';
}

/// A name as plain text inside a group, without the characters that have a meaning in the format.
QByteArray escaped(const QString& name) {
    QByteArray target;
    for (const QChar unit : name) {
        if (unit == u'\\' || unit == u'{' || unit == u'}' || unit == u';')
            continue;
        if (unit.unicode() < 0x80)
            target += unit.toLatin1();
        else
            appendUnicode(target, unit.unicode());
    }
    return target;
}

}  // namespace

RtfWriter::RtfWriter(const QString& fontName, int points) : m_font(escaped(fontName)), m_halfPoints(points * 2) {}

/// Colours count from 1; 0 is the default colour of the reader.
int RtfWriter::numberOf(const QColor& colour) {
    const auto known = std::ranges::find(m_colours, colour);
    if (known == m_colours.end()) {
        m_colours.push_back(colour);
        return static_cast<int>(m_colours.size());
    }
    return static_cast<int>(std::distance(m_colours.begin(), known)) + 1;
}

void RtfWriter::append(QStringView text, const RtfLook& look) {
    m_body += "{\\cf" + QByteArray::number(numberOf(look.colour));
    m_body += look.bold ? "\\b" : "";
    m_body += look.italic ? "\\i" : "";
    m_body += ' ';
    for (const QChar unit : text)
        appendUnit(unit.unicode());
    m_body += '}';
}

void RtfWriter::appendUnit(char16_t unit) {
    const bool endsPair = m_afterCr && unit == u'\n';
    m_afterCr = unit == u'\r';
    if (endsPair)
        return;
    if (unit == u'\r' || unit == u'\n')
        m_body += "\\par\n";
    else if (unit == u'\t')
        m_body += "\\tab ";
    else if (unit == u'\\' || unit == u'{' || unit == u'}')
        m_body += QByteArray("\\") + static_cast<char>(unit);
    else if (unit >= 0x20 && unit < 0x7F)
        m_body += static_cast<char>(unit);
    else
        appendUnicode(m_body, unit);
}

QByteArray RtfWriter::finished() const {
    QByteArray colours;
    for (const QColor& colour : m_colours) {
        colours += "\\red" + QByteArray::number(colour.red()) + "\\green" + QByteArray::number(colour.green()) +
                   "\\blue" + QByteArray::number(colour.blue()) + ';';
    }
    return "{\\rtf1\\ansi\\uc1\\deff0{\\fonttbl{\\f0\\fmodern " + m_font + ";}}{\\colortbl;" + colours + "}\n\\f0\\fs" +
           QByteArray::number(m_halfPoints) + ' ' + m_body + "}\n";
}
