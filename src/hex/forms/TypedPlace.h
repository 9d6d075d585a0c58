#pragma once

#include <QString>

#include <optional>

/// The numbers that a person types to go somewhere. Nothing when a text is no number.
namespace TypedPlace {

/// Decimal, or hexadecimal of 32 bits after "&H"; negative ones are possible.
std::optional<qint64> offsetOf(const QString& text);
/// Decimal; a number below 1 means the first page.
std::optional<qint64> pageOf(const QString& text);

}  // namespace TypedPlace
