#include "editor/print/PrintWindow.h"

#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

constexpr PrintProgress Counting{0, 0, 4};
constexpr PrintProgress Printing{3, 9, 40};

struct WindowOfAPrint : testing::Test {
    QWidget parent;
    QPointer<PrintWindow> window = new PrintWindow(u"a & b.txt"_qs, &parent, 0);

    QString status() const { return window->findChild<QLabel*>(u"lbStatus"_qs)->text(); }
};

}  // namespace

TEST_F(WindowOfAPrint, AppearsOnlyWhenThePrintTakesAWhile) {
    PrintWindow patient(u"name"_qs, &parent, 3600 * 1000);
    EXPECT_TRUE(patient.report(Printing));
    EXPECT_FALSE(patient.isVisible());
    EXPECT_TRUE(window->report(Printing));
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->isModal());
}

TEST_F(WindowOfAPrint, SaysHowFarThePrintHasCome) {
    EXPECT_TRUE(window->report(Counting));
    EXPECT_EQ(status(), u"Counting the pages"_qs);
    auto* bar = window->findChild<QProgressBar*>(u"barProgress"_qs);
    EXPECT_EQ(bar->value(), 4);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->report(Printing) && status() == u"Page 3 of 9"_qs; }));
    EXPECT_EQ(bar->value(), 40);
    bool hasName = false;
    for (const QLabel* label : window->findChildren<QLabel*>())
        hasName = hasName || (label->text() == u"a & b.txt"_qs && label->textFormat() == Qt::PlainText);
    EXPECT_TRUE(hasName);
}

TEST_F(WindowOfAPrint, EscapeCancels) {
    ASSERT_TRUE(window->report(Printing));
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(window->report(Printing));
    EXPECT_FALSE(window->isVisible()) << "it does not come back";
}

TEST_F(WindowOfAPrint, CancelAndClosingTheWindowCancel) {
    auto* cancel = window->findChild<QPushButton*>(u"cmdCancel"_qs);
    ASSERT_TRUE(window->report(Printing));
    cancel->click();
    EXPECT_FALSE(window->report(Printing));
    PrintWindow other(u"name"_qs, &parent, 0);
    ASSERT_TRUE(other.report(Printing));
    other.close();
    EXPECT_FALSE(other.report(Printing));
}

TEST_F(WindowOfAPrint, ItsDestructionWhileItYieldsCancels) {
    QTimer::singleShot(0, window, [this] { delete window; });
    EXPECT_FALSE(window->report(Printing));
    EXPECT_FALSE(window);
}
