#pragma once

#include <QStringView>

/// Counts of a text in words and UTF-16 units. Blanks are the space, tab, carriage return and line feed.
namespace TextCounts {

qint64 words(QStringView text);
qint64 charactersWithoutBlanks(QStringView text);

}  // namespace TextCounts
