#include "Story.h"

#include "Contents.h"
#include "HashSum.h"

#include <algorithm>
#include <iterator>

namespace {

QByteArray withBlocksOf(QByteArray bytes, const QByteArray& other, std::initializer_list<qsizetype> blocks) {
    constexpr qsizetype Block = 512;
    for (const qsizetype block : blocks)
        bytes.replace(block * Block, Block, other.mid(block * Block, Block));
    return bytes;
}

Story grown(const char* name, qsizetype before, qsizetype after) {
    return {name, noise(before, 1), {{noise(after, 2)}}};
}

}  // namespace

std::vector<Story> stories() {
    const QByteArray first = noise(6'000, 1);
    const QByteArray second = noise(6'000, 2);
    const QByteArray large = noise(30'000, 3);
    const QByteArray someOfLarge = withBlocksOf(large, noise(30'000, 4), {0, 3, 4, 40, 58});
    return {
        grown("grows", 3'000, 9'000),
        grown("grows within a block", 100, 300),
        grown("shrinks", 9'000, 3'000),
        grown("shrinks within a block", 1'000, 600),
        grown("same size", 6'000, 6'000),
        grown("from nothing", 0, 5'000),
        grown("to nothing", 5'000, 0),
        grown("to whole blocks", 700, 4'096),
        {"new", std::nullopt, {{second}}},
        {"new and saved again", std::nullopt, {{first}, {second.left(2'000)}}},
        {"new and empty", std::nullopt, {{QByteArray()}}},
        {"new from a source", std::nullopt, {{large, 4'096}}},
        {"several new at once", std::nullopt, {{second.left(4'000)}}, 4},
        {"bytes", large, {{someOfLarge, 4'096, false}}},
        {"bytes, more than before", first, {{someOfLarge, 4'096, false}}},
        {"bytes, fewer than before", large, {{first, 4'096, false}}},
        {"bytes that are cut", large, {{someOfLarge.left(20'000), 4'096}}},
        {"several at once", first, {{second.left(4'000)}}, 4},
        {"saved twice", first, {{second}, {large}}},
        {"undone and saved", first, {{second}, {first}}},
        {"partly undone and saved", first, {{second}, {withBlocksOf(second, first, {1, 3, 5})}}},
        {"undone and saved without a record", first, {{second}, {first, 0, true, 0, false}}},
        {"partly undone and saved without a record",
         first,
         {{second}, {withBlocksOf(second, first, {1, 3, 5}), 0, true, 0, false}}},
        {"failed, then saved", first, {{second, 0, true, 2}, {large}}},
        {"failed, undone and saved", first, {{second, 0, true, 2}, {first}}},
        {"failed, partly undone and saved", first, {{second, 0, true, 2}, {withBlocksOf(first, second, {0, 4})}}},
        {"failed, undone and saved without a record", first, {{second, 0, true, 2}, {first, 0, true, 0, false}}},
        {"failed twice", first, {{second, 0, true, 2}, {large, 0, true, 2}}},
        {"saved by two instances", first, {{second}, {large, 0, true, 0, true, true}, {second}}},
        {"partly undone by another instance",
         first,
         {{second},
          {withBlocksOf(second, first, {1, 3, 5}), 0, true, 0, true, true},
          {withBlocksOf(second, first, {2, 3}), 0, true, 0, true, true}}},
        {"partly undone by another instance without a record",
         first,
         {{second}, {withBlocksOf(second, first, {1, 3, 5}), 0, true, 0, false, true}}},
        {"many times", first, {{second}, {first.left(3'000)}, {second}, {first}, {second.left(100)}}},
    };
}

/// What was reported last, and all that was begun since.
std::pair<std::size_t, std::size_t> Promises::eventsAt(int place) const {
    std::size_t first = 0;
    std::size_t end = 0;
    for (; end < m_events.size() && m_events[end].place <= place; ++end) {
        if (m_events[end].isSaved)
            first = end;
    }
    return {first, end};
}

bool Promises::allows(int place, const Contents& contents) const {
    const auto [first, end] = eventsAt(place);
    return std::any_of(m_events.begin() + std::ptrdiff_t(first), m_events.begin() + std::ptrdiff_t(end),
                       [&](const Event& event) { return event.isAnything || event.contents == contents; });
}

void Promises::addAllowed(int place, HashSum& sum) const {
    const auto [first, end] = eventsAt(place);
    sum.add(std::uint64_t(end - first));
    for (std::size_t i = first; i < end; ++i) {
        sum.add(std::uint64_t(m_events[i].isAnything) << 1U | std::uint64_t(m_events[i].contents.has_value()));
        sum.add(m_events[i].contents.value_or(QByteArray()));
    }
}

bool Promises::isLast(int place, const Contents& contents) const {
    const auto later =
        std::find_if(m_events.begin(), m_events.end(), [&](const Event& event) { return event.place > place; });
    return later != m_events.begin() && std::prev(later)->contents == contents;
}
