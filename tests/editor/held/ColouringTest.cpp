#include "editor/Editor.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "editor/held/Colouring.h"
#include "editor/held/LongLines.h"
#include "editor/held/ScintillaColour.h"
#include "editor/language/TokenTheme.h"
#include "settings/registry/MemoryRegistry.h"
#include "widgets/Contrast.h"

#include <QApplication>
#include <QFile>
#include <QPalette>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// Near enough to C, by the library's lexer.
LanguageDefinition lexed() {
    LanguageDefinition language;
    language.lexer = "cpp";
    language.keywords[0] = "if return";
    language.keywords[1] = "int";
    language.properties = {{"lexer.cpp.backquoted.strings", "1"}};
    language.brackets = "(){}";
    for (const int style : {1, 2})
        language.classOfStyle[style] = TokenClass::Comment;
    for (const int style : {6, 7, 20})
        language.classOfStyle[style] = TokenClass::String;
    language.classOfStyle[4] = TokenClass::Number;
    language.classOfStyle[5] = TokenClass::Keyword;
    language.classOfStyle[10] = TokenClass::Operator;
    language.classOfStyle[12] = TokenClass::Error;
    language.classOfStyle[16] = TokenClass::Type;
    return language;
}

/// By the language's own rules.
LanguageDefinition ruled() {
    LanguageDefinition language;
    language.rules.strings = {{{"\"", "\""}, '\\', false}};
    language.rules.operators = "()=";
    language.lineComments = {"#"};
    language.blockComments = {{"<<", ">>"}};
    language.keywords[0] = "if return";
    for (int style = 0; style < TokenClasses::Count; ++style)
        language.classOfStyle[style] = static_cast<TokenClass>(style);
    return language;
}

class TextColouring : public testing::Test {
 protected:
    TextColouring() {
        control.resize(600, 400);
        control.show();
    }

    long ask(unsigned message, unsigned long first = 0) const { return control.SendScintilla(message, first, 0L); }
    std::optional<TokenClass> classOf(const QByteArray& piece) {
        const auto byte = control.Text().toUtf8().indexOf(piece);
        EXPECT_GE(byte, 0) << piece.constData();
        control.colouring().completeTo(byte + piece.size());
        return control.colouring().classAt(byte);
    }
    QColor inkOf(const QByteArray& piece) {
        const auto byte = control.Text().toUtf8().indexOf(piece);
        control.colouring().completeTo(byte + piece.size());
        return ink(static_cast<int>(ask(TextControl::SCI_GETSTYLEAT, byte)));
    }
    QColor ink(int style) const {
        const long number = ask(TextControl::SCI_STYLEGETFORE, style);
        return {static_cast<int>(number & 0xFF), static_cast<int>(number >> 8 & 0xFF),
                static_cast<int>(number >> 16 & 0xFF)};
    }
    QString fileOf(const QByteArray& bytes) const {
        QFile file(folder.filePath(u"a"_qs));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        return file.fileName();
    }

    LanguageDefinition byLexer = lexed();
    LanguageDefinition byRules = ruled();
    MemoryRegistry registry;
    TokenTheme theme{registry};
    QTemporaryDir folder;
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
};

}  // namespace

TEST_F(TextColouring, WithoutALanguageNothingHasAClass) {
    control.setText(u"if (1) // x"_qs);
    EXPECT_EQ(classOf("if"), std::nullopt);
    EXPECT_EQ(ask(TextControl::SCI_GETLEXER), TextControl::SCLEX_NULL);
}

TEST_F(TextColouring, ALexerIsGivenWordsAndOptions) {
    control.look().setLanguage(&byLexer);
    control.setText(u"if (int x = 12) return `raw`; // note"_qs);
    EXPECT_EQ(classOf("if"), TokenClass::Keyword);
    EXPECT_EQ(classOf("int"), TokenClass::Type);
    EXPECT_EQ(classOf("x"), TokenClass::Text);
    EXPECT_EQ(classOf("12"), TokenClass::Number);
    EXPECT_EQ(classOf("return"), TokenClass::Keyword);
    EXPECT_EQ(classOf("`raw"), TokenClass::String);
    EXPECT_EQ(classOf("//"), TokenClass::Comment);
}

