#pragma once

#include <QByteArray>
#include <QtGlobal>

class EditView;

/// Indents the lines of a control by the rules of its language, as they are typed. Without a language a new line begins
/// like the one above. Bytes are offsets into the held text. Marks in comments and strings have no effect.
namespace LanguageIndent {

/// The front of the line that a line end at this byte would begin.
QByteArray frontBehind(const EditView& view, qint64 byte);
/// Unindents the caret's line when it begins with a mark that ends a level: to the line of a bracket's partner, else by
/// one level from the line above. It is never indented further.
void closeLevel(EditView& view);
/// The same, when the typed text has just completed such a mark.
void closeTypedLevel(EditView& view);
/// The same for a mark that ends in a letter and is complete only when the line ends there.
void closeLevelAtLineEnd(EditView& view);

}  // namespace LanguageIndent
