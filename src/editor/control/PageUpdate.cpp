#include "editor/control/PageUpdate.h"

#include "editor/control/EditView.h"

#include <cstdlib>

using Sci = QsciScintillaBase;

ScrolledPage::ScrolledPage(EditView& view)
    : m_view(view),
      m_blocked(*view.viewport()),
      m_firstRow(view.send(Sci::SCI_GETFIRSTVISIBLELINE)),
      m_left(view.send(Sci::SCI_GETXOFFSET)),
      m_coloured(isColoured()) {}

ScrolledPage::~ScrolledPage() {
    m_blocked.reset();
    if (!scrollPixels())
        m_view.Redraw();
    else if (m_changed)
        m_view.redrawLines(m_changed->first, m_changed->second);
}

/// Returns false if the whole page is to be painted. Text that is coloured only while the page is scrolled may change
/// its looks where it was shown already.
bool ScrolledPage::scrollPixels() const {
    const qint64 rows = m_firstRow - m_view.send(Sci::SCI_GETFIRSTVISIBLELINE);
    if (m_left != m_view.send(Sci::SCI_GETXOFFSET) || std::abs(rows) >= m_view.send(Sci::SCI_LINESONSCREEN))
        return false;
    if (rows == 0)
        return true;
    if (m_coloured)
        m_view.viewport()->scroll(0, static_cast<int>(rows * m_view.send(Sci::SCI_TEXTHEIGHT)));
    return m_coloured;
}

bool ScrolledPage::isColoured() const {
    const qint64 behind =
        m_view.send(Sci::SCI_DOCLINEFROMVISIBLE, m_firstRow + m_view.send(Sci::SCI_LINESONSCREEN) + 1);
    const HeldText& text = m_view.heldText();
    const qint64 end = behind < text.lineCount() ? text.lineStart(behind) : text.length();
    return m_view.send(Sci::SCI_GETENDSTYLED) >= end;
}

void ScrolledPage::setChanged(qint64 firstLine, qint64 lastLine) {
    m_changed.emplace(firstLine, lastLine);
}
