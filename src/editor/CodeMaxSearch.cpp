// Searching and replacing in the control.

#include "editor/BulkReplace.h"
#include "editor/CodeMax.h"
#include "editor/ControlCommands.h"
#include "editor/EditScope.h"
#include "editor/MacroPlayer.h"
#include "editor/Replacement.h"
#include "editor/SearchHistory.h"
#include "editor/SearchNotice.h"
#include "editor/TextSearch.h"
#include "editor/Unrecorded.h"
#include "platform/YieldPace.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace {

/// Keeps a text as it is while its matches are visited.
class ScanLock {
 public:
    explicit ScanLock(CodeMax& control) : m_control(&control) { set(true); }
    ~ScanLock() {
        if (m_control)
            set(m_control->Locked());
    }
    ScanLock(const ScanLock&) = delete;
    ScanLock& operator=(const ScanLock&) = delete;

 private:
    void set(bool on) { m_control->SendScintilla(QsciScintillaBase::SCI_SETREADONLY, static_cast<unsigned long>(on)); }

    QPointer<CodeMax> m_control;
};

}  // namespace

// Text and flags

void CodeMax::setSearchCaseSensitive(bool on) {
    changeSearch(m_search.flags.caseSensitive, on);
}

void CodeMax::setSearchRegExp(bool on) {
    changeSearch(m_search.flags.regExp, on);
}

void CodeMax::setSearchWholeWord(bool on) {
    changeSearch(m_search.flags.wholeWord, on);
}

void CodeMax::setSearchText(const QString& text) {
    changeSearch(m_search.text, text);
}

template <typename Value>
void CodeMax::changeSearch(Value& part, const Value& value) {
    if (part == value)
        return;
    part = value;
    m_search.pattern.reset();
    Q_EMIT SearchChanged();
}

QString CodeMax::FindHistory() {
    return SearchHistory::ofFinds().text();
}

std::shared_ptr<const SearchPattern> CodeMax::searchPattern() {
    const bool ascii = m_map.ascii();
    if (!m_search.pattern || m_search.patternForAscii != ascii) {
        m_search.pattern = std::make_shared<SearchPattern>(m_search.text, m_search.flags, ascii);
        m_search.patternForAscii = ascii;
    }
    return m_search.pattern->error() ? nullptr : m_search.pattern;
}

/// The pattern of a search that begins: its text goes into the history, and searchError() says why there is none.
std::shared_ptr<const SearchPattern> CodeMax::notedPattern() {
    SearchHistory::ofFinds().add(m_search.text);
    return patternToFind();
}

// One match

SearchOutcome CodeMax::fail(const SearchError& error) {
    if (error)
        m_search.error = error;
    commandFailed();
    return SearchOutcome::Failed;
}

bool CodeMax::isEmptyMatchTaken(const TextMatch& match) const {
    return match.empty() && m_search.emptyMatch == SearchState::EmptyMatch{match.from, m_changes};
}

