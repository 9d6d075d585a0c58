#pragma once

#include "text/held/HeldText.h"
#include "text/held/TextMap.h"

#include <map>
#include <optional>
#include <vector>

class QsciScintillaBase;

/// Keeps the bookmarks of a text with their lines: a bookmark disappears with its line, stays with what is left of the
/// line's text, and is back at its place after an undo or redo has brought the line back. Without it the library moves
/// the mark of a deleted line to the next line, and undo leaves it there.
///
/// Owned by the view, which reports each edit before it happens. Lines here are held lines; the mark of a line in
/// pieces is at its first piece. Offsets count held bytes.
class MarkHistory {
 public:
    /// Who edits. Undo and redo revert and repeat the edits of the user one by one, in their order.
    enum class By { User, Undo, Redo };

    /// All three belong to the view and outlive this object.
    MarkHistory(QsciScintillaBase& view, const HeldText& text, const TextMap& map)
        : m_view(view), m_text(text), m_map(map) {}

    void beforeInsert(qint64 at, By by);
    void beforeDelete(qint64 at, qint64 length, By by);
    /// Sets the marks of lines that have just come back. Called when an edit is over.
    void settle();
    /// Sets the marks of the lines from `first` to `last` to just these, as a part of the last edit: undo and redo
    /// change them too.
    void setMarks(qint64 first, qint64 last, const std::vector<qint64>& marks);
    /// Forgets all marks of lines that are gone, for another text or an empty undo history.
    void forget();

    /// While it is on, the user deletes whole lines: the last line of the text, of which an empty line is left, keeps
    /// no mark.
    void setRemovesLines(bool on) { m_removesLines = on; }

    /// The first held line from `line` to `last` that has a bookmark.
    std::optional<qint64> nextMark(qint64 line, qint64 last) const;

 private:
    /// Lines that a deletion makes one, or removes.
    struct Lines {
        qint64 first = 0;  ///< pieces of the first line
        qint64 firstTo = 0;
        qint64 lastFrom = 0;  ///< pieces of the last line
        qint64 last = 0;
        bool keepsFirst = false;  ///< text of the first line stays
        bool keepsLast = false;   ///< text of the last line stays, or all of the line
        bool removed = false;     ///< see setRemovesLines
    };
    /// What a deletion removes: the lines, and which of them had a mark.
    struct Lost {
        Lines lines;
        std::vector<qint64> marks;
        bool leftMark = false;  ///< whether the line that is left has one
    };

    /// Marks that were set as a part of an edit, and those that the lines had before.
    struct Remark {
        qint64 first;
        qint64 last;
        std::vector<qint64> before;
        std::vector<qint64> after;
    };

    qint64 numberOfEdit(By by);
    void undoRemarks();
    void redoRemarks();
    bool removesLines(qint64 number, By by) const;
    Lines allLines(By by, bool removed) const;
    std::optional<Lines> linesOfDeletion(qint64 from, qint64 to, By by, bool removed) const;
    qint64 firstPieceOf(qint64 line) const;
    qint64 lastPieceOf(qint64 line) const;
    bool isByte(qint64 at, char byte) const;
    bool hasMark(qint64 first, qint64 last) const;
    std::vector<qint64> takeMarks(qint64 first, qint64 last);
    void replaceMarks(qint64 first, qint64 last, const std::vector<qint64>& marks);
    void addMark(qint64 line);

    QsciScintillaBase& m_view;
    const HeldText& m_text;
    const TextMap& m_map;
    qint64 m_edits = 0;                               ///< edits in the undo history that are not undone
    std::map<qint64, Lost> m_lost;                    ///< by the number of the edit that brings the lines back
    std::optional<Lost> m_due;                        ///< of the edit that happens now
    std::map<qint64, std::vector<Remark>> m_remarks;  ///< by the number of edits before them
    bool m_redoesRemarks = false;                     ///< those of the edit that is redone now
    bool m_removesLines = false;
};
