#include "editor/control/SearchNotice.h"

#include "editor/control/TextControl.h"

namespace {

/// A notice that goes at once would only flicker.
constexpr qint64 DelayMilliseconds = 500;

}  // namespace

SearchNotice::SearchNotice(TextControl& control) : m_control(&control) {
    m_since.start();
}

SearchNotice::~SearchNotice() {
    if (m_control && m_shown)
        m_control->notice({});
}

bool SearchNotice::lookAtClock() {
    if (m_shown || !m_control || m_since.elapsed() < DelayMilliseconds)
        return m_shown;
    m_shown = true;
    m_control->notice(TextControl::tr("Searching. Esc stops it."));
    return true;
}
