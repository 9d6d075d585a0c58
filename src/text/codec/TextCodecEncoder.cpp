#include "text/codec/TextCodec.h"
#include "text/codec/TextCodecBytes.h"
#include "text/codec/TextCodecMarks.h"
#include "text/codec/Utf8Text.h"
#include "text/codec/Windows1252.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

using namespace TextCodecBytes;

namespace {

constexpr char32_t Replacement = 0xFFFD;

std::size_t lengthByFirst(char byte) {
    const auto first = static_cast<unsigned char>(byte);
    return first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

/// A character of a valid text. Invalid bytes become U+FFFD, one each.
struct Character {
    char32_t number;
    std::size_t length;  ///< 0: the rest of it is not here
};

Character characterAt(const char* at, const char* end) {
    const auto first = static_cast<unsigned char>(*at);
    if (first < 0x80)
        return {first, 1};
    const std::size_t length = lengthByFirst(*at);
    if (length > static_cast<std::size_t>(end - at) && std::all_of(at + 1, end, isContinuation))
        return {0, 0};
    if (length == 1 || !std::all_of(at + 1, at + std::min<std::ptrdiff_t>(length, end - at), isContinuation))
        return {Replacement, 1};
    char32_t number = first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i)
        number = number << 6 | (static_cast<unsigned char>(at[i]) & 0x3FU);
    return {number, length};
}

/// One byte a character.
class Windows1252Output {
 public:
    static constexpr std::size_t MostBytes = 1;  ///< that a byte of UTF-8 makes

    explicit Windows1252Output(char* at) : m_at(at) {}

    void addAsciiBlock(const char* bytes) {
        std::memcpy(m_at, bytes, BlockLength);
        m_at += BlockLength;
    }

    bool add(char32_t character) {
        const int byte = Windows1252::byteOf(character);
        if (byte < 0)
            return false;
        *m_at++ = static_cast<char>(byte);
        return true;
    }

    char* place() const { return m_at; }

 private:
    char* m_at;
};

template <bool Big>
class Utf16Output {
 public:
    static constexpr std::size_t MostBytes = 2;

    explicit Utf16Output(char* at) : m_at(at) {}

    void addAsciiBlock(const char* bytes) {
#if defined(__SSE2__)
        const __m128i block = load(bytes);
        const __m128i zero = _mm_setzero_si128();
        store(m_at, Big ? _mm_unpacklo_epi8(zero, block) : _mm_unpacklo_epi8(block, zero));
        store(m_at + BlockLength, Big ? _mm_unpackhi_epi8(zero, block) : _mm_unpackhi_epi8(block, zero));
        m_at += 2 * BlockLength;
#else
        for (unsigned i = 0; i < BlockLength; ++i)
            put(static_cast<unsigned char>(bytes[i]));
#endif
    }

    bool add(char32_t character) {
        if (character < 0x10000) {
            put(character);
        } else {
            put(0xD800 + ((character - 0x10000) >> 10));
            put(0xDC00 + (character & 0x3FF));
        }
        return true;
    }

    char* place() const {
        return m_at;
    }

 private:
    void put(char32_t unit) {
        m_at[Big ? 1 : 0] = static_cast<char>(unit & 0xFF);
        m_at[Big ? 0 : 1] = static_cast<char>(unit >> 8);
        m_at += 2;
    }

    char* m_at;
};

/// Where the text stopped fitting: the offset of a character in the whole text.
struct Stop {
    std::size_t offset;
    char32_t character;
};

/// Passes a text to an output, piece by piece.
template <typename Output>
class Encoder {
 public:
    explicit Encoder(Output& output) : m_output(output) {}

    bool add(std::string_view piece) {
        const char* at = piece.data();
        const char* const end = at + piece.size();
        while (!m_broken.empty() && at != end) {
            if (!addBroken(*at++))
                return false;
        }
        return addWhole(at, end);
    }

    /// A text that ends within a character.
    bool finish() {
        if (m_broken.empty())
            return true;
        m_offset -= m_broken.size();
        return put(Replacement, m_broken.size());
    }

    const Stop& stop() const { return m_stop; }

