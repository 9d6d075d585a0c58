#include "widgets/ClickLabel.h"

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QPixmap>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

struct AClickLabel : testing::Test {
    QWidget window;
    ClickLabel* label = new ClickLabel(u"Mode"_qs, &window);
    QSignalSpy clicked{label, &ClickLabel::clicked};

    AClickLabel() {
        label->resize(80, 30);
        window.show();
        window.activateWindow();
        QApplication::processEvents();
    }
};

}  // namespace

TEST_F(AClickLabel, ReportsClicksOfTheLeftButton) {
    QTest::mouseClick(label, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
    QTest::mouseClick(label, Qt::RightButton);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(AClickLabel, IsClickedByTheKeyboardWhereItCanHaveTheFocus) {
    EXPECT_EQ(label->focusPolicy(), Qt::NoFocus);
    label->setFocusPolicy(Qt::TabFocus);
    label->setFocus();
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Select})
        QTest::keyClick(label, key);
    EXPECT_EQ(clicked.count(), 4);
    QTest::keyClick(label, Qt::Key_A);
    EXPECT_EQ(clicked.count(), 4);
}

TEST_F(AClickLabel, ShowsThatItHasTheKeyboard) {
    label->setFocusPolicy(Qt::TabFocus);
    const QImage without = label->grab().toImage();
    label->setFocus(Qt::TabFocusReason);
    window.setAttribute(Qt::WA_KeyboardFocusChange);
    EXPECT_NE(label->grab().toImage(), without);
}

TEST_F(AClickLabel, IsALinkWhereItIsShownAsOne) {
    label->showAsLink();
    EXPECT_EQ(label->focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(label->foregroundRole(), QPalette::Link);
    EXPECT_TRUE(label->font().underline());
    const QAccessibleInterface* link = QAccessible::queryAccessibleInterface(label);
    EXPECT_EQ(link->role(), QAccessible::Link);
    label->setFocus();
    QTest::keyClick(label, Qt::Key_Return);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(AClickLabel, IsAButtonForScreenReadersWhereItCanHaveTheFocus) {
    label->setFocusPolicy(Qt::TabFocus);
    QAccessibleInterface* button = QAccessible::queryAccessibleInterface(label);
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->role(), QAccessible::Button);
    EXPECT_EQ(button->text(QAccessible::Name), u"Mode"_qs);
    ASSERT_NE(button->actionInterface(), nullptr);
    EXPECT_TRUE(button->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(AClickLabel, IsATextForScreenReadersElsewhere) {
    QAccessibleInterface* text = QAccessible::queryAccessibleInterface(label);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->role(), QAccessible::StaticText);
}
