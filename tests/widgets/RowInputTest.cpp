#include "widgets/RowInput.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

#include <memory>

class InputOfRows : public testing::Test {
 protected:
    static constexpr int Rows = 100;

    void SetUp() override {
        for (int i = 0; i < Rows; ++i)
            m_model.appendRow({new QStandardItem(QString::number(i)), new QStandardItem(u"second"_qs)});
        m_view->setModel(&m_model);
        m_view->resize(300, 200);
        m_view->show();
        m_input->onKeys({Qt::Key_Return, Qt::Key_Enter}, [this] { m_calls << u"open"_qs; });
        m_input->onKeys({Qt::Key_Delete}, [this] { m_calls << u"delete"_qs; });
    }
    QPoint placeOf(int row) const { return m_view->visualRect(m_model.index(row, 0)).bottomLeft(); }
    void askFor(QContextMenuEvent::Reason reason, QWidget* receiver) {
        QContextMenuEvent event(reason, QPoint(50, 60), receiver->mapToGlobal(QPoint(50, 60)));
        QApplication::sendEvent(receiver, &event);
        EXPECT_TRUE(event.isAccepted());
    }
    QPoint asked() { return m_view->viewport()->mapFromGlobal(m_wanted.takeFirst().first().toPoint()); }

    QStandardItemModel m_model;
    std::unique_ptr<QTreeView> m_view = std::make_unique<QTreeView>();
    RowInput* m_input = new RowInput(*m_view);
    QSignalSpy m_wanted{m_input, &RowInput::menuWanted};
    QStringList m_calls;
};

TEST_F(InputOfRows, ItsKeysCallWhatTheyAreFor) {
    QTest::keyClick(m_view.get(), Qt::Key_Return);
    QTest::keyClick(m_view.get(), Qt::Key_Enter, Qt::KeypadModifier);
    QTest::keyClick(m_view.get(), Qt::Key_Delete);
    EXPECT_EQ(m_calls, QStringList({u"open"_qs, u"open"_qs, u"delete"_qs}));
}

TEST_F(InputOfRows, OtherKeysAndKeysWithModifiersAreTheViewsOwn) {
    m_view->setCurrentIndex(m_model.index(0, 0));
    for (const auto modifier : {Qt::ControlModifier, Qt::ShiftModifier, Qt::AltModifier, Qt::MetaModifier}) {
        QTest::keyClick(m_view.get(), Qt::Key_Delete, modifier);
        QTest::keyClick(m_view.get(), Qt::Key_Return, modifier);
    }
    QTest::keyClick(m_view.get(), Qt::Key_Down);
    EXPECT_EQ(m_view->currentIndex().row(), 1);
    EXPECT_TRUE(m_calls.isEmpty());
}

TEST_F(InputOfRows, TheMainMenuDoesNotGetItsKeys) {
    const auto overrides = [this](int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers);
        event.ignore();
        QApplication::sendEvent(m_view.get(), &event);
        return event.isAccepted();
    };
    EXPECT_TRUE(overrides(Qt::Key_Delete, Qt::NoModifier));
    EXPECT_FALSE(overrides(Qt::Key_Delete, Qt::ControlModifier));
    EXPECT_FALSE(overrides(Qt::Key_F2, Qt::NoModifier));
    EXPECT_TRUE(m_calls.isEmpty());
}

TEST_F(InputOfRows, TheRightButtonAsksForTheMenuWhenItIsReleased) {
    const QPoint at(20, 30);
    QTest::mousePress(m_view->viewport(), Qt::RightButton, {}, at);
    askFor(QContextMenuEvent::Mouse, m_view->viewport());
    EXPECT_EQ(m_wanted.count(), 0);
    QTest::mouseRelease(m_view->viewport(), Qt::RightButton, {}, at);
    ASSERT_EQ(m_wanted.count(), 1);
    EXPECT_EQ(asked(), at);
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(m_wanted.count(), 0);
}

TEST_F(InputOfRows, TheKeyForMenusAsksAtTheCurrentRow) {
    askFor(QContextMenuEvent::Keyboard, m_view.get());
    EXPECT_EQ(asked(), QPoint(0, 0));
    m_view->setCurrentIndex(m_model.index(3, 1));
    askFor(QContextMenuEvent::Keyboard, m_view.get());
    EXPECT_EQ(asked(), placeOf(3));
}

TEST_F(InputOfRows, TheKeyForMenusBringsTheCurrentRowIntoView) {
    m_view->setCurrentIndex(m_model.index(Rows - 1, 0));
    m_view->verticalScrollBar()->setValue(0);
    askFor(QContextMenuEvent::Keyboard, m_view->viewport());
    ASSERT_EQ(m_wanted.count(), 1);
    const QPoint place = asked();
    EXPECT_EQ(place, placeOf(Rows - 1));
    EXPECT_TRUE(m_view->viewport()->rect().contains(place));
}

TEST_F(InputOfRows, ShiftF10AsksAtTheCurrentRowToo) {
    m_view->setCurrentIndex(m_model.index(3, 0));
    QTest::keyClick(m_view.get(), Qt::Key_F10);
    QTest::keyClick(m_view.get(), Qt::Key_F10, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(m_wanted.count(), 0);
    QTest::keyClick(m_view.get(), Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_EQ(m_wanted.count(), 1);
    EXPECT_EQ(asked(), placeOf(3));
}

TEST_F(InputOfRows, TheKeyForMenusAsksInTheViewWhenItIsScrolledSideways) {
    m_view->setColumnWidth(0, 2'000);
    m_view->setCurrentIndex(m_model.index(3, 0));
    m_view->horizontalScrollBar()->setValue(500);
    ASSERT_LT(placeOf(3).x(), 0);
    askFor(QContextMenuEvent::Keyboard, m_view.get());
    EXPECT_GE(asked().x(), 0);
}

TEST_F(InputOfRows, TheRightButtonReleasedOutsideAsksForNoMenu) {
    QTest::mousePress(m_view->viewport(), Qt::RightButton, {}, QPoint(20, 30));
    QTest::mouseRelease(m_view->viewport(), Qt::RightButton, {}, QPoint(20, -100));
    EXPECT_EQ(m_wanted.count(), 0);
}

TEST_F(InputOfRows, TheHeaderHasNoMenu) {
    QTest::mouseClick(m_view->header()->viewport(), Qt::RightButton, {}, QPoint(5, 5));
    askFor(QContextMenuEvent::Mouse, m_view->header()->viewport());
    EXPECT_EQ(m_wanted.count(), 0);
}

TEST_F(InputOfRows, ACallMayEndTheView) {
    m_input->onKeys({Qt::Key_F2}, [this] { m_view.reset(); });
    QKeyEvent event(QEvent::KeyPress, Qt::Key_F2, Qt::NoModifier);
    QApplication::sendEvent(m_view.get(), &event);
    EXPECT_EQ(m_view, nullptr);
}
