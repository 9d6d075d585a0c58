#include "widgets/InputStop.h"

#include <QCoreApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace {

struct StoppedInput : testing::Test {
    QWidget window;
    QLineEdit* field = new QLineEdit(&window);

    StoppedInput() { window.show(); }
    static void openModal(QDialog& box) {
        box.setModal(true);
        box.show();
    }
};

}  // namespace

TEST_F(StoppedInput, KeysAndMouseDoNothingAndNoWindowCloses) {
    {
        const InputStop stop;
        QTest::keyClicks(field, u"abc"_qs);
        QTest::mouseClick(field, Qt::LeftButton);
        EXPECT_FALSE(window.close());
        EXPECT_FALSE(stop.escaped());
    }
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(field->text(), QString());
    QTest::keyClicks(field, u"d"_qs);
    EXPECT_EQ(field->text(), u"d"_qs);
    EXPECT_TRUE(window.close());
}

TEST_F(StoppedInput, EscapeIsNotedAsAKeyAndAsAShortcut) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::ShortcutOverride}) {
        const InputStop stop;
        QKeyEvent letter(type, Qt::Key_A, {});
        QCoreApplication::sendEvent(field, &letter);
        EXPECT_FALSE(stop.escaped());
        QKeyEvent escape(type, Qt::Key_Escape, {});
        QCoreApplication::sendEvent(field, &escape);
        EXPECT_TRUE(stop.escaped());
    }
}

TEST_F(StoppedInput, ABoxThatComesUpMeanwhileGetsItsOwn) {
    const InputStop stop;
    QDialog box;
    auto* answer = new QLineEdit(&box);
    openModal(box);
    QTest::keyClicks(answer, u"yes"_qs);
    EXPECT_EQ(answer->text(), u"yes"_qs);
    EXPECT_TRUE(box.close());
    QTest::keyClicks(field, u"abc"_qs);
    EXPECT_EQ(field->text(), QString());
}

TEST_F(StoppedInput, ABoxThatWasOpenBeforeIsStoppedLikeTheRest) {
    QDialog box;
    auto* answer = new QLineEdit(&box);
    openModal(box);
    const InputStop stop;
    QTest::keyClicks(answer, u"yes"_qs);
    EXPECT_EQ(answer->text(), QString());
    EXPECT_FALSE(box.close());
    QTest::keyClick(answer, Qt::Key_Escape);
    EXPECT_TRUE(stop.escaped());
    EXPECT_TRUE(box.isVisible());
}

TEST_F(StoppedInput, AnExceptedWindowGetsItsInputWithoutBeingModal) {
    QWidget other;
    auto* free = new QLineEdit(&other);
    other.show();
    const InputStop stop(&other);
    QTest::keyClicks(free, u"abc"_qs);
    QTest::keyClicks(field, u"abc"_qs);
    EXPECT_EQ(free->text(), u"abc"_qs);
    EXPECT_TRUE(field->text().isEmpty());
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(other.close());
}
