#include "editor/control/KeptView.h"

#include "editor/control/EditView.h"
#include "editor/control/ScintillaCalls.h"

using ScintillaCalls::ask;
using Sci = QsciScintillaBase;

KeptView::KeptView(const EditView& view)
    : m_changes(view.changeCount()),
      m_rectangle(ask(view, Sci::SCI_SELECTIONISRECTANGLE) != 0),
      m_ranges(view),
      m_anchor{ask(view, Sci::SCI_GETRECTANGULARSELECTIONANCHOR),
               ask(view, Sci::SCI_GETRECTANGULARSELECTIONANCHORVIRTUALSPACE)},
      m_caret{ask(view, Sci::SCI_GETRECTANGULARSELECTIONCARET),
              ask(view, Sci::SCI_GETRECTANGULARSELECTIONCARETVIRTUALSPACE)},
      m_firstLine(ask(view, Sci::SCI_GETFIRSTVISIBLELINE)),
      m_left(ask(view, Sci::SCI_GETXOFFSET)) {}

void KeptView::giveBackTo(EditView& view) const {
    if (view.changeCount() != m_changes)
        return;
    m_rectangle ? giveBackRectangle(view) : m_ranges.select(view);
    ask(view, Sci::SCI_SETFIRSTVISIBLELINE, m_firstLine);
    ask(view, Sci::SCI_SETXOFFSET, m_left);
}

void KeptView::giveBackRectangle(EditView& view) const {
    ask(view, Sci::SCI_SETRECTANGULARSELECTIONANCHOR, m_anchor.byte);
    ask(view, Sci::SCI_SETRECTANGULARSELECTIONANCHORVIRTUALSPACE, m_anchor.beyond);
    ask(view, Sci::SCI_SETRECTANGULARSELECTIONCARET, m_caret.byte);
    ask(view, Sci::SCI_SETRECTANGULARSELECTIONCARETVIRTUALSPACE, m_caret.beyond);
}
