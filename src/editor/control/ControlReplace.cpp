// Replacing what is found in the control.

#include "editor/control/CommandNumbers.h"
#include "editor/control/EditScope.h"
#include "editor/control/ScanLock.h"
#include "editor/control/SearchHistory.h"
#include "editor/control/TextControl.h"
#include "editor/control/Unrecorded.h"
#include "editor/held/BulkReplace.h"
#include "text/search/MatchScan.h"
#include "text/search/Replacement.h"

#include <QPointer>

// One match

/// Puts the replacement in place of the scan's match and selects it.
void TextControl::replaceMatch(const MatchScan& scan) {
    const Replacement replacement(m_search.replacement, {m_search.flags.regExp, m_search.preserveCase},
                                  [this](const QString& text) { return heldForm(text); });
    const QByteArray text = replacement.forMatch(scan);
    const TextMatch match = scan.match();
    send(SCI_SETTARGETRANGE, match.from, match.to);
    SendScintilla(SCI_REPLACETARGET, static_cast<uintptr_t>(text.size()), text.constData());
    selectMatch({match.from, match.from + text.size()});
    m_search.emptyMatch.reset();
    SearchHistory::ofReplacements().add(m_search.replacement);
}

/// What a replacement begins with: the pattern, or null when it has been told why there is none to be made.
std::shared_ptr<const SearchPattern> TextControl::patternToReplace() {
    auto pattern = notedPattern();
    if (pattern && !Locked())
        return pattern;
    fail(pattern ? SearchError{tr("The text is locked."), -1} : SearchError());
    return nullptr;
}

SearchOutcome TextControl::replaceNext() {
    const QPointer<TextControl> alive(this);
    const EditScope scope(*this, EditScope::Grouped);
    const auto pattern = patternToReplace();
    if (!pattern)
        return SearchOutcome::Failed;
    bool wrapped = false;
    SearchError error;
    const auto found = foundOnward(*pattern, wrapped, error);
    if (!alive)
        return SearchOutcome::Failed;
    if (!found || Locked())
        return fail(error);
    replaceMatch(*found);
    noteCommand(Command::ReplaceNext, {}, 1);
    if (!wrapped)
        return SearchOutcome::Found;
    Q_EMIT FindWrapped();
    return SearchOutcome::Wrapped;
}

/// Joints at the ends of a match lie outside of it, so places are compared and not bytes.
bool TextControl::isSelected(const TextMatch& match) const {
    const bool nothingSelected = send(SCI_GETSELECTIONEMPTY) != 0;
    return m_map.positionOf(match.from) == SelStart() && m_map.positionOf(match.to) == SelEnd() &&
           (!nothingSelected || isEmptyMatchTaken(match));
}

SearchOutcome TextControl::replaceSelectedMatch() {
    const QPointer<TextControl> alive(this);
    const EditScope scope(*this, EditScope::Grouped);
    const auto pattern = patternToReplace();
    if (!pattern)
        return SearchOutcome::Failed;
    MatchScan here(*pattern, m_text, m_map, send(SCI_GETSELECTIONSTART));
    here.stopBehind(send(SCI_GETSELECTIONEND));
    here.watchedBy(watchOfSearch());
    const bool found = here.next();
    if (!alive)
        return SearchOutcome::Failed;
    if (here.error())
        return fail(here.error());
    if (found && isSelected(here.match())) {
        replaceMatch(here);
        if (here.match().empty())
            setSelectionBytes(send(SCI_GETSELECTIONEND), send(SCI_GETSELECTIONEND));
    }
    const SearchOutcome outcome = findNext();
    if (alive)
        noteCommand(Command::ReplaceSelected, {}, 1);
    return outcome;
}

// All matches

/// False when the text is not the one any more in which the matches were found.
bool TextControl::collect(Replacements& found, const SearchPattern& pattern, const TextMatch& range,
                          const ReplaceWatch& watch) {
    const QPointer<TextControl> alive(this);
    const quint64 changes = m_changes;
    const ScanLock lock(*this);
    const Replacement replacement(m_search.replacement, {m_search.flags.regExp, m_search.preserveCase},
                                  [this](const QString& text) { return heldForm(text); });
    MatchScan scan(pattern, m_text, m_map, range.from);
    scan.stopBehind(range.to);
    scan.watchedBy(watchOfSearch());
    while (scan.next()) {
        if (scan.match().to > range.to)
            continue;
        if (!replacement.fixed() || found.edits.empty()) {
            const QByteArray text = replacement.forMatch(scan);
            found.edits.push_back({scan.match(), found.texts.size(), text.size()});
            found.texts += text;
        } else {
            found.edits.push_back({scan.match(), 0, found.texts.size()});
        }
        const bool goesOn = watch.goesOn();
        if (!alive || m_changes != changes)
            return false;
        if (!goesOn)
            scan.stop();
    }
    if (!alive || m_changes != changes)
        return false;
    m_search.error = scan.error();
    return true;
}

void TextControl::apply(const Replacements& found, const ReplaceWatch& watch) {
    m_map.forgetBehind(found.edits.front().match.from);
    BulkReplace(*this, m_text, found).apply();
    qint64 grown = 0;
    for (const Replacements::Edit& edit : found.edits) {
        const qint64 from = edit.match.from + grown;
        grown += edit.textLength - (edit.match.to - edit.match.from);
        if (watch.replaced)
            watch.replaced(placeOf({from, from + edit.textLength}));
    }
    const Replacements::Edit& last = found.edits.back();
    selectMatch({last.match.to + grown - last.textLength, last.match.to + grown});
    m_search.emptyMatch.reset();
}

qint64 TextControl::replaceAll(const ReplaceWatch& watch) {
    const QPointer<TextControl> alive(this);
    const Unrecorded part(*this);
    const qint64 count = replaceAllMatches(watch);
    if (alive) {
        const EditScope scope(*this);
        noteCommand(Command::ReplaceAll, {}, 1);
    }
    return count;
}

qint64 TextControl::replaceAllMatches(const ReplaceWatch& watch) {
    const QPointer<TextControl> alive(this);
    {
        const EditScope scope(*this);
        setSelectionBytes(0, 0);
    }
    if (!alive)
        return 0;
    const auto pattern = patternToReplace();
    if (!pattern)
        return 0;
    Replacements found;
    const bool sameText = collect(found, *pattern, {0, m_text.length()}, watch);
    if (!alive)
        return 0;
    if (!sameText || found.edits.empty() || Locked()) {
        fail();
        return 0;
    }
    const EditScope scope(*this, EditScope::Grouped);
    apply(found, watch);
    SearchHistory::ofReplacements().add(m_search.replacement);
    Q_EMIT FindWrapped();
    return static_cast<qint64>(found.edits.size());
}

qint64 TextControl::replaceAllIn(const TextMatch& range) {
    const QPointer<TextControl> alive(this);
    const EditScope scope(*this, EditScope::Grouped);
    const auto pattern = patternToReplace();
    if (!pattern)
        return 0;
    const qint64 behind = m_text.length() - range.to;
    Replacements found;
    const bool sameText = collect(found, *pattern, range, {});
    if (!alive)
        return 0;
    if (!sameText || found.edits.empty()) {
        fail();
        return 0;
    }
    apply(found, {});
    setSelectionBytes(range.from, m_text.length() - behind);
    SearchHistory::ofReplacements().add(m_search.replacement);
    noteCommand(Command::ReplaceAllInSelection, {}, 1);
    return static_cast<qint64>(found.edits.size());
}
