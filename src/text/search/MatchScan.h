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

/// A match of a pattern, as a range of held bytes [from, to). Joints at its ends are outside, joints between them
/// inside.
struct TextMatch {
    qint64 from = 0;
    qint64 to = 0;

    bool empty() const { return from == to; }
    bool operator==(const TextMatch&) const = default;
};

/// The size in bytes of the first window for a search within a range, which does not read far behind a short one.
qint64 windowFor(const TextMatch& range);

/// Finds the matches of a pattern in a held text one after another, from a given byte on, without overlaps. Lookbehinds
/// also see the text before that byte. After an empty match the search continues one character later. Joints are
/// ignored, as if they were not in the text. Owned by the code that searches.
///
/// It reads the text through a window that grows when a match needs more. Without joints the window is not copied; with
/// joints it is a copy without them. The window is fetched again for each attempt, but a scan must not continue after
/// the text has changed.
///
/// A scan does not run the event loop, but its watch (a callback) may. However long the search for the next match
/// takes, the watch is called often: an expression that may take long is tried at only a few starts at a time, and a
/// start that needs more text is tried alone. Errors: the watch ended the search, or the step limit or a memory limit
/// was reached; see error().
class MatchScan {
 public:
    /// The default size of the first window in bytes.
    static constexpr qint64 FirstWindow = 64 * 1024;
    /// Window sizes in bytes for expressions that may take long (mayTakeLong()), unless a match needs more.
    static constexpr qint64 FirstReach = 1024;
    static constexpr qint64 LargestReach = 16 * 1024;
    /// Called between two attempts. Returning false ends the search, and the text is not read again.
    using Watch = std::function<bool()>;

    /// The pattern (which must have no error), the text and the map outlive the scan. The search begins at the held
    /// byte `from`; `window` is the size of the first window in bytes.
    MatchScan(const SearchPattern& pattern, const HeldText& text, const TextMap& map, qint64 from,
              qint64 window = FirstWindow);
    ~MatchScan();
    MatchScan(const MatchScan&) = delete;
    MatchScan& operator=(const MatchScan&) = delete;

    /// Matches that begin after this held byte are not searched for.
    void stopBehind(qint64 last) { m_stopBehind = last; }
    void watchedBy(Watch goesOn) { m_goesOn = std::move(goesOn); }
    /// Ends the search: next() returns false from now on, and error() reports that the search was stopped.
    void stop();
    /// Moves to the next match. False when there is none, or when the search was ended early (see error()).
    bool next();
    const TextMatch& match() const { return m_match; }
    /// Returns the text of a group of the current match, without joints; group 0 is the whole match. Valid until the
    /// next call of next() or the next change of the text.
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
    qint64 m_next;  ///< held byte where the next match may begin
    qint64 m_stopBehind;
    qint64 m_windowFrom = 0;
    qint64 m_windowTo = 0;
    qint64 m_windowSize;
    bool m_open = false;
    bool m_done = false;
    qint64 m_firstJoint = 0;  ///< index of the first joint in the window
    qint64 m_reach;           ///< size in bytes of the next window for expressions that may take long
    bool m_alone = false;     ///< try only the start m_next, because the last window was too small for it
    Watch m_goesOn;
    std::string m_copy;
    TextMatch m_match;
    SearchError m_error;
};

/// Returns the last match that ends at or before the held byte `limit` and begins before it; if `emptyAtLimit` is set,
/// an empty match may also be at `limit`. Searches backwards by lines. The result is the same as for a search from the
/// start of the text, unless the match depends on one that begins in an earlier line. Lines in front of the one with
/// the byte `lowest` are not read. When `error` is set, the search was ended early.
std::optional<TextMatch> lastMatchBefore(const SearchPattern& pattern, const HeldText& text, const TextMap& map,
                                         qint64 limit, bool emptyAtLimit, SearchError& error,
                                         const MatchScan::Watch& goesOn = {}, qint64 lowest = 0);

/// Returns the last match that begins before the held byte `limit` (or at it, if `alsoAtLimit` is set), wherever it
/// ends. Searches in the same way.
std::optional<TextMatch> lastMatchBegunBefore(const SearchPattern& pattern, const HeldText& text, const TextMap& map,
                                              qint64 limit, bool alsoAtLimit, SearchError& error,
                                              const MatchScan::Watch& goesOn = {}, qint64 lowest = 0);
