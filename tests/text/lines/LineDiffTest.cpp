#include "text/lines/LineDiff.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <random>
#include <string>
#include <vector>

using LineDiff::Change;

namespace {

using Changes = std::vector<Change>;
using Lines = std::vector<std::string_view>;

const std::atomic<bool> running = false;

Changes changesOf(std::string_view before, std::string_view after, int most = LineDiff::MostDifferences) {
    return LineDiff::compare(LineDiff::linesOf(before), LineDiff::linesOf(after), running, most).value();
}

std::string apply(const Lines& before, const Lines& after, const Changes& changes) {
    std::string text;
    qint64 line = 0;
    const auto keepUpTo = [&](qint64 end) {
        for (; line < end; ++line)
            text += before[static_cast<std::size_t>(line)];
    };
    for (const Change& change : changes) {
        keepUpTo(change.oldFirst);
        for (qint64 i = change.newFirst; i < change.newFirst + change.newCount; ++i)
            text += after[static_cast<std::size_t>(i)];
        line += change.oldCount;
    }
    keepUpTo(std::ssize(before));
    return text;
}

qint64 sizeOf(const Changes& changes) {
    qint64 size = 0;
    for (const Change& change : changes)
        size += change.oldCount + change.newCount;
    return size;
}

/// The fewest lines to remove and add, by the table of all pairs.
qint64 fewest(const Lines& before, const Lines& after) {
    std::vector<qint64> row(after.size() + 1);
    for (std::size_t j = 0; j <= after.size(); ++j)
        row[j] = static_cast<qint64>(j);
    for (std::size_t i = 1; i <= before.size(); ++i) {
        qint64 diagonal = row[0];
        row[0] = static_cast<qint64>(i);
        for (std::size_t j = 1; j <= after.size(); ++j) {
            const qint64 above = row[j];
            row[j] = before[i - 1] == after[j - 1] ? diagonal : std::min(above, row[j - 1]) + 1;
            diagonal = above;
        }
    }
    return row[after.size()];
}

std::string generated(std::mt19937& random, int lines, int kinds) {
    static const std::vector<std::string> ends{"\n", "\r\n", "\r", "\n", "\n"};
    std::string text;
    for (int i = 0; i < lines; ++i)
        text += std::to_string(random() % static_cast<unsigned>(kinds)) + ends[random() % ends.size()];
    if (random() % 2 == 0)
        text += "end";
    return text;
}

/// A text with some of its lines removed, doubled or replaced.
std::string edited(std::mt19937& random, std::string_view text, unsigned oneIn) {
    std::string result;
    for (const std::string_view line : LineDiff::linesOf(text)) {
        switch (random() % oneIn) {
            case 0:
                break;
            case 1:
                result.append(line).append(line);
                break;
            case 2:
                result += "new\n";
                break;
            default:
                result += line;
        }
    }
    return result;
}

void expectSound(const std::string& before, const std::string& after, int most) {
    const Lines oldLines = LineDiff::linesOf(before);
    const Lines newLines = LineDiff::linesOf(after);
    const Changes changes = LineDiff::compare(oldLines, newLines, running, most).value();
    ASSERT_EQ(apply(oldLines, newLines, changes), after);
    qint64 oldEnd = -1;
    qint64 newEnd = -1;
    for (const Change& change : changes) {
        ASSERT_GT(change.oldFirst, oldEnd);
        ASSERT_GT(change.newFirst, newEnd);
        ASSERT_GT(change.oldCount + change.newCount, 0);
        oldEnd = change.oldFirst + change.oldCount;
        newEnd = change.newFirst + change.newCount;
    }
}

}  // namespace

TEST(LineDiff, LinesEndBehindEachKindOfLineEnd) {
    EXPECT_EQ(LineDiff::linesOf(""), Lines());
    EXPECT_EQ(LineDiff::linesOf("a"), Lines({"a"}));
    EXPECT_EQ(LineDiff::linesOf("a\r\nb\rc\nd"), Lines({"a\r\n", "b\r", "c\n", "d"}));
    EXPECT_EQ(LineDiff::linesOf("\n\r\r\n\n\r"), Lines({"\n", "\r", "\r\n", "\n", "\r"}));
    EXPECT_EQ(LineDiff::linesOf(std::string_view("a\0b\n", 4)), Lines({std::string_view("a\0b\n", 4)}));
}

