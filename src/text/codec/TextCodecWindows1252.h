#pragma once

#include <array>
#include <cstdint>

/// The characters of Windows-1252 in UTF-8. For the codec's own use.
namespace TextCodecWindows1252 {

/// The UTF-8 of one byte.
struct Character {
    std::array<char, 3> bytes;
    std::uint8_t length;
};

/// Indexed by the byte.
extern const std::array<Character, 256> Characters;

}  // namespace TextCodecWindows1252
