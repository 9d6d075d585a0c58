#include "search/forms/ProgressLabel.h"
#include "search/forms/frmSearching.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <functional>

namespace {

/// The window over a main window with a field to type in.
class SearchingWindow : public testing::Test {
 protected:
    void SetUp() override {
        m_main.resize(600, 400);
        m_main.show();
        m_field->setFocus();
        m_main.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_main));
    }
    void show() {
        m_window->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_window));
        EXPECT_TRUE(QTest::qWaitFor([&] { return cancel().hasFocus(); }));
        QApplication::processEvents();
    }
    ProgressLabel& status() const { return *m_window->findChild<ProgressLabel*>(u"lbStatus"_qs); }
    QPushButton& cancel() const { return *m_window->findChild<QPushButton*>(u"cmdCancel"_qs); }
    QString tag() const { return status().property("Tag").toString(); }

    void mouse(QEvent::Type type, QPoint global, Qt::MouseButton button = Qt::LeftButton) {
        const bool isMove = type == QEvent::MouseMove;
        QMouseEvent event(type, status().mapFromGlobal(global), global, isMove ? Qt::NoButton : button,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button), Qt::NoModifier);
        QApplication::sendEvent(&status(), &event);
    }

    QWidget m_main;
    QLineEdit* m_field = new QLineEdit(&m_main);
    frmSearching* m_window = new frmSearching(&m_main);
    QSignalSpy m_aborts{m_window, &frmSearching::abortWanted};
};

}  // namespace

TEST_F(SearchingWindow, HasItsControlsAndItsParent) {
    EXPECT_EQ(m_window->objectName(), u"frmSearching"_qs);
    for (const char* name : {"lbStatus", "cmdCancel", "image1", "Picture1", "Frame1"}) {
        EXPECT_NE(m_window->findChild<QWidget*>(QLatin1String(name)), nullptr) << name;
    }
    EXPECT_EQ(cancel().text(), u"Cancel"_qs);
    EXPECT_EQ(m_window->parentWidget(), &m_main);
    show();
    EXPECT_FALSE(m_window->isModal());
    EXPECT_FALSE(m_window->findChild<QLabel*>(u"image1"_qs)->pixmap().isNull());
}

TEST_F(SearchingWindow, TakesTheKeyboardWhenItIsShown) {
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_field->hasFocus(); }));
    show();
    EXPECT_TRUE(cancel().hasFocus());
}

