#include "editor/language/RuleLexer.h"
#include "lang/LanguageFile.h"
#include "platform/Folders.h"

#include <QFile>
#include <QSet>

#include <gtest/gtest.h>

#include <vector>

namespace {

LanguageDefinition language(const QByteArray& statements) {
    const LanguageFile::Result result = LanguageFile::parse("rules\n" + statements, u"X.lng"_qs);
    EXPECT_TRUE(result.definition.has_value()) << result.error.toStdString();
    return result.definition.value_or(LanguageDefinition());
}

/// A letter a byte: the first of the class's name, "." for plain text. Lines are parted by LF, which stays itself.
QByteArray classesOf(const LanguageDefinition& definition, const QByteArray& text) {
    const RuleLexer lexer(definition);
    QByteArray shown;
    RuleLexer::State open = 0;
    for (const QByteArray& line : text.split('\n')) {
        std::vector<TokenClass> classes(static_cast<std::size_t>(line.size()), TokenClass::Error);
        open = lexer.line(line, open, classes);
        for (const TokenClass token : classes)
            shown += token == TokenClass::Text ? '.' : *TokenClasses::table()[static_cast<std::size_t>(token)].name;
        shown += '\n';
    }
    shown.chop(1);
    return shown;
}

}  // namespace

TEST(RuleLexer, WordsAreOfTheClassOfTheirSet) {
    const LanguageDefinition rules = language("keywords 0 if\nkeywords 1 int\nkeywords 2 self\nkeywords 3 use\n");
    EXPECT_EQ(classesOf(rules, "if int self use iff If _"), "kk.ttt.nnnn.ppp.........");
}

TEST(RuleLexer, LetterCaseCountsUnlessTheRulesSayOtherwise) {
    const auto loose = LanguageFile::parse("rules nocase\nkeywords 0 If", u"X.lng"_qs);
    ASSERT_TRUE(loose.definition.has_value());
    EXPECT_EQ(classesOf(*loose.definition, "if IF iF"), "kk.kk.kk");
    EXPECT_EQ(classesOf(language("keywords 0 If"), "if IF If"), "......kk");
}

TEST(RuleLexer, FurtherCharactersBelongToWords) {
    EXPECT_EQ(classesOf(language("keywords 0 a-b?\nwords -?"), "a-b? a-b"), "kkkk....");
    EXPECT_EQ(classesOf(language("keywords 0 gr\xC3\xBCn"), "gr\xC3\xBCn"), "kkkkk");
}

TEST(RuleLexer, NumbersTakePointsAndLettersWithThem) {
    EXPECT_EQ(classesOf(language("operators .-"), "12 0xFF 1.5e3 1..2 a1 -7"), "nn.nnnn.nnnnn.noon....on");
}

TEST(RuleLexer, OperatorsAreTakenOneByOne) {
    EXPECT_EQ(classesOf(language("operators +="), "a += b - c"), "..oo......");
}

TEST(RuleLexer, LineCommentsGoToTheEndOfTheLine) {
    EXPECT_EQ(classesOf(language("comment #\nkeywords 0 if"), "if # if\nif"), "kk.cccc\nkk");
}

TEST(RuleLexer, BlockCommentsGoOverLinesToTheirEnd) {
    const LanguageDefinition rules = language("comment #\ncomment #= =#\nkeywords 0 if");
    EXPECT_EQ(classesOf(rules, "if #= if =# if"), "kk.cccccccc.kk");
    EXPECT_EQ(classesOf(rules, "#= if\n\nif =# if\nif"), "ccccc\n\nccccc.kk\nkk");
}

TEST(RuleLexer, StringsEndAtTheirMarkOrWithTheLine) {
    const LanguageDefinition rules = language("string \" \" \\\nkeywords 0 if\ncomment #");
    EXPECT_EQ(classesOf(rules, "if \"if #\" if"), "kk.ssssss.kk");
    EXPECT_EQ(classesOf(rules, "\"if\nif"), "sss\nkk");
    EXPECT_EQ(classesOf(rules, "\"a\\\"b\" if"), "ssssss.kk");
    EXPECT_EQ(classesOf(rules, "\"a\\"), "sss");
}

TEST(RuleLexer, WithoutAnEscapeTheMarkAlwaysEnds) {
    EXPECT_EQ(classesOf(language("string ' ' none\nkeywords 0 if"), "'a\\' if"), "ssss.kk");
}

TEST(RuleLexer, TheLongerOfTwoMarksIsMeantAndGoesOverLines) {
    const LanguageDefinition rules = language("string \" \" \\\nstring \"\"\" \"\"\" \\ lines\nkeywords 0 if");
    EXPECT_EQ(classesOf(rules, "\"\"\"if\n\"if\" if\n\"\"\"if"), "sssss\nsssssss\nssskk");
    EXPECT_EQ(classesOf(rules, "\"\" if"), "ss.kk");
}

TEST(RuleLexer, AWordBehindAPrefixIsOfItsClass) {
    const LanguageDefinition rules = language("prefix @ preprocessor\noperators @\nkeywords 0 if");
    EXPECT_EQ(classesOf(rules, "@doc if @ if @if"), "pppp.kk.o.kk.ppp");
}

TEST(RuleLexer, ALineEndMayBelongToTheLine) {
    const RuleLexer lexer(language("string \" \" \\\ncomment #"));
    for (const QByteArray& text : {QByteArray("\"open\r\n"), QByteArray("\"open\\\n"), QByteArray("# x\n")}) {
        std::vector<TokenClass> classes(static_cast<std::size_t>(text.size()), TokenClass::Error);
        EXPECT_EQ(lexer.line(text, 0, classes), 0);
        EXPECT_EQ(std::count(classes.begin(), classes.end(), TokenClass::Error), 0);
    }
}

TEST(RuleLexer, AStateOfAnotherLanguageCountsAsNone) {
    const RuleLexer lexer(language("keywords 0 if"));
    for (const RuleLexer::State open : {1, -1, 1000, -1000}) {
        std::vector<TokenClass> classes(2);
        EXPECT_EQ(lexer.line("if", open, classes), 0);
        EXPECT_EQ(classes[0], TokenClass::Keyword);
    }
}

TEST(RuleLexer, TheShippedLanguagesWithRulesColourTheirSamples) {
    const QString folder = shareFolder() + u"/languages/"_qs;
    for (const QString& name : {u"TOML"_qs, u"ELIXIR"_qs, u"JULIA"_qs}) {
        const LanguageFile::Result read = LanguageFile::read(folder + name + u".lng"_qs);
        ASSERT_TRUE(read.definition.has_value()) << read.error.toStdString();
        QFile sample(folder + name + u".TXT"_qs);
        ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
        const QByteArray shown = classesOf(*read.definition, sample.readAll());
        for (const char letter : {'k', 'c', 's', 'n', 'o'}) {
            EXPECT_TRUE(shown.contains(letter)) << name.toStdString() << letter;
        }
    }
}
