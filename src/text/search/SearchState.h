#pragma once

#include "text/search/MatchScan.h"
#include "text/search/SearchPattern.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// The result of a search for one match.
enum class SearchOutcome {
    Found,
    Wrapped,  ///< found after continuing at the other end of the text
    Failed,   ///< not found, or nothing to do; the selection is unchanged
};

/// A match as the program reports it, in the text itself (joints not counted).
struct MatchPlace {
    qint64 line = 0;      ///< where it begins, from 0
    qint64 position = 0;  ///< of its first character, in UTF-16 units
    qint64 length = 0;    ///< in UTF-16 units
};

/// Callbacks of a replacement of all matches.
struct ReplaceWatch {
    /// Called once for each match during the search, and may run the event loop. Returning false ends the search; the
    /// matches found so far are replaced.
    std::function<bool()> goesOn = [] { return true; };
    /// Called for each replacement, in order, after all were made, with its new place. May be empty.
    std::function<void(const MatchPlace&)> replaced;
};

/// What a control remembers between two searches. A plain value, owned by the control.
struct SearchState {
    SearchFlags flags;
    bool preserveCase = false;
    QString text;
    QString replacement;
    SearchError error;                  ///< of the last search
    std::optional<TextMatch> selected;  ///< the match that the last search selected

    /// Compiled from text and flags when it is needed; null until then.
    std::shared_ptr<const SearchPattern> pattern;
    bool patternForAscii = false;

    /// A selected empty match: the next search does not find it again at this held byte while the text is unchanged
    /// (the same number of changes).
    struct EmptyMatch {
        qint64 byte = 0;
        quint64 changes = 0;
        bool operator==(const EmptyMatch&) const = default;
    };
    std::optional<EmptyMatch> emptyMatch;
};
