#pragma once

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Examines sixteen bytes at once, by vector instructions where available. For the codec's own use.
namespace TextCodecBytes {

inline constexpr unsigned BlockLength = 16;

#if defined(__SSE2__)

inline __m128i load(const char* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

inline void store(char* bytes, __m128i block) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), block);
}

inline bool isAsciiBlock(const char* bytes) {
    return _mm_movemask_epi8(load(bytes)) == 0;
}

inline bool areAsciiBlocks(const char* bytes) {
    const __m128i low = _mm_or_si128(load(bytes), load(bytes + 16));
    const __m128i high = _mm_or_si128(load(bytes + 32), load(bytes + 48));
    return _mm_movemask_epi8(_mm_or_si128(low, high)) == 0;
}

#else

inline bool isAsciiBlock(const char* bytes) {
    std::uint64_t halves[2];
    std::memcpy(halves, bytes, sizeof halves);
    return ((halves[0] | halves[1]) & 0x8080808080808080U) == 0;
}

inline bool areAsciiBlocks(const char* bytes) {
    return isAsciiBlock(bytes) && isAsciiBlock(bytes + 16) && isAsciiBlock(bytes + 32) && isAsciiBlock(bytes + 48);
}

#endif

/// Blocks that areAsciiBlocks() examines.
inline constexpr unsigned BlocksLength = 64;

}  // namespace TextCodecBytes
