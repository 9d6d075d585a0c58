#include "editor/held/MarkHistory.h"

#include "editor/held/Margins.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>
#include <utility>

using Sci = QsciScintillaBase;

namespace {

constexpr long BookmarkMask = 1L << Markers::Bookmark;
/// Lines that are asked one by one, before the library searches for a mark to the end of the text.
constexpr qint64 AskedOneByOne = 16;

}  // namespace

void MarkHistory::forget() {
    m_lost.clear();
    m_due.reset();
    m_remarks.clear();
}

/// The library keeps one action for each insertion and each deletion, and undo and redo go through them one by one.
qint64 MarkHistory::numberOfEdit(By by) {
    if (by == By::Undo) {
        undoRemarks();
        return --m_edits;
    }
    if (by == By::User) {
        m_lost.erase(m_lost.lower_bound(m_edits), m_lost.end());
        m_remarks.erase(m_remarks.upper_bound(m_edits), m_remarks.end());
    }
    m_redoesRemarks = by == By::Redo;
    return m_edits++;
}

void MarkHistory::setMarks(qint64 first, qint64 last, const std::vector<qint64>& marks) {
    settle();
    std::vector<qint64> before = takeMarks(first, last);
    for (const qint64 mark : marks)
        addMark(mark);
    if (before != marks)
        m_remarks[m_edits].push_back({first, last, std::move(before), marks});
}

void MarkHistory::undoRemarks() {
    const auto remarks = m_remarks.find(m_edits);
    if (remarks == m_remarks.end())
        return;
    for (auto remark = remarks->second.rbegin(); remark != remarks->second.rend(); ++remark)
        replaceMarks(remark->first, remark->last, remark->before);
}

void MarkHistory::redoRemarks() {
    const auto remarks = m_remarks.find(m_edits);
    if (!std::exchange(m_redoesRemarks, false) || remarks == m_remarks.end())
        return;
    for (const Remark& remark : remarks->second)
        replaceMarks(remark.first, remark.last, remark.after);
}

void MarkHistory::beforeInsert(qint64 at, By by) {
    settle();
    const auto lost = m_lost.find(numberOfEdit(by));
    if (by == By::User || lost == m_lost.end())
        return;
    m_due = lost->second;
    // The user may have set or removed the mark of the line that was left. It is then the mark of those lines of which
    // text was left.
    const qint64 line = m_map.lineOf(at);
    const bool marked = hasMark(firstPieceOf(line), lastPieceOf(line));
    if (marked == m_due->leftMark)
        return;
    const Lines& lines = m_due->lines;
    std::erase_if(m_due->marks, [&lines](qint64 mark) {
        return (lines.keepsFirst && mark <= lines.firstTo) || (lines.keepsLast && mark >= lines.lastFrom);
    });
    if (marked)
        m_due->marks.push_back(lines.keepsLast && !lines.keepsFirst ? lines.lastFrom : lines.first);
}

void MarkHistory::beforeDelete(qint64 at, qint64 length, By by) {
    settle();
    const qint64 number = numberOfEdit(by);
    const std::optional<Lines> lines = linesOfDeletion(at, at + length, by, removesLines(number, by));
    m_lost.erase(number);
    if (!lines)
        return;
    const std::vector<qint64> marks = takeMarks(lines->first, lines->last);
    if (marks.empty())
        return;
    const bool leftMark =
        (lines->keepsFirst && marks.front() <= lines->firstTo) || (lines->keepsLast && marks.back() >= lines->lastFrom);
    m_lost[number] = {*lines, marks, leftMark};
    if (!leftMark)
        return;
    addMark(lines->first);
    // With the whole text the library deletes all marks.
    if (length == m_text.length())
        m_due = {Lines(), {0}, true};
}

/// A deletion that is repeated removes what it removed at first.
bool MarkHistory::removesLines(qint64 number, By by) const {
    if (by == By::User)
        return m_removesLines;
    const auto lost = m_lost.find(number);
    return lost != m_lost.end() && lost->second.lines.removed;
}

void MarkHistory::settle() {
    if (const std::optional<Lost> due = std::exchange(m_due, std::nullopt))
        replaceMarks(due->lines.first, due->lines.last, due->marks);
    redoRemarks();
}

