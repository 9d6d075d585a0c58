#pragma once

#include <QString>

#include <optional>

/// Parses a stored text as a value of another kind; nothing when it is not valid. Blanks around it are ignored; numbers
/// are written with "." in every locale, with sign, fraction and exponent, or as "&H" and hexadecimal digits.
namespace SettingText {

std::optional<double> toNumber(const QString& text);
/// "True" and "False" in any letter case, or a number: on unless it is 0.
std::optional<bool> toBoolean(const QString& text);
/// A number rounded to the nearest integer (a half to the even one) that the type can hold.
std::optional<qint16> toShort(const QString& text);
std::optional<qint32> toLong(const QString& text);

}  // namespace SettingText
