#pragma once

#include <array>
#include <cstdint>

/// Windows-1252, one byte a character. The five bytes without a character of their own (81 8D 8F 90 9D) stand for the
/// control character of the same number, so that every byte has its character. For the codec's own use.
namespace TextCodecWindows1252 {

/// The UTF-8 of one byte.
struct Character {
    std::array<char, 3> bytes;
    std::uint8_t length;
};

/// Indexed by the byte.
extern const std::array<Character, 256> Characters;

/// The byte of a character, -1 when there is none.
int byteOf(char32_t character);

}  // namespace TextCodecWindows1252
