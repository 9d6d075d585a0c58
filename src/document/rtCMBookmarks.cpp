// The text view's bookmarks under their public names, and the click in its left margin.

#include "document/rtCM.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/TextControl.h"

void rtCM::ToggleBookmark() {
    m_control->ExecuteCmd(Command::ToggleBookmark);
}

void rtCM::PrevBookmark() {
    m_control->ExecuteCmd(Command::PreviousBookmark);
}

void rtCM::NextBookmark() {
    m_control->ExecuteCmd(Command::NextBookmark);
}

void rtCM::ClearAllBookmark() {
    m_control->ExecuteCmd(Command::ClearAllBookmarks);
}

void rtCM::BookmarkFirst() {
    m_control->ExecuteCmd(Command::FirstBookmark);
}

void rtCM::BookmarkLast() {
    m_control->ExecuteCmd(Command::LastBookmark);
}

void rtCM::EnableBookmarkAt(qint64 pLine, bool pBookmarked) {
    m_control->bookmarks().setBookmarkAt(pLine - 1, pBookmarked);
}

void rtCM::clickLeftMargin(qint64 line) {
    if (!ClickLeftMarginBookmark)
        return;
    const bool bookmarked = !m_control->bookmarks().BookmarkAt(line);
    m_control->bookmarks().setBookmarkAt(line, bookmarked);
    Q_EMIT ClickLeftMargin(line, bookmarked);
    Redraw();
}
