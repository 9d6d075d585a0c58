#pragma once

#include "editor/language/TokenClasses.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QList>

#include <array>

/// A pair of marks around a piece of text.
struct LanguageMarks {
    QByteArray open;
    QByteArray close;

    bool operator==(const LanguageMarks&) const = default;
};

/// A string of a language with rules of its own.
struct LanguageString {
    LanguageMarks marks;
    char escape = 0;  ///< makes the next character a literal one; 0: there is none
    bool goesOverLines = false;
};

/// How the text of a language without a lexer of the library falls apart into words, strings, comments and numbers.
struct LanguageRules {
    bool ignoresCase = false;
    QByteArray wordCharacters;  ///< beside letters, digits and "_"
    QByteArray operators;
    QList<LanguageString> strings;
    QList<std::pair<QByteArray, TokenClass>> prefixes;  ///< a word after such a mark is of that class
};

/// The definition of a language: read from its file, registered once, never changed. All texts are UTF-8.
struct LanguageDefinition {
    static constexpr int KeywordSets = 9;
    static constexpr int Styles = 256;

    QByteArray lexer;                              ///< name of a lexer of the library; empty: rules hold
    LanguageRules rules;                           ///< styles are the numbers of the token classes
    std::array<QByteArray, KeywordSets> keywords;  ///< each: words parted by one blank
    QList<std::pair<QByteArray, QByteArray>> properties;
    QByteArrayList lineComments;
    QList<LanguageMarks> blockComments;
    QByteArray brackets;         ///< opening and closing ones by turns
    QByteArrayList indentAfter;  ///< a line that ends with one indents the next one
    QByteArrayList unindentAt;   ///< a line that begins with one is unindented
    int indentWidth = 4;
    bool indentsWithTabs = false;
    std::array<TokenClass, Styles> classOfStyle{};
};
