#include "text/lines/LineDiff.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <unordered_map>
#include <utility>

namespace {

using LineDiff::Change;

/// Lines by number: equal lines have the same one.
using Numbers = std::vector<int>;

/// A stretch of both texts.
struct Stretch {
    qint64 oldFirst;
    qint64 oldEnd;
    qint64 newFirst;
    qint64 newEnd;

    bool isOfBoth() const { return oldFirst < oldEnd && newFirst < newEnd; }
};

/// A line that is equal in both texts.
struct Match {
    qint64 oldLine;
    qint64 newLine;
};

std::pair<Numbers, Numbers> numbersOf(const std::vector<std::string_view>& oldLines,
                                      const std::vector<std::string_view>& newLines) {
    std::unordered_map<std::string_view, int> known;
    known.reserve(oldLines.size());
    const auto numberAll = [&known](const std::vector<std::string_view>& lines) {
        Numbers numbers;
        numbers.reserve(lines.size());
        for (const std::string_view line : lines)
            numbers.push_back(known.try_emplace(line, static_cast<int>(known.size())).first->second);
        return numbers;
    };
    Numbers first = numberAll(oldLines);
    return {std::move(first), numberAll(newLines)};
}

/// Finds the matches of two texts, in ascending order.
class Comparison {
 public:
    Comparison(Numbers oldLines, Numbers newLines, const std::atomic<bool>& cancelled, int mostDifferences)
        : m_old(std::move(oldLines)), m_new(std::move(newLines)), m_cancelled(cancelled), m_most(mostDifferences) {}

    /// The stretches that are still to be compared are kept in a list, because they may be many; the last comes first.
    std::vector<Match> matches() {
        m_open.push_back({0, std::ssize(m_old), 0, std::ssize(m_new)});
        while (!m_open.empty() && !m_cancelled) {
            const Stretch next = m_open.back();
            m_open.pop_back();
            compare(next);
        }
        return std::move(m_matches);
    }

 private:
    bool equal(qint64 oldLine, qint64 newLine) const {
        return m_old[static_cast<std::size_t>(oldLine)] == m_new[static_cast<std::size_t>(newLine)];
    }

    void compare(Stretch stretch) {
        while (stretch.isOfBoth() && equal(stretch.oldFirst, stretch.newFirst))
            m_matches.push_back({stretch.oldFirst++, stretch.newFirst++});
        const qint64 end = stretch.oldEnd;
        while (stretch.isOfBoth() && equal(stretch.oldEnd - 1, stretch.newEnd - 1)) {
            --stretch.oldEnd;
            --stretch.newEnd;
        }
        // The equal end has its turn when everything before it has been compared.
        if (const qint64 tail = end - stretch.oldEnd; tail > 0)
            m_open.push_back({stretch.oldEnd, end, stretch.newEnd, stretch.newEnd + tail});
        if (stretch.isOfBoth() && !findFewest(stretch))
            divide(stretch);
    }

    /// How far the ways of one round lead: for each diagonal (old line less new line) the old line.
    class Reach {
     public:
        explicit Reach(int most) : m_middle(most + 1), m_lines(2 * static_cast<std::size_t>(m_middle) + 1) {}

        int& at(int diagonal) {
            const int index = m_middle + diagonal;
            return m_lines[static_cast<std::size_t>(index)];
        }

        /// Whether the last of so many differences on the way to a diagonal is an added line, not a removed one.
        bool endsWithAdded(int diagonal, int differences) {
            return diagonal == -differences || (diagonal != differences && at(diagonal - 1) < at(diagonal + 1));
        }

     private:
        int m_middle;
        std::vector<int> m_lines;
    };

    /// The greedy algorithm: each round follows every diagonal as far as equal lines lead, with one difference more
    /// than the round before. False: there are too many differences.
    bool findFewest(const Stretch& stretch) {
        const auto oldCount = static_cast<int>(stretch.oldEnd - stretch.oldFirst);
        const auto newCount = static_cast<int>(stretch.newEnd - stretch.newFirst);
        const auto most = static_cast<int>(std::min<qint64>(m_most, qint64(oldCount) + newCount));
        std::vector<std::vector<int>> rounds;
        Reach reach(most);
        for (int differences = 0; differences <= most && !m_cancelled; ++differences) {
            for (int diagonal = -differences; diagonal <= differences; diagonal += 2) {
                int x =
                    reach.endsWithAdded(diagonal, differences) ? reach.at(diagonal + 1) : reach.at(diagonal - 1) + 1;
                while (x < oldCount && x - diagonal < newCount &&
                       equal(stretch.oldFirst + x, stretch.newFirst + x - diagonal))
                    ++x;
                reach.at(diagonal) = x;
                if (x >= oldCount && x - diagonal >= newCount) {
                    readBackwards(stretch, rounds);
                    return true;
                }
            }
            rounds.emplace_back(&reach.at(-differences), &reach.at(differences) + 1);
        }
        return false;
    }

