#include "editor/control/SearchNotice.h"

#include "editor/control/EditView.h"

namespace {

/// A notice that is removed at once would only flicker.
constexpr qint64 DelayMilliseconds = 500;

}  // namespace

SearchNotice::SearchNotice(EditView& view) : m_view(&view) {
    m_since.start();
}

SearchNotice::~SearchNotice() {
    if (m_view && m_shown)
        m_view->notice({});
}

bool SearchNotice::lookAtClock() {
    if (m_shown || !m_view || m_since.elapsed() < DelayMilliseconds)
        return m_shown;
    m_shown = true;
    m_view->notice(EditView::tr("Searching. Esc stops it."));
    return true;
}
