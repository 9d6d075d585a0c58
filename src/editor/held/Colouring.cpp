#include "editor/held/Colouring.h"

#include "editor/held/ScintillaColour.h"
#include "editor/language/BraceScan.h"
#include "editor/language/TokenLooks.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>

using Sci = QsciScintillaBase;

namespace {

/// How far ahead colouring may be brought up to date at once, in bytes.
constexpr qint64 Near = 64 * 1024;

/// Styles that Scintilla keeps for its own parts.
bool isOfTheView(int style) {
    return style >= Sci::STYLE_DEFAULT && style <= Sci::STYLE_LASTPREDEFINED;
}

}  // namespace

qint64 Colouring::ask(unsigned message, qint64 first, qint64 second) const {
    return m_view.SendScintilla(message, static_cast<unsigned long>(first), static_cast<long>(second));
}

void Colouring::setLanguage(const LanguageDefinition* language) {
    if (language == m_language)
        return;
    m_language = language;
    m_rules.reset();
    if (language != nullptr && language->lexer.isEmpty())
        m_rules.emplace(*language);
    setUpDocument(m_coloured);
}

std::string_view Colouring::brackets() const {
    if (m_language == nullptr)
        return BraceScan::Usual;
    return {m_language->brackets.constData(), static_cast<std::size_t>(m_language->brackets.size())};
}

void Colouring::setUpDocument(bool coloured) {
    m_coloured = coloured;
    if (!coloured || m_language == nullptr)
        ask(Sci::SCI_SETLEXER, Sci::SCLEX_NULL);
    else if (m_rules)
        ask(Sci::SCI_SETLEXER, Sci::SCLEX_CONTAINER);
    else
        tellLexer();
    // The present styles are those of another language.
    ask(Sci::SCI_STARTSTYLING, 0);
}

void Colouring::tellLexer() const {
    m_view.SendScintilla(Sci::SCI_SETLEXERLANGUAGE, 0UL, m_language->lexer.constData());
    for (const auto& [name, value] : m_language->properties)
        m_view.SendScintilla(Sci::SCI_SETPROPERTY, name.constData(), value.constData());
    for (unsigned long set = 0; set < LanguageDefinition::KeywordSets; ++set)
        m_view.SendScintilla(Sci::SCI_SETKEYWORDS, set, m_language->keywords[set].constData());
}

void Colouring::setUpStyles(const TokenLooks& looks, const QColor& ground, bool inPieces) const {
    if (m_language == nullptr)
        return;
    for (int style = 0; style < LanguageDefinition::Styles; ++style) {
        const TokenClass token = m_language->classOfStyle[style];
        const bool isPlain = token == TokenClass::Text || (inPieces && token == TokenClass::Error);
        if (isPlain || isOfTheView(style))
            continue;
        const TokenLook look = looks.on(ground, token);
        ask(Sci::SCI_STYLESETFORE, style, ScintillaColour::number(look.colour));
        ask(Sci::SCI_STYLESETBOLD, style, look.bold);
        ask(Sci::SCI_STYLESETITALIC, style, look.italic);
    }
}

RuleLexer::State Colouring::stateBefore(qint64 line) const {
    return line == 0 ? 0 : static_cast<RuleLexer::State>(ask(Sci::SCI_GETLINESTATE, line - 1));
}

void Colouring::styleTo(qint64 byte) {
    if (!m_rules)
        return;
    qint64 line = m_text.lineOf(ask(Sci::SCI_GETENDSTYLED));
    qint64 begin = m_text.lineStart(line);
    const qint64 lines = m_text.lineCount();
    RuleLexer::State open = stateBefore(line);
    ask(Sci::SCI_STARTSTYLING, begin);
    for (; line < lines && begin < byte; ++line) {
        const qint64 end = line + 1 < lines ? m_text.lineStart(line + 1) : m_text.length();
        const std::string_view text = m_text.range(begin, end - begin);
        m_classes.resize(text.size());
        open = m_rules->line({text.data(), static_cast<qsizetype>(text.size())}, open, m_classes);
        // The number of a class is that of its style.
        m_view.SendScintilla(Sci::SCI_SETSTYLINGEX, text.size(), reinterpret_cast<const char*>(m_classes.data()));
        ask(Sci::SCI_SETLINESTATE, line, open);
        begin = end;
    }
}

void Colouring::completeTo(qint64 byte) const {
    const qint64 known = ask(Sci::SCI_GETENDSTYLED);
    if (!m_coloured || known >= byte)
        return;
    // Whole lines: a lexer does not notice that a word ends where its range ends.
    const qint64 behind = m_text.lineOf(byte) + 1;
    const qint64 end = behind < m_text.lineCount() ? m_text.lineStart(behind) : m_text.length();
    ask(Sci::SCI_COLOURISE, m_text.lineStart(m_text.lineOf(known)), end);
}

void Colouring::completeNear(qint64 byte) const {
    if (byte - ask(Sci::SCI_GETENDSTYLED) <= Near)
        completeTo(byte);
}

/// The message asks for something else; it colours on the way and, unlike SCI_COLOURISE, has only those lines painted
/// whose colours change.
void Colouring::completePage() const {
    if (!m_coloured || m_language == nullptr)
        return;
    const qint64 behind = ask(Sci::SCI_GETFIRSTVISIBLELINE) + ask(Sci::SCI_LINESONSCREEN);
    const qint64 last = std::min<qint64>(ask(Sci::SCI_DOCLINEFROMVISIBLE, behind), m_text.lineCount() - 1);
    if (last > 0 && m_text.lineStart(last) - ask(Sci::SCI_GETENDSTYLED) <= Near)
        ask(Sci::SCI_GETLASTCHILD, last - 1, Sci::SC_FOLDLEVELNUMBERMASK);
}

std::optional<TokenClass> Colouring::classAt(qint64 byte) const {
    if (m_language == nullptr || !m_coloured || byte < 0 || byte >= ask(Sci::SCI_GETENDSTYLED))
        return std::nullopt;
    return m_language->classOfStyle[static_cast<unsigned char>(ask(Sci::SCI_GETSTYLEAT, byte))];
}

bool Colouring::isProse(qint64 byte) const {
    const std::optional<TokenClass> token = classAt(byte);
    return token == TokenClass::Comment || token == TokenClass::Documentation || token == TokenClass::String;
}
