// The bookmarks of the view.

#include "hex/bytes/HexText.h"
#include "hex/grid/Grid.h"
#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"
#include "widgets/Prompts.h"

/// The decimal text is the key; the hexadecimal one that is shown is made from it.
void ucHex::AddBookMark(const QString&, const QString& decimalText, bool silent) {
    if (!m_fileOpen)
        return;
    bool isNumber = false;
    const Offset offset(decimalText.toLongLong(&isNumber));
    if (!isNumber || offset < Offset(0) || offset >= Offset(FilePosition::Largest))
        return;
    if (m_panes.parts().bookmarks->add(offset))
        m_panes.parts().selectBookmark(m_panes.parts().bookmarks->count() - 1);
    else if (!silent)
        m_prompts.message(this, u"Bookmark already exists!"_qs);
}

void ucHex::cmdBookmark() {
    finishNibble();
    const Offset offset(m_panes.paging().positionOf(m_panes.grid(1).cell()));
    AddBookMark(HexText::hexOf(offset), QString::number(offset.number()), false);
    m_panes.focusActivePane();
}

void ucHex::cmdBookmark_old() {
    cmdBookmark();
}

void ucHex::GotoSelectedBookmark() {
    finishNibble();
    const int index = m_panes.parts().selectedBookmark();
    if (!m_fileOpen || index < 0)
        return;
    const HexCell cell = m_panes.paging().goTo(m_panes.parts().bookmarks->offsetAt(index));
    FillGrid();
    m_panes.selectInBoth(cell);
    m_panes.grid(1).Refresh();
}

void ucHex::cmdFirstBookmark() {
    if (!m_fileOpen || m_panes.parts().bookmarks->count() == 0)
        return;
    m_panes.parts().selectBookmark(0);
    GotoSelectedBookmark();
}

void ucHex::cmdLastBookmark() {
    if (!m_fileOpen || m_panes.parts().bookmarks->count() == 0)
        return;
    m_panes.parts().selectBookmark(m_panes.parts().bookmarks->count() - 1);
    GotoSelectedBookmark();
}

void ucHex::cmdPreviousBookmark() {
    if (m_fileOpen && m_panes.parts().selectedBookmark() > 0)
        m_panes.parts().selectBookmark(m_panes.parts().selectedBookmark() - 1);
    GotoSelectedBookmark();
}

void ucHex::cmdNextBookmark() {
    if (m_fileOpen && m_panes.parts().selectedBookmark() + 1 < m_panes.parts().bookmarks->count())
        m_panes.parts().selectBookmark(m_panes.parts().selectedBookmark() + 1);
    GotoSelectedBookmark();
}

void ucHex::DeleteBookmark() {
    finishNibble();
    m_panes.parts().bookmarks->remove(m_panes.parts().selectedBookmark());
}

void ucHex::cmdClearBookmark() {
    finishNibble();
    if (m_fileOpen)
        m_panes.parts().bookmarks->clear();
}
