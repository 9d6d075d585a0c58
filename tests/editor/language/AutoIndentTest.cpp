#include "editor/Editor.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "editor/language/AutoIndent.h"
#include "text/held/StringText.h"

#include <QTest>

#include <gtest/gtest.h>

#include <memory>

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

class IndentingByLanguage : public testing::Test {
 protected:
    IndentingByLanguage() {
        control.resize(600, 400);
        control.show();
        control.look().setLanguage(&language);
    }
    /// Text in which "|" is the caret.
    void put(QString text) {
        const qsizetype caret = text.indexOf(u'|');
        control.setText(text.remove(caret, 1));
        control.setSelection(caret, caret);
        control.SendScintilla(TextControl::SCI_EMPTYUNDOBUFFER);
    }
    QString shown() const { return control.Text().insert(control.selected().CaretPosition(), u'|'); }
    void enter() { QTest::keyClick(&control, Qt::Key_Return); }
    void type(const QString& text) {
        for (const QChar c : text)
            control.typing().type(QString(c));
    }

    LanguageDefinition language = curly();
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
};

}  // namespace

TEST(AutoIndent, AMarkOfLettersIsAWholeWord) {
    const LanguageDefinition language = marked("then { do:", "end }");
    for (const char* line : {"if x then", "then", "x {  ", "f(){", "  THEN\t", "a do:"}) {
        EXPECT_TRUE(AutoIndent::opensLevel(line, language)) << line;
    }
    for (const char* line : {"", "   ", "if x then y", "athen", "{ x", "do"}) {
        EXPECT_FALSE(AutoIndent::opensLevel(line, language)) << line;
    }
    for (const char* line : {"end", "  end if", "\t}", "};", "End."}) {
        EXPECT_TRUE(AutoIndent::beginsClosing(line, language)) << line;
    }
    for (const char* line : {"", "ending", "x end", "en"}) {
        EXPECT_FALSE(AutoIndent::beginsClosing(line, language)) << line;
    }
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

TEST_F(IndentingByLanguage, ALineBehindAnOpeningMarkIsIndented) {
    put(u"if x {|"_qs);
    enter();
    EXPECT_EQ(shown(), u"if x {\n  |"_qs);
    type(u"y"_qs);
    enter();
    EXPECT_EQ(shown(), u"if x {\n  y\n  |"_qs);
    put(u"\tif x then|"_qs);
    enter();
    EXPECT_EQ(shown(), u"\tif x then\n\t\t|"_qs);
}

TEST_F(IndentingByLanguage, WhatCommentsAndStringsEndInOpensNothing) {
    put(u"x { // why|"_qs);
    enter();
    EXPECT_EQ(shown(), u"x { // why\n  |"_qs);
    for (const char* line : {"x // {", "/* {", "\"{", "x"}) {
        put(QString::fromLatin1(line) + u'|');
        enter();
        EXPECT_EQ(shown(), QString::fromLatin1(line) + u"\n|"_qs) << line;
    }
}

TEST_F(IndentingByLanguage, AClosingBracketGoesUnderTheLineOfItsPartner) {
    put(u"a {\n  b(\n      |"_qs);
    type(u")"_qs);
    EXPECT_EQ(shown(), u"a {\n  b(\n  )|"_qs);
    enter();
    type(u"}"_qs);
    EXPECT_EQ(shown(), u"a {\n  b(\n  )\n}|"_qs);
}

TEST_F(IndentingByLanguage, AClosingWordGoesBackALevelOnceItIsComplete) {
    put(u"  if x then\n    y\n    |"_qs);
    type(u"end"_qs);
    EXPECT_EQ(shown(), u"  if x then\n    y\n    end|"_qs);
    type(u" "_qs);
    EXPECT_EQ(shown(), u"  if x then\n    y\n  end |"_qs);
    put(u"if x:\n  y\n  |"_qs);
    type(u"else:"_qs);
    EXPECT_EQ(shown(), u"if x:\n  y\nelse:|"_qs);
    put(u"if x then\n  y\n  end|"_qs);
    enter();
    EXPECT_EQ(shown(), u"if x then\n  y\nend\n|"_qs);
    put(u"if x then\n  y\n  end|"_qs);
    type(u"ing "_qs);
    EXPECT_EQ(shown(), u"if x then\n  y\n  ending |"_qs);
}

TEST_F(IndentingByLanguage, RightBehindTheLineThatOpensALevelAWordGoesUnderIt) {
    put(u"  if x then\n\n    |"_qs);
    type(u"end "_qs);
    EXPECT_EQ(shown(), u"  if x then\n\n  end |"_qs);
}

TEST_F(IndentingByLanguage, NothingIsEverMovedOnward) {
    put(u"  a {\n|"_qs);
    type(u"}"_qs);
    EXPECT_EQ(shown(), u"  a {\n}|"_qs);
    put(u"}\n  |"_qs);
    type(u"}"_qs);
    EXPECT_EQ(shown(), u"}\n  }|"_qs) << "it has no partner";
}

TEST_F(IndentingByLanguage, ClosingMarksInCommentsStayWhereTheyAre) {
    put(u"a {\n  /*\n  |"_qs);
    type(u"}"_qs);
    EXPECT_EQ(shown(), u"a {\n  /*\n  }|"_qs);
}

TEST_F(IndentingByLanguage, ALineEndInFrontOfAClosingBracketTakesItBack) {
    put(u"  a {|}"_qs);
    enter();
    EXPECT_EQ(shown(), u"  a {\n  |}"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"  a {}"_qs);
}

TEST_F(IndentingByLanguage, TakingBackAClosingGivesItsFrontBack) {
    put(u"a {\n    |"_qs);
    type(u"}"_qs);
    ASSERT_EQ(shown(), u"a {\n}|"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"a {\n    }"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"a {\n    "_qs);
}

TEST_F(IndentingByLanguage, IsLeftAloneWhereItIsSwitchedOffOrCanNotBe) {
    control.typing().setAutoIndent(false);
    put(u"a {|"_qs);
    enter();
    EXPECT_EQ(shown(), u"a {\n|"_qs);
    put(u"a {\n  |"_qs);
    type(u"}"_qs);
    EXPECT_EQ(shown(), u"a {\n  }|"_qs);
    control.typing().setAutoIndent(true);
    control.look().setLanguage(nullptr);
    put(u"  a {|"_qs);
    enter();
    EXPECT_EQ(shown(), u"  a {\n  |"_qs);
    control.look().setLanguage(&language);
    put(u"a {|"_qs);
    control.setLocked(true);
    enter();
    EXPECT_EQ(shown(), u"a {|"_qs);
}

TEST_F(IndentingByLanguage, TabAndIndentGoByTheLanguage) {
    put(u"|a"_qs);
    QTest::keyClick(&control, Qt::Key_Tab);
    EXPECT_EQ(control.Text(), u"  a"_qs);
    control.ExecuteCmd(163);
    EXPECT_EQ(control.Text(), u"    a"_qs);
    control.ExecuteCmd(127);
    EXPECT_EQ(control.Text(), u"  a"_qs);
    language.indentsWithTabs = true;
    put(u"|a"_qs);
    control.look().setLanguage(nullptr);
    control.look().setLanguage(&language);
    QTest::keyClick(&control, Qt::Key_Tab);
    EXPECT_EQ(control.Text(), u"\ta"_qs);
    control.typing().setBlanksForTabs(true);
    put(u"|a"_qs);
    QTest::keyClick(&control, Qt::Key_Tab);
    EXPECT_EQ(control.Text(), u"  a"_qs);
    control.typing().setBlanksForTabs(false);
    put(u"a\n    b|"_qs);
    control.look().setLanguage(nullptr);
    control.look().setLanguage(&language);
    QTest::keyClick(&control, Qt::Key_Home);
    QTest::keyClick(&control, Qt::Key_Tab);
    EXPECT_FALSE(control.Text().contains(u'\t')) << "the text shows that it has blanks";
}
