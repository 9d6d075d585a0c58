#pragma once

#include <QString>

#include <optional>

/// Stored colours (see StoredColour.h) as a person types them: six hexadecimal digits, two each for red, green and
/// blue.
namespace ColourText {

QString textOf(qint32 colour);
/// Nothing when the text is no such colour. Letter case, blanks around it and a "#" before it do not count.
std::optional<qint32> numberOf(const QString& text);

}  // namespace ColourText
