#include "editor/Editor.h"
#include "editor/control/ControlLook.h"
#include "editor/control/TextControl.h"
#include "editor/language/TokenTheme.h"
#include "editor/windows/ControlProperties.h"
#include "editor/windows/TokenColourPage.h"
#include "settings/registry/MemoryRegistry.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

class TheTokenColourPage : public testing::Test {
 protected:
    template <typename Widget>
    Widget* part(const char* name) {
        return page.findChild<Widget*>(QString::fromLatin1(name));
    }
    QListWidget& list() { return *part<QListWidget>("lstClasses"); }
    void choose(TokenClass token) { list().setCurrentRow(static_cast<int>(token)); }
    void pick(const QColor& colour) {
        part<QPushButton>("cmdTokenColor")->click();
        auto* dialog = page.findChild<QColorDialog*>();
        ASSERT_NE(dialog, nullptr);
        dialog->setCurrentColor(colour);
        dialog->accept();
        QCoreApplication::sendPostedEvents(dialog, QEvent::DeferredDelete);
    }

    MemoryRegistry registry;
    TokenTheme theme{registry};
    TokenColourPage page{theme, Qt::white};
};

}  // namespace

TEST_F(TheTokenColourPage, ShowsEveryClassInItsLook) {
    ASSERT_EQ(list().count(), TokenClasses::Count);
    for (const TokenClasses::Row& row : TokenClasses::table()) {
        const QListWidgetItem* item = list().item(static_cast<int>(row.token));
        EXPECT_EQ(item->foreground().color(), QColor::fromRgb(row.onLight)) << row.name;
        EXPECT_EQ(item->font().bold(), row.bold) << row.name;
        EXPECT_EQ(item->font().italic(), row.italic) << row.name;
        EXPECT_FALSE(item->data(Qt::AccessibleTextRole).toString().isEmpty()) << row.name;
    }
    EXPECT_EQ(list().palette().color(QPalette::Base), QColor(Qt::white));
}

TEST_F(TheTokenColourPage, AChosenColourActsWhenApplied) {
    choose(TokenClass::String);
    EXPECT_FALSE(part<QPushButton>("cmdTokenDefault")->isEnabled());
    pick(QColor(0, 90, 0));
    EXPECT_EQ(list().item(static_cast<int>(TokenClass::String))->foreground().color(), QColor(0, 90, 0));
    EXPECT_EQ(part<QPushButton>("cmdTokenColor")->text(), u"Colo&r: #005A00"_qs);
    EXPECT_EQ(theme.looks(), TokenLooks());
    page.apply();
    EXPECT_EQ(theme.looks().ownColour(TokenLooks::Light, TokenClass::String), QColor(0, 90, 0));
    EXPECT_FALSE(theme.looks().ownColour(TokenLooks::Dark, TokenClass::String).isValid());
    part<QPushButton>("cmdTokenDefault")->click();
    page.apply();
    EXPECT_EQ(theme.looks(), TokenLooks());
}

TEST_F(TheTokenColourPage, BoldAndItalicAreOfTheChosenClass) {
    choose(TokenClass::Keyword);
    EXPECT_TRUE(part<QCheckBox>("chkTokenBold")->isChecked());
    part<QCheckBox>("chkTokenBold")->click();
    part<QCheckBox>("chkTokenItalic")->click();
    choose(TokenClass::Text);
    EXPECT_FALSE(part<QCheckBox>("chkTokenItalic")->isChecked());
    page.apply();
    EXPECT_FALSE(theme.looks().bold(TokenClass::Keyword));
    EXPECT_TRUE(theme.looks().italic(TokenClass::Keyword));
    EXPECT_FALSE(theme.looks().italic(TokenClass::Text));
}

TEST_F(TheTokenColourPage, AColourThatCouldNotBeReadIsToldToBeShownOtherwise) {
    choose(TokenClass::Comment);
    EXPECT_EQ(part<QLabel>("lblTokenNote")->text(), QString());
    pick(QColor(255, 255, 180));
    EXPECT_TRUE(part<QLabel>("lblTokenNote")->text().startsWith(u"Shown as #"_qs));
    choose(TokenClass::Number);
    EXPECT_EQ(part<QLabel>("lblTokenNote")->text(), QString());
}

TEST_F(TheTokenColourPage, AllGoBackToTheThemeAtOnce) {
    choose(TokenClass::Number);
    pick(Qt::black);
    choose(TokenClass::Type);
    part<QCheckBox>("chkTokenItalic")->click();
    part<QPushButton>("cmdTokenDefaultAll")->click();
    EXPECT_FALSE(part<QCheckBox>("chkTokenItalic")->isChecked());
    page.apply();
    EXPECT_EQ(theme.looks(), TokenLooks());
}

TEST_F(TheTokenColourPage, ThePropertiesDialogHasItForAControlWithATheme) {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    {
        const ControlProperties plain(control);
        EXPECT_EQ(plain.findChild<TokenColourPage*>(), nullptr);
    }
    control.look().setTheme(&theme);
    ControlProperties dialog(control);
    auto* tokens = dialog.findChild<TokenColourPage*>();
    ASSERT_NE(tokens, nullptr);
    EXPECT_GE(dialog.findChild<QTabWidget*>(u"tabPages"_qs)->indexOf(tokens), 0);
    tokens->findChild<QListWidget*>()->setCurrentRow(static_cast<int>(TokenClass::Error));
    tokens->findChild<QCheckBox*>(u"chkTokenBold"_qs)->click();
    EXPECT_EQ(theme.looks(), TokenLooks());
    dialog.accept();
    EXPECT_TRUE(theme.looks().bold(TokenClass::Error));
}
