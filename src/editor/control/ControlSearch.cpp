// Searching in the control.

#include "editor/commands/MacroPlayer.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/EditScope.h"
#include "editor/control/ScanLock.h"
#include "editor/control/SearchHistory.h"
#include "editor/control/SearchNotice.h"
#include "editor/control/TextControl.h"
#include "platform/YieldPace.h"
#include "text/search/MatchScan.h"

#include <QPointer>

// Text and flags

void TextControl::setSearchCaseSensitive(bool on) {
    changeSearch(m_search.flags.caseSensitive, on);
}

void TextControl::setSearchRegExp(bool on) {
    changeSearch(m_search.flags.regExp, on);
}

void TextControl::setSearchWholeWord(bool on) {
    changeSearch(m_search.flags.wholeWord, on);
}

void TextControl::setSearchText(const QString& text) {
    changeSearch(m_search.text, text);
}

template <typename Value>
void TextControl::changeSearch(Value& part, const Value& value) {
    if (part == value)
        return;
    part = value;
    m_search.pattern.reset();
    Q_EMIT SearchChanged();
}

QString TextControl::FindHistory() {
    return SearchHistory::ofFinds().text();
}

std::shared_ptr<const SearchPattern> TextControl::searchPattern() {
    const bool ascii = m_map.ascii();
    if (!m_search.pattern || m_search.patternForAscii != ascii) {
        m_search.pattern = std::make_shared<SearchPattern>(m_search.text, m_search.flags, ascii);
        m_search.patternForAscii = ascii;
    }
    return m_search.pattern->error() ? nullptr : m_search.pattern;
}

/// The pattern of a search that begins: its text goes into the history, and searchError() says why there is none.
std::shared_ptr<const SearchPattern> TextControl::notedPattern() {
    SearchHistory::ofFinds().add(m_search.text);
    return patternToFind();
}

// One match

SearchOutcome TextControl::fail(const SearchError& error) {
    if (error)
        m_search.error = error;
    commandFailed();
    return SearchOutcome::Failed;
}

bool TextControl::isEmptyMatchTaken(const TextMatch& match) const {
    return match.empty() && m_search.emptyMatch == SearchState::EmptyMatch{match.from, m_changes};
}

void TextControl::selectMatch(const TextMatch& match) {
    const qint64 line = send(SCI_VISIBLEFROMDOCLINE, m_text.lineOf(match.to));
    const qint64 first = send(SCI_GETFIRSTVISIBLELINE);
    setSelectionBytes(match.from, match.to);
    if (line < first || line >= first + send(SCI_LINESONSCREEN))
        send(SCI_VERTICALCENTRECARET);
    m_search.selected = match;
    m_search.emptyMatch.reset();
    if (match.empty())
        m_search.emptyMatch = {match.from, m_changes};
}

SearchOutcome TextControl::outcomeOf(const std::optional<TextMatch>& match, bool wrapped) {
    if (!match)
        return fail();
    selectMatch(*match);
    if (!wrapped)
        return SearchOutcome::Found;
    Q_EMIT FindWrapped();
    return SearchOutcome::Wrapped;
}

SearchOutcome TextControl::findNext() {
    return findNoted(false);
}

SearchOutcome TextControl::findPrevious() {
    return findNoted(true);
}

SearchOutcome TextControl::findNoted(bool backwards) {
    const QPointer<TextControl> alive(this);
    const EditScope scope(*this);
    SearchHistory::ofFinds().add(m_search.text);
    const SearchOutcome outcome = find(backwards);
    if (alive)
        noteCommand(backwards ? Command::FindPrevious : Command::FindNext, {}, 1);
    return outcome;
}

SearchOutcome TextControl::findTyped(bool backwards, bool alsoHere) {
    const EditScope scope(*this);
    const auto pattern = patternToFind();
    if (!pattern)
        return fail();
    return backwards ? findLast(lastMatchBegunBefore, *pattern, alsoHere) : findOnward(*pattern);
}

SearchOutcome TextControl::find(bool backwards) {
    const EditScope scope(*this);
    const auto pattern = patternToFind();
    if (!pattern)
        return fail();
    return backwards ? findBackward(*pattern) : findOnward(*pattern);
}

/// Null where there is none; searchError() says why.
std::shared_ptr<const SearchPattern> TextControl::patternToFind() {
    auto pattern = searchPattern();
    m_search.error = m_search.pattern->error();
    return pattern;
}

