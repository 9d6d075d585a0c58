#include "editor/windows/SearchRange.h"

#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/EditView.h"

#include <algorithm>

SearchRange::SearchRange(EditView& view, const ControlSelection& selection, const ControlSearch& search)
    : m_view(view), m_selection(selection), m_search(search) {
    connect(&view, &EditView::SelChange, this, &SearchRange::takeSelectedAnew);
    connect(&view, &EditView::aboutToChange, this, &SearchRange::textAboutToChange);
}

void SearchRange::takeSelection() {
    m_range = m_selection.selectedBytes();
    m_changes = m_view.changeCount();
}

void SearchRange::takeSelectedAnew() {
    if (!m_selection.selectedBytes().empty() && !m_search.isMatchSelected())
        takeSelection();
}

std::optional<TextMatch> SearchRange::range() const {
    return m_changes == m_view.changeCount() ? m_range : std::nullopt;
}

/// Text inserted at either end becomes part of the range: a replaced match there is deleted and inserted again.
void SearchRange::textAboutToChange(qint64 at, qint64 length, bool inserts) {
    if (!m_range)
        return;
    // The control has counted this change already.
    if (m_view.changeCount() != ++m_changes) {
        m_range.reset();
        return;
    }
    const auto moved = [&](qint64 place, bool alsoAtPlace) {
        if (!inserts)
            return place <= at ? place : std::max<qint64>(at, place - length);
        return at < place || (alsoAtPlace && at == place) ? place + length : place;
    };
    m_range = TextMatch{moved(m_range->from, false), moved(m_range->to, true)};
}
