#include "search/engine/PlainText.h"
#include "text/codec/Utf16Units.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

/// Counted character by character from the start.
TextPlace placeByCounting(std::string_view text, qint64 byte) {
    TextPlace place;
    for (qint64 at = 0; at < byte; ++at) {
        const char here = text[static_cast<std::size_t>(at)];
        const bool crOfCrLf = here == '\r' && text.substr(static_cast<std::size_t>(at) + 1, 1) == "\n";
        if ((here == '\r' && !crOfCrLf) || here == '\n') {
            ++place.line;
            place.lineStart = at + 1;
        }
    }
    const auto units = [text](qint64 end) { return countUtf16Units(text.substr(0, static_cast<std::size_t>(end))); };
    place.position = units(byte);
    place.linePosition = units(place.lineStart);
    return place;
}

std::string randomText(std::mt19937& random, bool ascii) {
    static constexpr std::string_view Parts[] = {"a",    "bc",       "\n",           "\r",
                                                 "\r\n", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"};
    std::string text;
    for (auto left = random() % 40; left > 0; --left)
        text += Parts[random() % (ascii ? 5 : std::size(Parts))];
    return text;
}

bool beginsCharacter(std::string_view text, qint64 byte) {
    return byte >= static_cast<qint64>(text.size()) ||
           (static_cast<unsigned char>(text[static_cast<std::size_t>(byte)]) & 0xC0) != 0x80;
}

void expectPlace(const TextPlace& found, const TextPlace& wanted, const std::string& text, qint64 byte) {
    EXPECT_TRUE(found.line == wanted.line && found.lineStart == wanted.lineStart && found.position == wanted.position &&
                found.linePosition == wanted.linePosition)
        << testing::PrintToString(text) << " at " << byte;
}

TEST(PlaceFinderTest, PlacesAreThoseOfCountingFromTheStart) {
    std::mt19937 random(1);
    for (int round = 0; round < 3000; ++round) {
        const bool ascii = round % 2 == 0;
        const std::string text = randomText(random, ascii);
        const auto length = static_cast<qint64>(text.size());
        PlaceFinder ascending(text, ascii);
        PlaceFinder anyOrder(text, ascii);
        for (qint64 byte = 0; byte <= length; ++byte) {
            const auto other = static_cast<qint64>(random() % (text.size() + 1));
            if (beginsCharacter(text, byte) && random() % 3 != 0)
                expectPlace(ascending.placeOf(byte), placeByCounting(text, byte), text, byte);
            if (beginsCharacter(text, other))
                expectPlace(anyOrder.placeOf(other), placeByCounting(text, other), text, other);
        }
        ASSERT_FALSE(HasFailure());
    }
}

TEST(PlaceFinderTest, ALineIsReadWithoutItsLineEnd) {
    const PlaceFinder finder("one\r\ntwo\rthree\n", true);
    EXPECT_EQ(finder.lineAt(0), "one");
    EXPECT_EQ(finder.lineAt(5), "two");
    EXPECT_EQ(finder.lineAt(9), "three");
    EXPECT_EQ(finder.lineAt(15), "");
}

TEST(PlaceFinderTest, AnEmptyTextHasOnePlace) {
    PlaceFinder finder({}, false);
    expectPlace(finder.placeOf(0), {}, {}, 0);
    EXPECT_EQ(finder.lineAt(0), "");
}

TEST(PlainTextTest, LinesAreThoseOfCountingFromTheStart) {
    std::mt19937 random(2);
    for (int round = 0; round < 500; ++round) {
        const std::string bytes = randomText(random, round % 2 == 0);
        const PlainText text(bytes);
        ASSERT_EQ(text.length(), static_cast<qint64>(bytes.size()));
        EXPECT_EQ(text.lineCount(), placeByCounting(bytes, text.length()).line + 1);
        for (qint64 byte = 0; byte <= text.length(); ++byte) {
            const TextPlace wanted = placeByCounting(bytes, byte);
            EXPECT_EQ(text.lineOf(byte), wanted.line) << testing::PrintToString(bytes) << " at " << byte;
            EXPECT_EQ(text.lineStart(wanted.line), wanted.lineStart) << testing::PrintToString(bytes);
        }
        ASSERT_FALSE(HasFailure());
    }
}

TEST(PlainTextTest, ARangeLiesInTheBytes) {
    const std::string bytes = "abcdef";
    const PlainText text(bytes);
    EXPECT_EQ(text.range(2, 3), "cde");
    EXPECT_EQ(text.range(2, 3).data(), bytes.data() + 2);
    EXPECT_EQ(text.range(6, 0), "");
}

}  // namespace
