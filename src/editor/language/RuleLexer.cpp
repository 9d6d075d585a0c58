#include "editor/language/RuleLexer.h"

#include <algorithm>

namespace {

constexpr std::array KeywordClasses{TokenClass::Keyword, TokenClass::Type, TokenClass::Name, TokenClass::Preprocessor};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

/// Bytes of characters beyond ASCII count as letters.
bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || (static_cast<unsigned char>(c) & 0x80U) != 0;
}

}  // namespace

/// A line on the way from its first byte to its last.
struct RuleLexer::Walk {
    QByteArrayView text;
    std::span<TokenClass> classes;
    State open = 0;
    qsizetype at = 0;

    bool atEnd() const { return at == text.size(); }
    bool sees(const QByteArray& mark) const { return !mark.isEmpty() && text.sliced(at).startsWith(mark); }

    void takeTo(qsizetype end, TokenClass token) {
        std::fill(classes.begin() + at, classes.begin() + end, token);
        at = end;
    }
    void take(qsizetype length, TokenClass token) { takeTo(std::min(at + length, text.size()), token); }
};

RuleLexer::RuleLexer(const LanguageDefinition& language)
    : m_rules(language.rules), m_lineComments(language.lineComments), m_blockComments(language.blockComments) {
    // Of two marks that begin alike the longer one matches.
    std::stable_sort(
        m_rules.strings.begin(), m_rules.strings.end(),
        [](const LanguageString& a, const LanguageString& b) { return a.marks.open.size() > b.marks.open.size(); });
    for (int set = 0; set < KeywordSets; ++set) {
        for (const QByteArray& word : language.keywords[set].split(' '))
            m_keywords[set].insert(m_rules.ignoresCase ? word.toLower() : word);
    }
}

RuleLexer::State RuleLexer::line(QByteArrayView text, State open, std::span<TokenClass> classes) const {
    Walk walk{text.first(std::min<qsizetype>(text.size(), static_cast<qsizetype>(classes.size()))), classes, 0};
    const bool isKnown = open <= m_rules.strings.size() && -open <= m_blockComments.size();
    walk.open = isKnown ? open : 0;
    while (!walk.atEnd())
        step(walk);
    const bool endsHere = walk.open > 0 && !m_rules.strings[walk.open - 1].goesOverLines;
    return endsHere ? 0 : walk.open;
}

void RuleLexer::step(Walk& walk) const {
    if (walk.open != 0)
        return goOn(walk);
    if (takeComment(walk) || takeString(walk) || takePrefix(walk) || takeNumber(walk) || takeWord(walk))
        return;
    takeOther(walk);
}

bool RuleLexer::takeComment(Walk& walk) const {
    for (qsizetype i = 0; i < m_blockComments.size(); ++i) {
        if (!walk.sees(m_blockComments[i].open))
            continue;
        walk.open = static_cast<State>(-(i + 1));
        walk.take(m_blockComments[i].open.size(), TokenClass::Comment);
        return true;
    }
    for (const QByteArray& mark : m_lineComments) {
        if (!walk.sees(mark))
            continue;
        walk.takeTo(walk.text.size(), TokenClass::Comment);
        return true;
    }
    return false;
}

bool RuleLexer::takeString(Walk& walk) const {
    for (qsizetype i = 0; i < m_rules.strings.size(); ++i) {
        const LanguageMarks& marks = m_rules.strings[i].marks;
        if (!walk.sees(marks.open))
            continue;
        walk.open = static_cast<State>(i + 1);
        walk.take(marks.open.size(), TokenClass::String);
        return true;
    }
    return false;
}

bool RuleLexer::takePrefix(Walk& walk) const {
    for (const auto& [mark, token] : m_rules.prefixes) {
        if (!walk.sees(mark))
            continue;
        const qsizetype end = wordEnd(walk, walk.at + mark.size());
        if (end == walk.at + mark.size())
            continue;
        walk.takeTo(end, token);
        return true;
    }
    return false;
}

bool RuleLexer::takeNumber(Walk& walk) const {
    if (!isDigit(walk.text[walk.at]))
        return false;
    qsizetype end = walk.at + 1;
    const auto belongs = [&](qsizetype at) {
        const char c = walk.text[at];
        const bool isPoint = c == '.' && at + 1 < walk.text.size() && isDigit(walk.text[at + 1]);
        return isDigit(c) || isLetter(c) || isPoint;
    };
    while (end < walk.text.size() && belongs(end))
        ++end;
    walk.takeTo(end, TokenClass::Number);
    return true;
}

bool RuleLexer::takeWord(Walk& walk) const {
    if (!isLetter(walk.text[walk.at]))
        return false;
    const qsizetype end = wordEnd(walk, walk.at);
    walk.takeTo(end, classOf(walk.text.sliced(walk.at, end - walk.at)));
    return true;
}

void RuleLexer::takeOther(Walk& walk) const {
    const bool isOperator = m_rules.operators.contains(walk.text[walk.at]);
    walk.take(1, isOperator ? TokenClass::Operator : TokenClass::Text);
}

void RuleLexer::goOn(Walk& walk) const {
    if (walk.open > 0)
        return goOnWithString(walk);
    const QByteArray& close = m_blockComments[-walk.open - 1].close;
    const qsizetype end = walk.text.indexOf(close, walk.at);
    walk.open = end < 0 ? walk.open : 0;
    walk.takeTo(end < 0 ? walk.text.size() : end + close.size(), TokenClass::Comment);
}

void RuleLexer::goOnWithString(Walk& walk) const {
    const LanguageString& string = m_rules.strings[walk.open - 1];
    const char c = walk.text[walk.at];
    if (walk.sees(string.marks.close)) {
        walk.open = 0;
        return walk.take(string.marks.close.size(), TokenClass::String);
    }
    if (isLineEnd(c) && !string.goesOverLines) {
        walk.open = 0;
        return;
    }
    walk.take(string.escape != 0 && c == string.escape ? 2 : 1, TokenClass::String);
}

qsizetype RuleLexer::wordEnd(const Walk& walk, qsizetype from) const {
    while (from < walk.text.size()) {
        const char c = walk.text[from];
        if (!isLetter(c) && !isDigit(c) && !m_rules.wordCharacters.contains(c))
            break;
        ++from;
    }
    return from;
}

TokenClass RuleLexer::classOf(QByteArrayView word) const {
    const QByteArray key = m_rules.ignoresCase ? word.toByteArray().toLower() : word.toByteArray();
    for (int set = 0; set < KeywordSets; ++set) {
        if (m_keywords[set].contains(key))
            return KeywordClasses[set];
    }
    return TokenClass::Text;
}
