#include "editor/control/KeptBookmarks.h"

#include "editor/control/ScintillaCalls.h"
#include "editor/held/Margins.h"

KeptBookmarks::KeptBookmarks(TextControl& control) : m_control(control), m_lineCount(control.TotalLines()) {
    constexpr qint64 Mask = 1 << Markers::Bookmark;
    const auto next = [&](qint64 held) {
        return ScintillaCalls::ask(control, TextControl::SCI_MARKERNEXT, held, Mask);
    };
    for (qint64 held = next(0); held >= 0; held = next(held + 1))
        m_lines.push_back(control.map().lineOf(control.heldText().lineStart(held)));
}

KeptBookmarks::~KeptBookmarks() {
    if (m_lines.empty() || m_control.TotalLines() != m_lineCount)
        return;
    m_control.ClearAllBookmarks();
    for (const qint64 line : m_lines)
        m_control.setBookmarkAt(line, true);
}
