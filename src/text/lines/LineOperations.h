#pragma once

#include <QString>

/// Functions that trim or align lines. Blank means the space character only; lengths are UTF-16 units. The text is
/// split at one kind of line end: the first that it contains, in the order CR LF, LF, CR. A text that ends with it has
/// an empty last line, which is treated like the others.
///
/// The functions that trim or align throw std::length_error if the control could not hold the result.
namespace LineOperations {

/// Removes the trailing blanks of each line.
QString TrimTailed(const QString& text);
/// Removes the leading blanks of each line.
QString AlignLeft(const QString& text);
/// Removes the trailing blanks of each line and adds leading blanks, up to the length that the longest line had.
QString AlignRight(const QString& text);
/// Removes the blanks at both ends and adds equally many at both sides: half of the difference to the longest line,
/// rounded to even. A line may therefore become one unit longer than the longest line was.
QString AlignCenter(const QString& text);

/// Returns the line end that splits the text; CR LF if there is none.
QString lineEndOf(const QString& text);

}  // namespace LineOperations