TEST_F(SearchingWindow, ShowsFileAndCounts) {
    m_window->setStatus(u"/a/b'&amp;<b>.txt"_qs, 12, 3);
    EXPECT_EQ(status().text(),
              u"Searching '/a/b'&amp;<b>.txt'\r\nTotal Files Searched : 12\r\nTotal Files Found : 3\r\n"_qs);
    EXPECT_EQ(status().textFormat(), Qt::PlainText);
    show();
    EXPECT_EQ(status().text(), QString()) << "what an earlier search has left";
    m_window->setStatus({}, 2'000'000'000, 0);
    EXPECT_EQ(status().text(), u"Searching ''\r\nTotal Files Searched : 2000000000\r\nTotal Files Found : 0\r\n"_qs);
    m_window->hide();
    EXPECT_FALSE(status().text().isEmpty());
}

TEST_F(SearchingWindow, CutsALongPathOnScreenAndNotInItsText) {
    show();
    m_window->setStatus(u"/short"_qs, 1, 1);
    EXPECT_EQ(status().shownLines(),
              QStringList({u"Searching '/short'"_qs, u"Total Files Searched : 1"_qs, u"Total Files Found : 1"_qs}));
    const QString path = u"/begin/"_qs + u"folder/"_qs.repeated(500) + u"end.txt"_qs;
    m_window->setStatus(path, 1, 1);
    EXPECT_TRUE(status().text().contains(path));
    const QString line = status().shownLines().first();
    EXPECT_LE(status().fontMetrics().horizontalAdvance(line), status().width());
    EXPECT_TRUE(line.startsWith(QLatin1String("Searching '/begin/")));
    EXPECT_TRUE(line.endsWith(QLatin1String("end.txt'")));
}

TEST_F(SearchingWindow, KeepsItsSizeAndItsPlace) {
    show();
    const QRect before = m_window->geometry();
    const QRect label = status().geometry();
    for (const QString& path : {QString(), u"/x"_qs, QString(4000, u'W'), u"/a\nb\nc\nd\ne"_qs, u"/a\r\nb\r\nc"_qs}) {
        m_window->setStatus(path, 1'000'000, 1'000'000);
        QApplication::processEvents();
        EXPECT_EQ(m_window->geometry(), before);
        EXPECT_EQ(status().geometry(), label);
        EXPECT_FALSE(m_window->grab().isNull());
    }
    m_window->resize(2000, 2000);
    EXPECT_EQ(m_window->size(), before.size());
}

TEST_F(SearchingWindow, PaintsTheTextAloneForANewOne) {
    struct Paints : QObject {
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    };
    show();
    Paints others;
    Paints own;
    cancel().installEventFilter(&others);
    status().installEventFilter(&own);
    m_window->setStatus(u"/a"_qs, 1, 1);
    QApplication::processEvents();
    m_window->setStatus(QString(400, u'x'), 2, 1);
    QApplication::processEvents();
    EXPECT_EQ(own.count, 2);
    EXPECT_EQ(others.count, 0);
}

TEST_F(SearchingWindow, IsCancelledByButtonEscapeAndClosing) {
    const std::function<void()> ways[] = {
        [&] { cancel().click(); }, [&] { QTest::keyClick(&cancel(), Qt::Key_Escape); },
        [&] { QTest::keyClick(&cancel(), Qt::Key_Return); }, [&] { m_window->close(); }};
    for (const auto& way : ways) {
        m_aborts.clear();
        show();
        way();
        EXPECT_FALSE(m_window->isVisible());
        EXPECT_EQ(m_aborts.size(), 1);
    }
}

TEST_F(SearchingWindow, IsHiddenAtTheEndWithoutCancelling) {
    show();
    m_window->hide();
    EXPECT_TRUE(m_aborts.isEmpty());
}

TEST_F(SearchingWindow, LeavesTheKeyboardWhereTheUserPutsIt) {
    show();
    m_main.activateWindow();
    m_field->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_field->hasFocus(); }));
    m_window->setStatus(u"/a"_qs, 1, 1);
    QApplication::processEvents();
    EXPECT_TRUE(m_field->hasFocus());
    QTest::keyClicks(m_field, u"ab"_qs);
    EXPECT_EQ(m_field->text(), u"ab"_qs);
}

TEST_F(SearchingWindow, IsDraggedByItsText) {
    show();
    EXPECT_EQ(tag(), u"0"_qs);
    const QPoint from = status().mapToGlobal(QPoint(20, 10));
    const QPoint before = m_window->pos();
    mouse(QEvent::MouseMove, from + QPoint(5, 5));
    EXPECT_EQ(m_window->pos(), before);
    mouse(QEvent::MouseButtonPress, from);
    EXPECT_EQ(tag(), u"1"_qs);
    mouse(QEvent::MouseMove, from + QPoint(30, 17));
    mouse(QEvent::MouseMove, from + QPoint(40, -7));
    EXPECT_EQ(m_window->pos(), before + QPoint(40, -7));
    mouse(QEvent::MouseButtonRelease, from + QPoint(40, -7));
    EXPECT_EQ(tag(), u"0"_qs);
    mouse(QEvent::MouseMove, from);
    EXPECT_EQ(m_window->pos(), before + QPoint(40, -7));
}

TEST_F(SearchingWindow, IsNotDraggedByOtherButtonsNorOnceItWasHidden) {
    show();
    const QPoint from = status().mapToGlobal(QPoint(20, 10));
    mouse(QEvent::MouseButtonPress, from, Qt::RightButton);
    EXPECT_EQ(tag(), u"0"_qs);
    mouse(QEvent::MouseButtonPress, from);
    EXPECT_EQ(tag(), u"1"_qs);
    m_window->hide();
    EXPECT_EQ(tag(), u"0"_qs);
}
