#include "editor/control/CommandNumbers.h"
#include "keys/HotKeys.h"
#include "keys/MacroStore.h"
#include "properties/frmMacro.h"
#include "properties/ucMarco.h"
#include "settings/Settings.h"
#include "settings/registry/MemoryRegistry.h"
#include "support/Mnemonics.h"
#include "support/ScriptedPrompts.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace {

class MacroPanel : public testing::Test {
 protected:
    void bind(int n, char16_t letter) {
        hotKeys.bind(Command::MacroBase + n, {{HotKeyStroke::Ctrl, QString(QChar(letter))}, {}});
    }
    void set(const char* key, const char* value) { settings.write(QString::fromLatin1(key), QString::fromUtf8(value)); }
    QString stored(const char* key) { return settings.PropertyValue(QString::fromLatin1(key), u"none"_qs, false); }
    ucMarco& open() {
        form = std::make_unique<frmMacro>(MacroPanelServices{prompts, settings, hotKeys, macros});
        form->show();
        menu = std::make_unique<QSignalSpy>(&form->panel(), &ucMarco::UpdateMacroMenu);
        changed = std::make_unique<QSignalSpy>(&form->panel(), &ucMarco::Changed);
        return form->panel();
    }
    template <typename Widget>
    Widget& part(const char* name) {
        return *form->findChild<Widget*>(QString::fromLatin1(name));
    }
    QTreeWidget& list() { return part<QTreeWidget>("ListView1"); }
    QString field(const char* name) { return part<QLineEdit>(name).text(); }
    bool displayed() { return part<QCheckBox>("chkDisplay").isChecked(); }
    void click(const char* name) { part<QPushButton>(name).click(); }
    QString row(int at) {
        const QTreeWidgetItem* item = list().topLevelItem(at);
        return QStringList({item->data(0, Qt::UserRole).toString(), item->text(0), item->text(1),
                            item->checkState(0) == Qt::Checked ? u"1"_qs : u"0"_qs})
            .join(u'|');
    }
    void threeMacros() {
        bind(2, u'B');
        bind(5, u'E');
        bind(10, u'J');
        set("2Desc", "Second");
        set("2Display", "1");
        set("10Desc", "Tenth & last");
    }

    QTemporaryDir home;
    MemoryRegistry registry;
    Settings settings{registry};
    HotKeys hotKeys;
    MacroStore macros{registry, hotKeys, home.path()};
    ScriptedPrompts prompts;
    std::unique_ptr<frmMacro> form;
    std::unique_ptr<QSignalSpy> menu;
    std::unique_ptr<QSignalSpy> changed;
};

}  // namespace

TEST_F(MacroPanel, HasItsNamesAndCaptions) {
    open();
    EXPECT_EQ(form->windowTitle(), u"Organize Marco"_qs);
    EXPECT_EQ(form->panel().objectName(), u"ucMarco1"_qs);
    EXPECT_EQ(form->findChild<QGroupBox*>()->title(), u" Available Marco(s) "_qs);
    EXPECT_EQ(part<QCheckBox>("chkDisplay").text().remove(u'&'), u"Display in Marco Menu"_qs);
    EXPECT_EQ(list().columnCount(), 2);
    EXPECT_TRUE(part<QLineEdit>("txtKey").isReadOnly());
    EXPECT_TRUE(part<QLineEdit>("txtID").isHidden());
    for (const char* name : {"cmdDelete", "cmdReset", "cmdHelp", "cmdClose"}) {
        EXPECT_NE(form->findChild<QPushButton*>(QString::fromLatin1(name)), nullptr) << name;
    }
}

TEST_F(MacroPanel, ListsTheSlotsThatHaveAHotKey) {
    threeMacros();
    open();
    ASSERT_EQ(list().topLevelItemCount(), 3);
    EXPECT_EQ(row(0), u"2|Second|Ctrl + B|1"_qs);
    EXPECT_EQ(row(1), u"5||Ctrl + E|0"_qs);
    EXPECT_EQ(row(2), u"10|Tenth & last|Ctrl + J|0"_qs);
    EXPECT_EQ(list().currentItem(), list().topLevelItem(0));
}

