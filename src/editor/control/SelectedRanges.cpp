#include "editor/control/SelectedRanges.h"

#include "editor/control/ScintillaCalls.h"
#include "editor/control/TextControl.h"

#include <iterator>

using ScintillaCalls::ask;
using Sci = QsciScintillaBase;

SelectedRanges::SelectedRanges(const TextControl& control) : m_main(ask(control, Sci::SCI_GETMAINSELECTION)) {
    for (qint64 range = 0; range < ask(control, Sci::SCI_GETSELECTIONS); ++range) {
        m_ranges.push_back({{ask(control, Sci::SCI_GETSELECTIONNANCHOR, range),
                             ask(control, Sci::SCI_GETSELECTIONNANCHORVIRTUALSPACE, range)},
                            {ask(control, Sci::SCI_GETSELECTIONNCARET, range),
                             ask(control, Sci::SCI_GETSELECTIONNCARETVIRTUALSPACE, range)}});
    }
}

void SelectedRanges::select(const TextControl& control) const {
    ask(control, Sci::SCI_CLEARSELECTIONS);
    for (qint64 range = 0; range < std::ssize(m_ranges); ++range) {
        const auto& [anchor, caret] = m_ranges[static_cast<std::size_t>(range)];
        ask(control, range == 0 ? Sci::SCI_SETSELECTION : Sci::SCI_ADDSELECTION, caret.byte, anchor.byte);
        ask(control, Sci::SCI_SETSELECTIONNANCHORVIRTUALSPACE, range, anchor.beyond);
        ask(control, Sci::SCI_SETSELECTIONNCARETVIRTUALSPACE, range, caret.beyond);
    }
    ask(control, Sci::SCI_SETMAINSELECTION, m_main);
}
