#pragma once

#include <QtGlobal>

#include <vector>

class EditView;

/// Bookmarks of a control, one a line; a line held in pieces is one line. Lines count from 0. Has no state of its own:
/// Scintilla keeps the marks, at the first piece of each line. Owned by the control, or created where it is needed.
class ControlBookmarks {
 public:
    /// The view outlives this object.
    explicit ControlBookmarks(EditView& view) : m_view(view) {}

    bool BookmarkAt(qint64 line) const;
    void setBookmarkAt(qint64 line, bool bookmarked);
    void ToggleBookmark();
    /// Bookmarks of lines that are gone do not come back with them either.
    void ClearAllBookmarks();
    /// Numbers of the lines from `first` to `last` that have a bookmark, in their order.
    std::vector<qint64> markedLines(qint64 first, qint64 last) const;
    /// Sets the bookmarks of the lines from `first` to `last` to just these, as a part of the last edit: undo and redo
    /// change them too.
    void setMarkedLines(qint64 first, qint64 last, const std::vector<qint64>& marked);
    /// These move the caret to the start of a marked line, the middle two around the ends of the text.
    void FirstBookmark();
    void NextBookmark();
    void PrevBookmark();
    void LastBookmark();

 private:
    struct Pieces {
        qint64 first;
        qint64 end;
    };
    Pieces piecesOf(qint64 line) const;
    qint64 currentLine() const;
    void goToHeldLine(qint64 held);
    void goToBookmark(qint64 first, qint64 second, unsigned message);

    EditView& m_view;
};