TEST_F(MacroPanel, ShowsTheChosenRow) {
    threeMacros();
    open();
    EXPECT_EQ(field("txtName"), u"Second"_qs);
    EXPECT_EQ(field("txtKey"), u"Ctrl + B"_qs);
    EXPECT_EQ(field("txtID"), u"2"_qs);
    EXPECT_TRUE(displayed());
    list().setCurrentItem(list().topLevelItem(1));
    EXPECT_EQ(field("txtName"), QString());
    EXPECT_EQ(field("txtKey"), u"Ctrl + E"_qs);
    EXPECT_EQ(field("txtID"), u"5"_qs);
    EXPECT_FALSE(displayed());
    EXPECT_TRUE(changed->isEmpty());
    EXPECT_EQ(stored("5Desc"), u"none"_qs);
}

TEST_F(MacroPanel, WithoutAMacroThereIsNothingToEdit) {
    open();
    for (QWidget* off :
         {static_cast<QWidget*>(&part<QLineEdit>("txtName")), static_cast<QWidget*>(&part<QCheckBox>("chkDisplay")),
          static_cast<QWidget*>(&part<QPushButton>("cmdDelete")), static_cast<QWidget*>(&list())}) {
        EXPECT_FALSE(off->isEnabled()) << off->objectName().toStdString();
    }
    EXPECT_TRUE(part<QPushButton>("cmdReset").isEnabled());
    EXPECT_TRUE(part<QPushButton>("cmdHelp").isEnabled());
    EXPECT_EQ(field("txtName"), QString());
    EXPECT_EQ(field("txtKey"), QString());
}

TEST_F(MacroPanel, ANameIsStoredLetterByLetter) {
    threeMacros();
    open();
    list().setCurrentItem(list().topLevelItem(1));
    QTest::keyClicks(&part<QLineEdit>("txtName"), u"Fi"_qs);
    EXPECT_EQ(row(1), u"5|Fi|Ctrl + E|0"_qs);
    EXPECT_EQ(stored("5Desc"), u"Fi"_qs);
    EXPECT_EQ(stored("5Display"), u"0"_qs);
    EXPECT_EQ(changed->size(), 2);
    EXPECT_EQ(menu->size(), 2);
    EXPECT_EQ(stored("2Desc"), u"Second"_qs);
}

TEST_F(MacroPanel, TheBoxPutsAMacroIntoTheMenu) {
    threeMacros();
    open();
    list().setCurrentItem(list().topLevelItem(2));
    part<QCheckBox>("chkDisplay").click();
    EXPECT_EQ(row(2), u"10|Tenth & last|Ctrl + J|1"_qs);
    EXPECT_EQ(stored("10Display"), u"1"_qs);
    EXPECT_EQ(stored("10Desc"), u"Tenth & last"_qs);
    EXPECT_EQ(changed->size(), 1);
    EXPECT_EQ(menu->size(), 1);
    part<QCheckBox>("chkDisplay").click();
    EXPECT_EQ(stored("10Display"), u"0"_qs);
}

TEST_F(MacroPanel, SoDoesTheBoxOfItsRow) {
    threeMacros();
    open();
    list().topLevelItem(1)->setCheckState(0, Qt::Checked);
    EXPECT_EQ(stored("5Display"), u"1"_qs);
    EXPECT_TRUE(displayed());
    list().topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(stored("2Display"), u"0"_qs);
    EXPECT_FALSE(displayed());
}

