#include "editor/control/KeptBookmarks.h"

#include "editor/control/ControlBookmarks.h"
#include "editor/control/ScintillaCalls.h"
#include "editor/held/Margins.h"

KeptBookmarks::KeptBookmarks(EditView& view) : m_view(view), m_lineCount(view.TotalLines()) {
    constexpr qint64 Mask = 1 << Markers::Bookmark;
    const auto next = [&](qint64 held) { return ScintillaCalls::ask(view, EditView::SCI_MARKERNEXT, held, Mask); };
    for (qint64 held = next(0); held >= 0; held = next(held + 1))
        m_lines.push_back(view.map().lineOf(view.heldText().lineStart(held)));
}

KeptBookmarks::~KeptBookmarks() {
    if (m_lines.empty() || m_view.TotalLines() != m_lineCount)
        return;
    ControlBookmarks bookmarks(m_view);
    bookmarks.ClearAllBookmarks();
    for (const qint64 line : m_lines)
        bookmarks.setBookmarkAt(line, true);
}
