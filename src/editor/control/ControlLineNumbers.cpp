#include "editor/control/ControlLineNumbers.h"

#include "editor/control/EditView.h"
#include "editor/held/Margins.h"

#include <algorithm>

using Sci = QsciScintillaBase;

namespace {

/// Pixels beside the digits of the line numbers.
constexpr int NumberPadding = 12;

}  // namespace

ControlLineNumbers::ControlLineNumbers(EditView& view) : m_view(view) {
    QObject::connect(&view, &QsciScintillaBase::SCN_ZOOM, &view, [this] { followAnew(); });
}

void ControlLineNumbers::setLineNumbering(bool on) {
    m_shown = on;
    followAnew();
}

/// Scintilla counts the pieces of a long line, and from 1.
bool ControlLineNumbers::areTexts() const {
    return !m_view.map().joints().empty() || m_start != 1;
}

/// Numbers that are texts are at each line's first piece.
void ControlLineNumbers::follow() {
    const qint64 lines = m_shown ? m_view.TotalLines() : 0;
    const qint64 type = areTexts() ? Sci::SC_MARGIN_RTEXT : Sci::SC_MARGIN_NUMBER;
    // Scintilla lays out and paints everything again whenever it is set, even to what it was.
    if (type != m_view.send(Sci::SCI_GETMARGINTYPEN, Margins::Numbers))
        m_view.send(Sci::SCI_SETMARGINTYPEN, Margins::Numbers, type);
    if (lines == m_numberedLines)
        return;
    m_numberedLines = lines;
    if (lines == 0) {
        m_view.send(Sci::SCI_SETMARGINWIDTHN, Margins::Numbers, 0);
        return;
    }
    const QByteArray widest(std::max<qsizetype>(3, QByteArray::number(lines + m_start - 1).size()), '9');
    const qint64 width =
        m_view.SendScintilla(Sci::SCI_TEXTWIDTH, static_cast<uintptr_t>(Sci::STYLE_LINENUMBER), widest.constData());
    m_view.send(Sci::SCI_SETMARGINWIDTHN, Margins::Numbers, width + NumberPadding);
}

void ControlLineNumbers::numberVisiblePieces() {
    if (!m_shown || !areTexts())
        return;
    const qint64 first = m_view.send(Sci::SCI_GETFIRSTVISIBLELINE);
    const qint64 last = std::min(first + m_view.send(Sci::SCI_LINESONSCREEN), m_view.heldText().lineCount() - 1);
    for (qint64 held = first; held <= last; ++held) {
        const qint64 start = m_view.heldText().lineStart(held);
        const bool continues = start > 0 && m_view.map().joints().isJoint(start - 1);
        const QByteArray wanted = continues ? QByteArray() : QByteArray::number(m_view.map().lineOf(start) + m_start);
        QByteArray shown(m_view.send(Sci::SCI_MARGINGETTEXT, held, 0), '\0');
        m_view.send(Sci::SCI_MARGINGETTEXT, held, reinterpret_cast<qint64>(shown.data()));
        if (shown == wanted)
            continue;
        m_view.SendScintilla(Sci::SCI_MARGINSETTEXT, static_cast<uintptr_t>(held), wanted.constData());
        m_view.send(Sci::SCI_MARGINSETSTYLE, held, Sci::STYLE_LINENUMBER);
    }
}

void ControlLineNumbers::setLineNumberStart(qint64 number) {
    m_start = std::max<qint64>(number, 0);
    followAnew();
    m_view.Redraw();
}

void ControlLineNumbers::followAnew() {
    m_numberedLines = -1;
    follow();
}
