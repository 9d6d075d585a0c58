#pragma once

#include "text/codec/TextCodec.h"

#include <array>
#include <string_view>

/// Byte order marks. For the codec's own use.
namespace TextCodecMarks {

struct Mark {
    std::string_view bytes;
    TextEncoding encoding;
};

inline constexpr std::array<Mark, 3> All{{
    {"\xEF\xBB\xBF", TextEncoding::Utf8},
    {"\xFF\xFE", TextEncoding::Utf16LittleEndian},
    {"\xFE\xFF", TextEncoding::Utf16BigEndian},
}};

/// Bytes needed to see any of them.
inline constexpr std::size_t Longest = 3;

/// Empty for an encoding that has none.
inline std::string_view markOf(TextEncoding encoding) {
    for (const Mark& mark : All) {
        if (mark.encoding == encoding)
            return mark.bytes;
    }
    return {};
}

}  // namespace TextCodecMarks
