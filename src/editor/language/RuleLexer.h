#pragma once

#include "editor/language/LanguageDefinition.h"

#include <QByteArrayView>
#include <QSet>

#include <array>
#include <span>

/// Colours the text of a language that has rules of its own, line by line. Created from a definition, which it does not
/// need afterwards. All texts are UTF-8; invalid bytes do no harm.
class RuleLexer {
 public:
    /// The construct that a line leaves open for the next: 0 none, n > 0 the n-th string, n < 0 the n-th block comment.
    using State = int;

    explicit RuleLexer(const LanguageDefinition& language);

    /// Sets the class of every byte of the line and returns the state at its end. `classes` is as long as the line; the
    /// line may include its line end.
    State line(QByteArrayView text, State open, std::span<TokenClass> classes) const;

 private:
    struct Walk;

    void step(Walk& walk) const;
    bool takeComment(Walk& walk) const;
    bool takeString(Walk& walk) const;
    bool takePrefix(Walk& walk) const;
    bool takeNumber(Walk& walk) const;
    bool takeWord(Walk& walk) const;
    void takeOther(Walk& walk) const;
    void goOn(Walk& walk) const;
    void goOnWithString(Walk& walk) const;
    qsizetype wordEnd(const Walk& walk, qsizetype from) const;
    TokenClass classOf(QByteArrayView word) const;

    static constexpr int KeywordSets = 4;

    LanguageRules m_rules;
    QByteArrayList m_lineComments;
    QList<LanguageMarks> m_blockComments;
    std::array<QSet<QByteArray>, KeywordSets> m_keywords;
};
