#include "editor/control/TextControl.h"
#include "editor/language/AutoIndent.h"
#include "text/held/StringText.h"

#include <QTest>

#include <gtest/gtest.h>

namespace {

LanguageDefinition marked(const QByteArray& after, const QByteArray& at) {
    LanguageDefinition language;
    language.indentAfter = after.split(' ');
    language.unindentAt = at.split(' ');
    return language;
}

/// A language by rules whose comments and strings are known.
LanguageDefinition curly() {
    LanguageDefinition language = marked("{ ( : then", "} ) end else else:");
    language.rules.strings = {{{"\"", "\""}, '\\', false}};
    language.lineComments = {"//"};
    language.blockComments = {{"/*", "*/"}};
    language.brackets = "(){}";
    language.indentWidth = 2;
    for (int style = 0; style < TokenClasses::Count; ++style)
        language.classOfStyle[style] = static_cast<TokenClass>(style);
    return language;
}

class LanguageIndentTest : public testing::Test {
 protected:
    LanguageIndentTest() {
        control.resize(600, 400);
        control.show();
        control.setLanguage(&language);
    }
    /// Text in which "|" is the caret.
    void put(QString text) {
        const qsizetype caret = text.indexOf(u'|');
        control.setText(text.remove(caret, 1));
        control.setSelection(caret, caret);
        control.SendScintilla(TextControl::SCI_EMPTYUNDOBUFFER);
    }
    QString shown() const { return control.Text().insert(control.CaretPosition(), u'|'); }
    void enter() { QTest::keyClick(&control, Qt::Key_Return); }
    void type(const QString& text) {
        for (const QChar c : text)
            control.type(QString(c));
    }

    LanguageDefinition language = curly();
    TextControl control;
};

}  // namespace

TEST(AutoIndent, AMarkOfLettersIsAWholeWord) {
    const LanguageDefinition language = marked("then { do:", "end }");
    for (const char* line : {"if x then", "then", "x {  ", "f(){", "  THEN\t", "a do:"})
        EXPECT_TRUE(AutoIndent::opensLevel(line, language)) << line;
    for (const char* line : {"", "   ", "if x then y", "athen", "{ x", "do"})
        EXPECT_FALSE(AutoIndent::opensLevel(line, language)) << line;
    for (const char* line : {"end", "  end if", "\t}", "};", "End."})
        EXPECT_TRUE(AutoIndent::beginsClosing(line, language)) << line;
    for (const char* line : {"", "ending", "x end", "en"})
        EXPECT_FALSE(AutoIndent::beginsClosing(line, language)) << line;
}

TEST(AutoIndent, FrontsAreMadeOfWhatTheUnitSays) {
    const AutoIndent::Unit blanks{2, 4, false};
    const AutoIndent::Unit tabs{4, 4, true};
    EXPECT_EQ(AutoIndent::oneLevelMore("", blanks), "  ");
    EXPECT_EQ(AutoIndent::oneLevelMore("", tabs), "\t");
    EXPECT_EQ(AutoIndent::oneLevelMore("\t", blanks), "\t\t");
    EXPECT_EQ(AutoIndent::oneLevelMore("  ", {2, 4, true}), "    ");
    EXPECT_EQ(AutoIndent::columnsOf(" \t  ", tabs), 6);
    EXPECT_EQ(AutoIndent::frontOfColumns(6, tabs), "\t  ");
    EXPECT_EQ(AutoIndent::frontOfColumns(6, blanks), "      ");
}

TEST(AutoIndent, ATextShowsHowItIsIndented) {
    EXPECT_EQ(AutoIndent::indentedByTabs(StringText("a\n\tb\n\tc\n  d\n")), true);
    EXPECT_EQ(AutoIndent::indentedByTabs(StringText("a\n  b\r\n    c\n\td\n")), false);
    EXPECT_EQ(AutoIndent::indentedByTabs(StringText("/*\n * a\n * b\n */\nc\td  e\n")), std::nullopt);
    EXPECT_EQ(AutoIndent::indentedByTabs(StringText("")), std::nullopt);
}

TEST_F(LanguageIndentTest, ALineBehindAnOpeningMarkIsIndented) {
    put(QStringLiteral("if x {|"));
    enter();
    EXPECT_EQ(shown(), QStringLiteral("if x {\n  |"));
    type(QStringLiteral("y"));
    enter();
    EXPECT_EQ(shown(), QStringLiteral("if x {\n  y\n  |"));
    put(QStringLiteral("\tif x then|"));
    enter();
    EXPECT_EQ(shown(), QStringLiteral("\tif x then\n\t\t|"));
}

TEST_F(LanguageIndentTest, WhatCommentsAndStringsEndInOpensNothing) {
    put(QStringLiteral("x { // why|"));
    enter();
    EXPECT_EQ(shown(), QStringLiteral("x { // why\n  |"));
    for (const char* line : {"x // {", "/* {", "\"{", "x"}) {
        put(QString::fromLatin1(line) + u'|');
        enter();
        EXPECT_EQ(shown(), QString::fromLatin1(line) + QStringLiteral("\n|")) << line;
    }
}

TEST_F(LanguageIndentTest, AClosingBracketGoesUnderTheLineOfItsPartner) {
    put(QStringLiteral("a {\n  b(\n      |"));
    type(QStringLiteral(")"));
    EXPECT_EQ(shown(), QStringLiteral("a {\n  b(\n  )|"));
    enter();
    type(QStringLiteral("}"));
    EXPECT_EQ(shown(), QStringLiteral("a {\n  b(\n  )\n}|"));
}

