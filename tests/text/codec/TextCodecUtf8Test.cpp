#include "text/codec/TextCodecUtf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace {

/// Byte by byte and slowly: the table of well-formed sequences, read aloud.
bool isUtf8Slowly(std::string_view text) {
    const auto at = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    const auto within = [&](std::size_t i, unsigned low, unsigned high) { return at(i) >= low && at(i) <= high; };
    std::size_t i = 0;
    while (i < text.size()) {
        const unsigned first = at(i);
        if (first < 0x80)
            i += 1;
        else if (first >= 0xC2 && first <= 0xDF && within(i + 1, 0x80, 0xBF))
            i += 2;
        else if (first >= 0xE0 && first <= 0xEF &&
                 within(i + 1, first == 0xE0 ? 0xA0 : 0x80, first == 0xED ? 0x9F : 0xBF) && within(i + 2, 0x80, 0xBF))
            i += 3;
        else if (first >= 0xF0 && first <= 0xF4 &&
                 within(i + 1, first == 0xF0 ? 0x90 : 0x80, first == 0xF4 ? 0x8F : 0xBF) && within(i + 2, 0x80, 0xBF) &&
                 within(i + 3, 0x80, 0xBF))
            i += 4;
        else
            return false;
    }
    return true;
}

bool isUtf8(std::string_view text, std::size_t partSize) {
    Utf8Validator validator;
    for (std::size_t at = 0; at < text.size(); at += partSize) {
        if (!validator.feed(text.substr(at, partSize)))
            return false;
    }
    return validator.complete();
}

}  // namespace

TEST(Utf8Validator, AgreesOnEverySequenceOfThreeBytesAtEveryPlaceOfABlock) {
    // Of bytes of one kind only the first and last are tried.
    constexpr unsigned char Kinds[] = {0x00, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xC1, 0xC2, 0xDF, 0xE0,
                                       0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xF7, 0xF8, 0xFF};
    for (const unsigned char first : Kinds) {
        for (const unsigned char second : Kinds) {
            for (const unsigned char third : Kinds) {
                for (const unsigned char fourth : {0x41, 0x80, 0xBF, 0xC2}) {
                    const std::string sequence{static_cast<char>(first), static_cast<char>(second),
                                               static_cast<char>(third), static_cast<char>(fourth)};
                    const bool expected = isUtf8Slowly(sequence);
                    for (const std::size_t place : {0U, 1U, 12U, 13U, 14U, 15U, 61U}) {
                        std::string text(place, 'x');
                        text += sequence;
                        ASSERT_EQ(isUtf8(text, text.size()), expected) << testing::PrintToString(sequence) << place;
                        text += std::string(70, 'y');
                        ASSERT_EQ(isUtf8(text, text.size()), isUtf8Slowly(text));
                    }
                }
            }
        }
    }
}

TEST(Utf8Validator, PartsOfAnySizeGiveTheSameAnswer) {
    constexpr std::string_view Bits[] = {"a",
                                         "\xC3\xB6",
                                         "\xE0\xA0\x80",
                                         "\xED\x9F\xBF",
                                         "\xF0\x90\x80\x80",
                                         "\xF4\x8F\xBF\xBF",
                                         "twenty ASCII letters.",
                                         "\xE6\xBC\xA2",
                                         "\xED\xA0\x80",
                                         "\xF4\x90\x80\x80",
                                         "\xC3",
                                         "\x80"};
    std::mt19937 random(7);
    for (int i = 0; i < 4000; ++i) {
        // The invalid ones are last in the list and rare.
        const std::size_t choice = i % 3 == 0 ? std::size(Bits) : 8;
        std::string text;
        for (unsigned count = random() % 40; count > 0; --count)
            text += Bits[random() % choice];
        const bool expected = isUtf8Slowly(text);
        for (std::size_t size = 1; size <= 17; ++size) {
            ASSERT_EQ(isUtf8(text, size), expected) << testing::PrintToString(text) << " in parts of " << size;
        }
        ASSERT_EQ(isUtf8(text, 1000), expected) << testing::PrintToString(text);
    }
}

TEST(Utf8Validator, TellsWhetherAllIsAscii) {
    Utf8Validator validator;
    EXPECT_TRUE(validator.feed(std::string(1000, 'a')));
    EXPECT_TRUE(validator.ascii());
    EXPECT_TRUE(validator.feed("\xC3"));
    EXPECT_FALSE(validator.ascii());
    EXPECT_FALSE(validator.complete());
    EXPECT_TRUE(validator.feed("\xB6"));
    EXPECT_TRUE(validator.complete());
}
