#pragma once

#include "hex/bytes/FilePosition.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// The forms in which bytes and offsets are shown, typed and carried as text. Texts of bytes are Windows-1252.
namespace HexText {

/// Shown in place of a byte after the end of the file.
inline constexpr int NoByte = -1;

/// The value of a hex digit in either case; -1 for all else.
int nibbleOf(QChar digit);

/// Two upper-case hex digits; "0" for no byte.
QString ByteToHexCell(int byte);
/// One character; "." for every byte below 33, the empty text for no byte.
QString ByteToTextCell(int byte);
/// The byte of a cell in hex digits, one digit or two; 0 for anything else.
int HexCellToByte(const QString& cell);

/// Upper-case hexadecimal.
QString hexOf(Offset offset);
/// Ten characters: decimal, or upper-case hexadecimal, filled with "0" on the left.
QString FormatOffset(Offset offset, bool hexMode);

/// A blank after each two characters, the last ones too.
QString SpaceHexText(const QString& digits);
/// As SpaceHexText(), for a text whose blanks are ignored; a "0" is appended to a single digit at the end.
QString NormalizeHexText(const QString& text);
/// The bytes of a text of which each three characters are one byte; nothing when it is no such text.
std::optional<QByteArray> bytesOfHexText(const QString& text);
/// The bytes of hex digits as people type them, with blanks between the bytes or without. A digit left over in a run of
/// digits is the upper half of a byte, one that stands alone is the lower half. Nothing when there is anything else.
std::optional<QByteArray> bytesOfTypedHex(const QString& text);

/// The bytes of a text; nothing when a character has no byte.
std::optional<QByteArray> bytesOfText(const QString& text);

}  // namespace HexText