TEST_F(MacroPanel, DeletesTheChosenOneAfterAQuestion) {
    threeMacros();
    open();
    prompts.answerNo();
    click("cmdDelete");
    EXPECT_EQ(list().topLevelItemCount(), 3);
    EXPECT_EQ(hotKeys.HotKeyText(u"2"_qs), u"Ctrl + B"_qs);
    EXPECT_TRUE(menu->isEmpty());
    prompts.answerYes();
    click("cmdDelete");
    EXPECT_EQ(prompts.questions, QStringList({u"Delete macro Second"_qs, u"Delete macro Second"_qs}));
    EXPECT_EQ(hotKeys.HotKeyText(u"2"_qs), QString());
    EXPECT_EQ(stored("2Display"), u"0"_qs);
    EXPECT_EQ(stored("2Desc"), u"none"_qs);
    ASSERT_EQ(list().topLevelItemCount(), 2);
    EXPECT_EQ(field("txtID"), u"5"_qs);
    EXPECT_EQ(menu->size(), 1);
    EXPECT_TRUE(QDir(home.filePath(u"macros"_qs)).exists());
}

TEST_F(MacroPanel, OneWithoutANameIsAskedForWithoutIt) {
    bind(1, u'A');
    open();
    prompts.answerYes();
    click("cmdDelete");
    EXPECT_EQ(prompts.questions, QStringList(u"Delete macro "_qs));
    EXPECT_FALSE(list().isEnabled());
}

TEST_F(MacroPanel, ResetTakesAllAfterAQuestion) {
    threeMacros();
    open();
    prompts.answerNo();
    click("cmdReset");
    EXPECT_EQ(list().topLevelItemCount(), 3);
    prompts.answerYes();
    click("cmdReset");
    EXPECT_EQ(prompts.questions.last(),
              u"Reset all hot keys will delete all marcos, do you want to reset all hot keys ?"_qs);
    EXPECT_EQ(list().topLevelItemCount(), 0);
    EXPECT_EQ(stored("2Display"), u"0"_qs);
    EXPECT_EQ(stored("10Desc"), u"none"_qs);
    EXPECT_EQ(field("txtName"), QString());
    EXPECT_FALSE(part<QLineEdit>("txtName").isEnabled());
    EXPECT_EQ(menu->size(), 1);
}

TEST_F(MacroPanel, AsksForItsPageOfTheHelp) {
    const QSignalSpy wanted(&open(), &ucMarco::helpWanted);
    click("cmdHelp");
    ASSERT_EQ(wanted.size(), 1);
    EXPECT_EQ(wanted[0][0].toString(), u"macro.html"_qs);
}

TEST_F(MacroPanel, SavingItOnlyBringsTheMenuUpToDate) {
    threeMacros();
    ucMarco& panel = open();
    panel.SaveProp();
    EXPECT_EQ(menu->size(), 1);
    EXPECT_EQ(stored("5Desc"), u"none"_qs);
    EXPECT_FALSE(QDir(home.filePath(u"macros"_qs)).exists());
}

TEST_F(MacroPanel, ClosingTheFormSavesTheMacros) {
    threeMacros();
    open();
    click("cmdClose");
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(QDir(home.filePath(u"macros"_qs)).exists());
    HotKeys loaded;
    loaded.load(registry);
    EXPECT_EQ(loaded.HotKeyText(u"5"_qs), u"Ctrl + E"_qs);
}

TEST_F(MacroPanel, EscapeClosesTheFormAndSavesToo) {
    open();
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(QDir(home.filePath(u"macros"_qs)).exists());
}

TEST_F(MacroPanel, EachFieldIsReachedByTabAndHasANameToBeReadOut) {
    threeMacros();
    open();
    EXPECT_EQ(doubledMnemonics(*form), QStringList());
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    list().setFocus();
    QStringList reached;
    for (int i = 0; i < 8; ++i) {
        reached << QApplication::focusWidget()->objectName();
        const QAccessibleInterface* read = QAccessible::queryAccessibleInterface(QApplication::focusWidget());
        EXPECT_FALSE(read->text(QAccessible::Name).isEmpty()) << reached.last().toStdString();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(reached, QStringList({u"ListView1"_qs, u"txtName"_qs, u"txtKey"_qs, u"chkDisplay"_qs, u"cmdDelete"_qs,
                                    u"cmdReset"_qs, u"cmdHelp"_qs, u"cmdClose"_qs}));
}
