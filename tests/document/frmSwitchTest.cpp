#include "document/frmSwitch.h"

#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

QRadioButton& option(const frmSwitch& form, int index) {
    return *form.findChild<QRadioButton*>(u"Option1(%1)"_qs.arg(index));
}

QPushButton& button(const frmSwitch& form, const char* name) {
    return *form.findChild<QPushButton*>(QLatin1String(name));
}

}  // namespace

TEST(frmSwitch, SaysWhereTheSwitchLeads) {
    const frmSwitch toHex(false);
    EXPECT_EQ(option(toHex, 0).text(), u"Save the file before switching to hex mode."_qs);
    EXPECT_EQ(option(toHex, 1).text(), u"Discard the changes and switch to hex mode."_qs);
    const frmSwitch toText(true);
    EXPECT_EQ(option(toText, 0).text(), u"Save the file before switching to text mode."_qs);
    EXPECT_EQ(option(toText, 1).text(), u"Discard the changes and switch to text mode."_qs);
}

TEST(frmSwitch, ComesUpModalWithSavingSelectedAndNothingDecided) {
    frmSwitch form(false);
    form.show();
    form.activateWindow();
    QCoreApplication::processEvents();
    EXPECT_EQ(form.objectName(), u"frmSwitch"_qs);
    EXPECT_TRUE(form.isModal());
    EXPECT_TRUE(option(form, 0).isChecked());
    EXPECT_TRUE(option(form, 0).hasFocus());
    EXPECT_TRUE(form.savesFirst());
    EXPECT_FALSE(form.property("Result").toBool());
}

TEST(frmSwitch, TheButtonsDecideAndHideIt) {
    frmSwitch form(true);
    form.show();
    button(form, "cmdSwitch").click();
    EXPECT_TRUE(form.Result);
    EXPECT_TRUE(form.isHidden());
    form.show();
    button(form, "cmdCancel").click();
    EXPECT_FALSE(form.Result);
    EXPECT_TRUE(form.isHidden());
}

TEST(frmSwitch, ItIsAnsweredByTheKeyboardAlone) {
    frmSwitch form(true);
    form.show();
    form.activateWindow();
    QCoreApplication::processEvents();
    QTest::keyClick(form.focusWidget(), Qt::Key_Down);
    EXPECT_TRUE(option(form, 1).isChecked());
    EXPECT_FALSE(form.savesFirst());
    QTest::keyClick(form.focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(form.Result);
    EXPECT_TRUE(form.isHidden());
    form.show();
    QTest::keyClick(form.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(form.Result);
    EXPECT_TRUE(form.isHidden());
}

TEST(frmSwitch, ClosingItsWindowCancels) {
    frmSwitch form(true);
    form.show();
    button(form, "cmdSwitch").click();
    form.show();
    form.close();
    EXPECT_FALSE(form.Result);
}
