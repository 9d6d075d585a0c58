#pragma once

#include <QString>

#include <optional>

/// What a stored text means as a value of another kind; nothing when it means none. Blanks around it don't count,
/// numbers are written with "." in every locale, with sign, fraction and exponent, or as "&H" and hexadecimal digits.
namespace SettingText {

std::optional<double> toNumber(const QString& text);
/// "True" and "False" in any letter case, or a number: on unless it is 0.
std::optional<bool> toBoolean(const QString& text);
/// A number rounded to the nearest integer (a half to the even one) that the type can hold.
std::optional<qint16> toShort(const QString& text);
std::optional<qint32> toLong(const QString& text);

}  // namespace SettingText
