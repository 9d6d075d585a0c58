// What the control looks like: fonts, colours, margins.

#include "editor/control/TextControl.h"
#include "editor/held/Margins.h"
#include "editor/held/ScintillaColour.h"
#include "widgets/Contrast.h"

#include <QEvent>
#include <QPaintEvent>

#include <algorithm>

using Contrast::blended;

namespace {

/// Pixels beside the digits of the line numbers.
constexpr int NumberPadding = 12;

}  // namespace

void TextControl::setUpView() {
    setFrameShape(QFrame::NoFrame);
    send(SCI_CLEARALLCMDKEYS);
    send(SCI_USEPOPUP, 0);
    // Told before an edit instead of after it: the library's own answer to the latter counts from the start of the
    // text.
    send(SCI_SETMODEVENTMASK, SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE);
    send(SCI_SETLAYOUTCACHE, SC_CACHE_PAGE);
    // No further than is shown: each key would have all that follows cut again.
    send(SCI_SETIDLESTYLING, SC_IDLESTYLING_TOVISIBLE);
    send(SCI_SETBUFFEREDDRAW, 0);
    send(SCI_SETSCROLLWIDTH, 1);
    send(SCI_SETSCROLLWIDTHTRACKING, 1);
    send(SCI_SETVIRTUALSPACEOPTIONS, SCVS_RECTANGULARSELECTION);
    send(SCI_SETCARETLINEVISIBLEALWAYS, 1);
    for (int margin = 0; margin < Margins::Count; ++margin) {
        send(SCI_SETMARGINWIDTHN, margin, 0);
        send(SCI_SETMARGINMASKN, margin, 0);
    }
    send(SCI_SETMARGINTYPEN, Margins::Bookmarks, SC_MARGIN_COLOUR);
    send(SCI_SETMARGINMASKN, Margins::Bookmarks, 1 << Markers::Bookmark);
    // A click there means the bookmark and not the line's text.
    send(SCI_SETMARGINSENSITIVEN, Margins::Bookmarks, 1);
    showBookmarkSign();
    send(SCI_SETMARGINTYPEN, Margins::Numbers, SC_MARGIN_NUMBER);
    send(SCI_SETMARGINLEFT, 0, 4);
    send(SCI_SETMULTIPLESELECTION, 1);
    send(SCI_SETADDITIONALSELECTIONTYPING, 1);
    send(SCI_SETMULTIPASTE, SC_MULTIPASTE_EACH);
    connect(this, &QsciScintillaBase::SCN_ZOOM, this, [this] {
        m_numberedLines = -1;
        showLineNumbers();
    });
    setTextFont(m_fontName, m_fontSize);
}

void TextControl::applyDocumentState() {
    send(SCI_SETCODEPAGE, SC_CP_UTF8);
    m_colouring.setUpDocument(m_coloured);
    send(SCI_SETUNDOCOLLECTION, 1);
    send(SCI_EMPTYUNDOBUFFER);
    send(SCI_SETEOLMODE, m_eolMode);
    applyTabs();
    send(SCI_SETREADONLY, Locked());
    send(SCI_SETSAVEPOINT);
}

QString TextControl::FontName() const {
    return m_fontName;
}

int TextControl::FontSize() const {
    return m_fontSize;
}

void TextControl::setTextFont(const QString& name, int points) {
    m_fontName = name;
    m_fontSize = points;
    SendScintilla(SCI_STYLESETFONT, static_cast<uintptr_t>(STYLE_DEFAULT), name.toUtf8().constData());
    send(SCI_STYLESETSIZE, STYLE_DEFAULT, points);
    applyColours();
    m_numberedLines = -1;
    showLineNumbers();
}

void TextControl::resetZoom() {
    send(SCI_SETZOOM, 0);
}

