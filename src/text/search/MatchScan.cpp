#include "text/search/MatchScan.h"

#include "text/codec/Utf8Text.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace {

/// A window grows to at most this size in bytes, unless a match needs more.
constexpr qint64 LargestWindow = 16 * 1024 * 1024;
/// The maximum number of bytes of a character with a joint beside it.
constexpr qint64 CharacterAndJoint = 5;
/// Characters in the window in addition to those of lookbehinds: two for a CR LF, and one so that the window never
/// looks like the start of the text.
constexpr qint64 SpareCharacters = 3;
/// lastMatch() first goes back this many bytes, and ReachGrowth times as many at each further attempt.
constexpr qint64 FirstReach = 4096;
constexpr qint64 ReachGrowth = 8;

qint64 characterStart(const HeldText& text, qint64 at) {
    while (at > 0 && at < text.length() && isContinuation(text.range(at, 1).front()))
        --at;
    return at;
}

bool splitsLineEnd(const HeldText& text, qint64 at) {
    return at > 0 && at < text.length() && text.range(at - 1, 1) == "\r" && text.range(at, 1) == "\n";
}

/// Returns where a window that should end at `at` ends: not inside a character or a CR LF.
qint64 windowEnd(const HeldText& text, qint64 at) {
    if (at >= text.length())
        return text.length();
    const qint64 end = characterStart(text, at);
    return splitsLineEnd(text, end) ? end + 1 : end;
}

/// The wanted duration of one attempt, in nanoseconds: outside these limits the next attempt gets fewer or more starts.
constexpr qint64 ShortTry = 1'000'000;
constexpr qint64 LongTry = 8'000'000;
constexpr qint64 ReachStep = 2;

qint64 nanosecondsNow() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

SearchError stopped() {
    return {QCoreApplication::translate("Search", "The search was stopped."), -1};
}

SearchError givenUp() {
    return {QCoreApplication::translate("Search", "The expression takes too many steps; the search was stopped."), -1};
}

}  // namespace

void MatchScan::FreeMatchData::operator()(pcre2_real_match_data_8* data) const {
    pcre2_match_data_free(data);
}

qint64 windowFor(const TextMatch& range) {
    return std::clamp(range.to - range.from, MatchScan::FirstReach, MatchScan::FirstWindow);
}

MatchScan::MatchScan(const SearchPattern& pattern, const HeldText& text, const TextMap& map, qint64 from, qint64 window)
    : m_pattern(pattern),
      m_text(text),
      m_joints(map.joints()),
      m_data(pcre2_match_data_create_from_pattern(pattern.code(), nullptr)),
      m_next(from),
      m_stopBehind(text.length()),
      m_windowSize(window),
      m_reach(std::min(window, FirstReach)) {}

MatchScan::~MatchScan() = default;

// Conversion between offsets in the subject of PCRE2 and held bytes

qint64 MatchScan::jointsUpTo(std::size_t offset, bool included) const {
    const auto& offsets = m_joints.offsets();
    const qint64 wanted = m_windowFrom + static_cast<qint64>(offset);
    qint64 low = m_firstJoint;
    auto high = static_cast<qint64>(offsets.size());
    while (low < high) {
        const qint64 middle = low + (high - low) / 2;
        const qint64 place = offsets[static_cast<std::size_t>(middle)] - (middle - m_firstJoint);
        if (place < wanted || (included && place == wanted))
            low = middle + 1;
        else
            high = middle;
    }
    return low - m_firstJoint;
}

qint64 MatchScan::heldBehindJoint(std::size_t offset) const {
    return m_windowFrom + static_cast<qint64>(offset) + jointsUpTo(offset, true);
}

qint64 MatchScan::heldBeforeJoint(std::size_t offset) const {
    return m_windowFrom + static_cast<qint64>(offset) + jointsUpTo(offset, false);
}

std::size_t MatchScan::offsetOf(qint64 held) const {
    return static_cast<std::size_t>(held - m_windowFrom - (m_joints.before(held) - m_firstJoint));
}

// The window

