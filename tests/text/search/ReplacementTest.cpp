#include "text/search/Replacement.h"
#include "text/search/SearchedText.h"

#include <gtest/gtest.h>

namespace {

QByteArray asItIs(const QString& text) {
    return text.toUtf8();
}

std::string replaced(const char* text, const char* pattern, const char* by, Replacement::Rules rules = {true, false}) {
    const SearchedText searched(text);
    const SearchPattern compiled(QString::fromUtf8(pattern), {.regExp = rules.regExp});
    MatchScan scan(compiled, searched.held, searched.map, 0);
    if (!scan.next())
        return "no match";
    return Replacement(QString::fromUtf8(by), rules, asItIs).forMatch(scan).toStdString();
}

QString inCaseOf(const char* match, const char* replacement) {
    return withCaseOf(QString::fromUtf8(match), QString::fromUtf8(replacement));
}

}  // namespace

TEST(Replacement, PutsInTheGroupsOfAnExpression) {
    EXPECT_EQ(replaced("ab=cd", "(\\w+)=(\\w+)", "$2=$1"), "cd=ab");
    EXPECT_EQ(replaced("ab=cd", "(\\w+)=(\\w+)", "\\2=\\1"), "cd=ab");
    EXPECT_EQ(replaced("ab=cd", "(\\w+)=(\\w+)", "[$0] [\\0]"), "[ab=cd] [ab=cd]");
    EXPECT_EQ(replaced("ab=cd", "(\\w+)=(\\w+)", "${1}0"), "ab0");
    EXPECT_EQ(replaced("größe", "(.)(ö)", "$2$1"), "ör");
}

TEST(Replacement, LeavesOutWhatTookNoPart) {
    EXPECT_EQ(replaced("ab", "a(x)?b", "<$1>"), "<>");
    EXPECT_EQ(replaced("ab", "ab", "<$1\\7$42>"), "<>");
}

TEST(Replacement, HoldsLineEndsAndTabs) {
    EXPECT_EQ(replaced("a", "a", "x\\ny\\tz\\r"), "x\ny\tz\r");
    EXPECT_EQ(replaced("a", "a", "\\\\n $$1"), "\\n $1");
}

TEST(Replacement, LeavesOtherSignsAsTheyAre) {
    EXPECT_EQ(replaced("a", "(a)", "\\w \\ $ $x ${1 ${ \\"), "\\w \\ $ $x ${1 ${ \\");
}

TEST(Replacement, OfALiteralTextMeansItself) {
    EXPECT_EQ(replaced("a", "a", "$1 \\n \\1", {false, false}), "$1 \\n \\1");
}

TEST(Replacement, KnowsWhenItIsAlwaysTheSame) {
    const auto fixed = [](const char* text, Replacement::Rules rules) {
        return Replacement(QString::fromUtf8(text), rules, asItIs).fixed();
    };
    EXPECT_TRUE(fixed("a$1", {false, false}));
    EXPECT_TRUE(fixed("a\\n", {true, false}));
    EXPECT_FALSE(fixed("a$1", {true, false}));
    EXPECT_FALSE(fixed("a", {false, true}));
    EXPECT_TRUE(fixed("", {true, false}));
}

TEST(Replacement, FollowsTheCaseOfTheMatchWhenTold) {
    EXPECT_EQ(replaced("RED", "red", "blue", {false, true}), "BLUE");
    EXPECT_EQ(replaced("Red", "(r)ed", "$1blue", {true, true}), "Rblue");
}

TEST(CaseOfAMatch, IsCapitalsSmallLettersOrACapitalInFront) {
    EXPECT_EQ(inCaseOf("ÄRGER", "freude"), u"FREUDE"_qs);
    EXPECT_EQ(inCaseOf("red", "BLUE"), u"blue"_qs);
    EXPECT_EQ(inCaseOf("Red", "bLUE sky"), u"Blue sky"_qs);
    EXPECT_EQ(inCaseOf("R", "blue"), u"Blue"_qs);
    EXPECT_EQ(inCaseOf("\"Red", "\"blue"), u"\"Blue"_qs);
}

TEST(CaseOfAMatch, IsLeftWhereItIsMixedOrThereIsNone) {
    EXPECT_EQ(inCaseOf("rEd", "bLue"), u"bLue"_qs);
    EXPECT_EQ(inCaseOf("123", "bLue"), u"bLue"_qs);
    EXPECT_EQ(inCaseOf("", "bLue"), u"bLue"_qs);
}
