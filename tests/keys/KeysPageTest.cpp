#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/language/TokenTheme.h"
#include "editor/windows/ControlProperties.h"
#include "keys/KeyNames.h"
#include "keys/KeysPage.h"
#include "keys/MacroFixture.h"
#include "support/Mnemonics.h"

#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QTabWidget>
#include <QTreeWidget>

namespace {

using Sci = QsciScintillaBase;

class KeysOfTheControl : public MacroFixture {
 protected:
    void open() {
        control.ExecuteCmd(224);
        properties = control.findChild<ControlProperties*>();
        page = properties->findChild<KeysPage*>();
        ASSERT_NE(page, nullptr);
    }
    template <typename Widget>
    Widget& of(const char* name) {
        return *page->findChild<Widget*>(QString::fromLatin1(name));
    }
    QTreeWidgetItem* row(int number) {
        auto& list = of<QTreeWidget>("lvKeys");
        for (int i = 0; i < list.topLevelItemCount(); ++i) {
            if (list.topLevelItem(i)->data(0, Qt::UserRole).toInt() == number)
                return list.topLevelItem(i);
        }
        return nullptr;
    }
    void choose(int number) { of<QTreeWidget>("lvKeys").setCurrentItem(row(number)); }
    void strokes(Qt::Key key, Qt::KeyboardModifiers held = {}) {
        QTest::keyClick(&of<StrokeEdit>("txtNewKey"), key, held);
    }
    void click(const char* name) { of<QPushButton>(name).click(); }
    QString said() { return of<QLabel>("lblVerdict").text(); }
    void ok() { properties->accept(); }

    ControlProperties* properties = nullptr;
    KeysPage* page = nullptr;
};

}  // namespace

TEST_F(KeysOfTheControl, AreAPageOfItsProperties) {
    open();
    const auto* pages = properties->findChild<QTabWidget*>();
    EXPECT_EQ(pages->tabText(pages->indexOf(page)), u"&Keys"_qs);
    EXPECT_EQ(row(Sci::SCI_CUT)->text(0), u"Cut"_qs);
    EXPECT_EQ(row(Sci::SCI_CUT)->text(1), u"Shift + Delete; Ctrl + X"_qs);
    EXPECT_EQ(row(160)->text(0), u"Delete line"_qs);
    EXPECT_EQ(row(160)->text(1), QString());
}

TEST_F(KeysOfTheControl, EveryNumberedCommandIsThereAndOnlyUsedMacros) {
    hotKeys.bind(216, hotKey(HotKeyStroke::Ctrl, u'M'));
    Settings(registry).write(u"3Desc"_qs, u"My macro"_qs);
    open();
    for (const int number : {100, 106, 113, 125, 147, 158, 159, 160, 161, 135, 136, 137, 163, 127, 169,
                             178, 187, 204, 206, 205, 207, 208, 209, 213, 224, 253, 254, 257, 258, 267}) {
        EXPECT_NE(row(number), nullptr) << number;
    }
    EXPECT_EQ(row(216)->text(0), u"My macro"_qs);
    EXPECT_EQ(row(214), nullptr);
}

TEST_F(KeysOfTheControl, AKeyThatIsAddedCountsFromOkOnAndIsKept) {
    open();
    choose(160);
    EXPECT_FALSE(of<QPushButton>("cmdAddKey").isEnabled());
    strokes(Qt::Key_D, Qt::ControlModifier);
    EXPECT_TRUE(of<QPushButton>("cmdAddKey").isEnabled());
    click("cmdAddKey");
    EXPECT_EQ(row(160)->text(1), u"Ctrl + D"_qs);
    EXPECT_TRUE(hotKeys.hotKeysOf(160).isEmpty());
    ok();
    EXPECT_EQ(hotKeys.hotKeysOf(160), QList<HotKey>{hotKey(HotKeyStroke::Ctrl, u'D')});
    HotKeys loaded(GlobalObject::defaultHotKeys());
    loaded.load(registry);
    EXPECT_EQ(loaded, hotKeys);
    control.setText(u"abc"_qs);
    key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(control.Text(), QString());
}

TEST_F(KeysOfTheControl, CancelLeavesThemAsTheyWere) {
    open();
    choose(Sci::SCI_CUT);
    click("cmdRemoveKey");
    properties->reject();
    EXPECT_EQ(hotKeys, HotKeys(GlobalObject::defaultHotKeys()));
    RegistryValue value;
    EXPECT_NE(registry.readValue(HKEY_CURRENT_USER, u"Software/Quillmark/Languages"_qs, u"HotKeys"_qs, value),
              RegistryCode::Ok);
}

TEST_F(KeysOfTheControl, OkWithoutAChangeStoresNothing) {
    open();
    ok();
    RegistryValue value;
    EXPECT_NE(registry.readValue(HKEY_CURRENT_USER, u"Software/Quillmark/Languages"_qs, u"HotKeys"_qs, value),
              RegistryCode::Ok);
}

