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

/// Divides the text of one control into token classes: by a lexer of the library with the words and options of the
/// language, or by the language's own rules whenever the control requests styles. Owned by the control. Bytes are
/// offsets into the held text.
///
/// The text is divided only as far as the window shows it, and further while no key is pressed; the classes after that
/// are not known yet.
class Colouring {
 public:
    /// View and text outlive this object.
    Colouring(const QsciScintillaBase& view, const HeldText& text) : m_view(view), m_text(text) {}

    /// The language outlives its use here; null: none.
    void setLanguage(const LanguageDefinition* language);
    const LanguageDefinition* language() const { return m_language; }

    /// Opening and closing ones by turns; the usual ones without a language.
    std::string_view brackets() const;

    /// To be called when the view shows another document, which has no language yet. `coloured` false: it can't hold
    /// any styles, and stays plain.
    void setUpDocument(bool coloured);
    /// Sets the looks of the styles for the background of the view, which must have given all of them the same look
    /// before. In a text held `inPieces` the classes at the joints are wrong, so nothing is shown as an error there.
    void setUpStyles(const TokenLooks& looks, const QColor& ground, bool inPieces) const;

    /// Finds the classes up to this byte; to be called when the view requests styles.
    void styleTo(qint64 byte);
    /// Ensures that the class of everything before this byte is known.
    void completeTo(qint64 byte) const;
    /// The same, unless so much text lies before it that the user would notice the delay.
    void completeNear(qint64 byte) const;
    /// The same for what can be seen. Must not be called while the library paints.
    void completePage() const;
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
    std::vector<TokenClass> m_classes;  ///< of the current line
};
