#pragma once

#include <array>
#include <cstdint>

/// Windows-1252, one byte a character. The five bytes without a character of their own (81 8D 8F 90 9D) are mapped to
/// the control character of the same number, so that every byte has its character and is encoded from it.
namespace Windows1252 {

/// Characters of the bytes 80 to 9F; all others have the number of their byte.
inline constexpr std::array<char16_t, 32> HighControls{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                       0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char16_t characterOf(std::uint8_t byte) {
    return byte >= 0x80 && byte < 0xA0 ? HighControls[byte - 0x80U] : static_cast<char16_t>(byte);
}

/// The byte of a character, -1 when there is none.
int byteOf(char32_t character);

}  // namespace Windows1252
