#pragma once

#include "text/held/HeldText.h"
#include "text/held/TextMap.h"
#include "text/search/SearchPattern.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

struct pcre2_real_match_data_8;

/// A match of a pattern, in held bytes. Joints at its ends lie outside, joints within count.
struct TextMatch {
    qint64 from = 0;
    qint64 to = 0;

    bool empty() const { return from == to; }
    bool operator==(const TextMatch&) const = default;
};

/// The matches of a pattern in a held text, one after the other from some place on, none overlapping the one before;
/// the text in front of the place is seen by what looks back. Behind an empty match the search goes on one character
/// further. Joints are looked over.
///
/// Reads the text in place, through a window that grows as a match needs it; where there are joints, through a copy of
/// that window. What is read in place is asked for anew at every step, but a text that has changed is not searched on.
///
/// However long it takes to the next match, the time between two calls of its watch is short: an expression that takes
/// long is tried at few starts at a time, and a start that needs more text alone.
class MatchScan {
 public:
    /// Bytes of the first window.
    static constexpr qint64 FirstWindow = 64 * 1024;
    /// Bytes of a window of what may take long, unless a match needs more.
    static constexpr qint64 FirstReach = 1024;
    static constexpr qint64 LargestReach = 16 * 1024;
    /// Asked between two tries; false: the search is given up, and the text not looked at again.
    using Watch = std::function<bool()>;

    /// Pattern (without an error), text and map outlive the scan. Begins at the held byte `from`.
    MatchScan(const SearchPattern& pattern, const HeldText& text, const TextMap& map, qint64 from,
              qint64 window = FirstWindow);
    ~MatchScan();
    MatchScan(const MatchScan&) = delete;
    MatchScan& operator=(const MatchScan&) = delete;

    /// Matches that begin behind this held byte are not looked for.
    void stopBehind(qint64 last) { m_stopBehind = last; }
    void watchedBy(Watch goesOn) { m_goesOn = std::move(goesOn); }
    /// There is no next match then, and error() says that the search was stopped.
    void stop();
    /// Goes on to the next match; false when there is none, or when the search had to be given up (see error()).
    bool next();
    const TextMatch& match() const { return m_match; }
    /// What a group of the match took, without joints; 0 is the whole. Good until the next step or change.
    std::string_view group(int number) const;

    const SearchError& error() const { return m_error; }

 private:
    struct FreeMatchData {
        void operator()(pcre2_real_match_data_8* data) const;
    };

    void openWindow(qint64 at, qint64 size);
    std::string_view subject() const;
    int tryMatch(std::string_view subject);
    int matchWithin(std::string_view subject);
    void adaptReach(qint64 nanoseconds);
    bool goFurther(int result, std::string_view subject);
    bool goBehind(std::string_view subject);
    void goBehindWindow();
    void widen(std::size_t start);
    std::size_t behindCharacter(std::string_view subject, std::size_t at) const;
    void takeMatch(std::string_view subject);
    bool finish();
    std::size_t offsetOf(qint64 held) const;
    qint64 heldBehindJoint(std::size_t offset) const;
    qint64 heldBeforeJoint(std::size_t offset) const;
    qint64 jointsUpTo(std::size_t offset, bool included) const;

    const SearchPattern& m_pattern;
    const HeldText& m_text;
    const JointList& m_joints;
    std::unique_ptr<pcre2_real_match_data_8, FreeMatchData> m_data;
    qint64 m_next;  ///< where the next match may begin
    qint64 m_stopBehind;
    qint64 m_windowFrom = 0;
    qint64 m_windowTo = 0;
    qint64 m_windowSize;
    bool m_open = false;
    bool m_done = false;
    qint64 m_firstJoint = 0;  ///< number of the first joint in the window
    qint64 m_reach;           ///< bytes of the next window of what may take long
    bool m_alone = false;     ///< only the match that begins at m_next is looked for: its window was too small
    Watch m_goesOn;
    std::string m_copy;
    TextMatch m_match;
    SearchError m_error;
};

/// The last match that ends at or in front of `limit` and begins in front of it; an empty one may lie at `limit` itself
/// when `emptyAtLimit` says so. Goes back by lines, so that it finds what a search from the top would, as long as that
/// match does not depend on one that began in a line before.
std::optional<TextMatch> lastMatchBefore(const SearchPattern& pattern, const HeldText& text, const TextMap& map,
                                         qint64 limit, bool emptyAtLimit, SearchError& error,
                                         const MatchScan::Watch& goesOn = {});

/// The last match that begins in front of `limit`, or at it as well, wherever it ends; found in the same way.
std::optional<TextMatch> lastMatchBegunBefore(const SearchPattern& pattern, const HeldText& text, const TextMap& map,
                                              qint64 limit, bool alsoAtLimit, SearchError& error,
                                              const MatchScan::Watch& goesOn = {});
