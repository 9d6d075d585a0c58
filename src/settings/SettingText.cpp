#include "settings/SettingText.h"

#include <cmath>
#include <limits>

namespace {

template <typename Integer>
std::optional<Integer> toInteger(const QString& text) {
    const std::optional<double> number = SettingText::toNumber(text);
    if (!number)
        return std::nullopt;
    const double rounded = std::nearbyint(*number);
    using Limits = std::numeric_limits<Integer>;
    if (rounded < Limits::min() || rounded > Limits::max())
        return std::nullopt;
    return static_cast<Integer>(rounded);
}

std::optional<double> hexNumber(const QString& digits) {
    bool valid = false;
    const quint32 number = digits.toUInt(&valid, 16);
    return valid && digits.at(0).isLetterOrNumber() ? std::optional<double>(static_cast<qint32>(number)) : std::nullopt;
}

}  // namespace

namespace SettingText {

std::optional<double> toNumber(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.startsWith(QLatin1String("&H"), Qt::CaseInsensitive))
        return hexNumber(trimmed.mid(2));
    bool valid = false;
    const double number = trimmed.toDouble(&valid);
    return valid && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<bool> toBoolean(const QString& text) {
    const QString word = text.trimmed().toLower();
    if (word == QLatin1String("true") || word == QLatin1String("false"))
        return word == QLatin1String("true");
    const std::optional<double> number = toNumber(text);
    return number ? std::optional(*number != 0) : std::nullopt;
}

std::optional<qint16> toShort(const QString& text) {
    return toInteger<qint16>(text);
}

std::optional<qint32> toLong(const QString& text) {
    return toInteger<qint32>(text);
}

}  // namespace SettingText
