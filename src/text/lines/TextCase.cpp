#include "text/lines/TextCase.h"

namespace {

/// Returns the form of a character at the start of a word. Some characters have a title case form that is neither upper
/// nor lower case; some become two letters, of which only the first is upper case.
QString capital(const QString& character) {
    QString large = character.toUpper();
    if (large.size() > character.size())
        return large.first(1) + large.sliced(1).toLower();
    if (character.size() == 1)
        return {character.front().toTitleCase()};
    return large;
}

qsizetype firstCharacterLength(const QString& text) {
    return text.size() > 1 && text[0].isHighSurrogate() && text[1].isLowSurrogate() ? 2 : 1;
}

}  // namespace

namespace TextCase {

QString upper(const QString& text) {
    return text.toUpper();
}

QString lower(const QString& text) {
    return text.toLower();
}

QString capitalised(const QString& text) {
    if (text.isEmpty())
        return text;
    const qsizetype first = firstCharacterLength(text);
    return capital(text.first(first)) + text.sliced(first).toLower();
}

}  // namespace TextCase
