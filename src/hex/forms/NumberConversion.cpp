#include "hex/forms/NumberConversion.h"

#include "hex/bytes/HexText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double LastExact = 9007199254740992.0;  // 2 ^ 53
constexpr int ShownDigits = 15;

std::optional<qint32> numberOf(const QString& decimal) {
    bool isNumber = false;
    const qint64 number = decimal.trimmed().toLongLong(&isNumber);
    if (!isNumber || number < std::numeric_limits<qint32>::min() || number > std::numeric_limits<qint32>::max())
        return std::nullopt;
    return static_cast<qint32>(number);
}

QString inBase(const QString& decimal, int base) {
    const std::optional<qint32> number = numberOf(decimal);
    return number ? QString::number(static_cast<quint32>(*number), base).toUpper() : QString();
}

QString fromBase(const QString& digits, int base) {
    const std::optional<quint32> number = NumberConversion::numberOfDigits(digits, base);
    return number ? QString::number(static_cast<qint32>(*number)) : QString();
}

}  // namespace

/// Qt would accept signs, blanks and the prefixes of programming languages, too.
std::optional<quint32> NumberConversion::numberOfDigits(const QString& digits, int base) {
    const auto isDigit = [base](QChar digit) {
        const int value = HexText::nibbleOf(digit);
        return value >= 0 && value < base;
    };
    bool isNumber = std::all_of(digits.begin(), digits.end(), isDigit);
    const quint32 number = isNumber ? digits.toUInt(&isNumber, base) : 0;
    return isNumber ? std::optional(number) : std::nullopt;
}

QString NumberConversion::DecToHex(const QString& decimal) {
    return inBase(decimal, 16);
}

QString NumberConversion::DecToOct(const QString& decimal) {
    return inBase(decimal, 8);
}

QString NumberConversion::DecToBin(const QString& decimal) {
    QString hex = DecToHex(decimal);
    if (hex.size() % 2 != 0)
        hex.prepend(u'0');
    QString bits;
    for (qsizetype at = 0; at < hex.size(); at += 2)
        bits += u"%1"_qs.arg(GetVal(hex.mid(at, 2)), 8, 2, QLatin1Char('0'));
    return bits;
}

QString NumberConversion::HexToDec(const QString& hex) {
    return fromBase(hex, 16);
}

QString NumberConversion::OctToDec(const QString& octal) {
    return fromBase(octal, 8);
}

QString NumberConversion::cvBinToDec(const QString& binary) {
    double sum = 0;
    for (qsizetype i = 0; i < binary.size(); ++i) {
        if (binary[i] == u'1')
            sum += std::exp2(static_cast<double>(binary.size() - 1 - i));
    }
    if (std::isinf(sum))
        return {};
    return sum < LastExact ? QString::number(static_cast<qint64>(sum)) : QString::number(sum, 'G', ShownDigits);
}

int NumberConversion::GetVal(const QString& pair) {
    return HexText::HexCellToByte(pair);
}
