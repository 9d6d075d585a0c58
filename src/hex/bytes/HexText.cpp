#include "hex/bytes/HexText.h"

#include "text/codec/Windows1252.h"

#include <QStringList>

#include <array>

namespace {

constexpr int OffsetWidth = 10;
constexpr int FirstShown = 33;
constexpr int HexForm = 3;  ///< characters of one byte in a hex text

using Cells = std::array<QString, 256>;

Cells makeHexCells() {
    Cells cells;
    for (unsigned byte = 0; byte < cells.size(); ++byte)
        cells[byte] = u"%1"_qs.arg(byte, 2, 16, QLatin1Char('0')).toUpper();
    return cells;
}

Cells makeTextCells() {
    Cells cells;
    for (unsigned byte = 0; byte < cells.size(); ++byte)
        cells[byte] = byte < FirstShown ? QChar(u'.') : QChar(Windows1252::characterOf(static_cast<quint8>(byte)));
    return cells;
}

std::optional<int> byteOfDigits(const QString& digits) {
    int value = 0;
    const QString trimmed = digits.trimmed();
    for (const QChar digit : trimmed) {
        const int nibble = HexText::nibbleOf(digit);
        if (nibble < 0)
            return std::nullopt;
        value = value * 16 + nibble;
        if (value > 0xFF)
            return std::nullopt;
    }
    return trimmed.isEmpty() ? std::nullopt : std::optional(value);
}

}  // namespace

int HexText::nibbleOf(QChar digit) {
    if (digit >= u'0' && digit <= u'9')
        return digit.unicode() - u'0';
    const QChar upper = digit.toUpper();
    return upper >= u'A' && upper <= u'F' ? upper.unicode() - u'A' + 10 : -1;
}

QString HexText::ByteToHexCell(int byte) {
    static const Cells cells = makeHexCells();
    return byte == NoByte ? u"0"_qs : cells[static_cast<quint8>(byte)];
}

QString HexText::ByteToTextCell(int byte) {
    static const Cells cells = makeTextCells();
    return byte == NoByte ? QString() : cells[static_cast<quint8>(byte)];
}

int HexText::HexCellToByte(const QString& cell) {
    return byteOfDigits(cell).value_or(0);
}

QString HexText::hexOf(Offset offset) {
    return QString::number(offset.number(), 16).toUpper();
}

QString HexText::FormatOffset(Offset offset, bool hexMode) {
    return u"%1"_qs.arg(offset.number(), OffsetWidth, hexMode ? 16 : 10, QLatin1Char('0')).toUpper();
}

QString HexText::SpaceHexText(const QString& digits) {
    QString text;
    text.reserve(digits.size() * HexForm / 2 + HexForm);
    for (qsizetype at = 0; at < digits.size(); at += 2)
        text += digits.mid(at, 2) + u' ';
    return text;
}

QString HexText::NormalizeHexText(const QString& text) {
    QString digits = text;
    digits.remove(u' ');
    if (digits.size() % 2 != 0)
        digits += u'0';
    return SpaceHexText(digits);
}

std::optional<QByteArray> HexText::bytesOfHexText(const QString& text) {
    QByteArray bytes;
    bytes.reserve(text.size() / HexForm + 1);
    for (qsizetype at = 0; at < text.size(); at += HexForm) {
        const std::optional<int> byte = byteOfDigits(text.mid(at, HexForm));
        if (!byte)
            return std::nullopt;
        bytes += static_cast<char>(*byte);
    }
    return bytes;
}

std::optional<QByteArray> HexText::bytesOfTypedHex(const QString& text) {
    QByteArray bytes;
    for (QString run : text.simplified().split(u' ', Qt::SkipEmptyParts)) {
        if (run.size() % 2 != 0)
            run.insert(run.size() == 1 ? 0 : run.size(), u'0');
        for (qsizetype at = 0; at < run.size(); at += 2) {
            const std::optional<int> byte = byteOfDigits(run.mid(at, 2));
            if (!byte)
                return std::nullopt;
            bytes += static_cast<char>(*byte);
        }
    }
    return bytes;
}

std::optional<QByteArray> HexText::bytesOfText(const QString& text) {
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar character : text) {
        const int byte = Windows1252::byteOf(character.unicode());
        if (byte < 0)
            return std::nullopt;
        bytes += static_cast<char>(byte);
    }
    return bytes;
}
