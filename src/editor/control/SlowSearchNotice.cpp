#include "editor/control/SlowSearchNotice.h"

#include "editor/control/EditView.h"

namespace {

/// A notice that is removed at once would only flicker.
constexpr qint64 DelayMilliseconds = 500;

}  // namespace

SlowSearchNotice::SlowSearchNotice(EditView& view) : m_view(&view) {
    m_since.start();
}

SlowSearchNotice::~SlowSearchNotice() {
    if (m_view && m_shown)
        m_view->notice({});
}

bool SlowSearchNotice::lookAtClock() {
    if (m_shown || !m_view || m_since.elapsed() < DelayMilliseconds)
        return m_shown;
    m_shown = true;
    m_view->notice(EditView::tr("Searching. Esc stops it."));
    return true;
}
