// Bookmarks of the control: one a line, kept by Scintilla at the line's first piece.

#include "editor/control/EditScope.h"
#include "editor/control/TextControl.h"
#include "editor/held/Margins.h"

#include <algorithm>

namespace {

constexpr qint64 BookmarkMask = 1 << Markers::Bookmark;

}  // namespace

/// The pieces of a line, as held lines from the first to before the last. Asked one by one: Scintilla's own search for
/// the next mark goes on to the end of the text.
TextControl::Pieces TextControl::piecesOf(qint64 line) const {
    const qint64 first = m_text.lineOf(m_map.lineBegin(line));
    if (m_map.joints().empty())
        return {first, first + 1};
    return {first, line + 1 < TotalLines() ? m_text.lineOf(m_map.lineBegin(line + 1)) : m_text.lineCount()};
}

bool TextControl::BookmarkAt(qint64 line) const {
    if (line < 0 || line >= TotalLines())
        return false;
    const auto [first, end] = piecesOf(line);
    for (qint64 piece = first; piece < end; ++piece) {
        if ((send(SCI_MARKERGET, piece) & BookmarkMask) != 0)
            return true;
    }
    return false;
}

/// Lines that were joined may carry marks at pieces behind the first too; those go with it.
void TextControl::setBookmarkAt(qint64 line, bool bookmarked) {
    if (line < 0 || line >= TotalLines() || BookmarkAt(line) == bookmarked)
        return;
    const auto [first, end] = piecesOf(line);
    if (bookmarked) {
        send(SCI_MARKERADD, first, Markers::Bookmark);
        return;
    }
    for (qint64 piece = first; piece < end; ++piece)
        send(SCI_MARKERDELETE, piece, Markers::Bookmark);
}

void TextControl::ToggleBookmark() {
    setBookmarkAt(CurrentLine(), !BookmarkAt(CurrentLine()));
}

void TextControl::ClearAllBookmarks() {
    send(SCI_MARKERDELETEALL, Markers::Bookmark);
}

void TextControl::goToHeldLine(qint64 held) {
    const EditScope scope(*this);
    GotoTextLine(m_map.lineOf(m_text.lineStart(held)));
}

/// Goes to the marked line that the message finds from the first held line, else from the second.
void TextControl::goToBookmark(qint64 first, qint64 second, unsigned message) {
    qint64 held = send(message, first, BookmarkMask);
    if (held < 0)
        held = send(message, second, BookmarkMask);
    if (held < 0)
        commandFailed();
    else
        goToHeldLine(held);
}

void TextControl::FirstBookmark() {
    goToBookmark(0, 0, SCI_MARKERNEXT);
}

void TextControl::LastBookmark() {
    goToBookmark(m_text.lineCount() - 1, m_text.lineCount() - 1, SCI_MARKERPREVIOUS);
}

void TextControl::NextBookmark() {
    const qint64 behind = CurrentLine() + 1;
    const qint64 from = behind < TotalLines() ? m_text.lineOf(m_map.lineBegin(behind)) : 0;
    goToBookmark(from, 0, SCI_MARKERNEXT);
}

void TextControl::PrevBookmark() {
    const qint64 last = m_text.lineCount() - 1;
    const qint64 from = m_text.lineOf(m_map.lineBegin(CurrentLine())) - 1;
    goToBookmark(from < 0 ? last : from, last, SCI_MARKERPREVIOUS);
}

qint64 TextControl::lineAtPoint(int x, int y) const {
    return m_map.lineOf(send(SCI_POSITIONFROMPOINT, x, y));
}
