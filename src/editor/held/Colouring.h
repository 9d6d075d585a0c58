#pragma once

#include "editor/language/LanguageDefinition.h"
#include "editor/language/RuleLexer.h"
#include "text/held/HeldText.h"

#include <QColor>

#include <optional>
#include <string_view>
#include <vector>

class QsciScintillaBase;
class TokenLooks;

/// How the text of one control is cut into token classes: by a lexer of the library that is given the words and options
/// of the language, or by the language's own rules whenever the control asks. Owned by the control. Bytes are offsets
/// into the held text.
///
/// Cutting goes on only as far as the window shows, and in the pauses between keys; what lies behind is not known yet.
class Colouring {
 public:
    /// View and text outlive this object.
    Colouring(const QsciScintillaBase& view, const HeldText& text) : m_view(view), m_text(text) {}

    /// The language outlives its use here; null: none.
    void setLanguage(const LanguageDefinition* language);
    const LanguageDefinition* language() const { return m_language; }

    /// Opening and closing ones by turns; the usual ones without a language.
    std::string_view brackets() const;

    /// To be called when the view shows another document, which knows of no language. `coloured` false: it can't hold
    /// any styles, and stays plain.
    void setUpDocument(bool coloured);
    /// Gives the styles their looks on the ground of the view, which has given all of them the same before. Cuts of a
    /// text `inPieces` are wrong at the joints, so nothing is called an error there.
    void setUpStyles(const TokenLooks& looks, const QColor& ground, bool inPieces) const;

    /// Cuts the text up to this byte; to be called when the view asks for styles.
    void styleTo(qint64 byte);
    /// Sees to it that the class of everything in front of this byte is known.
    void completeTo(qint64 byte) const;
    /// The same, unless so much lies before it that it would be felt.
    void completeNear(qint64 byte) const;
    /// The class of a byte; nothing while it is not known, or without a language.
    std::optional<TokenClass> classAt(qint64 byte) const;
    /// Whether the byte is known to belong to a comment or a string.
    bool isProse(qint64 byte) const;

 private:
    qint64 ask(unsigned message, qint64 first = 0, qint64 second = 0) const;
    void tellLexer() const;
    RuleLexer::State stateBefore(qint64 line) const;

    const QsciScintillaBase& m_view;
    const HeldText& m_text;
    const LanguageDefinition* m_language = nullptr;
    std::optional<RuleLexer> m_rules;  ///< of a language without a lexer of the library
    bool m_coloured = true;
    std::vector<TokenClass> m_classes;  ///< of the line that is being cut
};
