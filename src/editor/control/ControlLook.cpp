#include "editor/control/ControlLook.h"

#include "editor/control/ControlBraces.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/EditView.h"
#include "editor/held/Colouring.h"
#include "editor/held/Margins.h"
#include "editor/held/ScintillaColour.h"
#include "editor/language/TokenTheme.h"
#include "widgets/Contrast.h"

#include <QFontDatabase>
#include <QPalette>

using Sci = QsciScintillaBase;

using Contrast::blended;

namespace {

constexpr QColor BadBrace(176, 0, 0);
/// For desktops that state the size of their fonts in pixels.
constexpr int DefaultPoints = 10;

}  // namespace

ControlLook::ControlLook(EditView& view, ControlTyping& typing, ControlLineNumbers& lineNumbers, ControlBraces& braces)
    : m_view(view), m_typing(typing), m_lineNumbers(lineNumbers), m_braces(braces) {
    const QFont font = defaultFont();
    setUpMargins();
    setTextFont(font.family(), font.pointSize());
}

QFont ControlLook::defaultFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (font.pointSize() <= 0)
        font.setPointSize(DefaultPoints);
    return font;
}

void ControlLook::setUpMargins() {
    for (int margin = 0; margin < Margins::Count; ++margin) {
        m_view.send(Sci::SCI_SETMARGINWIDTHN, margin, 0);
        m_view.send(Sci::SCI_SETMARGINMASKN, margin, 0);
    }
    m_view.send(Sci::SCI_SETMARGINTYPEN, Margins::Bookmarks, Sci::SC_MARGIN_COLOUR);
    m_view.send(Sci::SCI_SETMARGINMASKN, Margins::Bookmarks, 1 << Markers::Bookmark);
    // A click there toggles the bookmark and does not select the line's text.
    m_view.send(Sci::SCI_SETMARGINSENSITIVEN, Margins::Bookmarks, 1);
    showBookmarkSign();
    m_view.send(Sci::SCI_SETMARGINTYPEN, Margins::Numbers, Sci::SC_MARGIN_NUMBER);
    m_view.send(Sci::SCI_SETMARGINLEFT, 0, 4);
}

void ControlLook::setTextFont(const QString& name, int points) {
    m_fontName = name;
    if (points >= SmallestFontSize)
        m_fontSize = points;
    m_view.SendScintilla(Sci::SCI_STYLESETFONT, static_cast<uintptr_t>(Sci::STYLE_DEFAULT), name.toUtf8().constData());
    m_view.send(Sci::SCI_STYLESETSIZE, Sci::STYLE_DEFAULT, m_fontSize);
    applyColours();
    m_lineNumbers.followAnew();
}

void ControlLook::resetZoom() {
    m_view.send(Sci::SCI_SETZOOM, 0);
}

void ControlLook::applyColours() {
    const QColor base = baseColour();
    const TokenLook look = textLook();
    m_view.send(Sci::SCI_STYLESETFORE, Sci::STYLE_DEFAULT, ScintillaColour::number(look.colour));
    m_view.send(Sci::SCI_STYLESETBACK, Sci::STYLE_DEFAULT, ScintillaColour::number(base));
    m_view.send(Sci::SCI_STYLESETBOLD, Sci::STYLE_DEFAULT, look.bold);
    m_view.send(Sci::SCI_STYLESETITALIC, Sci::STYLE_DEFAULT, look.italic);
    m_view.send(Sci::SCI_STYLECLEARALL);
    applyTokenLooks();
    applyMarginColours(base, look.colour);
    applyMarkColours(base, look.colour);
    setLineHighlight(m_highlight.isValid() ? 0 : -1, m_highlight, m_highlightKind);
}

void ControlLook::applyMarginColours(const QColor& base, const QColor& text) {
    const QColor accent = m_view.palette().color(QPalette::Highlight);
    m_view.send(Sci::SCI_STYLESETBOLD, Sci::STYLE_LINENUMBER, 0);
    m_view.send(Sci::SCI_STYLESETITALIC, Sci::STYLE_LINENUMBER, 0);
    m_view.send(Sci::SCI_STYLESETFORE, Sci::STYLE_LINENUMBER, ScintillaColour::number(blended(text, base, 45)));
    m_view.send(Sci::SCI_STYLESETBACK, Sci::STYLE_LINENUMBER, ScintillaColour::number(blended(base, text, 5)));
    m_view.send(Sci::SCI_MARKERSETFORE, Markers::Bookmark, ScintillaColour::number(blended(text, base, 20)));
    m_view.send(Sci::SCI_MARKERSETBACK, Markers::Bookmark, ScintillaColour::number(accent));
    applyLeftMargin();
}

/// Braces, blanks, carets and selections.
void ControlLook::applyMarkColours(const QColor& base, const QColor& text) {
    const QColor accent = m_view.palette().color(QPalette::Highlight);
    const QColor onAccent = m_view.palette().color(QPalette::HighlightedText);
    m_view.send(Sci::SCI_STYLESETFORE, Sci::STYLE_BRACELIGHT, ScintillaColour::number(text));
    m_view.send(Sci::SCI_STYLESETBACK, Sci::STYLE_BRACELIGHT, ScintillaColour::number(blended(base, accent, 40)));
    m_view.send(Sci::SCI_STYLESETBOLD, Sci::STYLE_BRACELIGHT, 1);
    m_view.send(Sci::SCI_STYLESETFORE, Sci::STYLE_BRACEBAD,
                ScintillaColour::number(Contrast::readableOn(base, BadBrace)));
    m_view.send(Sci::SCI_STYLESETBOLD, Sci::STYLE_BRACEBAD, 1);
    m_view.send(Sci::SCI_SETWHITESPACEFORE, 1, ScintillaColour::number(blended(text, base, 60)));
    m_view.send(Sci::SCI_SETADDITIONALSELBACK, ScintillaColour::number(blended(base, accent, 60)));
    m_view.send(Sci::SCI_SETADDITIONALCARETFORE, ScintillaColour::number(blended(text, base, 30)));
    m_view.send(Sci::SCI_SETCARETFORE, ScintillaColour::number(text));
    m_view.send(Sci::SCI_SETSELFORE, 1, ScintillaColour::number(onAccent));
    m_view.send(Sci::SCI_SETSELBACK, 1, ScintillaColour::number(accent));
}

