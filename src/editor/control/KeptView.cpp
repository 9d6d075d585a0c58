#include "editor/control/KeptView.h"

#include "editor/control/ScintillaCalls.h"
#include "editor/control/TextControl.h"

using ScintillaCalls::ask;
using Sci = QsciScintillaBase;

KeptView::KeptView(const TextControl& control)
    : m_changes(control.changeCount()),
      m_rectangle(ask(control, Sci::SCI_SELECTIONISRECTANGLE) != 0),
      m_ranges(control),
      m_anchor{ask(control, Sci::SCI_GETRECTANGULARSELECTIONANCHOR),
               ask(control, Sci::SCI_GETRECTANGULARSELECTIONANCHORVIRTUALSPACE)},
      m_caret{ask(control, Sci::SCI_GETRECTANGULARSELECTIONCARET),
              ask(control, Sci::SCI_GETRECTANGULARSELECTIONCARETVIRTUALSPACE)},
      m_firstLine(ask(control, Sci::SCI_GETFIRSTVISIBLELINE)),
      m_left(ask(control, Sci::SCI_GETXOFFSET)) {}

void KeptView::giveBackTo(TextControl& control) const {
    if (control.changeCount() != m_changes)
        return;
    m_rectangle ? giveBackRectangle(control) : m_ranges.select(control);
    ask(control, Sci::SCI_SETFIRSTVISIBLELINE, m_firstLine);
    ask(control, Sci::SCI_SETXOFFSET, m_left);
}

void KeptView::giveBackRectangle(TextControl& control) const {
    ask(control, Sci::SCI_SETRECTANGULARSELECTIONANCHOR, m_anchor.byte);
    ask(control, Sci::SCI_SETRECTANGULARSELECTIONANCHORVIRTUALSPACE, m_anchor.beyond);
    ask(control, Sci::SCI_SETRECTANGULARSELECTIONCARET, m_caret.byte);
    ask(control, Sci::SCI_SETRECTANGULARSELECTIONCARETVIRTUALSPACE, m_caret.beyond);
}
