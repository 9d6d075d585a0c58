#include "editor/control/SelectedRanges.h"

#include "editor/control/EditView.h"
#include "editor/control/ScintillaCalls.h"

#include <iterator>

using ScintillaCalls::ask;
using Sci = QsciScintillaBase;

SelectedRanges::SelectedRanges(const EditView& view) : m_main(ask(view, Sci::SCI_GETMAINSELECTION)) {
    for (qint64 range = 0; range < ask(view, Sci::SCI_GETSELECTIONS); ++range) {
        m_ranges.push_back({{ask(view, Sci::SCI_GETSELECTIONNANCHOR, range),
                             ask(view, Sci::SCI_GETSELECTIONNANCHORVIRTUALSPACE, range)},
                            {ask(view, Sci::SCI_GETSELECTIONNCARET, range),
                             ask(view, Sci::SCI_GETSELECTIONNCARETVIRTUALSPACE, range)}});
    }
}

void SelectedRanges::select(const EditView& view) const {
    ask(view, Sci::SCI_CLEARSELECTIONS);
    for (qint64 range = 0; range < std::ssize(m_ranges); ++range) {
        const auto& [anchor, caret] = m_ranges[static_cast<std::size_t>(range)];
        ask(view, range == 0 ? Sci::SCI_SETSELECTION : Sci::SCI_ADDSELECTION, caret.byte, anchor.byte);
        ask(view, Sci::SCI_SETSELECTIONNANCHORVIRTUALSPACE, range, anchor.beyond);
        ask(view, Sci::SCI_SETSELECTIONNCARETVIRTUALSPACE, range, caret.beyond);
    }
    ask(view, Sci::SCI_SETMAINSELECTION, m_main);
}

void SelectedRanges::set(const EditView& view, const std::vector<ByteSelection>& ranges, std::size_t main) {
    ask(view, Sci::SCI_CLEARSELECTIONS);
    for (const ByteSelection& range : ranges) {
        const unsigned message = &range == &ranges.front() ? Sci::SCI_SETSELECTION : Sci::SCI_ADDSELECTION;
        ask(view, message, range.caret, range.anchor);
    }
    ask(view, Sci::SCI_SETMAINSELECTION, static_cast<qint64>(main));
}
