#include "spelling/dictionary/DictionaryHead.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

namespace {

constexpr std::string_view Mark = "\xEF\xBB\xBF";
constexpr std::string_view Blanks = " \t\r";

/// The tables of an affix file that begin with a line giving the number of their lines, which the library reserves.
constexpr auto Tables = std::to_array<std::string_view>(
    {"REP", "MAP", "PHONE", "BREAK", "ICONV", "OCONV", "AF", "AM", "CHECKCOMPOUNDPATTERN", "COMPOUNDRULE"});
constexpr std::string_view Affixes[] = {"PFX", "SFX"};

std::string_view takeLine(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

std::string_view takeField(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(Blanks), line.size()));
    const std::size_t end = std::min(line.find_first_of(Blanks), line.size());
    const std::string_view field = line.substr(0, end);
    line.remove_prefix(end);
    return field;
}

/// Whether the text begins with a number of at most this. A number is what stands before the first other character.
bool isCountUpTo(std::string_view text, std::int64_t most) {
    std::int64_t count = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), count);
    return read.ec == std::errc() && count >= 0 && count <= most;
}

bool isNumber(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char each) { return each >= '0' && each <= '9'; });
}

/// The number of lines that a line of the affix file announces; empty when it announces none.
std::string_view announced(std::string_view line) {
    const std::string_view keyword = takeField(line);
    if (std::ranges::find(Tables, keyword) != Tables.end()) {
        const std::string_view field = takeField(line);
        return isNumber(field) ? field : std::string_view();
    }
    if (std::ranges::find(Affixes, keyword) == std::end(Affixes))
        return {};
    takeField(line);  // the flag
    const std::string_view cross = takeField(line);
    const std::string_view count = takeField(line);
    return (cross == "Y" || cross == "N") && isNumber(count) && takeField(line).empty() ? count : std::string_view();
}

}  // namespace

std::string DictionaryHead::affixFault(std::string_view affix) {
    if (affix.find('\0') != std::string_view::npos)
        return "it is not a text";
    const auto lines = static_cast<std::int64_t>(std::ranges::count(affix, '\n')) + 1;
    if (affix.starts_with(Mark))
        affix.remove_prefix(Mark.size());
    while (!affix.empty()) {
        const std::string_view line = takeLine(affix);
        const std::string_view count = announced(line);
        if (!count.empty() && !isCountUpTo(count, lines))
            return "it announces more lines than it has: " + std::string(line.substr(0, 40));
    }
    return {};
}

std::string DictionaryHead::wordsFault(std::string_view head, std::int64_t size) {
    if (head.empty())
        return "it is empty";
    if (head.find('\0') != std::string_view::npos)
        return "it is not a text";
    if (head.starts_with(Mark))
        head.remove_prefix(Mark.size());
    std::string_view first = takeLine(head);
    const std::string_view count = takeField(first);
    if (!isNumber(count) || count.front() == '0')
        return "it does not begin with the number of its words";
    if (!isCountUpTo(count, size))
        return "it announces more words than it can have";
    if (takeField(head).empty())
        return "it has no words";
    return {};
}
