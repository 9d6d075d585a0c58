#include "hex/forms/TypedPlace.h"

#include "hex/forms/NumberConversion.h"

#include <algorithm>

namespace {

constexpr double Largest = 1e15;

}  // namespace

std::optional<qint64> TypedPlace::offsetOf(const QString& text) {
    if (text.startsWith(u"&H"_qs)) {
        const std::optional<quint32> number = NumberConversion::numberOfDigits(text.mid(2), 16);
        return number ? std::optional<qint64>(static_cast<qint32>(*number)) : std::nullopt;
    }
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && qAbs(number) < Largest ? std::optional<qint64>(qRound64(number)) : std::nullopt;
}

std::optional<qint64> TypedPlace::pageOf(const QString& text) {
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber ? std::optional(std::max<qint64>(number, 1)) : std::nullopt;
}
