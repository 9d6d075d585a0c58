#pragma once

#include "editor/language/LanguageDefinition.h"

#include <QByteArrayList>
#include <QSet>

#include <bitset>

/// Takes the lines of a definition one after the other. Each call returns what is wrong with the line, an empty text
/// when nothing is; after the last line finish() returns what is missing.
class LanguageFileReader {
 public:
    QString take(const QByteArray& line);
    QString finish() const;

    const LanguageDefinition& definition() const { return m_definition; }

 private:
    using Words = QByteArrayList;
    struct Statement {
        const char* name;
        int fewest;  ///< words after the name
        int most;    ///< -1: any number
        bool once;
        QString (LanguageFileReader::*take)(const Words& words);
    };
    static const Statement Statements[];

    QString takeLexer(const Words& words);
    QString takeRules(const Words& words);
    QString takeKeywords(const Words& words);
    QString takeProperty(const Words& words);
    QString takeComment(const Words& words);
    QString takeBrackets(const Words& words);
    QString takeIndent(const Words& words);
    QString takeAfter(const Words& words);
    QString takeAt(const Words& words);
    QString takeClass(const Words& words);
    QString takeWords(const Words& words);
    QString takeOperators(const Words& words);
    QString takeString(const Words& words);
    QString takePrefix(const Words& words);
    QString unlessRules() const;

    LanguageDefinition m_definition;
    QSet<QByteArray> m_seen;
    std::bitset<LanguageDefinition::Styles> m_styles;  ///< those that have a class
    bool m_hasRules = false;
};
