// Languages and the looks of their token classes in the control.

#include "editor/control/EditScope.h"
#include "editor/control/TextControl.h"
#include "editor/language/TokenTheme.h"
#include "widgets/Contrast.h"

void TextControl::setLanguage(const LanguageDefinition* language) {
    if (language == m_colouring.language())
        return;
    m_colouring.setLanguage(language);
    applyTabs();
    applyColours();
    showBraces();
}

void TextControl::setTheme(TokenTheme* theme) {
    if (m_theme != nullptr)
        disconnect(m_theme, nullptr, this, nullptr);
    m_theme = theme;
    if (theme != nullptr)
        connect(theme, &TokenTheme::Changed, this, &TextControl::applyColours);
    applyColours();
}

TokenLooks TextControl::looks() const {
    return m_theme == nullptr ? TokenLooks() : m_theme->looks();
}

/// The desktop's unless a person has chosen another one; readable on a background of one's own too.
TokenLook TextControl::textLook() const {
    const QColor base = baseColour();
    TokenLook look = looks().on(base, TokenClass::Text);
    if (!looks().ownColour(TokenLooks::groundOf(base), TokenClass::Text).isValid())
        look.colour = Contrast::readableOn(base, palette().color(QPalette::Text));
    return look;
}

void TextControl::applyTokenLooks() {
    m_colouredInPieces = !m_map.joints().empty();
    m_colouring.setUpStyles(looks(), baseColour(), m_colouredInPieces);
}

/// Errors are shown or not as lines are held in pieces or no longer are.
void TextControl::followPieces() {
    if (m_colouredInPieces == m_map.joints().empty())
        applyColours();
}
