#pragma once

#include <QtGlobal>

#include <vector>

class EditView;

/// Keeps bookmarks at the numbers of their lines while a command replaces text as a whole by as many other lines, which
/// without this are deleted lines. Created before the edit and destroyed after it. If the number of lines has changed,
/// it does nothing.
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
