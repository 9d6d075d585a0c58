#pragma once

#include <QStringView>

#include <string_view>

/// Counts words and UTF-16 units. Blanks are space, tab, carriage return and line feed. There are versions for UTF-8,
/// the form in which the control holds its text, so that a large text need not be converted.
namespace TextCounts {

qint64 words(QStringView text);
qint64 words(std::string_view utf8);
qint64 charactersWithoutBlanks(QStringView text);
qint64 charactersWithoutBlanks(std::string_view utf8);

}  // namespace TextCounts
