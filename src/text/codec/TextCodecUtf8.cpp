#include "text/codec/TextCodecUtf8.h"

#include "text/codec/TextCodecBytes.h"

#include <algorithm>
#include <array>

using namespace TextCodecBytes;

namespace {

/// Kinds of bytes in a block, one bit a byte.
struct Kinds {
    std::uint32_t notAscii;
    std::uint32_t continuation;  ///< 80 to BF
    std::uint32_t threeOrMore;   ///< E0 and above: first of three bytes at least
    std::uint32_t four;          ///< F0 and above
    std::uint32_t never;         ///< C0, C1, F5 and above
    std::uint32_t narrow;        ///< E0, ED, F0, F4: not every continuation may follow
};

/// The lead bytes that do not allow every continuation byte, and the limits for the next byte.
struct NarrowKinds {
    std::uint32_t e0;
    std::uint32_t ed;
    std::uint32_t f0;
    std::uint32_t f4;
    std::uint32_t below90;
    std::uint32_t belowA0;
};

#if defined(__SSE2__)

std::uint32_t bits(__m128i mask) {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(mask));
}

/// All bytes above ASCII are negative, in their order, so a signed comparison parts them.
std::uint32_t below(__m128i block, int byte) {
    return bits(_mm_cmplt_epi8(block, _mm_set1_epi8(static_cast<char>(byte))));
}

__m128i equal(__m128i block, int byte) {
    return _mm_cmpeq_epi8(block, _mm_set1_epi8(static_cast<char>(byte)));
}

Kinds kindsOf(const char* bytes) {
    const __m128i block = load(bytes);
    const std::uint32_t notAscii = bits(block);
    const __m128i narrow = _mm_or_si128(_mm_or_si128(equal(block, 0xE0), equal(block, 0xED)),
                                        _mm_or_si128(equal(block, 0xF0), equal(block, 0xF4)));
    const __m128i overlong = equal(_mm_and_si128(block, _mm_set1_epi8(static_cast<char>(0xFE))), 0xC0);
    return {.notAscii = notAscii,
            .continuation = below(block, 0xC0),
            .threeOrMore = notAscii & ~below(block, 0xE0),
            .four = notAscii & ~below(block, 0xF0),
            .never = bits(overlong) | (notAscii & ~below(block, 0xF5)),
            .narrow = bits(narrow)};
}

NarrowKinds narrowKindsOf(const char* bytes) {
    const __m128i block = load(bytes);
    return {.e0 = bits(equal(block, 0xE0)),
            .ed = bits(equal(block, 0xED)),
            .f0 = bits(equal(block, 0xF0)),
            .f4 = bits(equal(block, 0xF4)),
            .below90 = below(block, 0x90),
            .belowA0 = below(block, 0xA0)};
}

#else

template <typename Test>
std::uint32_t bitsOf(const char* bytes, Test test) {
    std::uint32_t result = 0;
    for (unsigned i = 0; i < BlockLength; ++i)
        result |= static_cast<std::uint32_t>(test(static_cast<unsigned char>(bytes[i]))) << i;
    return result;
}

std::uint32_t equal(const char* bytes, unsigned byte) {
    return bitsOf(bytes, [=](unsigned b) { return b == byte; });
}

std::uint32_t between(const char* bytes, unsigned low, unsigned high) {
    return bitsOf(bytes, [=](unsigned b) { return b >= low && b <= high; });
}

Kinds kindsOf(const char* bytes) {
    return {.notAscii = between(bytes, 0x80, 0xFF),
            .continuation = between(bytes, 0x80, 0xBF),
            .threeOrMore = between(bytes, 0xE0, 0xFF),
            .four = between(bytes, 0xF0, 0xFF),
            .never = between(bytes, 0xC0, 0xC1) | between(bytes, 0xF5, 0xFF),
            .narrow = equal(bytes, 0xE0) | equal(bytes, 0xED) | equal(bytes, 0xF0) | equal(bytes, 0xF4)};
}

NarrowKinds narrowKindsOf(const char* bytes) {
    return {.e0 = equal(bytes, 0xE0),
            .ed = equal(bytes, 0xED),
            .f0 = equal(bytes, 0xF0),
            .f4 = equal(bytes, 0xF4),
            .below90 = between(bytes, 0x80, 0x8F),
            .belowA0 = between(bytes, 0x80, 0x9F)};
}

#endif

}  // namespace

bool Utf8Validator::feed(std::string_view bytes) {
    const char* at = bytes.data();
    std::size_t left = bytes.size();
    while (left >= BlocksLength) {
        if (m_expected != 0 || !areAsciiBlocks(at)) {
            for (unsigned i = 0; i < BlocksLength; i += BlockLength) {
                if (!feedBlock(at + i, BlockLength))
                    return false;
            }
        }
        at += BlocksLength;
        left -= BlocksLength;
    }
    for (; left >= BlockLength; at += BlockLength, left -= BlockLength) {
        if (!feedBlock(at, BlockLength))
            return false;
    }
    return left == 0 || feedShort(at, static_cast<unsigned>(left));
}

bool Utf8Validator::feedShort(const char* bytes, unsigned length) {
    std::array<char, BlockLength> block{};
    std::copy_n(bytes, length, block.begin());
    return feedBlock(block.data(), length);
}

/// Every lead byte determines how many continuation bytes follow it; there must be so many and no others. Bytes after
/// `length` are NUL.
bool Utf8Validator::feedBlock(const char* block, unsigned length) {
    const Kinds kinds = kindsOf(block);
    if ((kinds.notAscii | m_expected) == 0)
        return true;
    m_ascii = false;
    const std::uint32_t inside = (1U << length) - 1;
    const std::uint32_t first = kinds.notAscii & ~kinds.continuation;
    const std::uint32_t expected = m_expected | first << 1 | kinds.threeOrMore << 2 | kinds.four << 3;
    if ((((expected ^ kinds.continuation) & inside) | kinds.never) != 0)
        return false;
    m_expected = expected >> length;
    if ((kinds.narrow | m_afterE0 | m_afterEd | m_afterF0 | m_afterF4) == 0)
        return true;

    const NarrowKinds narrow = narrowKindsOf(block);
    const std::uint32_t afterE0 = m_afterE0 | narrow.e0 << 1;
    const std::uint32_t afterEd = m_afterEd | narrow.ed << 1;
    const std::uint32_t afterF0 = m_afterF0 | narrow.f0 << 1;
    const std::uint32_t afterF4 = m_afterF4 | narrow.f4 << 1;
    const std::uint32_t wrong = (afterE0 & narrow.belowA0) | (afterEd & ~narrow.belowA0) | (afterF0 & narrow.below90) |
                                (afterF4 & ~narrow.below90);
    m_afterE0 = afterE0 >> length;
    m_afterEd = afterEd >> length;
    m_afterF0 = afterF0 >> length;
    m_afterF4 = afterF4 >> length;
    return (wrong & inside) == 0;
}
