#include "editor/BraceScan.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::string_view Openers = "([{";
constexpr std::string_view Closers = ")]}";

/// A pair of braces, seen from one of them: it counts on at its own kind, and back at its partner.
struct Pair {
    char own = '\0';
    char partner = '\0';
    bool forwards = true;
};

Pair pairOf(char brace) {
    if (const std::size_t opener = Openers.find(brace); opener != std::string_view::npos)
        return {brace, Closers[opener], true};
    const std::size_t closer = Closers.find(brace);
    return {brace, Openers[closer], false};
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

/// Counts braces on the way; the byte of the partner once the count comes back to nothing, else -1.
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

bool isBrace(char byte) {
    return Openers.find(byte) != std::string_view::npos || Closers.find(byte) != std::string_view::npos;
}

Match matchAt(const HeldText& text, qint64 brace, const std::function<bool(qint64 byte)>& counts) {
    if (brace < 0 || brace >= text.length() || !isBrace(text.range(brace, 1).front()))
        return {};
    const Pair pair = pairOf(text.range(brace, 1).front());
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
