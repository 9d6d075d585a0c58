#include "shell/bars/SearchPanel.h"
#include "shell/bars/SplitBar.h"
#include "widgets/ElidedLabel.h"

#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

class BottomPanel : public testing::Test {
 protected:
    static constexpr int Twips = 15;
    static constexpr int Least = 33;  // 500 twips

    void SetUp() override {
        auto* rows = new QVBoxLayout(&m_window);
        rows->setContentsMargins(0, 0, 0, 0);
        rows->setSpacing(0);
        m_area.setMinimumHeight(Least);
        rows->addWidget(&m_area, 1);
        rows->addWidget(&m_panel);
        m_panel.hold(&m_results);
        m_window.resize(800, 600);
        m_window.show();
        m_window.activateWindow();
        m_panel.setShown(true);
        QCoreApplication::processEvents();
    }
    void TearDown() override {
        m_area.setParent(nullptr);
        m_panel.setParent(nullptr);
        m_results.setParent(nullptr);
    }

    template <typename Part>
    Part& part(const char* name) {
        return *m_panel.findChild<Part*>(QString::fromLatin1(name));
    }
    SplitBar& bar() { return part<SplitBar>("picHBar"); }
    QLabel& title() { return part<QLabel>("lbTitle"); }
    void press(QWidget& widget, const QPoint& at) { QTest::mousePress(&widget, Qt::LeftButton, {}, at); }
    /// Moves the pressed pointer to a row of the window.
    void moveTo(QWidget& pressed, int y) {
        const QPointF screen = m_window.mapToGlobal(QPointF(90, y));
        QMouseEvent move(QEvent::MouseMove, pressed.mapFromGlobal(screen), screen, Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&pressed, &move);
    }
    void releaseAt(QWidget& pressed, int y) {
        const QPoint screen = m_window.mapToGlobal(QPoint(90, y));
        QTest::mouseRelease(&pressed, Qt::LeftButton, {}, pressed.mapFromGlobal(screen));
    }
    Qt::CursorShape shapeAt(int y) {
        const QPointF at(90, y);
        QMouseEvent move(QEvent::MouseMove, at, m_panel.mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(&m_panel, &move);
        return m_panel.cursor().shape();
    }
    void expectNeighbours() {
        EXPECT_EQ(m_area.y(), 0);
        EXPECT_EQ(m_area.geometry().bottom() + 1, m_panel.y());
        EXPECT_EQ(m_panel.geometry().bottom(), m_window.height() - 1);
        EXPECT_EQ(m_panel.width(), m_window.width());
    }

    QWidget m_window;
    QMdiArea m_area;
    SearchPanel m_panel{m_area, &m_window};
    QLineEdit m_results;
};

TEST_F(BottomPanel, IsHiddenUntilItIsShown) {
    const SearchPanel panel(m_area, &m_window);
    EXPECT_FALSE(panel.isShown());
    EXPECT_EQ(panel.objectName(), u"picSearch"_qs);
    EXPECT_EQ(panel.held(), nullptr);
    EXPECT_EQ(panel.entrance()->objectName(), u"picHBar"_qs);
}

TEST_F(BottomPanel, StandsBelowTheDocumentsOverTheWholeWidth) {
    EXPECT_TRUE(m_panel.isShown());
    EXPECT_EQ(m_panel.height(), (m_panel.panelHeight() + Twips / 2) / Twips);
    expectNeighbours();
    m_window.resize(500, 700);
    expectNeighbours();
    EXPECT_EQ(m_panel.height(), (m_panel.panelHeight() + Twips / 2) / Twips);
}

TEST_F(BottomPanel, TheResultsFillItTenTwipsBelowTheTitleBar) {
    EXPECT_EQ(m_panel.held(), &m_results);
    EXPECT_EQ(m_panel.entrance(), &m_results);
    EXPECT_EQ(m_results.parentWidget(), &m_panel);
    EXPECT_EQ(m_results.y(), bar().geometry().bottom() + 1 + 1);
    EXPECT_EQ(m_results.x(), 0);
    EXPECT_EQ(m_results.geometry().bottomRight(), m_panel.rect().bottomRight());
    EXPECT_EQ(title().parentWidget(), &bar());
    EXPECT_EQ(part<QToolButton>("imgMax").parentWidget(), &bar());
    EXPECT_EQ(part<QToolButton>("imgClose").parentWidget(), &bar());
    EXPECT_EQ(bar().width(), m_panel.width());
}

TEST_F(BottomPanel, AHiddenPanelLeavesItsRoomToTheDocumentsAndComesBackAsHighAsItWas) {
    QSignalSpy changed(&m_panel, &SearchPanel::shownChanged);
    m_panel.setPanelHeight(250 * Twips);
    m_panel.setShown(false);
    EXPECT_FALSE(m_panel.isShown());
    EXPECT_EQ(m_area.geometry(), m_window.rect());
    m_panel.setShown(true);
    EXPECT_EQ(m_panel.height(), 250);
    expectNeighbours();
    EXPECT_EQ(changed, QList<QVariantList>({{false}, {true}}));
}

TEST_F(BottomPanel, TheHeightOfAHiddenPanelCanBeSet) {
    m_panel.setShown(false);
    m_panel.setPanelHeight(150 * Twips);
    EXPECT_FALSE(m_panel.isShown());
    m_panel.setShown(true);
    EXPECT_EQ(m_panel.height(), 150);
}

TEST_F(BottomPanel, ThePointerShowsWhereTheEdgeIs) {
    EXPECT_TRUE(m_panel.hasMouseTracking());
    for (int y = 0; y * Twips < 50; ++y) {
        EXPECT_EQ(shapeAt(y), Qt::SizeVerCursor) << y;
    }
    EXPECT_EQ(shapeAt(4), Qt::ArrowCursor);
    shapeAt(0);
    // A quick pointer leaves the edge without a move outside of it.
    for (QWidget* each : {static_cast<QWidget*>(&bar()), static_cast<QWidget*>(&title()), m_panel.held()}) {
        EXPECT_EQ(each->cursor().shape(), Qt::ArrowCursor) << each->objectName().toStdString();
    }
    EXPECT_GE(bar().y() * Twips, 50);
}

TEST_F(BottomPanel, IsDraggedByItsEdgeByTheTitleBarAndByTheTitle) {
    struct Handle {
        QWidget& widget;
        QPoint at;
    };
    for (const Handle& each : {Handle{m_panel, {90, 1}}, Handle{bar(), {60, 5}}, Handle{title(), {50, 3}}}) {
        m_panel.setPanelHeight(200 * Twips);
        const int start = m_window.mapFromGlobal(each.widget.mapToGlobal(each.at)).y();
        press(each.widget, each.at);
        EXPECT_EQ(bar().property("Tag"), u"1"_qs);
        moveTo(each.widget, start - 30);
        EXPECT_EQ(m_panel.height(), 230);
        expectNeighbours();
        moveTo(each.widget, start + 10);
        EXPECT_EQ(m_panel.height(), 190);
        releaseAt(each.widget, start - 50);
        EXPECT_EQ(m_panel.height(), 250) << each.widget.objectName().toStdString();
        EXPECT_EQ(m_panel.panelHeight(), 250 * Twips);
        EXPECT_EQ(bar().property("Tag"), u"0"_qs);
        expectNeighbours();
    }
}

TEST_F(BottomPanel, OnlyALeftPressOnTheEdgeOrTheBarDrags) {
    const int before = m_panel.height();
    QTest::mousePress(&m_panel, Qt::RightButton, {}, QPoint(90, 1));
    moveTo(m_panel, 100);
    QTest::mouseRelease(&m_panel, Qt::RightButton, {}, QPoint(90, 1));
    QTest::mousePress(&bar(), Qt::RightButton, {}, QPoint(60, 5));
    moveTo(bar(), 100);
    QTest::mouseRelease(&bar(), Qt::RightButton, {}, QPoint(60, 5));
    press(m_panel, QPoint(90, 4));
    moveTo(m_panel, 100);
    releaseAt(m_panel, 100);
    moveTo(bar(), 100);
    EXPECT_EQ(m_panel.height(), before);
}

TEST_F(BottomPanel, BelowFiveHundredTwipsADragLeavesFiveHundred) {
    press(m_panel, QPoint(90, 1));
    moveTo(m_panel, 595);
    releaseAt(m_panel, 595);
    EXPECT_EQ(m_panel.panelHeight(), 500);
    EXPECT_EQ(m_panel.height(), Least);
    expectNeighbours();
    press(m_panel, QPoint(90, 1));
    releaseAt(m_panel, 5000);
    EXPECT_EQ(m_panel.panelHeight(), 500);
}

TEST_F(BottomPanel, ADragPastTheTopStopsAtWhatTheWindowHas) {
    press(bar(), QPoint(60, 5));
    moveTo(bar(), -3000);
    releaseAt(bar(), -3000);
    EXPECT_EQ(m_panel.height(), 600 - Least);
    EXPECT_EQ(m_panel.panelHeight(), m_panel.height() * Twips);
    expectNeighbours();
}

TEST_F(BottomPanel, ALowWindowShrinksItFirstAndKeepsItsHeightForLater) {
    m_panel.setPanelHeight(400 * Twips);
    m_window.resize(800, 300);
    EXPECT_EQ(m_panel.height(), 300 - Least);
    EXPECT_EQ(m_area.height(), Least);
    expectNeighbours();
    m_window.resize(800, 2 * Least);
    EXPECT_EQ(m_panel.height(), Least);
    expectNeighbours();
    m_window.resize(800, 700);
    EXPECT_EQ(m_panel.height(), 400);
}

TEST_F(BottomPanel, TheKeysOfItsBarResizeIt) {
    EXPECT_TRUE(bar().focusPolicy() & Qt::TabFocus);
    EXPECT_FALSE(bar().accessibleName().isEmpty());
    m_panel.setPanelHeight(200 * Twips);
    QTest::keyClick(&bar(), Qt::Key_Up);
    EXPECT_EQ(m_panel.height(), 208);
    QTest::keyClick(&bar(), Qt::Key_Down);
    EXPECT_EQ(m_panel.height(), 200);
    QTest::keyClick(&bar(), Qt::Key_PageUp);
    EXPECT_EQ(m_panel.height(), 280);
    for (const Qt::Key other : {Qt::Key_Left, Qt::Key_Right})
        QTest::keyClick(&bar(), other);
    EXPECT_EQ(m_panel.height(), 280);
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(&bar(), Qt::Key_PageDown);
    EXPECT_EQ(m_panel.panelHeight(), 500);
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(&bar(), Qt::Key_PageUp);
    EXPECT_EQ(m_panel.height(), 600 - Least);
    expectNeighbours();
}

TEST_F(BottomPanel, ItsButtonsEnlargeAndHideIt) {
    auto& enlarge = part<QToolButton>("imgMax");
    auto& close = part<QToolButton>("imgClose");
    for (const QToolButton* each : {&enlarge, &close}) {
        EXPECT_TRUE(each->focusPolicy() & Qt::TabFocus);
        EXPECT_FALSE(each->accessibleName().isEmpty());
        EXPECT_FALSE(each->toolTip().isEmpty());
        EXPECT_FALSE(each->icon().isNull());
    }
    enlarge.click();
    EXPECT_EQ(m_panel.height(), 400);
    expectNeighbours();
    m_window.resize(800, 750);
    enlarge.setFocus();
    QTest::keyClick(&enlarge, Qt::Key_Space);
    EXPECT_EQ(m_panel.height(), 500);
    QSignalSpy changed(&m_panel, &SearchPanel::shownChanged);
    close.click();
    EXPECT_FALSE(m_panel.isShown());
    EXPECT_EQ(changed, QList<QVariantList>({{false}}));
}

TEST_F(BottomPanel, TheTabKeyWalksFromTheBarOverTheButtonsToTheResults) {
    bar().setFocus();
    QStringList walked;
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(m_window.focusWidget(), Qt::Key_Tab);
        walked << m_window.focusWidget()->objectName();
    }
    EXPECT_EQ(walked.mid(0, 2), QStringList({u"imgMax"_qs, u"imgClose"_qs}));
    EXPECT_EQ(m_window.focusWidget(), &m_results);
}