TEST_F(LanguageIndentTest, AClosingWordGoesBackALevelOnceItIsComplete) {
    put(QStringLiteral("  if x then\n    y\n    |"));
    type(QStringLiteral("end"));
    EXPECT_EQ(shown(), QStringLiteral("  if x then\n    y\n    end|"));
    type(QStringLiteral(" "));
    EXPECT_EQ(shown(), QStringLiteral("  if x then\n    y\n  end |"));
    put(QStringLiteral("if x:\n  y\n  |"));
    type(QStringLiteral("else:"));
    EXPECT_EQ(shown(), QStringLiteral("if x:\n  y\nelse:|"));
    put(QStringLiteral("if x then\n  y\n  end|"));
    enter();
    EXPECT_EQ(shown(), QStringLiteral("if x then\n  y\nend\n|"));
    put(QStringLiteral("if x then\n  y\n  end|"));
    type(QStringLiteral("ing "));
    EXPECT_EQ(shown(), QStringLiteral("if x then\n  y\n  ending |"));
}

TEST_F(LanguageIndentTest, RightBehindTheLineThatOpensALevelAWordGoesUnderIt) {
    put(QStringLiteral("  if x then\n\n    |"));
    type(QStringLiteral("end "));
    EXPECT_EQ(shown(), QStringLiteral("  if x then\n\n  end |"));
}

TEST_F(LanguageIndentTest, NothingIsEverMovedOnward) {
    put(QStringLiteral("  a {\n|"));
    type(QStringLiteral("}"));
    EXPECT_EQ(shown(), QStringLiteral("  a {\n}|"));
    put(QStringLiteral("}\n  |"));
    type(QStringLiteral("}"));
    EXPECT_EQ(shown(), QStringLiteral("}\n  }|")) << "it has no partner";
}

TEST_F(LanguageIndentTest, ClosingMarksInCommentsStayWhereTheyAre) {
    put(QStringLiteral("a {\n  /*\n  |"));
    type(QStringLiteral("}"));
    EXPECT_EQ(shown(), QStringLiteral("a {\n  /*\n  }|"));
}

TEST_F(LanguageIndentTest, ALineEndInFrontOfAClosingBracketTakesItBack) {
    put(QStringLiteral("  a {|}"));
    enter();
    EXPECT_EQ(shown(), QStringLiteral("  a {\n  |}"));
    control.Undo();
    EXPECT_EQ(control.Text(), QStringLiteral("  a {}"));
}

TEST_F(LanguageIndentTest, TakingBackAClosingGivesItsFrontBack) {
    put(QStringLiteral("a {\n    |"));
    type(QStringLiteral("}"));
    ASSERT_EQ(shown(), QStringLiteral("a {\n}|"));
    control.Undo();
    EXPECT_EQ(control.Text(), QStringLiteral("a {\n    }"));
    control.Undo();
    EXPECT_EQ(control.Text(), QStringLiteral("a {\n    "));
}

TEST_F(LanguageIndentTest, IsLeftAloneWhereItIsSwitchedOffOrCanNotBe) {
    control.setAutoIndent(false);
    put(QStringLiteral("a {|"));
    enter();
    EXPECT_EQ(shown(), QStringLiteral("a {\n|"));
    put(QStringLiteral("a {\n  |"));
    type(QStringLiteral("}"));
    EXPECT_EQ(shown(), QStringLiteral("a {\n  }|"));
    control.setAutoIndent(true);
    control.setLanguage(nullptr);
    put(QStringLiteral("  a {|"));
    enter();
    EXPECT_EQ(shown(), QStringLiteral("  a {\n  |"));
    control.setLanguage(&language);
    put(QStringLiteral("a {|"));
    control.setLocked(true);
    enter();
    EXPECT_EQ(shown(), QStringLiteral("a {|"));
}

TEST_F(LanguageIndentTest, TabAndIndentGoByTheLanguage) {
    put(QStringLiteral("|a"));
    QTest::keyClick(&control, Qt::Key_Tab);
    EXPECT_EQ(control.Text(), QStringLiteral("  a"));
    control.ExecuteCmd(163);
    EXPECT_EQ(control.Text(), QStringLiteral("    a"));
    control.ExecuteCmd(127);
    EXPECT_EQ(control.Text(), QStringLiteral("  a"));
    language.indentsWithTabs = true;
    put(QStringLiteral("|a"));
    control.setLanguage(nullptr);
    control.setLanguage(&language);
    QTest::keyClick(&control, Qt::Key_Tab);
    EXPECT_EQ(control.Text(), QStringLiteral("\ta"));
    control.setBlanksForTabs(true);
    put(QStringLiteral("|a"));
    QTest::keyClick(&control, Qt::Key_Tab);
    EXPECT_EQ(control.Text(), QStringLiteral("  a"));
    control.setBlanksForTabs(false);
    put(QStringLiteral("a\n    b|"));
    control.setLanguage(nullptr);
    control.setLanguage(&language);
    QTest::keyClick(&control, Qt::Key_Home);
    QTest::keyClick(&control, Qt::Key_Tab);
    EXPECT_FALSE(control.Text().contains(u'\t')) << "the text shows that it has blanks";
}
