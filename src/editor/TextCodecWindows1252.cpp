#include "editor/TextCodecWindows1252.h"

#include <algorithm>

namespace TextCodecWindows1252 {

namespace {

/// Characters of the bytes 80 to 9F; all others have the number of their byte.
constexpr std::array<char16_t, 32> HighControls{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char16_t characterOf(unsigned byte) {
    return byte >= 0x80 && byte < 0xA0 ? HighControls[byte - 0x80] : static_cast<char16_t>(byte);
}

constexpr Character utf8Of(unsigned number) {
    if (number < 0x80)
        return {{static_cast<char>(number), 0, 0}, 1};
    const char last = static_cast<char>(0x80 | (number & 0x3F));
    if (number < 0x800)
        return {{static_cast<char>(0xC0 | number >> 6), last, 0}, 2};
    return {{static_cast<char>(0xE0 | number >> 12), static_cast<char>(0x80 | (number >> 6 & 0x3F)), last}, 3};
}

constexpr std::array<Character, 256> makeCharacters() {
    std::array<Character, 256> characters{};
    for (unsigned byte = 0; byte < characters.size(); ++byte)
        characters[byte] = utf8Of(characterOf(byte));
    return characters;
}

}  // namespace

constexpr std::array<Character, 256> Characters = makeCharacters();

int byteOf(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<int>(character);
    const auto found = std::find(HighControls.begin(), HighControls.end(), character);
    return found == HighControls.end() ? -1 : 0x80 + static_cast<int>(found - HighControls.begin());
}

}  // namespace TextCodecWindows1252
