#pragma once

#include <cstdint>
#include <string_view>

/// Checks whether bytes fed part by part are strict UTF-8: no overlong form, no surrogates, nothing above U+10FFFF. A
/// part may end within a character.
class Utf8Validator {
 public:
    /// False once the bytes can't be UTF-8 any more; then it is not to be fed further.
    bool feed(std::string_view bytes);

    /// Whether the bytes so far end with a whole character.
    bool complete() const { return m_expected == 0; }
    bool ascii() const { return m_ascii; }

 private:
    bool feedBlock(const char* block, unsigned length);
    bool feedShort(const char* bytes, unsigned length);

    // The requirements of the previous bytes on the following ones: bit i is for the next byte but i.
    std::uint32_t m_expected = 0;  ///< has to go on the character
    std::uint32_t m_afterE0 = 0;
    std::uint32_t m_afterEd = 0;
    std::uint32_t m_afterF0 = 0;
    std::uint32_t m_afterF4 = 0;
    bool m_ascii = true;
};
