#include "text/codec/TextCodecWindows1252.h"

#include "text/codec/Windows1252.h"

namespace TextCodecWindows1252 {

namespace {

constexpr Character utf8Of(unsigned number) {
    if (number < 0x80)
        return {{static_cast<char>(number), 0, 0}, 1};
    const char last = static_cast<char>(0x80 | (number & 0x3F));
    if (number < 0x800)
        return {{static_cast<char>(0xC0 | number >> 6), last, 0}, 2};
    return {{static_cast<char>(0xE0 | number >> 12), static_cast<char>(0x80 | (number >> 6 & 0x3F)), last}, 3};
}

constexpr std::array<Character, 256> makeCharacters() {
    std::array<Character, 256> Characters{};
    for (unsigned byte = 0; byte < Characters.size(); ++byte)
        Characters[byte] = utf8Of(Windows1252::characterOf(static_cast<std::uint8_t>(byte)));
    return Characters;
}

}  // namespace

constexpr std::array<Character, 256> Characters = makeCharacters();

}  // namespace TextCodecWindows1252
