#pragma once

#include "editor/control/OnwardSearch.h"
#include "text/search/SearchState.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class ControlMacros;
class EditView;

/// Searches the text of a control. Text and flags stay until they are set again. A search begins at the selection and
/// selects its match. Owned by the control.
///
/// Re-entrancy: the watch of a search may run the event loop, and the control may be destroyed then; the search ends by
/// itself when the text was changed meanwhile.
class ControlSearch {
 public:
    /// At an end of the text a search continues from the other end, up to where it began, or ends there.
    enum class Wrap { Around, Stop };

    /// All three outlive this object.
    ControlSearch(EditView& view, SearchState& state, ControlMacros& macros)
        : m_view(view), m_search(state), m_macros(macros) {}

    const SearchFlags& flags() const { return m_search.flags; }
    void setFlags(const SearchFlags& flags);
    bool PreserveCase() const { return m_search.preserveCase; }
    void setPreserveCase(bool on) { m_search.preserveCase = on; }
    QString searchText() const { return m_search.text; }
    void setSearchText(const QString& text);
    QString replacementText() const { return m_search.replacement; }
    void setReplacementText(const QString& text) { m_search.replacement = text; }

    /// Called every 20 ms during a search; false stops it. The argument is whether the search has taken so long that a
    /// Notice is shown.
    void setSearchWatch(std::function<bool(bool takesLong)> goesOn) { m_watch = std::move(goesOn); }

    SearchOutcome findNext(Wrap wrap = Wrap::Around);
    SearchOutcome findPrevious(Wrap wrap = Wrap::Around);
    /// The same for a text that is still being typed, which is not added to the history. Backwards it finds the last
    /// match that begins before the selection, or at its start if `alsoHere`, wherever the match ends, because further
    /// typing makes it longer.
    SearchOutcome findTyped(bool backwards, bool alsoHere = false);
    /// Why the last search failed, beyond that there was nothing to find.
    const SearchError& searchError() const { return m_search.error; }
    /// Visits all matches from the start of the text, until `take` returns false. The last one is selected then;
    /// without one the caret is at the start. `take` may run the event loop: the text cannot be edited meanwhile, and
    /// the visit ends when another one was loaded or the control destroyed. Returns the number of matches.
    qint64 findAll(const std::function<bool(const MatchPlace&)>& take);
    /// How many matches there are, in the whole text or within each of some ranges of held bytes. The selection stays
    /// as it is.
    qint64 countMatches();
    qint64 countMatches(const std::vector<TextMatch>& ranges);
    /// Whether the selection was made by a search, and not by the user.
    bool isMatchSelected() const;

    // For what is built on a search (ControlReplace, MatchHighlight)
    /// The pattern of text and flags; null when there is none or it is no valid expression.
    std::shared_ptr<const SearchPattern> searchPattern();
    /// The pattern for a new search: its text is added to the history; when there is none, searchError() returns the
    /// reason.
    std::shared_ptr<const SearchPattern> notedPattern();
    /// The next match after the selection. With an error, the control may have been destroyed.
    OnwardMatch matchOnward(const SearchPattern& pattern, Wrap wrap);
    /// The watch of one scan. While a macro is played, it calls the player.
    MatchScan::Watch watchOfSearch();
    void selectMatch(const TextMatch& match);
    bool isEmptyMatchTaken(const TextMatch& match) const;
    /// A next search finds an empty match that is selected now.
    void forgetEmptyMatch() { m_search.emptyMatch.reset(); }
    MatchPlace placeOf(const TextMatch& match) const;
    void setError(const SearchError& error) { m_search.error = error; }
    SearchOutcome fail(const SearchError& error = {});

 private:
    template <typename Value>
    void change(Value& part, const Value& value);
    std::shared_ptr<const SearchPattern> patternToFind();
    SearchOutcome findNoted(bool backwards, Wrap wrap);
    SearchOutcome find(bool backwards, Wrap wrap);
    SearchOutcome findOnward(const SearchPattern& pattern, Wrap wrap);
    SearchOutcome findBackward(const SearchPattern& pattern, Wrap wrap);
    template <typename Rule>
    SearchOutcome findLast(Rule lastMatch, const SearchPattern& pattern, bool alsoHere, Wrap wrap);
    bool mayCrossLines() const;
    SearchOutcome outcomeOf(const std::optional<TextMatch>& match, bool wrapped);

    EditView& m_view;
    SearchState& m_search;
    ControlMacros& m_macros;
    std::function<bool(bool)> m_watch;
};
