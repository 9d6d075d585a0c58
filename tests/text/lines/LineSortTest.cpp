#include "text/lines/LineSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

std::string ascending(std::string_view text) {
    return LineSort::sorted(text, LineSort::Order::Ascending);
}
std::string descending(std::string_view text) {
    return LineSort::sorted(text, LineSort::Order::Descending);
}

}  // namespace

TEST(LineSort, OrdersByCodePoint) {
    EXPECT_EQ(ascending("b\na\nB\n10\n9\n"), "10\n9\nB\na\nb\n");
    EXPECT_EQ(descending("b\na\nB\n10\n9\n"), "b\na\nB\n9\n10\n");
    EXPECT_EQ(ascending("\U0001F600\n\uFFFD\nä\nz\n"), "z\nä\n\uFFFD\n\U0001F600\n");
}

TEST(LineSort, AShorterLineStandsBeforeWhatItBegins) {
    EXPECT_EQ(ascending("abcdefghij\nabcdefghi\nabcdefgh\nabc\n\n"), "\nabc\nabcdefgh\nabcdefghi\nabcdefghij\n");
    const std::string withNul("a\0b\na\n", 6);
    EXPECT_EQ(ascending(withNul), std::string("a\na\0b\n", 6));
}

TEST(LineSort, LineEndsStayWhereTheyAre) {
    EXPECT_EQ(ascending("c\r\nb\na\rd"), "a\r\nb\nc\rd");
    EXPECT_EQ(ascending("b\na"), "a\nb");
    EXPECT_EQ(descending("a\r\nb"), "b\r\na");
}

TEST(LineSort, SaysWhereTheFollowedLinesAre) {
    std::vector<std::size_t> lines{0, 1, 3, 4};
    EXPECT_EQ(LineSort::sorted("c\n\nb\nc\n\na", LineSort::Order::Ascending, lines), "\n\na\nb\nc\nc");
    EXPECT_EQ(lines, (std::vector<std::size_t>{4, 0, 5, 1}));
    lines = {5, 9};
    EXPECT_EQ(LineSort::sorted("c\n\nb\nc\n\na", LineSort::Order::Descending, lines), "c\nc\nb\na\n\n");
    EXPECT_EQ(lines, (std::vector<std::size_t>{3, 9})) << "a line that is not there stays";
}

TEST(LineSort, TakesWhatHasNothingToSort) {
    EXPECT_EQ(ascending(""), "");
    EXPECT_EQ(ascending("a"), "a");
    EXPECT_EQ(ascending("\n"), "\n");
    EXPECT_EQ(descending("\n\r\n\r"), "\n\r\n\r");
}

TEST(LineSort, AgreesWithAPlainSortOfTheLines) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        std::vector<std::string> lines(random() % 30);
        for (std::string& line : lines) {
            for (auto left = random() % 12; left > 0; --left)
                line += "ab\xC3\xA4"[random() % 2];
            line += random() % 3 == 0 ? "ä" : "";
        }
        std::string text;
        for (const std::string& line : lines)
            text += line + "\n";
        std::ranges::sort(lines);
        std::string expected;
        for (const std::string& line : lines)
            expected += line + "\n";
        EXPECT_EQ(ascending(text), expected);
        std::ranges::reverse(lines);
        expected.clear();
        for (const std::string& line : lines)
            expected += line + "\n";
        EXPECT_EQ(descending(text), expected);
    }
}
