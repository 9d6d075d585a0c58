#pragma once

#include <QStringView>

#include <string_view>

/// Counts of a text in words and UTF-16 units. Blanks are the space, tab, carriage return and line feed. A text may
/// come as UTF-8 too, as the control holds it: a large one need not be turned over for a count.
namespace TextCounts {

qint64 words(QStringView text);
qint64 words(std::string_view utf8);
qint64 charactersWithoutBlanks(QStringView text);
qint64 charactersWithoutBlanks(std::string_view utf8);

}  // namespace TextCounts
