#include "text/codec/Windows1252.h"

#include <gtest/gtest.h>

#include <set>

TEST(CharactersOfWindows1252, EveryByteComesBackFromItsCharacter) {
    std::set<char16_t> characters;
    for (int byte = 0; byte < 256; ++byte) {
        const char16_t character = Windows1252::characterOf(static_cast<std::uint8_t>(byte));
        EXPECT_EQ(Windows1252::byteOf(character), byte);
        characters.insert(character);
    }
    EXPECT_EQ(characters.size(), 256U);
}

TEST(CharactersOfWindows1252, TheBytesBetweenTheControlsAndLatinAreTheirOwn) {
    EXPECT_EQ(Windows1252::characterOf(0x80), u'\u20AC');
    EXPECT_EQ(Windows1252::characterOf(0x9F), u'\u0178');
    EXPECT_EQ(Windows1252::characterOf(0xE9), u'\u00E9');
    for (const std::uint8_t byte : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
        EXPECT_EQ(Windows1252::characterOf(byte), byte);
    }
}

TEST(CharactersOfWindows1252, OtherCharactersHaveNoByte) {
    for (const char32_t character : {U'\u0080', U'\u009F', U'\u0100', U'\u0416', U'\uFFFD', U'\U0001F600'}) {
        EXPECT_EQ(Windows1252::byteOf(character), -1);
    }
}
