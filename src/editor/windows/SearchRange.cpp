#include "editor/windows/SearchRange.h"

#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/TextControl.h"

#include <algorithm>

SearchRange::SearchRange(TextControl& control) : m_control(control) {
    connect(&control, &TextControl::SelChange, this, &SearchRange::takeSelectedAnew);
    connect(&control, &TextControl::aboutToChange, this, &SearchRange::textAboutToChange);
}

void SearchRange::takeSelection() {
    m_range = m_control.selected().selectedBytes();
    m_changes = m_control.changeCount();
}

void SearchRange::takeSelectedAnew() {
    if (!m_control.selected().selectedBytes().empty() && !m_control.search().isMatchSelected())
        takeSelection();
}

std::optional<TextMatch> SearchRange::range() const {
    return m_changes == m_control.changeCount() ? m_range : std::nullopt;
}

/// What is inserted at either end becomes part of the range: a replaced match there is deleted and inserted anew.
void SearchRange::textAboutToChange(qint64 at, qint64 length, bool inserts) {
    if (!m_range)
        return;
    // The control has counted this change already.
    if (m_control.changeCount() != ++m_changes) {
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
