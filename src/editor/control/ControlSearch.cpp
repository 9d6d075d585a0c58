#include "editor/control/ControlSearch.h"

#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/EditScope.h"
#include "editor/control/EditView.h"
#include "editor/control/ScanLock.h"
#include "editor/control/SearchHistory.h"
#include "editor/control/SlowSearchNotice.h"
#include "platform/YieldPace.h"
#include "text/search/MatchScan.h"

#include <QPointer>

using Sci = QsciScintillaBase;

template <typename Value>
void ControlSearch::change(Value& part, const Value& value) {
    if (part == value)
        return;
    part = value;
    m_search.pattern.reset();
    Q_EMIT m_view.SearchChanged();
}

void ControlSearch::setFlags(const SearchFlags& flags) {
    change(m_search.flags, flags);
}

void ControlSearch::setSearchText(const QString& text) {
    change(m_search.text, text);
}

std::shared_ptr<const SearchPattern> ControlSearch::searchPattern() {
    const bool ascii = m_view.map().ascii();
    if (!m_search.pattern || m_search.patternForAscii != ascii) {
        m_search.pattern = std::make_shared<SearchPattern>(m_search.text, m_search.flags, ascii);
        m_search.patternForAscii = ascii;
    }
    return m_search.pattern->error() ? nullptr : m_search.pattern;
}

std::shared_ptr<const SearchPattern> ControlSearch::notedPattern() {
    SearchHistory::ofFinds().add(m_search.text);
    return patternToFind();
}

SearchOutcome ControlSearch::fail(const SearchError& error) {
    if (error)
        m_search.error = error;
    m_view.commandFailed();
    return SearchOutcome::Failed;
}

bool ControlSearch::isEmptyMatchTaken(const TextMatch& match) const {
    return match.empty() && m_search.emptyMatch == SearchState::EmptyMatch{match.from, m_view.changeCount()};
}

void ControlSearch::selectMatch(const TextMatch& match) {
    const qint64 line = m_view.send(Sci::SCI_VISIBLEFROMDOCLINE, m_view.heldText().lineOf(match.to));
    const qint64 first = m_view.send(Sci::SCI_GETFIRSTVISIBLELINE);
    m_view.setSelectionBytes(match.from, match.to);
    if (line < first || line >= first + m_view.send(Sci::SCI_LINESONSCREEN))
        m_view.send(Sci::SCI_VERTICALCENTRECARET);
    m_search.selected = match;
    m_search.emptyMatch.reset();
    if (match.empty())
        m_search.emptyMatch = {match.from, m_view.changeCount()};
}

SearchOutcome ControlSearch::outcomeOf(const std::optional<TextMatch>& match, bool wrapped) {
    if (!match)
        return fail();
    selectMatch(*match);
    if (!wrapped)
        return SearchOutcome::Found;
    Q_EMIT m_view.FindWrapped();
    return SearchOutcome::Wrapped;
}

SearchOutcome ControlSearch::findNext(Wrap wrap) {
    return findNoted(false, wrap);
}

SearchOutcome ControlSearch::findPrevious(Wrap wrap) {
    return findNoted(true, wrap);
}

SearchOutcome ControlSearch::findNoted(bool backwards, Wrap wrap) {
    const QPointer<EditView> alive(&m_view);
    const EditScope scope(m_view);
    SearchHistory::ofFinds().add(m_search.text);
    const SearchOutcome outcome = find(backwards, wrap);
    if (alive)
        m_macros.noteCommand(backwards ? Command::FindPrevious : Command::FindNext, {}, 1);
    return outcome;
}

SearchOutcome ControlSearch::findTyped(bool backwards, bool alsoHere) {
    const EditScope scope(m_view);
    const auto pattern = patternToFind();
    if (!pattern)
        return fail();
    return backwards ? findLast(lastMatchBegunBefore, *pattern, alsoHere, Wrap::Around)
                     : findOnward(*pattern, Wrap::Around);
}

SearchOutcome ControlSearch::find(bool backwards, Wrap wrap) {
    const EditScope scope(m_view);
    const auto pattern = patternToFind();
    if (!pattern)
        return fail();
    return backwards ? findBackward(*pattern, wrap) : findOnward(*pattern, wrap);
}

/// Null when there is none; searchError() returns the reason.
std::shared_ptr<const SearchPattern> ControlSearch::patternToFind() {
    auto pattern = searchPattern();
    m_search.error = m_search.pattern->error();
    return pattern;
}

MatchScan::Watch ControlSearch::watchOfSearch() {
    std::function<bool()> asked;
    if (m_view.state().isPlaying()) {
        asked = m_view.state().playGoesOn;
    } else if (m_watch) {
        asked = [watch = m_watch, notice = std::make_shared<SlowSearchNotice>(m_view)] {
            return watch(notice->lookAtClock());
        };
    } else {
        return {};
    }
    const QPointer<const EditView> alive(&m_view);
    return [alive, asked, changes = m_view.changeCount(), pace = YieldPace()]() mutable {
        return !pace.due() || (asked() && alive && alive->changeCount() == changes);
    };
}