/// An insertion into an empty text is undone by the deletion of all of it: the mark of the line that was there stays.
MarkHistory::Lines MarkHistory::allLines(By by, bool removed) const {
    const qint64 last = m_map.lineCount() - 1;
    return {firstPieceOf(0), lastPieceOf(0), firstPieceOf(last), lastPieceOf(last), last == 0 && !removed,
            by == By::Undo,  removed};
}

/// Nothing when the deletion stays within a piece: the mark of its line stays too. When an insertion is undone, the
/// line into which it was made stays, even if it was an empty one. Half of a CR LF counts for the line whose end is
/// still there, or is there again.
std::optional<MarkHistory::Lines> MarkHistory::linesOfDeletion(qint64 from, qint64 to, By by, bool removed) const {
    if (from == 0 && to == m_text.length())
        return allLines(by, removed);
    qint64 piece = m_text.lineOf(from);
    const bool beforeLf = isByte(to, '\n');
    if (beforeLf && isByte(from - 1, '\r') && !isByte(from, '\n'))
        --piece;
    if (piece == m_text.lineOf(to) && !removed)
        return std::nullopt;
    if (!beforeLf && isByte(from - 1, '\r') && isByte(from, '\n'))
        from = m_text.lineStart(++piece);
    const qint64 first = m_map.lineOf(m_text.lineStart(piece));
    const qint64 last = m_map.lineOf(to);
    const qint64 lastBegin = m_map.lineBegin(last);
    const bool within = first == last && !removed;
    const bool untouched = to == lastBegin && first < last;
    const bool keepsFirst = within || from > m_map.lineBegin(first);
    const bool textStays = to < m_map.lineEndOf(lastBegin) && (!removed || untouched);
    return Lines{firstPieceOf(first),
                 lastPieceOf(first),
                 firstPieceOf(last),
                 lastPieceOf(last),
                 keepsFirst,
                 textStays || ((untouched || by == By::Undo) && !keepsFirst),
                 removed};
}

qint64 MarkHistory::firstPieceOf(qint64 line) const {
    return m_text.lineOf(m_map.lineBegin(line));
}

qint64 MarkHistory::lastPieceOf(qint64 line) const {
    return line + 1 < m_map.lineCount() ? firstPieceOf(line + 1) - 1 : m_text.lineCount() - 1;
}

bool MarkHistory::isByte(qint64 at, char byte) const {
    return at >= 0 && at < m_text.length() && m_text.range(at, 1).front() == byte;
}

std::optional<qint64> MarkHistory::nextMark(qint64 line, qint64 last) const {
    for (const qint64 end = std::min(line + AskedOneByOne, last + 1); line < end; ++line) {
        if ((m_view.SendScintilla(Sci::SCI_MARKERGET, static_cast<unsigned long>(line)) & BookmarkMask) != 0)
            return line;
    }
    if (line > last)
        return std::nullopt;
    const qint64 found = m_view.SendScintilla(Sci::SCI_MARKERNEXT, static_cast<unsigned long>(line), BookmarkMask);
    return found < 0 || found > last ? std::nullopt : std::optional(found);
}

bool MarkHistory::hasMark(qint64 first, qint64 last) const {
    return nextMark(first, last).has_value();
}

std::vector<qint64> MarkHistory::takeMarks(qint64 first, qint64 last) {
    std::vector<qint64> marks;
    for (auto line = nextMark(first, last); line; line = nextMark(*line + 1, last)) {
        marks.push_back(*line);
        m_view.SendScintilla(Sci::SCI_MARKERDELETE, static_cast<unsigned long>(*line), long{Markers::Bookmark});
    }
    return marks;
}

void MarkHistory::replaceMarks(qint64 first, qint64 last, const std::vector<qint64>& marks) {
    takeMarks(first, last);
    for (const qint64 mark : marks)
        addMark(mark);
}

void MarkHistory::addMark(qint64 line) {
    m_view.SendScintilla(Sci::SCI_MARKERADD, static_cast<unsigned long>(line), long{Markers::Bookmark});
}