TEST_F(TextColouring, RulesCutTheTextWithoutALexer) {
    control.look().setLanguage(&byRules);
    control.setText(u"if x = \"y\\\"z\" # note\n<< long\nmore >> return"_qs);
    EXPECT_EQ(classOf("if"), TokenClass::Keyword);
    EXPECT_EQ(classOf("x"), TokenClass::Text);
    EXPECT_EQ(classOf("z\""), TokenClass::String);
    EXPECT_EQ(classOf("# note"), TokenClass::Comment);
    EXPECT_EQ(classOf("more"), TokenClass::Comment);
    EXPECT_EQ(classOf("return"), TokenClass::Keyword);
}

TEST_F(TextColouring, WhatALineLeavesOpenIsFollowedThroughEdits) {
    control.look().setLanguage(&byRules);
    control.setText(u"a\nif\n>> if"_qs);
    EXPECT_EQ(classOf("if"), TokenClass::Keyword);
    control.setSelection(0, 0);
    control.typing().type(u"<<"_qs);
    EXPECT_EQ(classOf("if"), TokenClass::Comment);
    control.Undo();
    EXPECT_EQ(classOf("if"), TokenClass::Keyword);
}

TEST_F(TextColouring, AnotherLanguageCutsTheTextAnew) {
    control.setText(u"# note\nif x"_qs);
    control.look().setLanguage(&byRules);
    EXPECT_EQ(classOf("# note"), TokenClass::Comment);
    control.look().setLanguage(&byLexer);
    EXPECT_NE(classOf("# note"), TokenClass::Comment);
    EXPECT_EQ(classOf("if"), TokenClass::Keyword);
    control.look().setLanguage(nullptr);
    EXPECT_EQ(classOf("if"), std::nullopt);
    EXPECT_EQ(inkOf("if"), inkOf("x"));
}

TEST_F(TextColouring, TheLanguageStaysThroughALoad) {
    for (const LanguageDefinition* language : {&byLexer, &byRules}) {
        control.look().setLanguage(language);
        ASSERT_FALSE(control.file().OpenFile(fileOf("if x\n")));
        EXPECT_EQ(classOf("if"), TokenClass::Keyword);
    }
}

