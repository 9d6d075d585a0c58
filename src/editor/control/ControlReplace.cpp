#include "editor/control/ControlReplace.h"

#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/EditScope.h"
#include "editor/control/EditView.h"
#include "editor/control/ScanLock.h"
#include "editor/control/SearchHistory.h"
#include "editor/control/SelectedRanges.h"
#include "editor/control/Unrecorded.h"
#include "editor/held/BulkReplace.h"
#include "text/search/MatchScan.h"
#include "text/search/Replacements.h"

#include <QPointer>

using Sci = QsciScintillaBase;

namespace {

/// Selects the ranges as they are after the edits, those that are not empty.
void selectGrown(EditView& view, const std::vector<TextMatch>& ranges, const Replacements& done) {
    std::vector<ByteSelection> selected;
    auto edit = done.edits.begin();
    qint64 grown = 0;
    for (const TextMatch& range : ranges) {
        const qint64 from = range.from + grown;
        for (; edit != done.edits.end() && edit->match.from <= range.to; ++edit)
            grown += edit->textLength - (edit->match.to - edit->match.from);
        if (from < range.to + grown)
            selected.push_back({from, range.to + grown});
    }
    if (selected.empty())
        return view.setSelectionBytes(ranges.front().from, ranges.front().from);
    view.setSelectionBytes(selected.front().anchor, selected.front().caret);
    if (selected.size() > 1)
        SelectedRanges::set(view, selected, selected.size() - 1);
}

}  // namespace

/// The pattern for a replacement, or null when the error was reported.
std::shared_ptr<const SearchPattern> ControlReplace::patternToReplace() {
    auto pattern = m_search.notedPattern();
    if (pattern && !m_view.Locked())
        return pattern;
    m_search.fail(pattern ? SearchError{EditView::tr("The text is locked."), -1} : SearchError());
    return nullptr;
}

/// Replaces the scan's match and selects the new text.
void ControlReplace::replaceMatch(const MatchScan& scan) {
    const Replacement replacement(m_search.replacementText(), {m_search.flags().regExp, m_search.PreserveCase()},
                                  [this](const QString& text) { return m_view.withOwnLineEnds(text); });
    Replacements found;
    ReplacementCollector(found, replacement, m_view.heldText()).add(scan);
    const Replacements::Edit& edit = found.edits.front();
    m_view.replaceBytes(edit.match.from, edit.match.to, found.texts.sliced(edit.textFrom, edit.textLength));
    m_search.selectMatch({edit.match.from, edit.match.from + edit.textLength});
    m_search.forgetEmptyMatch();
    SearchHistory::ofReplacements().add(m_search.replacementText());
}

SearchOutcome ControlReplace::replaceNext() {
    const QPointer<EditView> alive(&m_view);
    const EditScope scope(m_view, EditScope::Grouped);
    const auto pattern = patternToReplace();
    if (!pattern)
        return SearchOutcome::Failed;
    const OnwardMatch found = m_search.matchOnward(*pattern, ControlSearch::Wrap::Around);
    if (!alive)
        return SearchOutcome::Failed;
    if (!found.scan || m_view.Locked())
        return m_search.fail(found.error);
    replaceMatch(*found.scan);
    m_macros.noteCommand(Command::ReplaceNext, {}, 1);
    if (!found.wrapped)
        return SearchOutcome::Found;
    Q_EMIT m_view.FindWrapped();
    return SearchOutcome::Wrapped;
}

SearchOutcome ControlReplace::replaceSelectedMatch() {
    const QPointer<EditView> alive(&m_view);
    const EditScope scope(m_view, EditScope::Grouped);
    const auto pattern = patternToReplace();
    if (!pattern)
        return SearchOutcome::Failed;
    MatchScan here(*pattern, m_view.heldText(), m_view.map(), m_view.send(Sci::SCI_GETSELECTIONSTART));
    here.stopBehind(m_view.send(Sci::SCI_GETSELECTIONEND));
    here.watchedBy(m_search.watchOfSearch());
    const bool found = here.next();
    if (!alive)
        return SearchOutcome::Failed;
    if (here.error())
        return m_search.fail(here.error());
    if (found && isSelected(here.match())) {
        replaceMatch(here);
        if (here.match().empty())
            m_view.setSelectionBytes(m_view.send(Sci::SCI_GETSELECTIONEND), m_view.send(Sci::SCI_GETSELECTIONEND));
    }
    const SearchOutcome outcome = m_search.findNext();
    if (alive)
        m_macros.noteCommand(Command::ReplaceSelected, {}, 1);
    return outcome;
}

