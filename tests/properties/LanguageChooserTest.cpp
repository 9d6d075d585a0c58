#include "properties/LanguageChooser.h"
#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/modRegistry.h"
#include "support/Mnemonics.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

QString stored(MemoryRegistry& registry) {
    return GetRegString(registry, HKEY_CURRENT_USER, u"Software/Flioplo/General"_qs, u"Language"_qs);
}

/// Presses a key in the chooser while it is shown.
void press(MemoryRegistry& registry, Qt::Key key) {
    bool shown = false;
    QTimer::singleShot(0, qApp, [&] {
        auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(form, nullptr);
        shown = true;
        QTest::keyClick(form->focusWidget() != nullptr ? form->focusWidget() : form, key);
        if (form->isVisible()) {
            ADD_FAILURE() << "the key did not close the form";
            form->reject();
        }
    });
    LanguageChooser::choose(registry, nullptr);
    EXPECT_TRUE(shown);
}

}  // namespace

TEST(LanguageChooserTest, BeginsWithTheStoredLanguageOrTheFirst) {
    EXPECT_EQ(LanguageChooser(u"english"_qs).chosen(), u"English"_qs);
    EXPECT_EQ(LanguageChooser(u"Klingon"_qs).chosen(), u"English"_qs);
    EXPECT_EQ(LanguageChooser(QString()).chosen(), u"English"_qs);
}

TEST(LanguageChooserTest, EnterStoresTheChoice) {
    MemoryRegistry registry;
    press(registry, Qt::Key_Return);
    EXPECT_EQ(stored(registry), u"English"_qs);
}

TEST(LanguageChooserTest, EscapeStoresNothing) {
    MemoryRegistry registry;
    press(registry, Qt::Key_Escape);
    EXPECT_EQ(stored(registry), QString());
    SetRegString(registry, HKEY_CURRENT_USER, u"Software/Flioplo/General"_qs, u"Language"_qs, u"Klingon"_qs);
    press(registry, Qt::Key_Escape);
    EXPECT_EQ(stored(registry), u"Klingon"_qs);
}

TEST(LanguageChooserTest, ItsListIsNamedAndReachedByItsMnemonic) {
    const LanguageChooser form{QString()};
    EXPECT_EQ(doubledMnemonics(form), QStringList());
    const auto* caption = form.findChild<QLabel*>();
    EXPECT_EQ(caption->buddy(), form.findChild<QListWidget*>(u"lstLanguages"_qs));
}