/// Moves the window to begin at `at`; it also contains what lookbehinds may examine before `at`.
void MatchScan::openWindow(qint64 at, qint64 size) {
    const qint64 back = (m_pattern.lookBehind() + SpareCharacters) * CharacterAndJoint;
    m_windowSize = size;
    const bool whole = m_pattern.seesTextAsOne();
    m_windowFrom = whole ? 0 : characterStart(m_text, std::max<qint64>(0, at - back));
    m_windowTo = whole ? m_text.length() : windowEnd(m_text, at + size);
    m_open = true;
    m_firstJoint = m_joints.before(m_windowFrom);
    if (m_joints.empty())
        return;
    m_copy.clear();
    const auto& offsets = m_joints.offsets();
    qint64 from = m_windowFrom;
    const auto take = [this](std::string_view run) { m_copy += run; };
    for (auto joint = offsets.begin() + m_firstJoint; joint != offsets.end() && *joint < m_windowTo; ++joint) {
        m_text.forEachRun(from, *joint, take);
        from = *joint + 1;
    }
    m_text.forEachRun(from, m_windowTo, take);
}

std::string_view MatchScan::subject() const {
    return m_joints.empty() ? m_text.range(m_windowFrom, m_windowTo - m_windowFrom) : std::string_view(m_copy);
}

// Matching

int MatchScan::matchWithin(std::string_view subject) {
    const std::uint32_t partial = m_windowTo < m_text.length() ? PCRE2_PARTIAL_HARD : 0U;
    const char* const bytes = subject.empty() ? "" : subject.data();
    return pcre2_match(m_alone ? m_pattern.codeAtStart() : m_pattern.code(), reinterpret_cast<PCRE2_SPTR>(bytes),
                       subject.size(), offsetOf(m_next), PCRE2_NO_UTF_CHECK | partial, m_data.get(),
                       m_pattern.limits());
}

int MatchScan::tryMatch(std::string_view subject) {
    if (!m_pattern.mayTakeLong())
        return matchWithin(subject);
    const qint64 begun = nanosecondsNow();
    const int result = matchWithin(subject);
    if (result < 0 && !m_alone)
        adaptReach(nanosecondsNow() - begun);
    return result;
}

void MatchScan::adaptReach(qint64 nanoseconds) {
    if (nanoseconds > LongTry)
        m_reach = std::max<qint64>(1, m_reach / ReachStep);
    else if (nanoseconds < ShortTry)
        m_reach = std::min(m_reach * ReachStep, LargestReach);
}

bool MatchScan::next() {
    while (!m_done) {
        if (m_next > m_stopBehind)
            return finish();
        if (!m_open)
            openWindow(m_next, m_pattern.mayTakeLong() ? m_reach : m_windowSize);
        const std::string_view searched = subject();
        const int result = tryMatch(searched);
        if (goFurther(result, searched)) {
            if (!m_goesOn || m_goesOn())
                continue;
            stop();
            return false;
        }
        if (result < 0) {
            if (result != PCRE2_ERROR_NOMATCH)
                m_error = givenUp();
            return finish();
        }
        takeMatch(searched);
        return m_match.from <= m_stopBehind || finish();
    }
    return false;
}

/// Reports whether another attempt may give another result, with more text or from a later start; if so, prepares it.
bool MatchScan::goFurther(int result, std::string_view subject) {
    const bool more = m_windowTo < m_text.length();
    if (result == PCRE2_ERROR_NOMATCH && m_alone)
        return goBehind(subject);
    if (!more || (result < 0 && result != PCRE2_ERROR_NOMATCH && result != PCRE2_ERROR_PARTIAL))
        return false;
    const std::size_t* const ends = pcre2_get_ovector_pointer(m_data.get());
    if (result == PCRE2_ERROR_NOMATCH)
        goBehindWindow();
    else if (result == PCRE2_ERROR_PARTIAL)
        widen(ends[0]);
    else if (ends[1] == subject.size())
        widen(pcre2_get_startchar(m_data.get()));
    else
        return false;
    return true;
}

/// No match begins at the single start that was tried, so the search continues at the next character.
bool MatchScan::goBehind(std::string_view subject) {
    const std::size_t start = offsetOf(m_next);
    m_alone = m_open = false;
    if (start >= subject.size())
        return false;
    m_next = heldBeforeJoint(behindCharacter(subject, start));
    return true;
}