 private:
    bool addWhole(const char* at, const char* end) {
        while (at != end) {
            if (end - at >= static_cast<std::ptrdiff_t>(BlockLength) && isAsciiBlock(at)) {
                m_output.addAsciiBlock(at);
                m_offset += BlockLength;
                at += BlockLength;
                continue;
            }
            const char* const stop = at + std::min<std::ptrdiff_t>(BlockLength, end - at);
            while (at < stop) {
                const Character character = characterAt(at, end);
                if (character.length == 0) {
                    m_broken.assign(at, end);
                    m_offset += m_broken.size();
                    return true;
                }
                if (!put(character.number, character.length))
                    return false;
                at += character.length;
            }
        }
        return true;
    }

    /// One more byte for a character that the end of a piece had cut.
    bool addBroken(char byte) {
        m_broken += byte;
        ++m_offset;
        const std::string bytes = m_broken;
        if (characterAt(bytes.data(), bytes.data() + bytes.size()).length == 0)
            return true;
        m_broken.clear();
        m_offset -= bytes.size();
        return addWhole(bytes.data(), bytes.data() + bytes.size());
    }

    bool put(char32_t character, std::size_t length) {
        if (!m_output.add(character)) {
            m_stop = {m_offset, character};
            return false;
        }
        m_offset += length;
        return true;
    }

    Output& m_output;
    std::string m_broken;
    std::size_t m_offset = 0;
    Stop m_stop{};
};

/// Counts lines and columns of a text, piece by piece.
class LineCounter {
 public:
    void add(std::string_view text) {
        for (const char byte : text)
            add(byte);
    }

    qint64 line() const { return m_line; }
    qint64 column() const { return m_column; }

 private:
    void add(char byte) {
        const bool endsLine = byte == '\r' || (byte == '\n' && !m_afterCr);
        m_afterCr = byte == '\r';
        if (endsLine)
            ++m_line;
        if (endsLine || byte == '\n')
            m_column = 1;
        else if (!isContinuation(byte))
            m_column += lengthByFirst(byte) == 4 ? 2 : 1;
    }

    qint64 m_line = 1;
    qint64 m_column = 1;
    bool m_afterCr = false;
};

EncodeFailure failureAt(std::span<const std::string_view> text, const Stop& stop) {
    LineCounter counter;
    std::size_t left = stop.offset;
    for (const std::string_view piece : text) {
        counter.add(piece.substr(0, left));
        left -= std::min(left, piece.size());
    }
    return {counter.line(), counter.column(), stop.character};
}

template <typename Output>
EncodedText transcode(std::span<const std::string_view> text, std::string_view mark) {
    std::size_t length = 0;
    for (const std::string_view piece : text)
        length += piece.size();
    // Left uninitialised: the system never provides the pages that the output does not reach.
    EncodedText result;
    result.storage.reset(new char[length * Output::MostBytes + mark.size() + Output::MostBytes]);
    std::copy(mark.begin(), mark.end(), result.storage.get());

    Output output(result.storage.get() + mark.size());
    Encoder<Output> encoder(output);
    const bool fits = std::all_of(text.begin(), text.end(), [&](std::string_view piece) { return encoder.add(piece); });
    if (!fits || !encoder.finish())
        return {{}, nullptr, failureAt(text, encoder.stop())};
    result.pieces.emplace_back(result.storage.get(), static_cast<std::size_t>(output.place() - result.storage.get()));
    return result;
}

EncodedText asItIs(std::span<const std::string_view> text, std::string_view mark) {
    EncodedText result;
    result.pieces.reserve(text.size() + 1);
    if (!mark.empty())
        result.pieces.push_back(mark);
    result.pieces.insert(result.pieces.end(), text.begin(), text.end());
    return result;
}

}  // namespace

SystemError EncodeFailure::error() const {
    const QString number = QString::number(static_cast<uint>(character), 16).toUpper().rightJustified(4, u'0');
    return {EILSEQ, u"Line %1, column %2: the character U+%3 can't be saved as ANSI (Windows-1252)."_qs.arg(
                        QString::number(line), QString::number(column), number)};
}

EncodedText encodeText(std::span<const std::string_view> text, TextFormat format) {
    const std::string_view mark = format.mark ? TextCodecMarks::markOf(format.encoding) : std::string_view();
    if (format.encoding == TextEncoding::Windows1252)
        return transcode<Windows1252Output>(text, {});
    if (format.encoding == TextEncoding::Utf16LittleEndian)
        return transcode<Utf16Output<false>>(text, mark);
    if (format.encoding == TextEncoding::Utf16BigEndian)
        return transcode<Utf16Output<true>>(text, mark);
    return asItIs(text, mark);
}
