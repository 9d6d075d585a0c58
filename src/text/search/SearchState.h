#pragma once

#include "text/search/MatchScan.h"
#include "text/search/SearchPattern.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// How a search for one match ended.
enum class SearchOutcome {
    Found,
    Wrapped,  ///< found on the other side of the text's end or start
    Failed,   ///< not found, or nothing to be done; the selection is as it was
};

/// A match as the program lists it.
struct MatchPlace {
    qint64 line = 0;      ///< that it begins in, from 0
    qint64 position = 0;  ///< of its first character
    qint64 length = 0;    ///< in UTF-16 units
};

/// What is done along with the replacement of all matches.
struct ReplaceWatch {
    /// Asked once a match while they are looked for; false: what was found until then is replaced.
    std::function<bool()> goesOn = [] { return true; };
    /// Told of each replacement, in order, when all are made: where it lies now. May be empty.
    std::function<void(const MatchPlace&)> replaced;
};

/// What a control keeps between two searches.
struct SearchState {
    SearchFlags flags;
    bool preserveCase = false;
    QString text;
    QString replacement;
    SearchError error;                  ///< of the last search
    std::optional<TextMatch> selected;  ///< what the last search has selected

    /// Made of text and flags when it is needed; not there: to be made.
    std::shared_ptr<const SearchPattern> pattern;
    bool patternForAscii = false;

    /// An empty match that is selected is not found again from there as long as the text is the same.
    struct EmptyMatch {
        qint64 byte = 0;
        quint64 changes = 0;
        bool operator==(const EmptyMatch&) const = default;
    };
    std::optional<EmptyMatch> emptyMatch;
};
