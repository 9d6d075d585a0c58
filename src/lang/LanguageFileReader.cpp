#include "lang/LanguageFileReader.h"

#include "lang/LexerNames.h"

#include <optional>

namespace {

constexpr int RuleKeywordSets = 4;
constexpr int MostIndent = 32;

QString quoted(const char* form, const QByteArray& word) {
    return QString::fromLatin1(form).arg(QString::fromUtf8(word));
}

std::optional<int> numberOf(const QByteArray& word, int most) {
    bool good = !word.isEmpty() && word.size() <= 3;
    for (const char digit : word)
        good = good && digit >= '0' && digit <= '9';
    const int number = good ? word.toInt() : -1;
    return good && number <= most ? std::optional(number) : std::nullopt;
}

}  // namespace

const LanguageFileReader::Statement LanguageFileReader::Statements[] = {
    {"lexer", 1, 1, true, &LanguageFileReader::takeLexer},
    {"rules", 0, 1, true, &LanguageFileReader::takeRules},
    {"keywords", 2, -1, false, &LanguageFileReader::takeKeywords},
    {"property", 2, 2, false, &LanguageFileReader::takeProperty},
    {"comment", 1, 2, false, &LanguageFileReader::takeComment},
    {"brackets", 1, 1, true, &LanguageFileReader::takeBrackets},
    {"indent", 1, 2, true, &LanguageFileReader::takeIndent},
    {"after", 1, -1, true, &LanguageFileReader::takeAfter},
    {"at", 1, -1, true, &LanguageFileReader::takeAt},
    {"class", 2, -1, false, &LanguageFileReader::takeClass},
    {"words", 1, 1, true, &LanguageFileReader::takeWords},
    {"operators", 1, 1, true, &LanguageFileReader::takeOperators},
    {"string", 3, 4, false, &LanguageFileReader::takeString},
    {"prefix", 2, 2, false, &LanguageFileReader::takePrefix},
};

QString LanguageFileReader::take(const QByteArray& line) {
    Words words = line.simplified().split(' ');
    if (words.front().isEmpty() || words.front().startsWith('#'))
        return {};
    const QByteArray name = words.takeFirst();
    for (const Statement& statement : Statements) {
        if (name != statement.name)
            continue;
        if (words.size() < statement.fewest)
            return quoted("too little stands behind \"%1\"", name);
        if (statement.most >= 0 && words.size() > statement.most)
            return quoted("too much stands behind \"%1\"", name);
        if (statement.once && m_seen.contains(name))
            return quoted("\"%1\" stands here a second time", name);
        m_seen.insert(name);
        return (this->*statement.take)(words);
    }
    return quoted("\"%1\" is unknown", name);
}

QString LanguageFileReader::finish() const {
    const bool hasEither = m_hasRules || !m_definition.lexer.isEmpty();
    return hasEither ? QString() : u"neither \"lexer\" nor \"rules\" is there"_qs;
}

QString LanguageFileReader::takeLexer(const Words& words) {
    if (m_hasRules)
        return u"\"lexer\" and \"rules\" can't both be there"_qs;
    if (!LexerNames::isKnown(words[0]))
        return quoted("there is no lexer \"%1\"", words[0]);
    m_definition.lexer = words[0];
    return {};
}

QString LanguageFileReader::takeRules(const Words& words) {
    if (!m_definition.lexer.isEmpty())
        return u"\"lexer\" and \"rules\" can't both be there"_qs;
    if (!words.isEmpty() && words[0] != "nocase")
        return quoted("\"%1\" is not \"nocase\"", words[0]);
    m_hasRules = true;
    m_definition.rules.ignoresCase = !words.isEmpty();
    for (int style = 0; style < TokenClasses::Count; ++style)
        m_definition.classOfStyle[style] = static_cast<TokenClass>(style);
    return {};
}

