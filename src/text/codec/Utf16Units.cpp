#include "text/codec/Utf16Units.h"

#include "text/codec/Utf8Text.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::uint64_t LowBits = 0x0101010101010101ULL;
constexpr qint64 WordSize = sizeof(std::uint64_t);

bool leadsPair(char c) {
    return static_cast<unsigned char>(c) >= 0xF0;
}

qint64 unitsOfByte(char c) {
    if (isContinuation(c))
        return 0;
    return leadsPair(c) ? 2 : 1;
}

std::uint64_t wordAt(const char* from) {
    std::uint64_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return word;
}

/// One in the low bit of each byte that continues a character.
std::uint64_t continuations(std::uint64_t word) {
    return (word >> 7) & ~(word >> 6) & LowBits;
}
/// One in the low bit of each byte that begins a character of four bytes.
std::uint64_t pairLeads(std::uint64_t word) {
    return (word >> 7) & (word >> 6) & (word >> 5) & (word >> 4) & LowBits;
}

qint64 unitsOfWord(std::uint64_t word) {
    return WordSize - std::popcount(continuations(word)) + std::popcount(pairLeads(word));
}

}  // namespace

qint64 countUtf16Units(std::string_view utf8) {
    const char* at = utf8.data();
    const char* const end = at + utf8.size();
    qint64 units = 0;
    for (; end - at >= WordSize; at += WordSize)
        units += unitsOfWord(wordAt(at));
    for (; at != end; ++at)
        units += unitsOfByte(*at);
    return units;
}

qint64 bytesForUtf16Units(std::string_view utf8, qint64 units) {
    const char* at = utf8.data();
    const char* const end = at + utf8.size();
    while (end - at >= WordSize) {
        const qint64 here = unitsOfWord(wordAt(at));
        if (here > units)
            break;
        units -= here;
        at += WordSize;
    }
    while (at != end && unitsOfByte(*at) <= units) {
        units -= unitsOfByte(*at);
        ++at;
    }
    return at - utf8.data();
}
