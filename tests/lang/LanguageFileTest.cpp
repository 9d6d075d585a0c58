#include "lang/LanguageFile.h"
#include "lang/LexerNames.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

const QString Path = u"X.lng"_qs;

LanguageFile::Result parse(const QByteArray& bytes) {
    return LanguageFile::parse(bytes, Path);
}

QString errorOf(const QByteArray& bytes) {
    const LanguageFile::Result result = parse(bytes);
    EXPECT_EQ(result.definition.has_value(), result.error.isEmpty());
    return result.error;
}

}  // namespace

TEST(LanguageFile, EveryStatementOfALexerIsTaken) {
    const auto result = parse(
        "# A language\r\n\r\nlexer cpp\r\nproperty fold 0\nproperty a.b c\n\tkeywords 0  int\tfor\nkeywords 0 while\n"
        "keywords 8 last\ncomment //\ncomment #\ncomment /* */\nbrackets ()[]\nindent 8 tabs\nafter { (\nat } end\n"
        "class comment 1 2\nclass keyword 5\nclass error 255");
    ASSERT_TRUE(result.definition.has_value()) << result.error.toStdString();
    const LanguageDefinition& language = *result.definition;
    EXPECT_EQ(language.lexer, "cpp");
    EXPECT_EQ(language.keywords[0], "int for while");
    EXPECT_EQ(language.keywords[8], "last");
    EXPECT_EQ(language.properties, (QList<std::pair<QByteArray, QByteArray>>{{"fold", "0"}, {"a.b", "c"}}));
    EXPECT_EQ(language.lineComments, (QByteArrayList{"//", "#"}));
    EXPECT_EQ(language.blockComments, (QList<LanguageMarks>{{"/*", "*/"}}));
    EXPECT_EQ(language.brackets, "()[]");
    EXPECT_EQ(language.indentWidth, 8);
    EXPECT_TRUE(language.indentsWithTabs);
    EXPECT_EQ(language.indentAfter, (QByteArrayList{"{", "("}));
    EXPECT_EQ(language.unindentAt, (QByteArrayList{"}", "end"}));
    EXPECT_EQ(language.classOfStyle[2], TokenClass::Comment);
    EXPECT_EQ(language.classOfStyle[5], TokenClass::Keyword);
    EXPECT_EQ(language.classOfStyle[255], TokenClass::Error);
    EXPECT_EQ(language.classOfStyle[3], TokenClass::Text);
}

TEST(LanguageFile, EveryStatementOfRulesIsTaken) {
    const auto result = parse(
        "rules nocase\nwords -?\noperators +-\nstring \" \" \\\nstring ''' ''' none lines\nprefix @ name\n"
        "keywords 3 x");
    ASSERT_TRUE(result.definition.has_value()) << result.error.toStdString();
    const LanguageRules& rules = result.definition->rules;
    EXPECT_TRUE(result.definition->lexer.isEmpty());
    EXPECT_TRUE(rules.ignoresCase);
    EXPECT_EQ(rules.wordCharacters, "-?");
    EXPECT_EQ(rules.operators, "+-");
    ASSERT_EQ(rules.strings.size(), 2);
    EXPECT_EQ(rules.strings[0].marks, (LanguageMarks{"\"", "\""}));
    EXPECT_EQ(rules.strings[0].escape, '\\');
    EXPECT_FALSE(rules.strings[0].goesOverLines);
    EXPECT_EQ(rules.strings[1].escape, '\0');
    EXPECT_TRUE(rules.strings[1].goesOverLines);
    EXPECT_EQ(rules.prefixes, (QList<std::pair<QByteArray, TokenClass>>{{"@", TokenClass::Name}}));
    for (int style = 0; style < TokenClasses::Count; ++style) {
        EXPECT_EQ(result.definition->classOfStyle[style], static_cast<TokenClass>(style));
    }
}

TEST(LanguageFile, WithoutAWordTheIndentIsFourBlanks) {
    const auto result = parse("lexer cpp");
    ASSERT_TRUE(result.definition.has_value());
    EXPECT_EQ(result.definition->indentWidth, 4);
    EXPECT_FALSE(result.definition->indentsWithTabs);
}

