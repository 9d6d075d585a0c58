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

TEST(DifferenceRows, OfLongLinesShowWhereTheyDiffer) {
    std::string before;
    for (int i = 0; i < 300'000; ++i)
        before += "\xc3\xa9";
    const std::string behind(300'000, 'x');
    const DifferenceRows rows = between(before + "old" + behind + '\n', before + "new" + behind + '\n');
    ASSERT_EQ(rows.rows.size(), 2U);
    for (const auto& [row, word] : {std::pair(rows.rows[0], u"old"_qs), std::pair(rows.rows[1], u"new"_qs)}) {
        EXPECT_TRUE(row.text.startsWith(u"\u2026\u00e9\u00e9"_qs));
        EXPECT_EQ(row.text.indexOf(word + u"xxx"_qs), 101);
        EXPECT_TRUE(row.text.endsWith(u"xx\u2026"_qs));
    }
    const std::string cut = before + "behind";
    const DifferenceRows atEnd = between(before, cut);
    ASSERT_EQ(atEnd.rows.size(), 2U);
    EXPECT_EQ(atEnd.rows[0].text, u"\u2026"_qs + QString(100, u'\u00e9'));
    EXPECT_EQ(atEnd.rows[1].text, u"\u2026"_qs + QString(100, u'\u00e9') + u"behind"_qs);
    const std::string early = "1" + behind;
    EXPECT_TRUE(between(early, "2" + behind).rows[0].text.startsWith(u"1xx"_qs));
}

TEST(DifferenceRows, OfLinesThatAreNotLongShowThemWhole) {
    const std::string most(1'990, 'x');
    EXPECT_EQ(between(most + "1", most + "2").rows[0].text, QString(1'990, u'x') + u'1');
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
