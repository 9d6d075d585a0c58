#include "platform/Wildcard.h"

#include <gtest/gtest.h>

namespace {

bool matches(const char* pattern, const char* name) {
    return Wildcard(QString::fromUtf8(pattern)).matches(QString::fromUtf8(name));
}

TEST(Wildcard, AStarStandsForAnyCharactersAndForNone) {
    EXPECT_TRUE(matches("*", "name"));
    EXPECT_TRUE(matches("*.txt", "a.txt"));
    EXPECT_TRUE(matches("a*b*c", "abc"));
    EXPECT_TRUE(matches("a*b*c", "axxbyybzzc"));
    EXPECT_TRUE(matches("*a*", "a"));
    EXPECT_FALSE(matches("*.txt", "a.txt.old"));
    EXPECT_FALSE(matches("a*b", "a"));
}

TEST(Wildcard, AQuestionMarkStandsForOneCharacter) {
    EXPECT_TRUE(matches("?.c", "a.c"));
    EXPECT_TRUE(matches("?.c", "😀.c"));
    EXPECT_FALSE(matches("?.c", ".c"));
    EXPECT_FALSE(matches("??.c", "a.c"));
}

TEST(Wildcard, StarPointStarMatchesNamesWithoutAPointToo) {
    EXPECT_TRUE(matches("*.*", "Makefile"));
}

TEST(Wildcard, LetterCaseCounts) {
    EXPECT_FALSE(matches("*.TXT", "a.txt"));
}

TEST(Wildcard, ANameWithALeadingDotNeverMatches) {
    EXPECT_FALSE(matches("*", ".hidden"));
    EXPECT_FALSE(matches(".hidden", ".hidden"));
    EXPECT_FALSE(matches("?hidden", ".hidden"));
}

TEST(Wildcard, EverythingElseStandsForItself) {
    EXPECT_TRUE(matches("[a].txt", "[a].txt"));
    EXPECT_FALSE(matches("[a].txt", "a.txt"));
    EXPECT_FALSE(matches("a;b", "a"));
    EXPECT_FALSE(matches("", "a"));
}

TEST(Wildcard, ManyStarsOverALongNameComeToAnEnd) {
    const QString pattern = QString(u"a*"_qs).repeated(40) + u'b';
    EXPECT_FALSE(Wildcard(pattern).matches(QString(250, u'a')));
}

}  // namespace
