#pragma once

#include <QtGlobal>

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
    void ClearAllBookmarks();
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
