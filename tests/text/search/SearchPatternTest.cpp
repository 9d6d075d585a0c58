#include "text/search/SearchPattern.h"
#include "text/search/SearchedText.h"

#include <gtest/gtest.h>

namespace {

constexpr SearchFlags Literal{};
constexpr SearchFlags Exact{.caseSensitive = true};
constexpr SearchFlags Word{.wholeWord = true};
constexpr SearchFlags Expression{.regExp = true};
constexpr SearchFlags ExpressionWord{.regExp = true, .wholeWord = true};

Matches found(const char* text, const char* pattern, SearchFlags flags) {
    const SearchPattern made(QString::fromUtf8(pattern), flags);
    EXPECT_FALSE(made.error()) << made.error().sentence.toStdString();
    return made.error() ? Matches() : allMatches(SearchedText(text), made);
}

}  // namespace

TEST(LiteralPattern, MeansEverySignItself) {
    EXPECT_EQ(found("a.b a+b (a) \\d \\E", "a.b", Literal), (Matches{{0, 3}}));
    EXPECT_EQ(found("a.b a+b (a) \\d \\E", "a+b", Literal), (Matches{{4, 7}}));
    EXPECT_EQ(found("a.b a+b (a) \\d \\E", "(a)", Literal), (Matches{{8, 11}}));
    EXPECT_EQ(found("a.b a+b (a) \\d \\E", "\\d", Literal), (Matches{{12, 14}}));
    EXPECT_EQ(found("a.b a+b (a) \\d \\E", "\\E", Literal), (Matches{{15, 17}}));
    EXPECT_EQ(found("x ^$|?*[]{}#- y", "^$|?*[]{}#-", Literal), (Matches{{2, 13}}));
}

TEST(LiteralPattern, LooksOverCaseInEveryScript) {
    EXPECT_EQ(found("GRÖSSE größe ΣΙΓΜΑ", "größe", Literal), (Matches{{8, 15}}));
    EXPECT_EQ(found("ÄÖ äö", "äö", Literal), (Matches{{0, 4}, {5, 9}}));
    EXPECT_EQ(found("ΣΙΓΜΑ", "σιγμα", Literal), (Matches{{0, 10}}));
    EXPECT_EQ(found("ÄÖ äö", "äö", Exact), (Matches{{5, 9}}));
}

TEST(LiteralPattern, FindsNulsAndLineEnds) {
    const std::string text("a\0b\r\nc", 6);
    const SearchPattern nul(QString(QChar(0)) + u"b"_qs, Literal);
    EXPECT_EQ(allMatches(SearchedText(text), nul), (Matches{{1, 3}}));
    EXPECT_EQ(found("a\r\nb\nc", "\n", Literal), (Matches{{2, 3}, {4, 5}}));
    EXPECT_EQ(found("a\r\nb\nc", "a\r\nb", Literal), (Matches{{0, 4}}));
}

TEST(LiteralPattern, TakesALoneSurrogateForTheReplacementCharacter) {
    const SearchPattern lone(QString(QChar(0xD83D)), Literal);
    ASSERT_FALSE(lone.error());
    EXPECT_EQ(allMatches(SearchedText("a\xEF\xBF\xBDz"), lone), (Matches{{1, 4}}));
}

TEST(LiteralPattern, IsAWholeWordWhereNoWordGoesOnAtItsEnds) {
    EXPECT_EQ(found("cat concat cats _cat cat", "cat", Word), (Matches{{0, 3}, {21, 24}}));
    EXPECT_EQ(found("öl möl ölig öl", "öl", Word), (Matches{{0, 3}, {15, 18}}));
    EXPECT_EQ(found("a+=b a += b", "+=", Word), (Matches{{1, 3}, {7, 9}}));
    EXPECT_EQ(found("$x $xy a$x", "$x", Word), (Matches{{0, 2}, {8, 10}}));
    EXPECT_EQ(found("漢字 漢字テスト", "漢字", Word), (Matches{{0, 6}}));
}

TEST(ExpressionPattern, IsAWholeWordBetweenTheEdgesOfWords) {
    EXPECT_EQ(found("ab abc cab", "a.|ca", ExpressionWord), (Matches{{0, 2}}));
}

TEST(ExpressionPattern, TakesEveryLineEndForOne) {
    EXPECT_EQ(found("ab\r\nab\rab\nab", "^a", Expression), (Matches{{0, 1}, {4, 5}, {7, 8}, {10, 11}}));
    EXPECT_EQ(found("ab\r\nab\rab\nab", "b$", Expression), (Matches{{1, 2}, {5, 6}, {8, 9}, {11, 12}}));
    EXPECT_EQ(found("ab\r\nab\rab\nab", "^$", Expression), Matches());
    EXPECT_EQ(found("ab\r\n\r\nc", "^$", Expression), (Matches{{4, 4}}));
    EXPECT_EQ(found("ab\r\ncd\ne", ".+", Expression), (Matches{{0, 2}, {4, 6}, {7, 8}}));
    EXPECT_EQ(found("ab\r\ncd\ne", "\\R", Expression), (Matches{{2, 4}, {6, 7}}));
}

TEST(ExpressionPattern, KnowsTheLettersOfEveryScript) {
    EXPECT_EQ(found("größe x", "\\w+", Expression), (Matches{{0, 7}, {8, 9}}));
    EXPECT_EQ(found("漢字", "\\b.", Expression), (Matches{{0, 3}}));
}

TEST(ExpressionPattern, TellsWhereItIsWrong) {
    const SearchPattern open(u"ab(c"_qs, Expression);
    EXPECT_EQ(open.error().position, 4);
    EXPECT_EQ(open.error().sentence, u"missing closing parenthesis"_qs);
    const SearchPattern star(QString::fromUtf8("\U0001F600ä**("), Expression);
    EXPECT_TRUE(star.error());
    const SearchPattern quantifier(QString::fromUtf8("\U0001F600ä|*"), Expression);
    EXPECT_EQ(quantifier.error().position, 4);
    EXPECT_TRUE(SearchPattern(u"*"_qs, ExpressionWord).error());
    EXPECT_FALSE(SearchPattern(u"*"_qs, Literal).error());
}

TEST(ExpressionPattern, MayNotTakeCharactersApart) {
    EXPECT_TRUE(SearchPattern(u"\\C"_qs, Expression).error());
}

TEST(AnyPattern, NeedsAText) {
    EXPECT_TRUE(SearchPattern(QString(), Literal).error());
    EXPECT_TRUE(SearchPattern(QString(), Expression).error());
}