    /// Reads the matches from the end to the start; `rounds` are those before the last one.
    void readBackwards(const Stretch& stretch, const std::vector<std::vector<int>>& rounds) {
        const auto first = std::ssize(m_matches);
        auto x = static_cast<int>(stretch.oldEnd - stretch.oldFirst);
        auto y = static_cast<int>(stretch.newEnd - stretch.newFirst);
        for (auto differences = static_cast<int>(rounds.size()); differences > 0; --differences) {
            const std::vector<int>& round = rounds[static_cast<std::size_t>(differences - 1)];
            const auto reached = [&round, differences](int diagonal) {
                return round[static_cast<std::size_t>(diagonal + differences - 1)];
            };
            const int diagonal = x - y;
            const bool added =
                diagonal == -differences || (diagonal != differences && reached(diagonal - 1) < reached(diagonal + 1));
            const int before = added ? diagonal + 1 : diagonal - 1;
            const int beforeX = reached(before);
            matchBackwards(stretch, added ? beforeX : beforeX + 1, x, y);
            x = beforeX;
            y = beforeX - before;
        }
        matchBackwards(stretch, 0, x, y);
        std::reverse(m_matches.begin() + first, m_matches.end());
    }

    void matchBackwards(const Stretch& stretch, int from, int x, int y) {
        while (x > from)
            m_matches.push_back({stretch.oldFirst + --x, stretch.newFirst + --y});
    }

    /// Divides at the lines that either text has once here, as far as their order is the same in both.
    void divide(const Stretch& stretch) {
        const std::vector<Match> anchors = ascending(commonOnce(stretch));
        std::vector<Stretch> parts;
        Stretch rest = stretch;
        for (const Match& anchor : anchors) {
            parts.push_back({rest.oldFirst, anchor.oldLine, rest.newFirst, anchor.newLine});
            parts.push_back({anchor.oldLine, anchor.oldLine + 1, anchor.newLine, anchor.newLine + 1});
            rest.oldFirst = anchor.oldLine + 1;
            rest.newFirst = anchor.newLine + 1;
        }
        if (!anchors.empty())
            parts.push_back(rest);
        m_open.insert(m_open.end(), parts.rbegin(), parts.rend());
    }

    /// In the order of the old text.
    std::vector<Match> commonOnce(const Stretch& stretch) const {
        struct Count {
            int ofOld = 0;
            int ofNew = 0;
            qint64 newLine = 0;
        };
        std::unordered_map<int, Count> counts;
        for (qint64 line = stretch.oldFirst; line < stretch.oldEnd; ++line)
            ++counts[m_old[static_cast<std::size_t>(line)]].ofOld;
        for (qint64 line = stretch.newFirst; line < stretch.newEnd; ++line) {
            Count& count = counts[m_new[static_cast<std::size_t>(line)]];
            ++count.ofNew;
            count.newLine = line;
        }
        std::vector<Match> found;
        for (qint64 line = stretch.oldFirst; line < stretch.oldEnd; ++line) {
            const Count& count = counts[m_old[static_cast<std::size_t>(line)]];
            if (count.ofOld == 1 && count.ofNew == 1)
                found.push_back({line, count.newLine});
        }
        return found;
    }

    /// The longest part of matches that ascends in the new text too.
    static std::vector<Match> ascending(const std::vector<Match>& matches) {
        std::vector<std::size_t> ends;  // of the best rows of each length
        std::vector<std::size_t> before(matches.size(), matches.size());
        for (std::size_t i = 0; i < matches.size(); ++i) {
            const auto place = std::ranges::lower_bound(ends, matches[i].newLine, {},
                                                        [&](std::size_t end) { return matches[end].newLine; });
            if (place != ends.begin())
                before[i] = *(place - 1);
            if (place == ends.end())
                ends.push_back(i);
            else
                *place = i;
        }
        std::vector<Match> row;
        for (std::size_t i = ends.empty() ? matches.size() : ends.back(); i < matches.size(); i = before[i])
            row.push_back(matches[i]);
        std::ranges::reverse(row);
        return row;
    }

    const Numbers m_old;
    const Numbers m_new;
    const std::atomic<bool>& m_cancelled;
    const int m_most;
    std::vector<Stretch> m_open;
    std::vector<Match> m_matches;
};

/// What lies between matches.
std::vector<Change> between(const std::vector<Match>& matches, qint64 oldCount, qint64 newCount) {
    std::vector<Change> changes;
    Match next{0, 0};
    const auto addUpTo = [&](const Match& match) {
        if (match.oldLine > next.oldLine || match.newLine > next.newLine)
            changes.push_back({next.oldLine, match.oldLine - next.oldLine, next.newLine, match.newLine - next.newLine});
        next = {match.oldLine + 1, match.newLine + 1};
    };
    for (const Match& match : matches)
        addUpTo(match);
    addUpTo({oldCount, newCount});
    return changes;
}

}  // namespace

std::vector<std::string_view> LineDiff::linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        if (text.substr(end, 2) == "\r\n")
            ++end;
        end = std::min(end + 1, text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

std::optional<std::vector<Change>> LineDiff::compare(const std::vector<std::string_view>& oldLines,
                                                     const std::vector<std::string_view>& newLines,
                                                     const std::atomic<bool>& cancelled, int mostDifferences) {
    auto [oldNumbers, newNumbers] = numbersOf(oldLines, newLines);
    Comparison comparison(std::move(oldNumbers), std::move(newNumbers), cancelled, mostDifferences);
    const std::vector<Match> matches = comparison.matches();
    if (cancelled)
        return std::nullopt;
    return between(matches, std::ssize(oldLines), std::ssize(newLines));
}