void MatchScan::goBehindWindow() {
    m_next = m_windowTo;
    openWindow(m_next, m_pattern.mayTakeLong() ? m_reach : std::min(m_windowSize * 2, LargestWindow));
}

/// Text after the window could change the result for this start, so the window grows.
void MatchScan::widen(std::size_t start) {
    m_next = heldBeforeJoint(start);
    m_alone = m_pattern.mayTakeLong();
    openWindow(m_next, std::max(m_windowSize, m_windowTo - m_next) * 2);
}

/// Returns where the search continues after a start that was tried, by the same rules as in PCRE2.
std::size_t MatchScan::behindCharacter(std::string_view subject, std::size_t at) const {
    std::size_t further = at + 1;
    while (further < subject.size() && isContinuation(subject[further]))
        ++further;
    if (m_pattern.keepsCrLfWhole() && subject.substr(further - 1, 2) == "\r\n")
        ++further;
    return further;
}

void MatchScan::takeMatch(std::string_view subject) {
    const std::size_t* const ends = pcre2_get_ovector_pointer(m_data.get());
    const std::size_t to = ends[1];
    m_match.to = heldBeforeJoint(to);
    m_match.from = ends[0] == to ? m_match.to : heldBehindJoint(ends[0]);
    m_next = m_match.to;
    m_alone = false;
    m_open = !m_pattern.mayTakeLong() || m_windowTo - m_next <= m_reach;
    if (!m_match.empty())
        return;
    if (to >= subject.size()) {
        m_done = true;
        return;
    }
    m_next = heldBeforeJoint(behindCharacter(subject, to));
}

void MatchScan::stop() {
    m_error = stopped();
    m_done = true;
}

bool MatchScan::finish() {
    m_done = true;
    return false;
}

std::string_view MatchScan::group(int number) const {
    const std::size_t* const ends = pcre2_get_ovector_pointer(m_data.get());
    if (number < 0 || static_cast<std::uint32_t>(number) >= pcre2_get_ovector_count(m_data.get()))
        return {};
    const std::size_t from = ends[2 * number];
    const std::size_t to = ends[2 * number + 1];
    return from == PCRE2_UNSET || to < from ? std::string_view() : subject().substr(from, to - from);
}

namespace {

template <typename Accept>
std::optional<TextMatch> lastMatch(const SearchPattern& pattern, const HeldText& text, const TextMap& map, qint64 limit,
                                   SearchError& error, const MatchScan::Watch& goesOn, qint64 lowest, Accept accepts) {
    std::optional<TextMatch> last;
    const qint64 lowestBegin = map.lineBeginOf(lowest);
    for (qint64 reach = FirstReach; !last; reach *= ReachGrowth) {
        const qint64 begin = map.lineBeginOf(std::max(lowest, limit - reach));
        MatchScan scan(pattern, text, map, begin);
        scan.stopBehind(limit);
        scan.watchedBy(goesOn);
        while (scan.next()) {
            if (accepts(scan.match()))
                last = scan.match();
        }
        error = scan.error();
        if (begin <= lowestBegin || error)
            break;
    }
    return last;
}

}  // namespace

std::optional<TextMatch> lastMatchBefore(const SearchPattern& pattern, const HeldText& text, const TextMap& map,
                                         qint64 limit, bool emptyAtLimit, SearchError& error,
                                         const MatchScan::Watch& goesOn, qint64 lowest) {
    return lastMatch(pattern, text, map, limit, error, goesOn, lowest,
                     [&](const TextMatch& match) { return match.to <= limit && (match.from < limit || emptyAtLimit); });
}

std::optional<TextMatch> lastMatchBegunBefore(const SearchPattern& pattern, const HeldText& text, const TextMap& map,
                                              qint64 limit, bool alsoAtLimit, SearchError& error,
                                              const MatchScan::Watch& goesOn, qint64 lowest) {
    return lastMatch(pattern, text, map, limit, error, goesOn, lowest,
                     [&](const TextMatch& match) { return match.from < limit || alsoAtLimit; });
}
