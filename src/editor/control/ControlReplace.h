#pragma once

#include "text/search/SearchState.h"

#include <memory>
#include <vector>

class ControlMacros;
class ControlSearch;
class ControlSelection;
class EditView;
struct Replacements;

/// Replaces matches in a control, by the text and flags of its search. Each function is one undo step. Owned by the
/// control; for re-entrancy see ControlSearch.
class ControlReplace {
 public:
    /// All four outlive this object.
    ControlReplace(EditView& view, ControlSelection& selection, ControlSearch& search, ControlMacros& macros)
        : m_view(view), m_selection(selection), m_search(search), m_macros(macros) {}

    /// Finds the next match and replaces it; the replacement is selected then.
    SearchOutcome replaceNext();
    /// Replaces the selection when it is a match, and finds the next one.
    SearchOutcome replaceSelectedMatch();
    /// Replaces all matches; the number of them.
    qint64 replaceAll(const ReplaceWatch& watch = {});
    /// The same for those within each of some ranges of held bytes, given from the top and apart from each other, at
    /// least one. They are selected then.
    qint64 replaceAllIn(const std::vector<TextMatch>& ranges);

 private:
    std::shared_ptr<const SearchPattern> patternToReplace();
    void replaceMatch(const MatchScan& scan);
    bool isSelected(const TextMatch& match) const;
    bool collect(Replacements& found, const SearchPattern& pattern, const std::vector<TextMatch>& ranges,
                 const ReplaceWatch& watch);
    void apply(const Replacements& found, const ReplaceWatch& watch);
    qint64 replaceAllMatches(const ReplaceWatch& watch);

    EditView& m_view;
    ControlSelection& m_selection;
    ControlSearch& m_search;
    ControlMacros& m_macros;
};