OnwardMatch ControlSearch::matchOnward(const SearchPattern& pattern, Wrap wrap) {
    const OnwardSearch search{pattern,
                              m_view.heldText(),
                              m_view.map(),
                              m_view.send(Sci::SCI_GETSELECTIONEND),
                              [this] { return watchOfSearch(); },
                              [this](const TextMatch& match) { return isEmptyMatchTaken(match); }};
    return nextMatch(search, wrap == Wrap::Around);
}

SearchOutcome ControlSearch::findOnward(const SearchPattern& pattern, Wrap wrap) {
    const QPointer<EditView> alive(&m_view);
    const OnwardMatch found = matchOnward(pattern, wrap);
    if (!alive)
        return SearchOutcome::Failed;
    return found.scan ? outcomeOf(found.scan->match(), found.wrapped) : fail(found.error);
}

SearchOutcome ControlSearch::findBackward(const SearchPattern& pattern, Wrap wrap) {
    const qint64 from = m_view.send(Sci::SCI_GETSELECTIONSTART);
    const bool nothingSelected = from == m_view.send(Sci::SCI_GETSELECTIONEND);
    return findLast(lastMatchBefore, pattern, nothingSelected && !isEmptyMatchTaken({from, from}), wrap);
}

/// The last match before the selection, by one rule or the other, else the last of the text.
template <typename Rule>
SearchOutcome ControlSearch::findLast(Rule lastMatch, const SearchPattern& pattern, bool alsoHere, Wrap wrap) {
    const QPointer<EditView> alive(&m_view);
    SearchError error;
    const HeldText& text = m_view.heldText();
    const TextMap& map = m_view.map();
    const qint64 from = m_view.send(Sci::SCI_GETSELECTIONSTART);
    // A match across line ends may begin before the start of the search.
    const qint64 lowest = mayCrossLines() ? 0 : from;
    auto found = lastMatch(pattern, text, map, from, alsoHere, error, watchOfSearch(), 0);
    const bool wrapped = !found && !error && wrap == Wrap::Around;
    if (wrapped)
        found = lastMatch(pattern, text, map, text.length(), true, error, watchOfSearch(), lowest);
    if (!alive)
        return SearchOutcome::Failed;
    return error ? fail(error) : outcomeOf(found, wrapped);
}

bool ControlSearch::mayCrossLines() const {
    return m_search.flags.regExp || m_search.text.contains(u'\n') || m_search.text.contains(u'\r');
}

MatchPlace ControlSearch::placeOf(const TextMatch& match) const {
    const qint64 position = m_view.map().positionOf(match.from);
    return {m_view.map().lineOf(match.from), position, m_view.map().positionOf(match.to) - position};
}

qint64 ControlSearch::findAll(const std::function<bool(const MatchPlace&)>& take) {
    const QPointer<EditView> alive(&m_view);
    {
        const EditScope scope(m_view);
        m_view.setSelectionBytes(0, 0);
    }
    if (!alive)
        return 0;
    const auto pattern = notedPattern();
    if (!pattern) {
        fail();
        return 0;
    }
    const ScanLock lock(m_view);
    const quint64 changes = m_view.changeCount();
    qint64 count = 0;
    MatchScan scan(*pattern, m_view.heldText(), m_view.map(), 0);
    scan.watchedBy(watchOfSearch());
    while (scan.next()) {
        ++count;
        const bool goesOn = take(placeOf(scan.match()));
        if (!alive)
            return count;
        if (m_view.changeCount() != changes) {
            fail();
            return count;
        }
        if (!goesOn)
            scan.stop();
    }
    if (!alive)
        return count;
    const EditScope scope(m_view);
    m_search.error = scan.error();
    if (count == 0 || m_view.changeCount() != changes)
        fail(scan.error());
    else
        outcomeOf(scan.match(), true);
    return count;
}

qint64 ControlSearch::countMatches() {
    return countMatches(std::vector<TextMatch>{{0, m_view.heldText().length()}});
}

qint64 ControlSearch::countMatches(const std::vector<TextMatch>& ranges) {
    const QPointer<EditView> alive(&m_view);
    const quint64 changes = m_view.changeCount();
    const auto pattern = notedPattern();
    if (!pattern)
        return 0;
    qint64 count = 0;
    for (const TextMatch& range : ranges) {
        MatchScan scan(*pattern, m_view.heldText(), m_view.map(), range.from, windowFor(range));
        scan.stopBehind(range.to);
        scan.watchedBy(watchOfSearch());
        while (scan.next())
            count += scan.match().to <= range.to ? 1 : 0;
        if (!alive)
            return count;
        m_search.error = scan.error();
        if (scan.error() || m_view.changeCount() != changes)
            break;
    }
    return count;
}

bool ControlSearch::isMatchSelected() const {
    return m_search.selected ==
           TextMatch{m_view.send(Sci::SCI_GETSELECTIONSTART), m_view.send(Sci::SCI_GETSELECTIONEND)};
}
