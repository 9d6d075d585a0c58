#include "text/search/MatchList.h"

#include <array>
#include <charconv>

void MatchList::add(qint64 line, qint64 position, qint64 length) {
    append(line, ',');
    append(position, ',');
    append(length, '\t');
}

void MatchList::append(qint64 number, char end) {
    std::array<char, 24> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size() - 1, number);
    *written.ptr = end;
    m_records.append(digits.data(), written.ptr + 1 - digits.data());
}
