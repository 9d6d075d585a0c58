#pragma once

#include <QtGlobal>

#include <vector>

class EditView;

/// Keeps bookmarks with their lines while a command replaces text as a whole, or takes such a replacement back: the
/// library gathers the marks of replaced lines on the first of them. Made before the edit and gone after it; where the
/// number of lines came out another, the marks stay as the library has them.
class KeptBookmarks {
 public:
    /// The control outlives this object.
    explicit KeptBookmarks(EditView& view);
    ~KeptBookmarks();
    KeptBookmarks(const KeptBookmarks&) = delete;
    KeptBookmarks& operator=(const KeptBookmarks&) = delete;

 private:
    EditView& m_view;
    qint64 m_lineCount;
    std::vector<qint64> m_lines;
};