void TextControl::applyColours() {
    const QColor base = baseColour();
    const TokenLook textLook = this->textLook();
    const QColor text = textLook.colour;
    const QColor accent = palette().color(QPalette::Highlight);
    send(SCI_STYLESETFORE, STYLE_DEFAULT, ScintillaColour::number(text));
    send(SCI_STYLESETBACK, STYLE_DEFAULT, ScintillaColour::number(base));
    send(SCI_STYLESETBOLD, STYLE_DEFAULT, textLook.bold);
    send(SCI_STYLESETITALIC, STYLE_DEFAULT, textLook.italic);
    send(SCI_STYLECLEARALL);
    applyTokenLooks();
    send(SCI_STYLESETBOLD, STYLE_LINENUMBER, 0);
    send(SCI_STYLESETITALIC, STYLE_LINENUMBER, 0);
    send(SCI_STYLESETFORE, STYLE_LINENUMBER, ScintillaColour::number(blended(text, base, 45)));
    send(SCI_STYLESETBACK, STYLE_LINENUMBER, ScintillaColour::number(blended(base, text, 5)));
    send(SCI_MARKERSETFORE, Markers::Bookmark, ScintillaColour::number(blended(text, base, 20)));
    send(SCI_MARKERSETBACK, Markers::Bookmark, ScintillaColour::number(accent));
    applyLeftMargin();
    send(SCI_STYLESETFORE, STYLE_BRACELIGHT, ScintillaColour::number(text));
    send(SCI_STYLESETBACK, STYLE_BRACELIGHT, ScintillaColour::number(blended(base, accent, 40)));
    send(SCI_STYLESETBOLD, STYLE_BRACELIGHT, 1);
    send(SCI_STYLESETFORE, STYLE_BRACEBAD, ScintillaColour::number(Contrast::readableOn(base, QColor(176, 0, 0))));
    send(SCI_STYLESETBOLD, STYLE_BRACEBAD, 1);
    send(SCI_SETWHITESPACEFORE, 1, ScintillaColour::number(blended(text, base, 60)));
    send(SCI_SETADDITIONALSELBACK, ScintillaColour::number(blended(base, accent, 60)));
    send(SCI_SETADDITIONALCARETFORE, ScintillaColour::number(blended(text, base, 30)));
    send(SCI_SETCARETFORE, ScintillaColour::number(text));
    send(SCI_SETSELFORE, 1, ScintillaColour::number(palette().color(QPalette::HighlightedText)));
    send(SCI_SETSELBACK, 1, ScintillaColour::number(accent));
    setLineHighlight(m_highlight.isValid() ? CurrentLine() : -1, m_highlight, m_highlightKind);
}

void TextControl::changeEvent(QEvent* event) {
    QsciScintillaBase::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColours();
}

/// The line is always the caret's: Scintilla keeps its highlight there and needs no colour for each line.
void TextControl::setLineHighlight(qint64 line, const QColor& colour, HighlightColour kind) {
    m_highlight = line < 0 ? QColor() : colour;
    m_highlightKind = kind;
    send(SCI_SETCARETLINEVISIBLE, m_highlight.isValid());
    if (!m_highlight.isValid())
        return;
    const QColor own = m_options.rowHighlight;
    QColor shown = own.isValid() ? own : m_highlight;
    if (!own.isValid() && kind == HighlightColour::Adapts)
        shown = Contrast::readableOn(textLook().colour, Contrast::fittedTo(baseColour(), shown));
    send(SCI_SETCARETLINEBACK, ScintillaColour::number(shown));
}

bool TextControl::LineNumbering() const {
    return m_lineNumbering;
}

void TextControl::setLineNumbering(bool on) {
    m_lineNumbering = on;
    m_numberedLines = -1;
    showLineNumbers();
}

/// Scintilla counts the pieces of a long line, and from 1.
bool TextControl::numbersAreTexts() const {
    return !m_map.joints().empty() || LineNumberStart() != 1;
}

/// As wide as the last line's number. Numbers that are texts stand at each line's first piece.
void TextControl::showLineNumbers() {
    const qint64 lines = m_lineNumbering ? TotalLines() : 0;
    send(SCI_SETMARGINTYPEN, Margins::Numbers, numbersAreTexts() ? SC_MARGIN_RTEXT : SC_MARGIN_NUMBER);
    if (lines == m_numberedLines)
        return;
    m_numberedLines = lines;
    if (lines == 0) {
        send(SCI_SETMARGINWIDTHN, Margins::Numbers, 0);
        return;
    }
    const QByteArray widest(std::max<qsizetype>(3, QByteArray::number(lines + LineNumberStart() - 1).size()), '9');
    const qint64 width = SendScintilla(SCI_TEXTWIDTH, static_cast<uintptr_t>(STYLE_LINENUMBER), widest.constData());
    send(SCI_SETMARGINWIDTHN, Margins::Numbers, width + NumberPadding);
}

void TextControl::numberVisiblePieces() {
    const qint64 first = send(SCI_GETFIRSTVISIBLELINE);
    const qint64 last = std::min(first + send(SCI_LINESONSCREEN), m_text.lineCount() - 1);
    for (qint64 held = first; held <= last; ++held) {
        const qint64 start = m_text.lineStart(held);
        const bool continues = start > 0 && m_map.joints().isJoint(start - 1);
        const QByteArray wanted =
            continues ? QByteArray() : QByteArray::number(m_map.lineOf(start) + LineNumberStart());
        QByteArray shown(send(SCI_MARGINGETTEXT, held, 0), '\0');
        send(SCI_MARGINGETTEXT, held, reinterpret_cast<qint64>(shown.data()));
        if (shown == wanted)
            continue;
        SendScintilla(SCI_MARGINSETTEXT, static_cast<uintptr_t>(held), wanted.constData());
        send(SCI_MARGINSETSTYLE, held, STYLE_LINENUMBER);
    }
}

void TextControl::paintEvent(QPaintEvent* event) {
    if (m_lineNumbering && numbersAreTexts())
        numberVisiblePieces();
    QsciScintillaBase::paintEvent(event);
}
