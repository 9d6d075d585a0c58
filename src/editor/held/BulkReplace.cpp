#include "editor/held/BulkReplace.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>

using Sci = QsciScintillaBase;

namespace {

/// Bytes between two matches that are written again instead of beginning another edit: that costs about as much, in
/// time and in memory for undo.
constexpr qint64 MostBetween = 128;
/// Maximum bytes of an edit, so that little of the text is in memory twice.
constexpr qint64 MostTogether = 256 * 1024;
constexpr long AllMarks = -1;

bool holdsAny(std::string_view text, const char* characters) {
    return text.find_first_of(characters) != std::string_view::npos;
}

}  // namespace

BulkReplace::BulkReplace(QsciScintillaBase& view, const HeldText& text, const Replacements& wanted)
    : m_view(view), m_text(text), m_wanted(wanted) {}

void BulkReplace::apply() {
    if (m_wanted.edits.empty())
        return;
    findMarkedLines();
    m_holdsCr = textHoldsCr() || m_wanted.texts.contains('\r');
    for (std::size_t end = m_wanted.edits.size(); end > 0;) {
        const Run run = runThatEnds(end);
        putIn(run);
        end = run.first;
    }
}

void BulkReplace::findMarkedLines() {
    const auto next = [this](qint64 line) {
        return static_cast<qint64>(
            m_view.SendScintilla(Sci::SCI_MARKERNEXT, static_cast<unsigned long>(line), AllMarks));
    };
    const qint64 last = m_text.lineOf(m_wanted.edits.back().match.to);
    for (qint64 line = next(m_text.lineOf(m_wanted.edits.front().match.from)); line >= 0 && line <= last;
         line = next(line + 1))
        m_markedLines.push_back(m_text.lineStart(line));
}

bool BulkReplace::textHoldsCr() const {
    bool found = false;
    m_text.forEachRun(m_wanted.edits.front().match.from, m_wanted.edits.back().match.to,
                      [&found](std::string_view run) { found = found || run.find('\r') != std::string_view::npos; });
    return found;
}

/// In a text with CR, an edit of line ends may split a CR LF or join two line ends for a moment, which deletes marks.
bool BulkReplace::maySplitLineEnd(const Replacements::Edit& edit) const {
    if (!m_holdsCr)
        return false;
    const std::string_view text(m_wanted.texts.constData() + edit.textFrom, static_cast<std::size_t>(edit.textLength));
    return holdsAny(text, "\r\n") || holdsAny(m_text.range(edit.match.from, edit.match.to - edit.match.from), "\r\n");
}

BulkReplace::Run BulkReplace::runThatEnds(std::size_t end) const {
    const auto& edits = m_wanted.edits;
    const qint64 to = edits[end - 1].match.to;
    const qint64 barrier = lastMarkUpTo(to + 1);
    const auto joins = [&](const Replacements::Edit& before, const Replacements::Edit& edit) {
        const qint64 between = edit.match.from - before.match.to;
        return between <= MostBetween && to - before.match.from <= MostTogether && before.match.from > barrier &&
               !maySplitLineEnd(before);
    };
    std::size_t first = end - 1;
    while (first > 0 && !maySplitLineEnd(edits[end - 1]) && joins(edits[first - 1], edits[first]))
        --first;
    return {first, end};
}

/// A mark stays with its line through an edit that does not touch the start of the line and the line end before it,
/// half of which an edit may remove.
qint64 BulkReplace::lastMarkUpTo(qint64 place) const {
    const auto behind = std::ranges::upper_bound(m_markedLines, place);
    return behind == m_markedLines.begin() ? -1 : *std::prev(behind);
}

/// The mark of a line that was joined with the one before has moved there.
void BulkReplace::followMark(const TextMatch& range) {
    m_markedLines.erase(std::ranges::upper_bound(m_markedLines, range.to + 1), m_markedLines.end());
    if (lastMarkUpTo(range.to + 1) <= range.from)
        return;
    const qint64 line = m_text.lineStart(m_text.lineOf(range.from));
    m_markedLines.erase(std::ranges::lower_bound(m_markedLines, line), m_markedLines.end());
    m_markedLines.push_back(line);
}

void BulkReplace::putIn(const Run& run) {
    const auto& edits = m_wanted.edits;
    if (run.end - run.first == 1) {
        const auto& edit = edits[run.first];
        followMark(edit.match);
        return replace(edit.match, m_wanted.texts.constData() + edit.textFrom, edit.textLength);
    }
    const qint64 begin = edits[run.first].match.from;
    const TextMatch range{begin, edits[run.end - 1].match.to};
    const std::string_view before = m_text.range(range.from, range.to - range.from);
    m_run.resize(0);
    qint64 kept = begin;
    for (std::size_t at = run.first; at < run.end; ++at) {
        const auto& edit = edits[at];
        m_run.append(before.data() + (kept - begin), edit.match.from - kept);
        m_run.append(m_wanted.texts.constData() + edit.textFrom, edit.textLength);
        kept = edit.match.to;
    }
    replace(range, m_run.constData(), m_run.size());
}

void BulkReplace::replace(const TextMatch& range, const char* text, qsizetype length) {
    m_view.SendScintilla(Sci::SCI_SETTARGETRANGE, static_cast<unsigned long>(range.from), static_cast<long>(range.to));
    m_view.SendScintilla(Sci::SCI_REPLACETARGET, static_cast<uintptr_t>(length), text);
}
