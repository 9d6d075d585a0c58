#include "editor/print/PaperLook.h"

#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/TextControl.h"
#include "editor/held/Colouring.h"
#include "editor/language/LanguageDefinition.h"
#include "editor/language/TokenTheme.h"
#include "widgets/Contrast.h"

#include <algorithm>

namespace {

constexpr QColor Paper(255, 255, 255);
/// How much of the paper's white is in the colour of the line numbers, in percent.
constexpr int WhiteInNumbers = 45;

QColor inked(const QColor& colour, PaperLook::Ink ink) {
    const int grey = qGray(colour.rgb());
    return ink == PaperLook::Ink::Greys ? QColor(grey, grey, grey) : colour;
}

/// A text in pieces has wrong classes at the joints, so nothing of it is shown as an error.
TokenClass classOf(const TextControl& control, int style) {
    const LanguageDefinition* language = control.colouring().language();
    const bool isOfTheView = style >= TextControl::STYLE_DEFAULT && style <= TextControl::STYLE_LASTPREDEFINED;
    if (language == nullptr || isOfTheView)
        return TokenClass::Text;
    const TokenClass token = language->classOfStyle[static_cast<std::size_t>(style)];
    const bool inPieces = !control.map().joints().empty();
    return inPieces && token == TokenClass::Error ? TokenClass::Text : token;
}

QTextCharFormat formatFor(const TokenLook& look, PaperLook::Ink ink) {
    QTextCharFormat format;
    format.setForeground(inked(look.colour, ink));
    if (look.bold)
        format.setFontWeight(QFont::Bold);
    if (look.italic)
        format.setFontItalic(true);
    return format;
}

void setFormat(PaperLook& look, int style, const QTextCharFormat& format) {
    const auto known = std::find(look.formats.begin(), look.formats.end(), format);
    look.formatOfStyle[static_cast<std::size_t>(style)] = static_cast<std::size_t>(known - look.formats.begin());
    if (known == look.formats.end())
        look.formats.push_back(format);
}

}  // namespace

PaperLook PaperLook::of(const TextControl& control, Ink ink) {
    const ControlLook& onScreen = control.look();
    const TokenLooks looks = onScreen.theme() != nullptr ? onScreen.theme()->looks() : TokenLooks();
    PaperLook look;
    look.font = QFont(onScreen.FontName(), onScreen.FontSize());
    look.font.setStyleHint(QFont::TypeWriter);
    look.textColour = inked(looks.on(Paper, TokenClass::Text).colour, ink);
    look.numberColour = Contrast::blended(look.textColour, Paper, WhiteInNumbers);
    for (int style = 0; style < LanguageDefinition::Styles; ++style)
        setFormat(look, style, formatFor(looks.on(Paper, classOf(control, style)), ink));
    QTextCharFormat names;
    names.setForeground(Paper);
    names.setBackground(look.numberColour);
    setFormat(look, TextControl::STYLE_CONTROLCHAR, names);
    look.tabWidth = static_cast<int>(control.send(TextControl::SCI_GETTABWIDTH));
    look.showsNumbers = control.lineNumbers().LineNumbering();
    return look;
}
