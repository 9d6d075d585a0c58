#pragma once

#include <QString>

#include <optional>

/// Conversions of one number between texts of different bases. Numbers are signed and have 32 bits, negative ones their
/// two's complement form; the result for any other text is empty.
namespace NumberConversion {

/// Digits of that base and nothing else, in 32 bits.
std::optional<quint32> numberOfDigits(const QString& digits, int base);

QString DecToHex(const QString& decimal);
QString DecToOct(const QString& decimal);
/// In whole bytes.
QString DecToBin(const QString& decimal);
QString HexToDec(const QString& hex);
QString OctToDec(const QString& octal);
/// Of any length, as a floating-point number: from 2 ^ 53 on it loses digits and gets an exponent.
QString cvBinToDec(const QString& binary);
/// The value of up to two hex digits, 0 when there are none.
int GetVal(const QString& pair);

}  // namespace NumberConversion