QString LanguageFileReader::takeKeywords(const Words& words) {
    if (!m_hasRules && m_definition.lexer.isEmpty())
        return u"\"keywords\" belongs behind \"lexer\" or \"rules\""_qs;
    const auto set = numberOf(words[0], (m_hasRules ? RuleKeywordSets : LanguageDefinition::KeywordSets) - 1);
    if (!set)
        return quoted("\"%1\" is no number of a set of keywords", words[0]);
    QByteArray& list = m_definition.keywords[*set];
    list += (list.isEmpty() ? "" : " ") + words.sliced(1).join(' ');
    return {};
}

QString LanguageFileReader::takeProperty(const Words& words) {
    if (m_definition.lexer.isEmpty())
        return u"\"property\" belongs behind \"lexer\""_qs;
    for (const auto& property : m_definition.properties) {
        if (property.first == words[0])
            return quoted("the property \"%1\" stands here a second time", words[0]);
    }
    m_definition.properties.append({words[0], words[1]});
    return {};
}

QString LanguageFileReader::takeComment(const Words& words) {
    if (words.size() == 1)
        m_definition.lineComments.append(words[0]);
    else
        m_definition.blockComments.append({words[0], words[1]});
    return {};
}

QString LanguageFileReader::takeBrackets(const Words& words) {
    if (words[0].size() % 2 != 0)
        return u"a bracket has no other"_qs;
    for (qsizetype at = 0; at < words[0].size(); ++at) {
        if (words[0][at] < 0 || words[0].indexOf(words[0][at]) != at)
            return u"brackets are characters of ASCII, each once"_qs;
    }
    m_definition.brackets = words[0];
    return {};
}

QString LanguageFileReader::takeIndent(const Words& words) {
    const auto width = numberOf(words[0], MostIndent);
    if (!width || *width == 0)
        return quoted("\"%1\" is no width from 1 to 32", words[0]);
    if (words.size() > 1 && words[1] != "tabs")
        return quoted("\"%1\" is not \"tabs\"", words[1]);
    m_definition.indentWidth = *width;
    m_definition.indentsWithTabs = words.size() > 1;
    return {};
}

QString LanguageFileReader::takeAfter(const Words& words) {
    m_definition.indentAfter = words;
    return {};
}

QString LanguageFileReader::takeAt(const Words& words) {
    m_definition.unindentAt = words;
    return {};
}

QString LanguageFileReader::takeClass(const Words& words) {
    if (m_definition.lexer.isEmpty())
        return u"\"class\" belongs behind \"lexer\""_qs;
    const auto token = TokenClasses::byName(words[0]);
    if (!token)
        return quoted("there is no class \"%1\"", words[0]);
    for (const QByteArray& word : words.sliced(1)) {
        const auto style = numberOf(word, LanguageDefinition::Styles - 1);
        if (!style)
            return quoted("\"%1\" is no style from 0 to 255", word);
        if (m_styles.test(*style))
            return quoted("the style %1 has a class already", word);
        m_styles.set(*style);
        m_definition.classOfStyle[*style] = *token;
    }
    return {};
}

QString LanguageFileReader::unlessRules() const {
    return m_hasRules ? QString() : u"this belongs behind \"rules\""_qs;
}

QString LanguageFileReader::takeWords(const Words& words) {
    m_definition.rules.wordCharacters = words[0];
    return unlessRules();
}

QString LanguageFileReader::takeOperators(const Words& words) {
    m_definition.rules.operators = words[0];
    return unlessRules();
}

QString LanguageFileReader::takeString(const Words& words) {
    const bool goesOverLines = words.size() == 4;
    if (goesOverLines && words[3] != "lines")
        return quoted("\"%1\" is not \"lines\"", words[3]);
    if (words[2] != "none" && words[2].size() != 1)
        return quoted("\"%1\" is neither a character nor \"none\"", words[2]);
    const char escape = words[2] == "none" ? '\0' : words[2].front();
    m_definition.rules.strings.append({{words[0], words[1]}, escape, goesOverLines});
    return unlessRules();
}

QString LanguageFileReader::takePrefix(const Words& words) {
    const auto token = TokenClasses::byName(words[1]);
    if (!token)
        return quoted("there is no class \"%1\"", words[1]);
    m_definition.rules.prefixes.append({words[0], *token});
    return unlessRules();
}
