#include "editor/language/BraceScan.h"

#include <algorithm>
#include <vector>

namespace {

/// A pair of braces, seen from one of them: the count increases at its own kind, and decreases at its partner.
struct Pair {
    char own = '\0';
    char partner = '\0';
    bool forwards = true;
};

Pair pairOf(std::size_t brace, std::string_view braces) {
    const bool opens = brace % 2 == 0;
    return {braces[brace], braces[opens ? brace + 1 : brace - 1], opens};
}

struct Run {
    qint64 from = 0;
    std::string_view bytes;
};

std::vector<Run> runsOf(const HeldText& text, qint64 from, qint64 to) {
    std::vector<Run> runs;
    text.forEachRun(from, to, [&](std::string_view bytes) {
        runs.push_back({from, bytes});
        from += static_cast<qint64>(bytes.size());
    });
    return runs;
}

/// Counts braces; returns the byte of the partner when the count is 0 again, else -1.
class Counter {
 public:
    Counter(Pair pair, const std::function<bool(qint64)>& counts) : m_pair(pair), m_counts(counts) {}

    bool isPartner(char byte, qint64 at) {
        if ((byte != m_pair.own && byte != m_pair.partner) || !m_counts(at))
            return false;
        m_open += byte == m_pair.own ? 1 : -1;
        return m_open == 0;
    }

 private:
    Pair m_pair;
    const std::function<bool(qint64)>& m_counts;
    qint64 m_open = 1;
};

qint64 searchForwards(const std::vector<Run>& runs, Counter counter) {
    for (const Run& run : runs) {
        for (std::size_t at = 0; at < run.bytes.size(); ++at) {
            const qint64 byte = run.from + static_cast<qint64>(at);
            if (counter.isPartner(run.bytes[at], byte))
                return byte;
        }
    }
    return -1;
}

qint64 searchBackwards(const std::vector<Run>& runs, Counter counter) {
    for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
        for (std::size_t at = run->bytes.size(); at > 0; --at) {
            const qint64 byte = run->from + static_cast<qint64>(at) - 1;
            if (counter.isPartner(run->bytes[at - 1], byte))
                return byte;
        }
    }
    return -1;
}

}  // namespace

namespace BraceScan {

Match matchAt(const HeldText& text, qint64 brace, const std::function<bool(qint64 byte)>& counts,
              std::string_view braces) {
    if (brace < 0 || brace >= text.length())
        return {};
    const std::size_t which = braces.find(text.range(brace, 1).front());
    if (which == std::string_view::npos)
        return {};
    const Pair pair = pairOf(which, braces);
    const qint64 from = pair.forwards ? brace + 1 : std::max<qint64>(0, brace - Limit);
    const qint64 to = pair.forwards ? std::min(text.length(), brace + 1 + Limit) : brace;
    const std::vector<Run> runs = runsOf(text, from, to);
    const Counter counter(pair, counts);
    const qint64 partner = pair.forwards ? searchForwards(runs, counter) : searchBackwards(runs, counter);
    if (partner >= 0)
        return {Match::Kind::Pair, brace, partner};
    const bool sawAll = pair.forwards ? to == text.length() : from == 0;
    return {sawAll ? Match::Kind::Unmatched : Match::Kind::None, brace, -1};
}

}  // namespace BraceScan
