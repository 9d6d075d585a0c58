// What the control looks like: fonts, colours, margins.

#include "editor/control/CodeMax.h"
#include "editor/held/Margins.h"
#include "editor/held/ViewColours.h"
#include "widgets/Contrast.h"

#include <QEvent>
#include <QPaintEvent>

#include <algorithm>

using Contrast::blended;
using ViewColours::readableOn;

namespace {

/// Pixels beside the digits of the line numbers.
constexpr int NumberPadding = 12;

}  // namespace

void CodeMax::setUpView() {
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

void CodeMax::applyDocumentState() {
    send(SCI_SETCODEPAGE, SC_CP_UTF8);
    m_colouring.setUpDocument(m_coloured);
    send(SCI_SETUNDOCOLLECTION, 1);
    send(SCI_EMPTYUNDOBUFFER);
    send(SCI_SETEOLMODE, m_eolMode);
    applyTabs();
    send(SCI_SETREADONLY, Locked());
    send(SCI_SETSAVEPOINT);
}

QString CodeMax::FontName() const {
    return m_fontName;
}

int CodeMax::FontSize() const {
    return m_fontSize;
}

void CodeMax::setTextFont(const QString& name, int points) {
    m_fontName = name;
    m_fontSize = points;
    SendScintilla(SCI_STYLESETFONT, static_cast<uintptr_t>(STYLE_DEFAULT), name.toUtf8().constData());
    send(SCI_STYLESETSIZE, STYLE_DEFAULT, points);
    applyColours();
    m_numberedLines = -1;
    showLineNumbers();
}

void CodeMax::resetZoom() {
    send(SCI_SETZOOM, 0);
}

void CodeMax::applyColours() {
    const QColor base = baseColour();
    const TokenLook textLook = this->textLook();
    const QColor text = textLook.colour;
    const QColor accent = palette().color(QPalette::Highlight);
    send(SCI_STYLESETFORE, STYLE_DEFAULT, ViewColours::number(text));
    send(SCI_STYLESETBACK, STYLE_DEFAULT, ViewColours::number(base));
    send(SCI_STYLESETBOLD, STYLE_DEFAULT, textLook.bold);
    send(SCI_STYLESETITALIC, STYLE_DEFAULT, textLook.italic);
    send(SCI_STYLECLEARALL);
    applyTokenLooks();
    send(SCI_STYLESETBOLD, STYLE_LINENUMBER, 0);
    send(SCI_STYLESETITALIC, STYLE_LINENUMBER, 0);
    send(SCI_STYLESETFORE, STYLE_LINENUMBER, ViewColours::number(blended(text, base, 45)));
    send(SCI_STYLESETBACK, STYLE_LINENUMBER, ViewColours::number(blended(base, text, 5)));
    send(SCI_MARKERSETFORE, Markers::Bookmark, ViewColours::number(blended(text, base, 20)));
    send(SCI_MARKERSETBACK, Markers::Bookmark, ViewColours::number(accent));
    applyLeftMargin();
    send(SCI_STYLESETFORE, STYLE_BRACELIGHT, ViewColours::number(text));
    send(SCI_STYLESETBACK, STYLE_BRACELIGHT, ViewColours::number(blended(base, accent, 40)));
    send(SCI_STYLESETBOLD, STYLE_BRACELIGHT, 1);
    send(SCI_STYLESETFORE, STYLE_BRACEBAD, ViewColours::number(readableOn(base, QColor(176, 0, 0))));
    send(SCI_STYLESETBOLD, STYLE_BRACEBAD, 1);
    send(SCI_SETWHITESPACEFORE, 1, ViewColours::number(blended(text, base, 60)));
    send(SCI_SETADDITIONALSELBACK, ViewColours::number(blended(base, accent, 60)));
    send(SCI_SETADDITIONALCARETFORE, ViewColours::number(blended(text, base, 30)));
    send(SCI_SETCARETFORE, ViewColours::number(text));
    send(SCI_SETSELFORE, 1, ViewColours::number(palette().color(QPalette::HighlightedText)));
    send(SCI_SETSELBACK, 1, ViewColours::number(accent));
    setLineHighlight(m_highlight.isValid() ? CurrentLine() : -1, m_highlight, m_highlightKind);
}

void CodeMax::changeEvent(QEvent* event) {
    QsciScintillaBase::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColours();
}

/// The line is always the caret's: Scintilla keeps its highlight there and needs no colour for each line.
void CodeMax::setLineHighlight(qint64 line, const QColor& colour, HighlightColour kind) {
    m_highlight = line < 0 ? QColor() : colour;
    m_highlightKind = kind;
    send(SCI_SETCARETLINEVISIBLE, m_highlight.isValid());
    if (!m_highlight.isValid())
        return;
    const QColor own = m_options.rowHighlight;
    const bool adapts = !own.isValid() && kind == HighlightColour::Adapts;
    const QColor shown = own.isValid() ? own : m_highlight;
    send(SCI_SETCARETLINEBACK, ViewColours::number(adapts ? readableOn(baseColour(), shown) : shown));
}

bool CodeMax::LineNumbering() const {
    return m_lineNumbering;
}

void CodeMax::setLineNumbering(bool on) {
    m_lineNumbering = on;
    m_numberedLines = -1;
    showLineNumbers();
}

/// Scintilla counts the pieces of a long line, and from 1.
bool CodeMax::numbersAreTexts() const {
    return !m_map.joints().empty() || LineNumberStart() != 1;
}

/// As wide as the last line's number. Numbers that are texts stand at each line's first piece.
void CodeMax::showLineNumbers() {
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

void CodeMax::numberVisiblePieces() {
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

void CodeMax::paintEvent(QPaintEvent* event) {
    if (m_lineNumbering && numbersAreTexts())
        numberVisiblePieces();
    QsciScintillaBase::paintEvent(event);
}
