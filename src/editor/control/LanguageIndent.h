#pragma once

#include <QByteArray>
#include <QtGlobal>

class EditView;

/// Indents the lines of a control by the rules of its language, as they are typed. Without a language a new line begins
/// as the one above. Bytes are offsets into the held text. Nothing is done by what stands in comments and strings.
namespace LanguageIndent {

/// The front of the line that a line end at this byte would begin.
QByteArray frontBehind(const EditView& view, qint64 byte);
/// Takes the caret's line back when it begins with a mark that ends a level: under the line of a bracket's partner,
/// else a level before the line above. It is never moved onward.
void closeLevel(EditView& view);
/// The same, when what was typed has just completed such a mark.
void closeTypedLevel(EditView& view);
/// The same for a mark that ends in a letter and is complete only when the line ends there.
void closeLevelAtLineEnd(EditView& view);

}  // namespace LanguageIndent