/// While a macro is played it is the player that is asked.
MatchScan::Watch TextControl::watchOfSearch() {
    std::function<bool()> asked;
    if (m_player != nullptr) {
        asked = [player = m_player] { return player->goesOn(); };
    } else if (m_searchWatch) {
        asked = [watch = m_searchWatch, notice = std::make_shared<SearchNotice>(*this)] {
            return watch(notice->lookAtClock());
        };
    } else {
        return {};
    }
    const QPointer<const TextControl> alive(this);
    return [alive, asked, changes = m_changes, pace = YieldPace()]() mutable {
        return !pace.due() || (asked() && alive && alive->m_changes == changes);
    };
}

/// The next match behind the selection, else the first of the text; null with or without an error. With one, the
/// control may be gone.
std::unique_ptr<MatchScan> TextControl::foundOnward(const SearchPattern& pattern, bool& wrapped, SearchError& error) {
    const qint64 from = send(SCI_GETSELECTIONEND);
    auto scan = std::make_unique<MatchScan>(pattern, m_text, m_map, from);
    scan->watchedBy(watchOfSearch());
    if (scan->next() && (!isEmptyMatchTaken(scan->match()) || scan->next()))
        return scan;
    error = scan->error();
    if (error)
        return nullptr;
    wrapped = true;
    scan = std::make_unique<MatchScan>(pattern, m_text, m_map, 0);
    scan->watchedBy(watchOfSearch());
    if (!pattern.seesTextAsOne())
        scan->stopBehind(from);
    if (scan->next())
        return scan;
    error = scan->error();
    return nullptr;
}

SearchOutcome TextControl::findOnward(const SearchPattern& pattern) {
    const QPointer<TextControl> alive(this);
    bool wrapped = false;
    SearchError error;
    const auto found = foundOnward(pattern, wrapped, error);
    if (!alive)
        return SearchOutcome::Failed;
    return found ? outcomeOf(found->match(), wrapped) : fail(error);
}

SearchOutcome TextControl::findBackward(const SearchPattern& pattern) {
    const qint64 from = send(SCI_GETSELECTIONSTART);
    const bool nothingSelected = from == send(SCI_GETSELECTIONEND);
    return findLast(lastMatchBefore, pattern, nothingSelected && !isEmptyMatchTaken({from, from}));
}

/// The last match in front of the selection, as the one or the other rule takes it, else the last of the text.
template <typename Rule>
SearchOutcome TextControl::findLast(Rule lastMatch, const SearchPattern& pattern, bool alsoHere) {
    const QPointer<TextControl> alive(this);
    SearchError error;
    bool wrapped = false;
    auto found = lastMatch(pattern, m_text, m_map, send(SCI_GETSELECTIONSTART), alsoHere, error, watchOfSearch());
    if (!found && !error) {
        wrapped = true;
        found = lastMatch(pattern, m_text, m_map, m_text.length(), true, error, watchOfSearch());
    }
    if (!alive)
        return SearchOutcome::Failed;
    return error ? fail(error) : outcomeOf(found, wrapped);
}

// All matches

MatchPlace TextControl::placeOf(const TextMatch& match) const {
    const qint64 position = m_map.positionOf(match.from);
    return {m_map.lineOf(match.from), position, m_map.positionOf(match.to) - position};
}

qint64 TextControl::findAll(const std::function<bool(const MatchPlace&)>& take) {
    const QPointer<TextControl> alive(this);
    {
        const EditScope scope(*this);
        setSelectionBytes(0, 0);
    }
    if (!alive)
        return 0;
    const auto pattern = notedPattern();
    if (!pattern) {
        fail();
        return 0;
    }
    const ScanLock lock(*this);
    const quint64 changes = m_changes;
    qint64 count = 0;
    MatchScan scan(*pattern, m_text, m_map, 0);
    scan.watchedBy(watchOfSearch());
    while (scan.next()) {
        ++count;
        const bool goesOn = take(placeOf(scan.match()));
        if (!alive)
            return count;
        if (m_changes != changes) {
            fail();
            return count;
        }
        if (!goesOn)
            scan.stop();
    }
    if (!alive)
        return count;
    const EditScope scope(*this);
    m_search.error = scan.error();
    if (count == 0 || m_changes != changes)
        fail(scan.error());
    else
        outcomeOf(scan.match(), true);
    return count;
}

qint64 TextControl::countMatches() {
    return countMatches({0, m_text.length()});
}

qint64 TextControl::countMatches(const TextMatch& range) {
    const QPointer<TextControl> alive(this);
    const auto pattern = notedPattern();
    if (!pattern)
        return 0;
    MatchScan scan(*pattern, m_text, m_map, range.from);
    scan.stopBehind(range.to);
    scan.watchedBy(watchOfSearch());
    qint64 count = 0;
    while (scan.next())
        count += scan.match().to <= range.to ? 1 : 0;
    if (alive)
        m_search.error = scan.error();
    return count;
}
