#include "editor/control/ControlBookmarks.h"

#include "editor/control/EditScope.h"
#include "editor/control/EditView.h"
#include "editor/held/Margins.h"
#include "editor/held/MarkHistory.h"

#include <algorithm>

using Sci = QsciScintillaBase;

namespace {

constexpr qint64 BookmarkMask = 1 << Markers::Bookmark;

}  // namespace

/// The pieces of a line, as held lines from the first to before the last. They are examined one by one: Scintilla's own
/// search for the next mark runs to the end of the text.
ControlBookmarks::Pieces ControlBookmarks::piecesOf(qint64 line) const {
    const qint64 first = m_view.heldText().lineOf(m_view.map().lineBegin(line));
    if (m_view.map().joints().empty())
        return {first, first + 1};
    return {first, line + 1 < m_view.TotalLines() ? m_view.heldText().lineOf(m_view.map().lineBegin(line + 1))
                                                  : m_view.heldText().lineCount()};
}

bool ControlBookmarks::BookmarkAt(qint64 line) const {
    if (line < 0 || line >= m_view.TotalLines())
        return false;
    const auto [first, end] = piecesOf(line);
    for (qint64 piece = first; piece < end; ++piece) {
        if ((m_view.send(Sci::SCI_MARKERGET, piece) & BookmarkMask) != 0)
            return true;
    }
    return false;
}

/// Lines that were joined may also have marks at pieces after the first; those are removed with it.
void ControlBookmarks::setBookmarkAt(qint64 line, bool bookmarked) {
    if (line < 0 || line >= m_view.TotalLines() || BookmarkAt(line) == bookmarked)
        return;
    const auto [first, end] = piecesOf(line);
    if (bookmarked) {
        m_view.send(Sci::SCI_MARKERADD, first, Markers::Bookmark);
        return;
    }
    for (qint64 piece = first; piece < end; ++piece)
        m_view.send(Sci::SCI_MARKERDELETE, piece, Markers::Bookmark);
}

void ControlBookmarks::ToggleBookmark() {
    setBookmarkAt(currentLine(), !BookmarkAt(currentLine()));
}

void ControlBookmarks::ClearAllBookmarks() {
    m_view.send(Sci::SCI_MARKERDELETEALL, Markers::Bookmark);
    m_view.marks().forget();
}

/// Of a line in pieces that has several marks, the line is there once.
std::vector<qint64> ControlBookmarks::markedLines(qint64 first, qint64 last) const {
    std::vector<qint64> marked;
    const qint64 end = piecesOf(last).end;
    for (auto held = m_view.marks().nextMark(piecesOf(first).first, end - 1); held;
         held = m_view.marks().nextMark(*held + 1, end - 1)) {
        const qint64 line = m_view.map().lineOf(m_view.heldText().lineStart(*held));
        if (marked.empty() || marked.back() != line)
            marked.push_back(line);
    }
    return marked;
}

void ControlBookmarks::setMarkedLines(qint64 first, qint64 last, const std::vector<qint64>& marked) {
    std::vector<qint64> pieces;
    for (const qint64 line : marked)
        pieces.push_back(piecesOf(line).first);
    std::ranges::sort(pieces);
    m_view.marks().setMarks(piecesOf(first).first, piecesOf(last).end - 1, pieces);
}

void ControlBookmarks::goToHeldLine(qint64 held) {
    const EditScope scope(m_view);
    m_view.GotoTextLine(m_view.map().lineOf(m_view.heldText().lineStart(held)));
}

/// Moves to the marked line that the message finds from the first held line, else from the second.
void ControlBookmarks::goToBookmark(qint64 first, qint64 second, unsigned message) {
    qint64 held = m_view.send(message, first, BookmarkMask);
    if (held < 0)
        held = m_view.send(message, second, BookmarkMask);
    if (held < 0)
        m_view.commandFailed();
    else
        goToHeldLine(held);
}

void ControlBookmarks::FirstBookmark() {
    goToBookmark(0, 0, Sci::SCI_MARKERNEXT);
}

void ControlBookmarks::LastBookmark() {
    goToBookmark(m_view.heldText().lineCount() - 1, m_view.heldText().lineCount() - 1, Sci::SCI_MARKERPREVIOUS);
}

void ControlBookmarks::NextBookmark() {
    const qint64 behind = currentLine() + 1;
    const qint64 from = behind < m_view.TotalLines() ? m_view.heldText().lineOf(m_view.map().lineBegin(behind)) : 0;
    goToBookmark(from, 0, Sci::SCI_MARKERNEXT);
}

void ControlBookmarks::PrevBookmark() {
    const qint64 last = m_view.heldText().lineCount() - 1;
    const qint64 from = m_view.heldText().lineOf(m_view.map().lineBegin(currentLine())) - 1;
    goToBookmark(from < 0 ? last : from, last, Sci::SCI_MARKERPREVIOUS);
}

qint64 ControlBookmarks::currentLine() const {
    return m_view.map().lineOf(m_view.selection().caret);
}
