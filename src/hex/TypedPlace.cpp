#include "hex/TypedPlace.h"

#include <algorithm>

namespace {

constexpr double Largest = 1e15;

}  // namespace

std::optional<qint64> TypedPlace::offsetOf(const QString& text) {
    bool isNumber = false;
    if (text.startsWith(QStringLiteral("&H"))) {
        const quint32 number = text.mid(2).toUInt(&isNumber, 16);
        return isNumber ? std::optional<qint64>(static_cast<qint32>(number)) : std::nullopt;
    }
    const double number = text.toDouble(&isNumber);
    return isNumber && qAbs(number) < Largest ? std::optional<qint64>(qRound64(number)) : std::nullopt;
}

std::optional<qint64> TypedPlace::pageOf(const QString& text) {
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber ? std::optional(std::max<qint64>(number, 1)) : std::nullopt;
}