TEST_F(TextColouring, OnlyWhatIsShownIsCut) {
    control.look().setLanguage(&byRules);
    ASSERT_FALSE(control.file().OpenFile(fileOf(QByteArray("if x = 1\n").repeated(500'000))));
    control.grab();
    const long cut = ask(TextControl::SCI_GETENDSTYLED);
    EXPECT_GT(cut, 0);
    EXPECT_LT(cut, control.heldText().length() / 2);
    EXPECT_EQ(control.colouring().classAt(cut), std::nullopt);
}

TEST_F(TextColouring, OddBytesAndNulsDoNoHarm) {
    for (const LanguageDefinition* language : {&byLexer, &byRules}) {
        control.look().setLanguage(language);
        ASSERT_FALSE(control.file().OpenFile(fileOf(QByteArray("if \0\xC3\xA4 \"\xE2\x82\xAC\n\0\n", 13))));
        EXPECT_EQ(classOf("if"), TokenClass::Keyword);
        control.colouring().completeTo(control.heldText().length());
        control.grab();
    }
}

TEST_F(TextColouring, EveryClassCanBeReadOnEveryGround) {
    control.look().setLanguage(&byRules);
    for (const char* ground :
         {"#ffffff", "#1e1e1e", "#000000", "#808080", "#fdf6e3", "#ffff00", "#0000ff", "#767676"}) {
        const QColor base(QString::fromLatin1(ground));
        control.look().setElementColour(ControlLook::BackgroundElement, base);
        for (int style = 0; style < TokenClasses::Count; ++style) {
            EXPECT_GE(Contrast::between(ink(style), base), 4.5) << ground << ' ' << style;
        }
    }
}

TEST_F(TextColouring, TheThemeFollowsThePalette) {
    control.look().setLanguage(&byRules);
    QPalette dark = control.palette();
    dark.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
    dark.setColor(QPalette::Text, QColor(0xE0, 0xE0, 0xE0));
    const auto keyword = static_cast<int>(TokenClass::Keyword);
    QPalette light = dark;
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Text, Qt::black);
    control.setPalette(light);
    EXPECT_EQ(ink(keyword), TokenClasses::colourOn(Qt::white, TokenClass::Keyword));
    control.setPalette(dark);
    EXPECT_EQ(ink(keyword), TokenClasses::colourOn(QColor(0x1E, 0x1E, 0x1E), TokenClass::Keyword));
    EXPECT_EQ(ink(TextControl::STYLE_DEFAULT), QColor(0xE0, 0xE0, 0xE0));
}

TEST_F(TextColouring, OnesOwnLooksReachAllControlsAtOnce) {
    const std::unique_ptr<TextControl> otherOwner{makeEditor()};
    TextControl& other = *otherOwner;
    for (TextControl* one : {&control, &other}) {
        one->look().setElementColour(ControlLook::BackgroundElement, Qt::white);
        one->look().setTheme(&theme);
        one->look().setLanguage(&byRules);
    }
    TokenLooks looks;
    looks.setOwnColour(TokenLooks::Light, TokenClass::Keyword, QColor(120, 0, 60));
    looks.setItalic(TokenClass::Keyword, true);
    EXPECT_TRUE(theme.setLooks(looks));
    const auto keyword = static_cast<unsigned long>(TokenClass::Keyword);
    for (TextControl* one : {&control, &other}) {
        EXPECT_EQ(one->SendScintilla(TextControl::SCI_STYLEGETFORE, keyword),
                  ScintillaColour::number(QColor(120, 0, 60)));
        EXPECT_EQ(one->SendScintilla(TextControl::SCI_STYLEGETITALIC, keyword), 1);
    }
    control.look().setTheme(nullptr);
    EXPECT_EQ(ink(static_cast<int>(keyword)), TokenClasses::colourOn(Qt::white, TokenClass::Keyword));
}

TEST_F(TextColouring, OnesOwnTextColourIsThatOfAllPlainText) {
    control.look().setTheme(&theme);
    control.look().setElementColour(ControlLook::BackgroundElement, Qt::white);
    TokenLooks looks;
    looks.setOwnColour(TokenLooks::Light, TokenClass::Text, QColor(80, 40, 0));
    theme.setLooks(looks);
    EXPECT_EQ(ink(TextControl::STYLE_DEFAULT), QColor(80, 40, 0));
    control.look().setElementColour(ControlLook::BackgroundElement, Qt::black);
    EXPECT_NE(ink(TextControl::STYLE_DEFAULT), QColor(80, 40, 0));
}

TEST_F(TextColouring, LinesHeldInPiecesAreColouredWithoutErrors) {
    control.look().setLanguage(&byLexer);
    const int error = 12;
    EXPECT_NE(ink(error), ink(TextControl::STYLE_DEFAULT));
    ASSERT_FALSE(control.file().OpenFile(fileOf("if \"" + QByteArray(400'000, 'x') + "\"\nreturn 1\n")));
    ASSERT_FALSE(control.map().joints().empty());
    EXPECT_EQ(classOf("if"), TokenClass::Keyword);
    EXPECT_EQ(ink(error), ink(TextControl::STYLE_DEFAULT));
    EXPECT_EQ(control.file().limitations(), u"Long lines are shown in pieces, coloured piece by piece"_qs);
    ASSERT_FALSE(control.file().OpenFile(fileOf("if\n")));
    EXPECT_NE(ink(error), ink(TextControl::STYLE_DEFAULT));
    EXPECT_EQ(control.file().limitations(), QString());
}

TEST_F(TextColouring, ALineThatGrowsTooLongChangesTheErrorsTheSameWay) {
    control.look().setLanguage(&byLexer);
    control.setText(u"if"_qs);
    control.AddText(QString(400'000, u'x'));
    ASSERT_FALSE(control.map().joints().empty());
    EXPECT_EQ(ink(12), ink(TextControl::STYLE_DEFAULT));
    control.Undo();
    ASSERT_TRUE(control.map().joints().empty());
    EXPECT_NE(ink(12), ink(TextControl::STYLE_DEFAULT));
}
