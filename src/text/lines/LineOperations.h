#pragma once

#include <QString>

/// The new form of selected lines. Blank means the space alone; lengths are UTF-16 units. The first line end found, in
/// the order CR LF, LF, CR, splits the whole text; a text that ends with it has an empty last line, which is treated
/// like the others.
///
/// All raise std::length_error for a result that no control could hold.
namespace LineOperations {

/// The lines without their trailing blanks.
QString TrimTailed(const QString& text);
/// The lines without their leading blanks.
QString AlignLeft(const QString& text);
/// Without trailing blanks and filled with blanks at the left, each as long as the longest was.
QString AlignRight(const QString& text);
/// Without blanks at both ends, and with as many at the left as at the right: half of what is missing to the longest,
/// halves rounded to the even number. A line may end up one longer than the longest was.
QString AlignCenter(const QString& text);

/// The line end that splits the text; CR LF for a text of one line.
QString lineEndOf(const QString& text);

}  // namespace LineOperations