/// The line is always the caret's: Scintilla keeps its highlight there and needs no colour for each line.
void ControlLook::setLineHighlight(qint64 line, const QColor& colour, HighlightColour kind) {
    m_highlight = line < 0 ? QColor() : colour;
    m_highlightKind = kind;
    m_view.send(Sci::SCI_SETCARETLINEVISIBLE, m_highlight.isValid());
    if (!m_highlight.isValid())
        return;
    const QColor own = m_elements[RowHighlightElement];
    QColor shown = own.isValid() ? own : m_highlight;
    if (!own.isValid() && kind == HighlightColour::Adapts)
        shown = Contrast::readableOn(textLook().colour, Contrast::fittedTo(baseColour(), shown));
    m_view.send(Sci::SCI_SETCARETLINEBACK, ScintillaColour::number(shown));
}

void ControlLook::setLanguage(const LanguageDefinition* language) {
    if (language == m_view.colouring().language())
        return;
    m_view.colouring().setLanguage(language);
    m_typing.applyTabs();
    applyColours();
    m_braces.follow();
}

void ControlLook::setTheme(TokenTheme* theme) {
    if (m_theme != nullptr)
        QObject::disconnect(m_theme, nullptr, &m_view, nullptr);
    m_theme = theme;
    if (theme != nullptr)
        QObject::connect(theme, &TokenTheme::Changed, &m_view, [this] { applyColours(); });
    applyColours();
}

TokenLooks ControlLook::looks() const {
    return m_theme == nullptr ? TokenLooks() : m_theme->looks();
}

/// The desktop's unless the user has chosen another one; readable on a chosen background too.
TokenLook ControlLook::textLook() const {
    const QColor base = baseColour();
    TokenLook look = looks().on(base, TokenClass::Text);
    if (!looks().ownColour(TokenLooks::groundOf(base), TokenClass::Text).isValid())
        look.colour = Contrast::readableOn(base, m_view.palette().color(QPalette::Text));
    return look;
}

void ControlLook::applyTokenLooks() {
    m_colouredInPieces = !m_view.map().joints().empty();
    m_view.colouring().setUpStyles(looks(), baseColour(), m_colouredInPieces);
}

void ControlLook::followPieces() {
    if (m_colouredInPieces == m_view.map().joints().empty())
        applyColours();
}

void ControlLook::setDisplayLeftMargin(bool on) {
    m_leftMargin = on;
    applyLeftMargin();
}

void ControlLook::applyLeftMargin() {
    const QColor text = textLook().colour;
    const QColor own = m_elements[LeftMarginElement];
    const QColor shown = own.isValid() ? own : Contrast::blended(baseColour(), text, 5);
    m_view.send(Sci::SCI_SETMARGINBACKN, Margins::Bookmarks, ScintillaColour::number(shown));
    m_view.send(Sci::SCI_SETMARGINWIDTHN, Margins::Bookmarks, m_leftMargin ? Margins::BookmarksWidth : 0);
}

void ControlLook::setHImageList(const QList<QPixmap>& images) {
    m_images = images;
    showBookmarkSign();
}

void ControlLook::showBookmarkSign() {
    constexpr unsigned long Mark = Markers::Bookmark;
    if (m_images.isEmpty())
        m_view.send(Sci::SCI_MARKERDEFINE, Mark, Sci::SC_MARK_BOOKMARK);
    else
        m_view.SendScintilla(Sci::SCI_MARKERDEFINEPIXMAP, Mark, m_images.first());
}

QColor ControlLook::baseColour() const {
    return m_elements[BackgroundElement].isValid() ? m_elements[BackgroundElement]
                                                   : m_view.palette().color(QPalette::Base);
}

void ControlLook::setElementColour(Element element, const QColor& colour) {
    m_elements[element] = colour;
    applyColours();
}

bool ControlLook::DisplayWhitespace() const {
    return m_view.send(Sci::SCI_GETVIEWWS) != Sci::SCWS_INVISIBLE;
}

void ControlLook::setDisplayWhitespace(bool on) {
    m_view.send(Sci::SCI_SETVIEWWS, on ? Sci::SCWS_VISIBLEALWAYS : Sci::SCWS_INVISIBLE);
}

bool ControlLook::VScrollVisible() const {
    return m_view.send(Sci::SCI_GETVSCROLLBAR) != 0;
}

void ControlLook::setVScrollVisible(bool on) {
    m_view.send(Sci::SCI_SETVSCROLLBAR, on);
}

bool ControlLook::HScrollVisible() const {
    return m_view.send(Sci::SCI_GETHSCROLLBAR) != 0;
}

void ControlLook::setHScrollVisible(bool on) {
    m_view.send(Sci::SCI_SETHSCROLLBAR, on);
}

bool ControlLook::WordWrap() const {
    return m_view.send(Sci::SCI_GETWRAPMODE) != Sci::SC_WRAP_NONE;
}

void ControlLook::setWordWrap(bool on) {
    m_view.send(Sci::SCI_SETWRAPMODE, on ? Sci::SC_WRAP_WORD : Sci::SC_WRAP_NONE);
}
