#include "text/lines/LineSort.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

namespace {

/// A line with its first eight bytes as a number, which decides most comparisons without access to the text.
struct Line {
    std::uint64_t head = 0;
    std::string_view text;
};

std::uint64_t headOf(std::string_view text) {
    std::uint64_t head = 0;
    for (std::size_t at = 0; at < sizeof head; ++at)
        head = head << 8U | (at < text.size() ? static_cast<unsigned char>(text[at]) : 0U);
    return head;
}

/// The order of UTF-8 bytes is the order of their code points.
bool less(const Line& one, const Line& other) {
    return one.head != other.head ? one.head < other.head : one.text < other.text;
}

struct Split {
    std::vector<Line> lines;
    std::vector<std::string_view> ends;
};

std::size_t lineEndLength(std::string_view text, std::size_t at) {
    if (at >= text.size())
        return 0;
    return text.substr(at, 2) == "\r\n" ? 2 : 1;
}

Split split(std::string_view text) {
    Split result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", at), text.size());
        const std::string_view line = text.substr(at, end - at);
        result.lines.push_back({headOf(line), line});
        result.ends.push_back(text.substr(end, lineEndLength(text, end)));
        at = end + result.ends.back().size();
    }
    return result;
}

/// No two lines begin at the same byte, not even empty ones.
void follow(const std::vector<Line>& lines, const std::vector<const char*>& begins,
            std::vector<std::size_t>& followed) {
    std::unordered_map<const char*, std::size_t> wanted;
    for (std::size_t at = 0; at < begins.size(); ++at)
        wanted[begins[at]] = at;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const auto found = wanted.find(lines[line].text.data());
        if (found != wanted.end())
            followed[found->second] = line;
    }
}

}  // namespace

namespace LineSort {

std::string sorted(std::string_view text, Order order) {
    std::vector<std::size_t> nothing;
    return sorted(text, order, nothing);
}

std::string sorted(std::string_view text, Order order, std::vector<std::size_t>& followed) {
    auto [lines, ends] = split(text);
    std::vector<const char*> begins;
    for (const std::size_t line : followed)
        begins.push_back(line < lines.size() ? lines[line].text.data() : nullptr);
    if (order == Order::Ascending)
        std::ranges::stable_sort(lines, less);
    else
        std::ranges::stable_sort(lines, [](const Line& one, const Line& other) { return less(other, one); });

    if (!begins.empty())
        follow(lines, begins, followed);
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < lines.size(); ++at)
        result.append(lines[at].text).append(ends[at]);
    return result;
}

}  // namespace LineSort