TEST_F(KeysOfTheControl, AConflictIsShownBeforeTheKeyIsTaken) {
    open();
    choose(160);
    strokes(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(said(), u"This hot key will be taken away from \"Cut\" (Ctrl + X)."_qs);
    EXPECT_EQ(row(Sci::SCI_CUT)->text(1), u"Shift + Delete; Ctrl + X"_qs);
    click("cmdAddKey");
    EXPECT_EQ(row(Sci::SCI_CUT)->text(1), u"Shift + Delete"_qs);
    EXPECT_EQ(said(), QString());
}

TEST_F(KeysOfTheControl, KeysThatAreTypedAreRefused) {
    open();
    choose(160);
    strokes(Qt::Key_D);
    EXPECT_FALSE(of<QPushButton>("cmdAddKey").isEnabled());
    EXPECT_TRUE(said().contains(u"typing"_qs));
    strokes(Qt::Key_Period, Qt::ControlModifier);
    EXPECT_FALSE(of<QPushButton>("cmdAddKey").isEnabled());
    EXPECT_TRUE(said().startsWith(u"A hot key is made of"_qs));
}

TEST_F(KeysOfTheControl, OneOfSeveralKeysCanBeRemoved) {
    open();
    choose(Sci::SCI_CUT);
    auto& present = of<QComboBox>("cmbPresent");
    ASSERT_EQ(present.count(), 2);
    present.setCurrentIndex(1);
    click("cmdRemoveKey");
    EXPECT_EQ(row(Sci::SCI_CUT)->text(1), u"Shift + Delete"_qs);
    click("cmdRemoveKey");
    EXPECT_EQ(row(Sci::SCI_CUT)->text(1), QString());
    EXPECT_FALSE(of<QPushButton>("cmdRemoveKey").isEnabled());
}

TEST_F(KeysOfTheControl, ResetGivesBackWhatACommandHadAtFirst) {
    open();
    choose(160);
    strokes(Qt::Key_X, Qt::ControlModifier);
    click("cmdAddKey");
    choose(Sci::SCI_CUT);
    click("cmdResetKey");
    EXPECT_EQ(row(Sci::SCI_CUT)->text(1), u"Shift + Delete; Ctrl + X"_qs);
    EXPECT_EQ(row(160)->text(1), QString());
}

TEST_F(KeysOfTheControl, ThatAMacroLosesItsOnlyKeyIsSaid) {
    const QString gone = u"OK will delete \"My macro\": no hot key is left."_qs;
    hotKeys.bind(214, hotKey(HotKeyStroke::Ctrl, u'M'));
    hotKeys.bind(214, hotKey(HotKeyStroke::Ctrl, u'X'));
    Settings(registry).write(u"1Desc"_qs, u"My macro"_qs);
    open();
    choose(214);
    click("cmdRemoveKey");
    EXPECT_EQ(said(), QString());
    click("cmdRemoveKey");
    EXPECT_EQ(row(214)->text(1), QString());
    EXPECT_EQ(said(), gone);
    strokes(Qt::Key_M, Qt::ControlModifier);
    click("cmdAddKey");
    EXPECT_EQ(said(), QString());
    choose(160);
    EXPECT_EQ(said(), QString());
    strokes(Qt::Key_M, Qt::ControlModifier);
    EXPECT_EQ(said(),
              u"This hot key will be taken away from \"My macro\" (Ctrl + M). No hot key is left to \"My macro\", "
              "which will be deleted."_qs);
    click("cmdAddKey");
    EXPECT_EQ(said(), gone);
}

TEST_F(KeysOfTheControl, ThatAResetTakesTheOnlyKeyOfAMacroIsSaid) {
    hotKeys.bind(214, hotKey(HotKeyStroke::Ctrl, u'X'));
    open();
    choose(Sci::SCI_CUT);
    click("cmdResetKey");
    EXPECT_EQ(said(), u"OK will delete \"Play macro 1\": no hot key is left."_qs);
}

TEST_F(KeysOfTheControl, ResetAllLeavesTheMacrosTheirs) {
    hotKeys.bind(214, hotKey(HotKeyStroke::Ctrl, u'M'));
    hotKeys.bind(160, hotKey(HotKeyStroke::Ctrl, u'D'));
    open();
    click("cmdResetAllKeys");
    ok();
    EXPECT_EQ(hotKeys.HotKeyText(u"1"_qs), u"Ctrl + M"_qs);
    EXPECT_TRUE(hotKeys.hotKeysOf(160).isEmpty());
}

TEST_F(KeysOfTheControl, TheFilterShowsCommandsAndKeysThatHaveItsText) {
    open();
    of<QLineEdit>("txtFilter").setText(u"ctrl + x"_qs);
    EXPECT_FALSE(row(Sci::SCI_CUT)->isHidden());
    EXPECT_TRUE(row(160)->isHidden());
    of<QLineEdit>("txtFilter").setText(u"delete LINE"_qs);
    EXPECT_FALSE(row(160)->isHidden());
    EXPECT_TRUE(row(Sci::SCI_CUT)->isHidden());
}

TEST_F(KeysOfTheControl, NoLetterStandsForTwoThingsInTheProperties) {
    TokenTheme theme(registry);
    control.look().setTheme(&theme);
    open();
    ASSERT_EQ(properties->findChild<QTabWidget*>()->count(), 6);
    EXPECT_EQ(doubledMnemonics(*properties), QStringList());
    delete properties;
    control.look().setTheme(nullptr);
}

TEST_F(KeysOfTheControl, EachFieldHasANameToBeReadOut) {
    open();
    for (const char* name : {"txtFilter", "cmbPresent", "txtNewKey"}) {
        auto* field = page->findChild<QWidget*>(QString::fromLatin1(name));
        const QAccessibleInterface* read = QAccessible::queryAccessibleInterface(field);
        EXPECT_FALSE(read->text(QAccessible::Name).isEmpty()) << name;
    }
    EXPECT_FALSE(of<QTreeWidget>("lvKeys").accessibleName().isEmpty());
}
