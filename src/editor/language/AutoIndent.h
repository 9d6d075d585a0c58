#pragma once

#include "editor/language/LanguageDefinition.h"

#include <QByteArrayView>

#include <optional>

class HeldText;

/// How the rules of a language indent lines. Plain functions over the text of a line, without its line end.
namespace AutoIndent {

/// The width of a level and its characters.
struct Unit {
    int width = 4;  ///< columns
    int tabWidth = 4;
    bool tabs = false;

    bool operator==(const Unit&) const = default;
};

/// The blanks and tabs at the front of a line.
QByteArrayView frontOf(QByteArrayView line);
int columnsOf(QByteArrayView front, const Unit& unit);
/// A front of so many columns.
QByteArray frontOfColumns(int columns, const Unit& unit);
/// The front of the next level. A front that has blanks or tabs continues with the same.
QByteArray oneLevelMore(QByteArrayView front, const Unit& unit);

/// Whether the line ends so that the next one is indented further.
bool opensLevel(QByteArrayView line, const LanguageDefinition& language);
/// Whether the line is, but for its front, one of the marks at which a level ends.
bool closesLevel(QByteArrayView line, const LanguageDefinition& language);
/// Whether the line begins with such a mark.
bool beginsClosing(QByteArrayView line, const LanguageDefinition& language);
/// Whether a mark is complete as soon as it is typed; one that ends in a letter may become another word.
bool endsByItself(QByteArrayView line);

/// Whether the lines of a text are indented by tabs, judging by its beginning; nothing when tabs and blanks are equally
/// frequent there.
std::optional<bool> indentedByTabs(const HeldText& text);

}  // namespace AutoIndent
