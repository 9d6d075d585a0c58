#include "search/engine/FileMatches.h"

#include <gtest/gtest.h>

TEST(FileMatchesTest, ALineIsKeptOnceForAllItsMatches) {
    FileMatches matches;
    matches.addLine(7, u"a b a"_qs);
    matches.addMatch({100, 1, 0, 0, 1});
    matches.addMatch({104, 1, 0, 4, 1});
    matches.addLine(9, QString(u"ein \u00e4"_qs));
    matches.addMatch({120, 1, 0, 4, 1});
    ASSERT_EQ(matches.matches().size(), 3U);
    EXPECT_EQ(matches.matches()[1].line, 0);
    EXPECT_EQ(matches.lineText(matches.matches()[1]), u"a b a"_qs);
    EXPECT_EQ(matches.lineNumber(matches.matches()[2]), 9);
    EXPECT_EQ(matches.lineText(matches.matches()[2]), u"ein \u00e4"_qs);
}

TEST(FileMatchesTest, OfALongLineItsFirstUnitsAreKept) {
    FileMatches matches;
    matches.addLine(1, QString(5000, u'\u00e4'));
    matches.addMatch({4000, 1, 0, 4000, 1});
    EXPECT_EQ(matches.lineText(matches.matches()[0]), QString(FileMatches::LongestText, u'\u00e4'));
    EXPECT_EQ(matches.matches()[0].column, 4000);
}

TEST(FileMatchesTest, AnotherListIsAddedBehind) {
    FileMatches first;
    first.addLine(1, u"one"_qs);
    first.addMatch({0, 3, 0, 0, 3});
    FileMatches second;
    second.addLine(2, u"two"_qs);
    second.addMatch({4, 3, 0, 0, 3});
    first.append(second);
    ASSERT_EQ(first.matches().size(), 2U);
    EXPECT_EQ(first.lineText(first.matches()[1]), u"two"_qs);
    EXPECT_EQ(first.lineNumber(first.matches()[1]), 2);
    EXPECT_EQ(first.matches()[1].start, 4);
}
