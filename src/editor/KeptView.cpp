#include "editor/KeptView.h"

#include "editor/CodeMax.h"
#include "editor/ControlText.h"

#include <iterator>

using ControlText::ask;
using Sci = QsciScintillaBase;

KeptView::KeptView(const CodeMax& control)
    : m_changes(control.changeCount()),
      m_rectangle(ask(control, Sci::SCI_SELECTIONISRECTANGLE) != 0),
      m_main(ask(control, Sci::SCI_GETMAINSELECTION)),
      m_firstLine(ask(control, Sci::SCI_GETFIRSTVISIBLELINE)),
      m_left(ask(control, Sci::SCI_GETXOFFSET)) {
    if (m_rectangle) {
        m_ranges.push_back({{ask(control, Sci::SCI_GETRECTANGULARSELECTIONANCHOR),
                             ask(control, Sci::SCI_GETRECTANGULARSELECTIONANCHORVIRTUALSPACE)},
                            {ask(control, Sci::SCI_GETRECTANGULARSELECTIONCARET),
                             ask(control, Sci::SCI_GETRECTANGULARSELECTIONCARETVIRTUALSPACE)}});
        return;
    }
    for (qint64 range = 0; range < ask(control, Sci::SCI_GETSELECTIONS); ++range)
        m_ranges.push_back({{ask(control, Sci::SCI_GETSELECTIONNANCHOR, range),
                             ask(control, Sci::SCI_GETSELECTIONNANCHORVIRTUALSPACE, range)},
                            {ask(control, Sci::SCI_GETSELECTIONNCARET, range),
                             ask(control, Sci::SCI_GETSELECTIONNCARETVIRTUALSPACE, range)}});
}

void KeptView::giveBackTo(CodeMax& control) const {
    if (control.changeCount() != m_changes)
        return;
    m_rectangle ? giveBackRectangle(control) : giveBackRanges(control);
    ask(control, Sci::SCI_SETFIRSTVISIBLELINE, m_firstLine);
    ask(control, Sci::SCI_SETXOFFSET, m_left);
}

void KeptView::giveBackRectangle(CodeMax& control) const {
    const auto& [anchor, caret] = m_ranges.front();
    ask(control, Sci::SCI_SETRECTANGULARSELECTIONANCHOR, anchor.byte);
    ask(control, Sci::SCI_SETRECTANGULARSELECTIONANCHORVIRTUALSPACE, anchor.beyond);
    ask(control, Sci::SCI_SETRECTANGULARSELECTIONCARET, caret.byte);
    ask(control, Sci::SCI_SETRECTANGULARSELECTIONCARETVIRTUALSPACE, caret.beyond);
}

void KeptView::giveBackRanges(CodeMax& control) const {
    ask(control, Sci::SCI_CLEARSELECTIONS);
    for (qint64 range = 0; range < std::ssize(m_ranges); ++range) {
        const auto& [anchor, caret] = m_ranges[static_cast<std::size_t>(range)];
        ask(control, range == 0 ? Sci::SCI_SETSELECTION : Sci::SCI_ADDSELECTION, caret.byte, anchor.byte);
        ask(control, Sci::SCI_SETSELECTIONNANCHORVIRTUALSPACE, range, anchor.beyond);
        ask(control, Sci::SCI_SETSELECTIONNCARETVIRTUALSPACE, range, caret.beyond);
    }
    ask(control, Sci::SCI_SETMAINSELECTION, m_main);
}
