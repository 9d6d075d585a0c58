#include "text/codec/TextCodec.h"
#include "text/codec/TextCodecBytes.h"
#include "text/codec/TextCodecMarks.h"
#include "text/codec/TextCodecWindows1252.h"

#include <algorithm>
#include <cstring>
#include <utility>

using namespace TextCodecBytes;

namespace {

/// The most UTF-8 bytes that one byte of Windows-1252 or one unit of UTF-16 makes.
constexpr std::size_t MostBytes = 3;
/// Space after the output, because a character is stored as a whole word and may belong to a unit fed earlier.
constexpr std::size_t Slack = 8;

void growTo(std::string& scratch, std::size_t size) {
    if (scratch.size() < size)
        scratch.resize(size);
}

/// Writes UTF-8 at a place that has room for it.
class Utf8Output {
 public:
    explicit Utf8Output(char* at) : m_begin(at), m_at(at) {}

    void add(char32_t character) {
        if (character < 0x80)
            return put(character);
        m_ascii = false;
        if (character < 0x800) {
            put(0xC0 | character >> 6);
        } else if (character < 0x10000) {
            put(0xE0 | character >> 12);
            put(0x80 | (character >> 6 & 0x3F));
        } else {
            put(0xF0 | character >> 18);
            put(0x80 | (character >> 12 & 0x3F));
            put(0x80 | (character >> 6 & 0x3F));
        }
        put(0x80 | (character & 0x3F));
    }

    char* place() const { return m_at; }
    void skip(std::size_t bytes) { m_at += bytes; }
    bool ascii() const { return m_ascii; }
    std::string_view text() const { return {m_begin, static_cast<std::size_t>(m_at - m_begin)}; }

 private:
    void put(char32_t byte) { *m_at++ = static_cast<char>(byte); }

    char* m_begin;
    char* m_at;
    bool m_ascii = true;
};

bool isHighSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
bool isLowSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

template <bool Big>
char16_t unitAt(const char* bytes) {
    const auto first = static_cast<unsigned char>(bytes[0]);
    const auto second = static_cast<unsigned char>(bytes[1]);
    return static_cast<char16_t>(Big ? first << 8 | second : second << 8 | first);
}

/// Copies eight units if they are all ASCII.
template <bool Big>
bool copyAsciiUnits([[maybe_unused]] const char* bytes, [[maybe_unused]] Utf8Output& output) {
#if defined(__SSE2__)
    const __m128i block = load(bytes);
    const __m128i other = _mm_set1_epi16(static_cast<short>(Big ? 0x80FF : 0xFF80));
    if (_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_and_si128(block, other), _mm_setzero_si128())) != 0xFFFF)
        return false;
    const __m128i units = Big ? _mm_srli_epi16(block, 8) : block;
    _mm_storel_epi64(reinterpret_cast<__m128i*>(output.place()), _mm_packus_epi16(units, units));
    output.skip(BlockLength / 2);
    return true;
#else
    return false;
#endif
}

/// False for half a pair. `high` is the half that waits for the other, 0 for none.
bool addUnit(char16_t unit, char16_t& high, Utf8Output& output) {
    if (isLowSurrogate(unit) != (high != 0))
        return false;
    if (isHighSurrogate(unit)) {
        high = unit;
        return true;
    }
    output.add(high == 0 ? unit : 0x10000U + ((high & 0x3FFU) << 10) + (unit & 0x3FFU));
    high = 0;
    return true;
}

/// Consumes complete units only.
template <bool Big>
bool addUnits(std::string_view bytes, char16_t& high, Utf8Output& output) {
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    while (at != end) {
        if (static_cast<std::size_t>(end - at) >= BlockLength && high == 0 && copyAsciiUnits<Big>(at, output)) {
            at += BlockLength;
            continue;
        }
        const char* const stop = at + std::min<std::size_t>(BlockLength, static_cast<std::size_t>(end - at));
        for (; at != stop; at += 2) {
            if (!addUnit(unitAt<Big>(at), high, output))
                return false;
        }
    }
    return true;
}

/// The format that a first look at the bytes suggests.
TextFormat guess(std::string_view bytes) {
    for (const TextCodecMarks::Mark& mark : TextCodecMarks::All) {
        if (bytes.starts_with(mark.bytes))
            return {mark.encoding, true};
    }
    return {TextEncoding::Utf8, false};
}

}  // namespace