void CodeMax::selectMatch(const TextMatch& match) {
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

SearchOutcome CodeMax::outcomeOf(const std::optional<TextMatch>& match, bool wrapped) {
    if (!match)
        return fail();
    selectMatch(*match);
    if (!wrapped)
        return SearchOutcome::Found;
    Q_EMIT FindWrapped();
    return SearchOutcome::Wrapped;
}

SearchOutcome CodeMax::findNext() {
    return findNoted(false);
}

SearchOutcome CodeMax::findPrevious() {
    return findNoted(true);
}

SearchOutcome CodeMax::findNoted(bool backwards) {
    const QPointer<CodeMax> alive(this);
    const EditScope scope(*this);
    SearchHistory::ofFinds().add(m_search.text);
    const SearchOutcome outcome = find(backwards);
    if (alive)
        noteCommand(backwards ? ControlCommands::FindPrevious : ControlCommands::FindNext, {}, 1);
    return outcome;
}

SearchOutcome CodeMax::findTyped(bool backwards, bool alsoHere) {
    const EditScope scope(*this);
    const auto pattern = patternToFind();
    if (!pattern)
        return fail();
    return backwards ? findLast(lastMatchBegunBefore, *pattern, alsoHere) : findOnward(*pattern);
}

SearchOutcome CodeMax::find(bool backwards) {
    const EditScope scope(*this);
    const auto pattern = patternToFind();
    if (!pattern)
        return fail();
    return backwards ? findBackward(*pattern) : findOnward(*pattern);
}

/// Null where there is none; searchError() says why.
std::shared_ptr<const SearchPattern> CodeMax::patternToFind() {
    auto pattern = searchPattern();
    m_search.error = m_search.pattern->error();
    return pattern;
}

/// While a macro is played it is the player that is asked.
MatchScan::Watch CodeMax::watchOfSearch() {
    std::function<bool()> asked;
    if (m_player != nullptr)
        asked = [player = m_player] { return player->goesOn(); };
    else if (m_searchWatch)
        asked = [watch = m_searchWatch, notice = std::make_shared<SearchNotice>(*this)] {
            return watch(notice->lookAtClock());
        };
    else
        return {};
    const QPointer<const CodeMax> alive(this);
    return [alive, asked, changes = m_changes, pace = YieldPace()]() mutable {
        return !pace.due() || (asked() && alive && alive->m_changes == changes);
    };
}

/// The next match behind the selection, else the first of the text; null with or without an error. With one, the
/// control may be gone.
std::unique_ptr<MatchScan> CodeMax::foundOnward(const SearchPattern& pattern, bool& wrapped, SearchError& error) {
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

SearchOutcome CodeMax::findOnward(const SearchPattern& pattern) {
    const QPointer<CodeMax> alive(this);
    bool wrapped = false;
    SearchError error;
    const auto found = foundOnward(pattern, wrapped, error);
    if (!alive)
        return SearchOutcome::Failed;
    return found ? outcomeOf(found->match(), wrapped) : fail(error);
}

SearchOutcome CodeMax::findBackward(const SearchPattern& pattern) {
    const qint64 from = send(SCI_GETSELECTIONSTART);
    const bool nothingSelected = from == send(SCI_GETSELECTIONEND);
    return findLast(lastMatchBefore, pattern, nothingSelected && !isEmptyMatchTaken({from, from}));
}

/// The last match in front of the selection, as the one or the other rule takes it, else the last of the text.
template <typename Rule>
SearchOutcome CodeMax::findLast(Rule lastMatch, const SearchPattern& pattern, bool alsoHere) {
    const QPointer<CodeMax> alive(this);
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

/// Puts the replacement in place of the scan's match and selects it.
void CodeMax::replaceMatch(const MatchScan& scan) {
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
std::shared_ptr<const SearchPattern> CodeMax::patternToReplace() {
    auto pattern = notedPattern();
    if (pattern && !Locked())
        return pattern;
    fail(pattern ? SearchError{tr("The text is locked."), -1} : SearchError());
    return nullptr;
}

SearchOutcome CodeMax::replaceNext() {
    const QPointer<CodeMax> alive(this);
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
    noteCommand(ControlCommands::ReplaceNext, {}, 1);
    if (!wrapped)
        return SearchOutcome::Found;
    Q_EMIT FindWrapped();
    return SearchOutcome::Wrapped;
}

/// Joints at the ends of a match lie outside of it, so places are compared and not bytes.
bool CodeMax::isSelected(const TextMatch& match) const {
    const bool nothingSelected = send(SCI_GETSELECTIONEMPTY) != 0;
    return m_map.positionOf(match.from) == SelStart() && m_map.positionOf(match.to) == SelEnd() &&
           (!nothingSelected || isEmptyMatchTaken(match));
}

SearchOutcome CodeMax::replaceSelectedMatch() {
    const QPointer<CodeMax> alive(this);
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
        noteCommand(ControlCommands::ReplaceSelected, {}, 1);
    return outcome;
}

// All matches

MatchPlace CodeMax::placeOf(const TextMatch& match) const {
    const qint64 position = m_map.positionOf(match.from);
    return {m_map.lineOf(match.from), position, m_map.positionOf(match.to) - position};
}

qint64 CodeMax::findAll(const std::function<bool(const MatchPlace&)>& take) {
    const QPointer<CodeMax> alive(this);
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

qint64 CodeMax::countMatches() {
    return countMatches({0, m_text.length()});
}

qint64 CodeMax::countMatches(const TextMatch& range) {
    const QPointer<CodeMax> alive(this);
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

/// False when the text is not the one any more in which the matches were found.
bool CodeMax::collect(Replacements& found, const SearchPattern& pattern, const TextMatch& range,
                      const ReplaceWatch& watch) {
    const QPointer<CodeMax> alive(this);
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

void CodeMax::apply(const Replacements& found, const ReplaceWatch& watch) {
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

qint64 CodeMax::replaceAll(const ReplaceWatch& watch) {
    const QPointer<CodeMax> alive(this);
    const Unrecorded part(*this);
    const qint64 count = replaceAllMatches(watch);
    if (alive) {
        const EditScope scope(*this);
        noteCommand(ControlCommands::ReplaceAll, {}, 1);
    }
    return count;
}

qint64 CodeMax::replaceAllMatches(const ReplaceWatch& watch) {
    const QPointer<CodeMax> alive(this);
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

qint64 CodeMax::replaceAllIn(const TextMatch& range) {
    const QPointer<CodeMax> alive(this);
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
    noteCommand(ControlCommands::ReplaceAllInSelection, {}, 1);
    return static_cast<qint64>(found.edits.size());
}
