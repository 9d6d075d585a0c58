#pragma once

#include <random>
#include <string>
#include <string_view>

/// Makes byte strings of all the kinds that a file may hold, and of kinds it should not: the same ones for one seed.
class TextCodecBytesMaker {
 public:
    explicit TextCodecBytesMaker(unsigned seed) : m_random(seed) {}

    std::string make() {
        std::string bytes(mark());
        const unsigned parts = below(6);
        const unsigned usual = below(KindCount);
        for (unsigned i = 0; i < parts; ++i)
            addPart(below(4) == 0 ? below(KindCount) : usual, bytes);
        if (below(8) == 0 && !bytes.empty())
            bytes.pop_back();
        if (below(8) == 0 && !bytes.empty())
            bytes[below(static_cast<unsigned>(bytes.size()))] = byte();
        return bytes;
    }

    unsigned below(unsigned limit) { return std::uniform_int_distribution<unsigned>(0, limit - 1)(m_random); }

 private:
    static constexpr unsigned KindCount = 7;

    char byte() { return static_cast<char>(below(256)); }

    std::string_view mark() {
        static constexpr std::string_view Marks[] = {"", "", "", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF", "\xEF\xBB"};
        return Marks[below(std::size(Marks))];
    }

    void addPart(unsigned kind, std::string& bytes) {
        static constexpr std::string_view LineEnds[] = {"\n", "\r", "\r\n", "\n\r", std::string_view("\0", 1)};
        const unsigned length = below(below(5) == 0 ? 200 : 20);
        for (unsigned i = 0; i < length; ++i)
            addOne(kind, bytes);
        if (below(3) == 0)
            bytes += LineEnds[below(std::size(LineEnds))];
    }

    void addOne(unsigned kind, std::string& bytes) {
        switch (kind) {
            case 0:
                bytes += byte();
                break;
            case 1:
                bytes += static_cast<char>(' ' + below(95));
                break;
            case 2:
                addUtf8(character(), bytes);
                break;
            case 3:
                addUtf8(below(0x800), bytes);
                break;
            case 4:
                addUtf16(character(), false, bytes);
                break;
            case 5:
                addUtf16(character(), true, bytes);
                break;
            default:
                bytes += below(4) == 0 ? static_cast<char>(0x80 + below(128)) : 'e';
                break;
        }
    }

    /// Near the borders more often than chance would have it; may be half a pair.
    char32_t character() {
        static constexpr char32_t Borders[] = {0x7F,   0x80,   0x7FF,  0x800,  0xD7FF,  0xD800,
                                               0xDFFF, 0xE000, 0xFEFF, 0xFFFF, 0x10000, 0x10FFFF};
        switch (below(5)) {
            case 0:
                return Borders[below(std::size(Borders))];
            case 1:
                return below(0x110000);
            case 2:
                return below(8) == 0 ? 0xD800 + below(0x800) : 0x1F600 + below(64);
            default:
                return below(0x3000);
        }
    }

    static void addUtf8(char32_t c, std::string& bytes) {
        const auto put = [&](char32_t value) { bytes += static_cast<char>(value); };
        if (c < 0x80)
            return put(c);
        if (c < 0x800) {
            put(0xC0 | c >> 6);
        } else {
            if (c < 0x10000) {
                put(0xE0 | c >> 12);
            } else {
                put(0xF0 | c >> 18);
                put(0x80 | (c >> 12 & 0x3F));
            }
            put(0x80 | (c >> 6 & 0x3F));
        }
        put(0x80 | (c & 0x3F));
    }

    static void addUtf16(char32_t c, bool big, std::string& bytes) {
        const auto put = [&](char32_t unit) {
            bytes += static_cast<char>(big ? unit >> 8 : unit & 0xFF);
            bytes += static_cast<char>(big ? unit & 0xFF : unit >> 8);
        };
        if (c >= 0x10000) {
            put(0xD7C0 + (c >> 10));
            put(0xDC00 + (c & 0x3FF));
        } else {
            put(c);
        }
    }

    std::mt19937 m_random;
};