std::optional<std::string_view> TextDecoder::decode(std::string_view bytes, std::string& scratch) {
    if (m_begun)
        return run(bytes, scratch);
    if (m_head.empty() && bytes.size() >= TextCodecMarks::Longest)
        return begin(bytes, scratch);
    m_head += bytes;
    if (m_head.size() < TextCodecMarks::Longest)
        return std::string_view();
    return beginWithHead(scratch);
}

std::optional<std::string_view> TextDecoder::finish(std::string& scratch) {
    const auto rest = m_begun ? std::string_view() : beginWithHead(scratch);
    const bool whole = m_validator.complete() && !m_hasOddByte && m_highSurrogate == 0;
    return whole ? rest : std::nullopt;
}

void TextDecoder::startOver() {
    const Way next = m_way == Way::Given ? Way::Detected : Way::Fallback;
    *this = TextDecoder();
    m_way = next;
    if (next == Way::Fallback)
        m_format = {TextEncoding::Windows1252, false};
}

std::optional<std::string_view> TextDecoder::begin(std::string_view bytes, std::string& scratch) {
    if (m_way == Way::Detected)
        m_format = guess(bytes);
    const std::string_view mark = m_format.mark ? TextCodecMarks::markOf(m_format.encoding) : std::string_view();
    if (!bytes.starts_with(mark))
        return std::nullopt;
    m_begun = true;
    return run(bytes.substr(mark.size()), scratch);
}

/// The bytes held back are overwritten afterwards, so text that lies in them must be moved.
std::optional<std::string_view> TextDecoder::beginWithHead(std::string& scratch) {
    const std::string head = std::exchange(m_head, {});
    const auto text = begin(head, scratch);
    if (!text || m_format.encoding != TextEncoding::Utf8)
        return text;
    growTo(scratch, text->size());
    std::copy(text->begin(), text->end(), scratch.begin());
    return std::string_view(scratch.data(), text->size());
}

std::optional<std::string_view> TextDecoder::run(std::string_view bytes, std::string& scratch) {
    if (m_format.encoding == TextEncoding::Windows1252)
        return runWindows1252(bytes, scratch);
    if (m_format.encoding != TextEncoding::Utf8)
        return runUtf16(bytes, scratch);
    if (!m_validator.feed(bytes))
        return std::nullopt;
    m_ascii = m_validator.ascii();
    return bytes;
}

std::string_view TextDecoder::runWindows1252(std::string_view bytes, std::string& scratch) {
    growTo(scratch, bytes.size() * MostBytes + Slack);
    char* out = scratch.data();
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    while (at != end) {
        const std::size_t length = std::min<std::size_t>(BlockLength, static_cast<std::size_t>(end - at));
        if (length == BlockLength && isAsciiBlock(at)) {
            std::memcpy(out, at, BlockLength);
            out += BlockLength;
            at += BlockLength;
            continue;
        }
        for (const char* const stop = at + length; at != stop; ++at) {
            const auto& character = TextCodecWindows1252::Characters[static_cast<unsigned char>(*at)];
            std::memcpy(out, &character, sizeof character);
            out += character.length;
        }
    }
    const auto written = static_cast<std::size_t>(out - scratch.data());
    // A character above ASCII is longer than its byte.
    m_ascii = m_ascii && written == bytes.size();
    return {scratch.data(), written};
}

std::optional<std::string_view> TextDecoder::runUtf16(std::string_view bytes, std::string& scratch) {
    growTo(scratch, (bytes.size() / 2 + 2) * MostBytes + Slack);
    Utf8Output output(scratch.data());
    const auto add = m_format.encoding == TextEncoding::Utf16BigEndian ? addUnits<true> : addUnits<false>;
    if (m_hasOddByte && !bytes.empty()) {
        const char unit[] = {m_oddByte, bytes.front()};
        if (!add({unit, sizeof unit}, m_highSurrogate, output))
            return std::nullopt;
        bytes.remove_prefix(1);
        m_hasOddByte = false;
    }
    if (bytes.size() % 2 != 0) {
        m_oddByte = bytes.back();
        m_hasOddByte = true;
        bytes.remove_suffix(1);
    }
    if (!add(bytes, m_highSurrogate, output))
        return std::nullopt;
    m_ascii = m_ascii && output.ascii();
    return output.text();
}