TEST(LanguageFile, WhatIsWrongIsToldWithFileAndLine) {
    struct Row {
        QByteArray line;
        const char* error;
    };
    const QList<Row> rows{
        {"lexre cpp", "\"lexre\" is unknown"},
        {"Lexer cpp", "\"Lexer\" is unknown"},
        {"lexer", "too little stands behind \"lexer\""},
        {"lexer cpp x", "too much stands behind \"lexer\""},
        {"lexer cpp", "\"lexer\" stands here a second time"},
        {"rules", "\"lexer\" and \"rules\" can't both be there"},
        {"keywords 9 x", "\"9\" is no number of a set of keywords"},
        {"keywords -1 x", "\"-1\" is no number of a set of keywords"},
        {"keywords 0", "too little stands behind \"keywords\""},
        {"property fold", "too little stands behind \"property\""},
        {"property a 2", "the property \"a\" stands here a second time"},
        {"comment a b c", "too much stands behind \"comment\""},
        {"brackets (", "a bracket has no other"},
        {"brackets ((", "brackets are characters of ASCII, each once"},
        {"brackets \xC3\xA4", "brackets are characters of ASCII, each once"},
        {"indent 0", "\"0\" is no width from 1 to 32"},
        {"indent 33", "\"33\" is no width from 1 to 32"},
        {"indent 4 blanks", "\"blanks\" is not \"tabs\""},
        {"class comment 256", "\"256\" is no style from 0 to 255"},
        {"class comment 1x", "\"1x\" is no style from 0 to 255"},
        {"class comment 7 7", "the style 7 has a class already"},
        {"class remark 7", "there is no class \"remark\""},
        {"class comment", "too little stands behind \"class\""},
        {"words -", "this belongs behind \"rules\""},
        {"operators -", "this belongs behind \"rules\""},
        {"string \" \" none", "this belongs behind \"rules\""},
        {"string \" \" ab", "\"ab\" is neither a character nor \"none\""},
        {"string \" \" none over", "\"over\" is not \"lines\""},
        {"prefix @ name", "this belongs behind \"rules\""},
        {"prefix @ thing", "there is no class \"thing\""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(errorOf("lexer cpp\nproperty a 1\n\n" + row.line + "\ncomment #"),
                  u"X.lng:4: "_qs + QLatin1String(row.error));
    }
}

TEST(LanguageFile, RulesAreReadAsStrictly) {
    EXPECT_EQ(errorOf("rules\nlexer cpp"), u"X.lng:2: \"lexer\" and \"rules\" can't both be there"_qs);
    EXPECT_EQ(errorOf("rules case"), u"X.lng:1: \"case\" is not \"nocase\""_qs);
    EXPECT_EQ(errorOf("rules\nproperty fold 0"), u"X.lng:2: \"property\" belongs behind \"lexer\""_qs);
    EXPECT_EQ(errorOf("rules\nclass comment 1"), u"X.lng:2: \"class\" belongs behind \"lexer\""_qs);
    EXPECT_EQ(errorOf("rules\nkeywords 4 x"), u"X.lng:2: \"4\" is no number of a set of keywords"_qs);
}

TEST(LanguageFile, WhatGoesByLexerOrRulesStandsBehindThem) {
    EXPECT_EQ(errorOf("keywords 5 x\nrules"), u"X.lng:1: \"keywords\" belongs behind \"lexer\" or \"rules\""_qs);
    EXPECT_EQ(errorOf("property fold 0\nrules"), u"X.lng:1: \"property\" belongs behind \"lexer\""_qs);
    EXPECT_EQ(errorOf("property fold 0\nlexer cpp"), u"X.lng:1: \"property\" belongs behind \"lexer\""_qs);
    EXPECT_EQ(errorOf("class comment 1\nlexer cpp"), u"X.lng:1: \"class\" belongs behind \"lexer\""_qs);
    EXPECT_EQ(errorOf("operators +\nrules"), u"X.lng:1: this belongs behind \"rules\""_qs);
    EXPECT_EQ(errorOf("comment #\nbrackets ()\nindent 2\nafter {\nat }\nlexer cpp"), QString());
}

TEST(LanguageFile, ALexerIsFoundByItsVeryName) {
    EXPECT_EQ(errorOf("lexer CPP"), u"X.lng:1: there is no lexer \"CPP\""_qs);
    EXPECT_EQ(errorOf("lexer cobol"), u"X.lng:1: there is no lexer \"cobol\""_qs);
    EXPECT_EQ(errorOf("lexer COBOL"), QString());
}

TEST(LanguageFile, WithoutLexerOrRulesThereIsNoLanguage) {
    const QString missing = u"X.lng:%1: neither \"lexer\" nor \"rules\" is there"_qs;
    EXPECT_EQ(errorOf({}), missing.arg(1));
    EXPECT_EQ(errorOf("# nothing\n\n"), missing.arg(3));
}

TEST(LanguageFile, BytesThatAreNoTextAreRefused) {
    EXPECT_EQ(errorOf(QByteArray("lexer cpp\n\0\n", 12)), u"X.lng:2: a NUL stands in it"_qs);
    EXPECT_EQ(errorOf("lexer cpp\n\xFF\xFE"), u"X.lng:2: \"ÿþ\" is unknown"_qs);
}

TEST(LanguageFile, ALongFileIsRefused) {
    QByteArray bytes = "lexer cpp\n#";
    bytes.append(LanguageFile::MostBytes - bytes.size(), 'x');
    EXPECT_EQ(errorOf(bytes), QString());
    EXPECT_EQ(errorOf(bytes + 'x'), u"X.lng:1: the file is longer than 262144 bytes"_qs);
}

TEST(LanguageFile, AFileThatCannotBeReadIsNamed) {
    const QTemporaryDir folder;
    const QString missing = folder.filePath(u"NONE.lng"_qs);
    EXPECT_TRUE(LanguageFile::read(missing).error.contains(missing));
    EXPECT_TRUE(LanguageFile::read(folder.path()).error.contains(folder.path()));
    const QString pipe = folder.filePath(u"PIPE.lng"_qs);
    ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    EXPECT_TRUE(LanguageFile::read(pipe).error.contains(pipe));
}
