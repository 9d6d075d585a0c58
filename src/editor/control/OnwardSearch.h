#pragma once

#include "text/search/MatchScan.h"

#include <functional>
#include <memory>

/// A search for the next match of a pattern from some place on. Pattern (without an error), text and map must outlive
/// the search and its result.
struct OnwardSearch {
    const SearchPattern& pattern;
    const HeldText& text;
    const TextMap& map;
    qint64 from = 0;  ///< a held byte
    /// Creates the watch of a scan; may be empty.
    std::function<MatchScan::Watch()> watch = {};
    /// Whether the first match before the end of the text is skipped; may be empty.
    std::function<bool(const TextMatch& match)> isTaken = {};
};

struct OnwardMatch {
    std::unique_ptr<MatchScan> scan;  ///< at the match; null: there is none, with or without an error
    bool wrapped = false;             ///< the search has continued at the start, with or without a match
    SearchError error;
};

/// Searches to the end of the text and, if `around`, on from its start up to where it began: a text without a match is
/// read once. An expression that depends on the whole text is matched against all of it both times.
OnwardMatch nextMatch(const OnwardSearch& search, bool around);
