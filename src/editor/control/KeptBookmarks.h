#pragma once

#include <QtGlobal>

#include <vector>

class EditView;

/// Keeps bookmarks with their lines while a command replaces text as a whole, or undoes such a replacement: the library
/// moves the marks of replaced lines to the first of them. Created before the edit and destroyed after it; if the
/// number of lines has changed, the marks stay where the library has put them.
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