/// False when the text is no longer the one in which the matches were found.
bool ControlReplace::collect(Replacements& found, const SearchPattern& pattern, const std::vector<TextMatch>& ranges,
                             const ReplaceWatch& watch) {
    const QPointer<EditView> alive(&m_view);
    const quint64 changes = m_view.state().changes;
    const ScanLock lock(m_view);
    const Replacement replacement(m_search.replacementText(), {m_search.flags().regExp, m_search.PreserveCase()},
                                  [this](const QString& text) { return m_view.withOwnLineEnds(text); });
    ReplacementCollector collector(found, replacement, m_view.heldText());
    for (const TextMatch& range : ranges) {
        MatchScan scan(pattern, m_view.heldText(), m_view.map(), range.from, windowFor(range));
        scan.stopBehind(range.to);
        scan.watchedBy(m_search.watchOfSearch());
        while (scan.next()) {
            if (scan.match().to > range.to)
                continue;
            collector.add(scan);
            const bool goesOn = watch.goesOn();
            if (!alive || m_view.state().changes != changes)
                return false;
            if (!goesOn)
                scan.stop();
        }
        if (!alive || m_view.state().changes != changes)
            return false;
        m_search.setError(scan.error());
        if (scan.error())
            break;
    }
    return true;
}

void ControlReplace::apply(const Replacements& found, const ReplaceWatch& watch) {
    m_view.map().forgetBehind(found.edits.front().match.from);
    BulkReplace(m_view, m_view.heldText(), found).apply();
    qint64 grown = 0;
    for (const Replacements::Edit& edit : found.edits) {
        const qint64 from = edit.match.from + grown;
        grown += edit.textLength - (edit.match.to - edit.match.from);
        if (watch.replaced)
            watch.replaced(m_search.placeOf({from, from + edit.textLength}));
    }
    const Replacements::Edit& last = found.edits.back();
    m_search.selectMatch({last.match.to + grown - last.textLength, last.match.to + grown});
    m_search.forgetEmptyMatch();
}

qint64 ControlReplace::replaceAll(const ReplaceWatch& watch) {
    const QPointer<EditView> alive(&m_view);
    const Unrecorded part(m_view);
    const qint64 count = replaceAllMatches(watch);
    if (alive) {
        const EditScope scope(m_view);
        m_macros.noteCommand(Command::ReplaceAll, {}, 1);
    }
    return count;
}

qint64 ControlReplace::replaceAllMatches(const ReplaceWatch& watch) {
    const QPointer<EditView> alive(&m_view);
    {
        const EditScope scope(m_view);
        m_view.setSelectionBytes(0, 0);
    }
    if (!alive)
        return 0;
    const auto pattern = patternToReplace();
    if (!pattern)
        return 0;
    Replacements found;
    const bool sameText = collect(found, *pattern, {{0, m_view.heldText().length()}}, watch);
    if (!alive)
        return 0;
    if (!sameText || found.edits.empty() || m_view.Locked()) {
        m_search.fail();
        return 0;
    }
    const EditScope scope(m_view, EditScope::Grouped);
    apply(found, watch);
    SearchHistory::ofReplacements().add(m_search.replacementText());
    Q_EMIT m_view.FindWrapped();
    return static_cast<qint64>(found.edits.size());
}

qint64 ControlReplace::replaceAllIn(const std::vector<TextMatch>& ranges) {
    const QPointer<EditView> alive(&m_view);
    const EditScope scope(m_view, EditScope::Grouped);
    const auto pattern = patternToReplace();
    if (!pattern)
        return 0;
    Replacements found;
    const bool sameText = collect(found, *pattern, ranges, {});
    if (!alive)
        return 0;
    if (!sameText || found.edits.empty()) {
        m_search.fail();
        return 0;
    }
    // The library would cut a rectangle anew at each edit.
    m_view.setSelectionBytes(ranges.front().from, ranges.front().from);
    apply(found, {});
    selectGrown(m_view, ranges, found);
    SearchHistory::ofReplacements().add(m_search.replacementText());
    m_macros.noteCommand(Command::ReplaceAllInSelection, {}, 1);
    return static_cast<qint64>(found.edits.size());
}

/// Joints at the ends of a match lie outside of it, so places are compared and not bytes.
bool ControlReplace::isSelected(const TextMatch& match) const {
    const bool nothingSelected = m_view.send(Sci::SCI_GETSELECTIONEMPTY) != 0;
    return m_view.map().positionOf(match.from) == m_selection.SelStart() &&
           m_view.map().positionOf(match.to) == m_selection.SelEnd() &&
           (!nothingSelected || m_search.isEmptyMatchTaken(match));
}
