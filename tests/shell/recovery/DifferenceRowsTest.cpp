#include "shell/recovery/DifferenceRows.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <string>

namespace {

const std::atomic<bool> running = false;

DifferenceRows between(std::string_view file, std::string_view recovered) {
    return DifferenceRows::between(file, recovered, running).value();
}

QString textBetween(std::string_view file, std::string_view recovered) {
    return between(file, recovered).toText();
}

std::string numbered(int from, int to) {
    std::string text;
    for (int i = from; i <= to; ++i)
        text += std::to_string(i) + "\n";
    return text;
}

}  // namespace

TEST(DifferenceRows, OfEqualTextsThereAreNone) {
    const DifferenceRows equal = between("a\nb\n", "a\nb\n");
    EXPECT_TRUE(equal.areEqual());
    EXPECT_EQ(equal.toText(), QString());
    EXPECT_TRUE(between("", "").areEqual());
}

TEST(DifferenceRows, HaveBothLineNumbersAndASign) {
    EXPECT_EQ(textBetween("a\nb\nc\n", "a\nx\ny\nc\n"), u"1 1   a\n2   - b\n  2 + x\n  3 + y\n3 4   c"_qs);
    EXPECT_EQ(textBetween("", "a\n"), u"  1 + a"_qs);
    EXPECT_EQ(textBetween("a\n", ""), u"1   - a"_qs);
}

TEST(DifferenceRows, ShowThreeEqualLinesAroundAndLeaveTheOthersOut) {
    const std::string before = numbered(1, 20);
    std::string after = before;
    after.replace(after.find("10\n"), 2, "ten");
    EXPECT_EQ(textBetween(before, after),
              u"  ⋮\n"
              " 7  7   7\n"
              " 8  8   8\n"
              " 9  9   9\n"
              "10    - 10\n"
              "   10 + ten\n"
              "11 11   11\n"
              "12 12   12\n"
              "13 13   13\n"
              "  ⋮"_qs);
}

TEST(DifferenceRows, OfNeighbouringChangesShareTheLinesBetweenThem) {
    EXPECT_EQ(textBetween("a\n1\n2\n3\n4\nb\n", "x\n1\n2\n3\n4\ny\n"),
              u"1   - a\n  1 + x\n2 2   1\n3 3   2\n4 4   3\n5 5   4\n6   - b\n  6 + y"_qs);
}

TEST(DifferenceRows, NameLineEndsThatDiffer) {
    EXPECT_EQ(textBetween("a\nb\n", "a\r\nb\n"), u"1   - a [LF]\n  1 + a [CR LF]\n2 2   b"_qs);
    EXPECT_EQ(textBetween("a\r", "a"), u"1   - a [CR]\n  1 + a [no line end]"_qs);
    EXPECT_EQ(textBetween("a\r\n", "b\r\n"), u"1   - a\n  1 + b"_qs);
}

TEST(DifferenceRows, KeepEachLineInARowOfItsOwn) {
    const std::string odd("a\0\f\v\xE2\x80\xA8\xE2\x80\xA9z", 11);
    EXPECT_EQ(textBetween("", odd), u"  1 + a\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDz"_qs);
    const DifferenceRows rows = between("", std::string(1'000'000, 'x'));
    ASSERT_EQ(rows.rows.size(), 1U);
    EXPECT_EQ(rows.rows[0].text.size(), DifferenceRows::LongestLine + 1);
    EXPECT_TRUE(rows.rows[0].text.endsWith(u'…'));
}

TEST(DifferenceRows, AreNoMoreThanAPersonCanRead) {
    const DifferenceRows rows = between(numbered(1, 30'000), numbered(50'000, 80'000));
    EXPECT_EQ(std::ssize(rows.rows), DifferenceRows::MostRows);
    EXPECT_EQ(rows.removed, 30'000);
    EXPECT_EQ(rows.added, 30'001);
    EXPECT_EQ(rows.leftOut, 60'001 - DifferenceRows::MostRows);
}

TEST(DifferenceRows, AreNotMadeWhenCancelled) {
    const std::atomic<bool> cancelled = true;
    EXPECT_FALSE(DifferenceRows::between("a", "b", cancelled));
}
