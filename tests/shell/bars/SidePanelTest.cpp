#include "shell/bars/SidePanel.h"
#include "shell/bars/SplitBar.h"

#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

class SidePanelWithItsBar : public testing::Test {
 protected:
    static constexpr int Twips = 15;

    void SetUp() override {
        m_side.resize(800, 500);
        m_side.hold(&m_content);
        m_side.resetSplitter();
        m_side.show();
        m_side.activateWindow();
        QCoreApplication::processEvents();
    }
    void TearDown() override { m_content.setParent(nullptr); }

    QWidget& container() { return *m_side.findChild<QWidget*>(u"picButtons"_qs); }
    SplitBar& bar() { return *m_side.findChild<SplitBar*>(u"PictureV"_qs); }
    void expectNeighbours() {
        EXPECT_EQ(container().geometry(), QRect(0, 0, bar().x(), m_side.height()));
        EXPECT_EQ(bar().height(), m_side.height());
        EXPECT_EQ(m_side.area().x(), bar().geometry().right() + 1);
        EXPECT_EQ(m_side.area().geometry().right(), m_side.width() - 1);
    }
    void moveTo(int x) {
        QMouseEvent move(QEvent::MouseMove, QPointF(x, 5), bar().mapToGlobal(QPointF(x, 5)), Qt::NoButton,
                         Qt::LeftButton, {});
        QCoreApplication::sendEvent(&bar(), &move);
    }

    QLineEdit m_content;
    SidePanel m_side;
};

TEST_F(SidePanelWithItsBar, ThePanelStandsLeftOfTheDocuments) {
    EXPECT_TRUE(m_side.isShown());
    EXPECT_EQ(bar().width(), 5);  // 70 twips
    EXPECT_EQ(m_side.splitterLeft(), bar().x() * Twips);
    EXPECT_EQ(bar().property("Left"), m_side.splitterLeft());
    EXPECT_EQ(m_content.parentWidget(), &container());
    EXPECT_EQ(m_content.width(), container().width());
    expectNeighbours();
    m_side.resize(900, 300);
    expectNeighbours();
}

TEST_F(SidePanelWithItsBar, AHiddenPanelLeavesItsRoomToTheDocuments) {
    QSignalSpy changed(&m_side, &SidePanel::shownChanged);
    m_side.setShown(false);
    EXPECT_FALSE(m_side.isShown());
    EXPECT_FALSE(bar().isVisible());
    EXPECT_EQ(m_side.area().geometry(), m_side.rect());
    m_side.setShown(true);
    EXPECT_TRUE(bar().isVisible());
    expectNeighbours();
    EXPECT_EQ(changed, QList<QVariantList>({{false}, {true}}));
}

TEST_F(SidePanelWithItsBar, TheBarIsDraggedInThreeSteps) {
    const int before = bar().x();
    EXPECT_EQ(bar().property("Tag"), u"0"_qs);
    QTest::mousePress(&bar(), Qt::LeftButton, {}, QPoint(2, 5));
    EXPECT_EQ(bar().property("Tag"), u"1"_qs);
    moveTo(32);
    EXPECT_EQ(bar().x(), before + 30);
    expectNeighbours();
    QTest::mouseRelease(&bar(), Qt::LeftButton, {}, QPoint(12, 5));
    EXPECT_EQ(bar().x(), before + 40);
    EXPECT_EQ(bar().property("Tag"), u"0"_qs);
    EXPECT_EQ(m_side.splitterLeft(), (before + 40) * Twips);
}

TEST_F(SidePanelWithItsBar, WithoutAPressTheBarFollowsNothing) {
    const int before = bar().x();
    moveTo(40);
    QTest::mousePress(&bar(), Qt::RightButton, {}, QPoint(2, 5));
    moveTo(40);
    QTest::mouseRelease(&bar(), Qt::RightButton, {}, QPoint(50, 5));
    EXPECT_EQ(bar().x(), before);
}

TEST_F(SidePanelWithItsBar, TheBarStaysInsideTheWindow) {
    QTest::mousePress(&bar(), Qt::LeftButton, {}, QPoint(2, 5));
    moveTo(-5000);
    EXPECT_EQ(bar().x(), 0);
    EXPECT_EQ(m_side.splitterLeft(), 0);
    moveTo(5000);
    EXPECT_EQ(bar().geometry().right(), m_side.width() - 1);
    EXPECT_EQ(m_side.splitterLeft(), bar().x() * Twips);
    QTest::mouseRelease(&bar(), Qt::LeftButton, {}, QPoint(2, 5));
}

TEST_F(SidePanelWithItsBar, TheBarIsMovedByKeys) {
    EXPECT_TRUE(bar().focusPolicy() & Qt::TabFocus);
    EXPECT_FALSE(bar().accessibleName().isEmpty());
    const int before = bar().x();
    QTest::keyClick(&bar(), Qt::Key_Right);
    EXPECT_GT(bar().x(), before);
    QTest::keyClick(&bar(), Qt::Key_Left);
    EXPECT_EQ(bar().x(), before);
    for (const auto key : {Qt::Key_Up, Qt::Key_Down})
        QTest::keyClick(&bar(), key);
    QTest::keyClick(&bar(), Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(bar().x(), before);
    QTest::keyClick(&bar(), Qt::Key_PageDown);
    EXPECT_GT(bar().x(), before + 40);
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(&bar(), Qt::Key_PageUp);
    EXPECT_EQ(bar().x(), 0);
}

TEST_F(SidePanelWithItsBar, AWidthThatWasSetIsKeptWhileTheWindowIsTooNarrow) {
    m_side.setSplitterLeft(600 * Twips);
    EXPECT_EQ(bar().x(), 600);
    m_side.resize(400, 500);
    EXPECT_EQ(bar().geometry().right(), 399);
    EXPECT_EQ(m_side.splitterLeft(), 600 * Twips);
    m_side.resize(800, 500);
    EXPECT_EQ(bar().x(), 600);
    m_side.setSplitterLeft(-7);
    EXPECT_EQ(m_side.splitterLeft(), 0);
}

TEST_F(SidePanelWithItsBar, AResetEndsADragAndKeepsThePlace) {
    const int before = bar().x();
    QTest::mousePress(&bar(), Qt::LeftButton, {}, QPoint(2, 5));
    m_side.resetSplitter();
    EXPECT_EQ(bar().property("Tag"), u"0"_qs);
    moveTo(90);
    EXPECT_EQ(bar().x(), before);
    EXPECT_EQ(bar().width(), 5);
}

TEST_F(SidePanelWithItsBar, AHiddenPanelPassesTheKeyboardToTheDocument) {
    auto* text = new QLineEdit;
    m_side.area().addSubWindow(text)->show();
    m_content.setFocus();
    m_side.setShown(false);
    EXPECT_EQ(m_side.focusWidget(), text);
}

TEST_F(SidePanelWithItsBar, AHiddenPanelLeavesAMinimisedDocumentActive) {
    m_side.area().addSubWindow(new QLineEdit)->show();
    QMdiSubWindow* minimised = m_side.area().addSubWindow(new QLineEdit);
    minimised->showMinimized();
    m_side.area().setActiveSubWindow(minimised);
    m_content.setFocus();
    m_side.setShown(false);
    EXPECT_EQ(m_side.area().activeSubWindow(), minimised);
}
