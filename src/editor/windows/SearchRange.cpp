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
    m_ranges = m_selection.selectedRanges();
    m_changes = m_view.changeCount();
}

void SearchRange::takeSelectedAnew() {
    if (!m_selection.selectedRanges().front().empty() && !m_search.isMatchSelected())
        takeSelection();
}

std::optional<std::vector<TextMatch>> SearchRange::ranges() const {
    return m_changes == m_view.changeCount() ? m_ranges : std::nullopt;
}

/// Text inserted at either end becomes part of the range: a replaced match there is deleted and inserted again.
void SearchRange::textAboutToChange(qint64 at, qint64 length, bool inserts) {
    if (!m_ranges)
        return;
    // The control has counted this change already.
    if (m_view.changeCount() != ++m_changes) {
        m_ranges.reset();
        return;
    }
    const auto moved = [&](qint64 place, bool alsoAtPlace) {
        if (!inserts)
            return place <= at ? place : std::max<qint64>(at, place - length);
        return at < place || (alsoAtPlace && at == place) ? place + length : place;
    };
    for (TextMatch& range : *m_ranges)
        range = {moved(range.from, false), moved(range.to, true)};
    // What is inserted there next would belong to both.
    const auto touches = [](const TextMatch& range, const TextMatch& next) { return range.to >= next.from; };
    if (std::ranges::adjacent_find(*m_ranges, touches) != m_ranges->end())
        m_ranges.reset();
}