TEST_F(BottomPanel, ALongTitleIsCutOnScreenAlone) {
    auto& label = part<ElidedLabel>("lbTitle");
    const QString path = u"Searching '/home/"_qs + QString(900, u'x') + u"/a.txt'"_qs;
    m_panel.setTitle(path);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_panel.title(), path);
    EXPECT_EQ(title().text(), path);
    EXPECT_EQ(m_window.width(), 800);
    EXPECT_LT(label.shownText().size(), 300);
    EXPECT_TRUE(label.shownText().startsWith(u"Searching '/home/xx"_qs));
    EXPECT_TRUE(label.shownText().endsWith(u"/a.txt'"_qs));
    m_panel.setTitle(u"<b>1</b>"_qs);
    EXPECT_EQ(label.shownText(), u"<b>1</b>"_qs);
}

TEST_F(BottomPanel, ATitleWithALineBreakIsOneLine) {
    m_panel.setTitle(u"one line"_qs);
    QCoreApplication::processEvents();
    const int before = bar().height();
    m_panel.setTitle(u"a path with\na line\r\nbreak"_qs);
    QCoreApplication::processEvents();
    EXPECT_EQ(bar().height(), before);
}

TEST_F(BottomPanel, AResetOrHidingEndsADrag) {
    const int before = m_panel.height();
    press(bar(), QPoint(60, 5));
    m_panel.resetSplitter();
    moveTo(bar(), 100);
    EXPECT_EQ(m_panel.height(), before);
    press(bar(), QPoint(60, 5));
    m_panel.setShown(false);
    EXPECT_EQ(bar().property("Tag"), u"0"_qs);
    m_panel.setShown(true);
    moveTo(bar(), 100);
    EXPECT_EQ(m_panel.height(), before);
}

TEST_F(BottomPanel, AHiddenPanelPassesTheKeyboardToTheActiveDocument) {
    m_area.addSubWindow(new QLineEdit)->show();
    auto* text = new QLineEdit;
    QMdiSubWindow* active = m_area.addSubWindow(text);
    active->show();
    m_area.setActiveSubWindow(active);
    m_area.addSubWindow(new QLineEdit);
    m_results.setFocus();
    m_panel.setShown(false);
    EXPECT_EQ(m_window.focusWidget(), text);
    EXPECT_EQ(m_area.activeSubWindow(), active);
}