TEST(LineDiff, EqualTextsHaveNoChanges) {
    EXPECT_EQ(changesOf("", ""), Changes());
    EXPECT_EQ(changesOf("a\nb", "a\nb"), Changes());
}

TEST(LineDiff, OneChangeIsFoundAtTheStartInTheMiddleAndAtTheEnd) {
    EXPECT_EQ(changesOf("a\nb\nc\n", "x\nb\nc\n"), Changes({{0, 1, 0, 1}}));
    EXPECT_EQ(changesOf("a\nb\nc\n", "a\nc\n"), Changes({{1, 1, 1, 0}}));
    EXPECT_EQ(changesOf("a\nb\nc\n", "a\nb\nc\nd\n"), Changes({{3, 0, 3, 1}}));
    EXPECT_EQ(changesOf("", "a\n"), Changes({{0, 0, 0, 1}}));
    EXPECT_EQ(changesOf("a\n", ""), Changes({{0, 1, 0, 0}}));
}

TEST(LineDiff, LinesWithDifferentEndsDiffer) {
    EXPECT_EQ(changesOf("a\nb\n", "a\r\nb\n"), Changes({{0, 1, 0, 1}}));
    EXPECT_EQ(changesOf("a\nb", "a\nb\n"), Changes({{1, 1, 1, 1}}));
}

TEST(LineDiff, ChangesLeadToTheOtherTextAndAreTheFewest) {
    std::mt19937 random(1);
    for (int turn = 0; turn < 2000; ++turn) {
        const int kinds = 1 + static_cast<int>(random() % 12);
        const std::string before = generated(random, static_cast<int>(random() % 40), kinds);
        const std::string after =
            turn % 2 == 0 ? generated(random, static_cast<int>(random() % 40), kinds) : edited(random, before, 8);
        expectSound(before, after, LineDiff::MostDifferences);
        if (HasFatalFailure())
            return;
        ASSERT_EQ(sizeOf(changesOf(before, after)), fewest(LineDiff::linesOf(before), LineDiff::linesOf(after)));
    }
}

TEST(LineDiff, ChangesLeadToTheOtherTextBeyondTheLimit) {
    std::mt19937 random(2);
    for (int turn = 0; turn < 1000; ++turn) {
        const std::string before = generated(random, static_cast<int>(random() % 300), 400);
        const std::string after = edited(random, before, 3 + random() % 10);
        expectSound(before, after, static_cast<int>(random() % 6));
        if (HasFatalFailure())
            return;
    }
}

TEST(LineDiff, BeyondTheLimitLinesThatOccurOnceStillDivide) {
    const std::string before = "1\n2\n3\nanchor\n4\n5\n6\n";
    const std::string after = "a\nb\nc\nanchor\nd\ne\nf\n";
    EXPECT_EQ(changesOf(before, after, 4), Changes({{0, 3, 0, 3}, {4, 3, 4, 3}}));
    EXPECT_EQ(changesOf("1\n1\n2\n2\n1\n", "3\n1\n1\n3\n3\n", 2), Changes({{0, 5, 0, 5}}));
}

TEST(LineDiff, LargeTextsWithoutACommonLineAreReplacedAsAWhole) {
    std::string before;
    std::string after;
    for (int i = 0; i < 200000; ++i) {
        before += "a" + std::to_string(i) + "\n";
        after += "b" + std::to_string(i) + "\n";
    }
    EXPECT_EQ(changesOf(before, after), Changes({{0, 200000, 0, 200000}}));
}

TEST(LineDiff, CancelledItReturnsNothing) {
    const std::atomic<bool> cancelled = true;
    EXPECT_FALSE(LineDiff::compare({"a"}, {"b"}, cancelled));
}
