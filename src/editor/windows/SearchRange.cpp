#include "editor/windows/SearchRange.h"

#include "editor/control/TextControl.h"

#include <algorithm>

using Sci = QsciScintillaBase;

SearchRange::SearchRange(TextControl& control) : m_control(control) {
    connect(&control, &TextControl::SelChange, this, &SearchRange::takeSelectedAnew);
    connect(&control, &QsciScintillaBase::SCN_MODIFIED, this,
            [this](int at, int type, const char*, int length) { textAboutToChange(at, type, length); });
}

void SearchRange::takeSelection() {
    m_range = m_control.selectedBytes();
    m_changes = m_control.changeCount();
}

void SearchRange::takeSelectedAnew() {
    if (!m_control.selectedBytes().empty() && !m_control.isMatchSelected())
        takeSelection();
}

std::optional<TextMatch> SearchRange::range() const {
    return m_changes == m_control.changeCount() ? m_range : std::nullopt;
}

/// What comes in at either end is taken for part of the range: a replaced match there is deleted and put in anew.
void SearchRange::textAboutToChange(int at, int type, int length) {
    const bool inserts = (type & Sci::SC_MOD_BEFOREINSERT) != 0;
    if (!m_range || (!inserts && (type & Sci::SC_MOD_BEFOREDELETE) == 0))
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
