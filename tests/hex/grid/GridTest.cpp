#include "hex/bytes/HexText.h"
#include "hex/grid/Grid.h"
#include "hex/grid/GridPane.h"
#include "hex/grid/HexColours.h"

#include <QApplication>
#include <QImage>
#include <QStringList>
#include <QTest>

#include <gtest/gtest.h>

namespace {

/// An owner that pages as the hex view does, over bytes that are their own offset, and records the signals.
class PagingOwner {
 public:
    explicit PagingOwner(qint64 length, qint64 pointer = 1) {
        pages.open(length);
        pages.setFilePointer(FilePosition(pointer));
        grid.setMax(length);
        grid.setHasFocus(true);
        fill();
        grid.Reset();
        note("LeaveCell", &Grid::LeaveCell);
        note("EnterCell", &Grid::EnterCell);
        serve("RequestNextRow", &Grid::RequestNextRow, [this] { return pages.hasNextRow() && pages.MoveNextLine(); });
        serve("RequestPreviousRow", &Grid::RequestPreviousRow, [this] { return pages.MovePreviousLine(); });
        serve("RequestNextPage", &Grid::RequestNextPage, [this] { return pages.MoveNextPage(); });
        serve("RequestPreviousPage", &Grid::RequestPreviousPage, [this] { return pages.MovePreviousPage(); });
        serve("RequestBOF", &Grid::RequestBOF, [this] { return pages.MoveFirstPage(); });
        serve("RequestEOF", &Grid::RequestEOF, [this] { return pages.MoveLastPage(); });
    }

    /// The signals caused by one key.
    QStringList press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        raised.clear();
        EXPECT_TRUE(grid.pressKey(key, modifiers));
        return raised;
    }
    void put(int row, int col) {
        grid.SelectCell(row, col);
        ASSERT_EQ(grid.cell(), (HexCell{row, col}));
        raised.clear();
    }
    qint64 pointer() const { return pages.FilePointer().number(); }

    HexPaging pages;
    Grid grid;
    QStringList raised;

 private:
    void fill() {
        grid.setPointer(pages.FilePointer());
        grid.setRows(pages.rows());
        for (int row = 0; row <= pages.rows(); ++row) {
            for (int col = 0; col < 16; ++col)
                grid.setValue(row, col, HexText::ByteToHexCell(static_cast<quint8>(16 * row + col)));
        }
        grid.Refresh();
    }

    template <typename Signal>
    void note(const char* name, Signal signal) {
        QObject::connect(&grid, signal, [this, name](int row, int col) {
            raised += u"%1 %2,%3"_qs.arg(QLatin1String(name)).arg(row).arg(col);
        });
    }
    template <typename Signal, typename Move>
    void serve(const char* name, Signal signal, Move move) {
        QObject::connect(&grid, signal, [this, name, move] {
            raised += QLatin1String(name);
            if (move())
                fill();
        });
    }
};

}  // namespace

TEST(AGrid, HoldsATextForEachCellAndAMarkWhereThereIsNoByte) {
    PagingOwner owner(5);
    EXPECT_EQ(owner.grid.Rows(), 2);
    EXPECT_EQ(owner.grid.Value(0, 4), u"04"_qs);
    for (int col = 5; col < 16; ++col) {
        EXPECT_EQ(owner.grid.Value(0, col), u"-1"_qs);
    }
    for (int col = 0; col < 16; ++col) {
        EXPECT_EQ(owner.grid.Value(1, col), u"-1"_qs);
    }
    EXPECT_EQ(owner.grid.Value(3, 0), QString());
    EXPECT_EQ(owner.grid.Value(-1, 0), QString());
    EXPECT_EQ(owner.grid.Value(0, 16), QString());
}

TEST(AGrid, LosesItsTextsWithItsRows) {
    PagingOwner owner(640);
    EXPECT_EQ(owner.grid.Value(1, 1), u"11"_qs);
    owner.grid.setRows(20);
    EXPECT_EQ(owner.grid.Value(1, 1), QString());
}

TEST(AGrid, CanBeReadFromOutside) {
    PagingOwner owner(640, 17);
    owner.put(3, 4);
    EXPECT_EQ(owner.grid.property("Row"), 3);
    EXPECT_EQ(owner.grid.property("Col"), 4);
    EXPECT_EQ(owner.grid.property("Rows"), 20);
    EXPECT_EQ(owner.grid.property("Pointer"), 17);
    EXPECT_EQ(owner.grid.property("HasFocus"), true);
    QString value;
    EXPECT_TRUE(
        QMetaObject::invokeMethod(&owner.grid, "Value", Q_RETURN_ARG(QString, value), Q_ARG(int, 3), Q_ARG(int, 4)));
    EXPECT_EQ(value, u"34"_qs);
}

TEST(AGrid, ReportsThatACellIsLeftAfterAKeyThatFoundNoneToGoTo) {
    for (const int key : {Qt::Key_PageDown, Qt::Key_PageUp}) {
        PagingOwner owner(640, 641);
        owner.pages.setFilePointer(FilePosition(641));
        QObject::disconnect(&owner.grid, &Grid::RequestPreviousPage, nullptr, nullptr);
        owner.press(key);
        owner.grid.setPointer(FilePosition(321));
        owner.grid.setRows(20);
        owner.raised.clear();
        owner.grid.pressMouse(3, 4);
        EXPECT_EQ(owner.raised, QStringList({u"LeaveCell 0,0"_qs, u"EnterCell 3,4"_qs})) << key;
    }
}

TEST(TheDownKey, MovesARowDown) {
    PagingOwner owner(640);
    owner.put(2, 3);
    EXPECT_EQ(owner.press(Qt::Key_Down), QStringList({u"LeaveCell 2,3"_qs, u"EnterCell 3,3"_qs}));
}

TEST(TheDownKey, OnTheLastRowAsksForTheNext) {
    PagingOwner owner(640);
    owner.put(19, 3);
    const QStringList raised = owner.press(Qt::Key_Down);
    EXPECT_EQ(raised.mid(0, 2), QStringList({u"LeaveCell 19,3"_qs, u"RequestNextRow"_qs}));
    EXPECT_EQ(raised.last(), u"EnterCell 19,3"_qs);
    EXPECT_EQ(raised.count(u"LeaveCell 19,3"_qs), 1);
    EXPECT_EQ(owner.pointer(), 17);
}

TEST(TheDownKey, WithoutDataBelowThePageRaisesNothing) {
    PagingOwner owner(320);
    owner.put(19, 3);
    EXPECT_EQ(owner.press(Qt::Key_Down), QStringList());
    EXPECT_EQ(owner.grid.cell(), (HexCell{19, 3}));
}

TEST(TheDownKey, DoesNotGoWhereThereIsNoByte) {
    PagingOwner owner(20);
    owner.put(0, 7);
    EXPECT_EQ(owner.press(Qt::Key_Down), QStringList());
    EXPECT_EQ(owner.grid.cell(), (HexCell{0, 7}));
    owner.put(0, 3);
    owner.press(Qt::Key_Down);
    EXPECT_EQ(owner.grid.cell(), (HexCell{1, 3}));
}

TEST(TheDownKey, StaysWhenThePageDoesNotMove) {
    PagingOwner owner(321);
    owner.put(19, 3);
    EXPECT_EQ(owner.press(Qt::Key_Down),
              QStringList({u"LeaveCell 19,3"_qs, u"RequestNextRow"_qs, u"EnterCell 19,3"_qs}));
    EXPECT_EQ(owner.pointer(), 1);
}

TEST(TheUpKey, MovesARowUpOrAsksForThePreviousOne) {
    PagingOwner owner(640, 33);
    owner.put(1, 3);
    EXPECT_EQ(owner.press(Qt::Key_Up), QStringList({u"LeaveCell 1,3"_qs, u"EnterCell 0,3"_qs}));
    const QStringList raised = owner.press(Qt::Key_Up);
    EXPECT_EQ(raised.mid(0, 2), QStringList({u"LeaveCell 0,3"_qs, u"RequestPreviousRow"_qs}));
    EXPECT_EQ(owner.pointer(), 17);
    EXPECT_EQ(owner.grid.cell(), (HexCell{0, 3}));
}

TEST(TheUpKey, AtTheTopOfTheFileRaisesNothing) {
    PagingOwner owner(640);
    owner.put(0, 3);
    EXPECT_EQ(owner.press(Qt::Key_Up), QStringList());
}

TEST(TheLeftKey, GoesBackThroughTheRowsAndAsksForThePreviousOne) {
    PagingOwner owner(640, 33);
    owner.put(1, 1);
    EXPECT_EQ(owner.press(Qt::Key_Left).last(), u"EnterCell 1,0"_qs);
    EXPECT_EQ(owner.press(Qt::Key_Left).last(), u"EnterCell 0,15"_qs);
    owner.put(0, 0);
    const QStringList raised = owner.press(Qt::Key_Left);
    EXPECT_EQ(raised.mid(0, 2), QStringList({u"LeaveCell 0,0"_qs, u"RequestPreviousRow"_qs}));
    EXPECT_EQ(raised.last(), u"EnterCell 0,15"_qs);
    EXPECT_EQ(owner.pointer(), 17);
}

TEST(TheLeftKey, AtTheFirstByteRaisesNothing) {
    PagingOwner owner(640);
    EXPECT_EQ(owner.press(Qt::Key_Left), QStringList());
    EXPECT_EQ(owner.grid.cell(), (HexCell{0, 0}));
}

TEST(TheRightKey, GoesOnThroughTheRowsAndAsksForTheNext) {
    PagingOwner owner(640);
    owner.put(0, 14);
    EXPECT_EQ(owner.press(Qt::Key_Right).last(), u"EnterCell 0,15"_qs);
    EXPECT_EQ(owner.press(Qt::Key_Right).last(), u"EnterCell 1,0"_qs);
    owner.put(19, 15);
    const QStringList raised = owner.press(Qt::Key_Right);
    EXPECT_EQ(raised.mid(0, 2), QStringList({u"LeaveCell 19,15"_qs, u"RequestNextRow"_qs}));
    EXPECT_EQ(raised.last(), u"EnterCell 19,0"_qs);
    EXPECT_EQ(owner.pointer(), 17);
}

TEST(TheRightKey, OnTheLastByteRaisesNothing) {
    for (const qint64 length : {1, 15, 16, 17, 319, 320}) {
        PagingOwner owner(length);
        const HexCell last{static_cast<int>((length - 1) / 16), static_cast<int>((length - 1) % 16)};
        owner.put(last.row, last.col);
        EXPECT_EQ(owner.press(Qt::Key_Right), QStringList());
        EXPECT_EQ(owner.grid.cell(), last);
    }
}

TEST(ThePageDownKey, AsksForTheNextPageAndKeepsTheCell) {
    PagingOwner owner(1000);
    owner.put(3, 4);
    const QStringList raised = owner.press(Qt::Key_PageDown);
    EXPECT_EQ(raised.mid(0, 2), QStringList({u"LeaveCell 3,4"_qs, u"RequestNextPage"_qs}));
    EXPECT_EQ(raised.last(), u"EnterCell 3,4"_qs);
    EXPECT_EQ(owner.pointer(), 321);
}

TEST(ThePageDownKey, OnTheLastPageGoesToTheLastByteWhenItsCellHasNone) {
    PagingOwner owner(1000, 641);
    owner.put(18, 9);
    owner.press(Qt::Key_PageDown);
    EXPECT_EQ(owner.pointer(), 961);
    EXPECT_EQ(owner.grid.cell(), (HexCell{2, 7}));
    EXPECT_EQ(owner.press(Qt::Key_PageDown),
              QStringList({u"LeaveCell 2,7"_qs, u"RequestNextPage"_qs, u"EnterCell 2,7"_qs}));
}

TEST(ThePageDownKey, WithCtrlGoesToTheLastRow) {
    PagingOwner owner(640);
    owner.put(3, 4);
    EXPECT_EQ(owner.press(Qt::Key_PageDown, Qt::ControlModifier).last(), u"EnterCell 19,4"_qs);
    EXPECT_EQ(owner.pointer(), 1);
}

TEST(ThePageUpKey, AsksForThePreviousPageOrGoesToTheFirstRow) {
    PagingOwner owner(1000, 641);
    owner.put(3, 4);
    EXPECT_EQ(owner.press(Qt::Key_PageUp).mid(0, 2), QStringList({u"LeaveCell 3,4"_qs, u"RequestPreviousPage"_qs}));
    EXPECT_EQ(owner.pointer(), 321);
    EXPECT_EQ(owner.press(Qt::Key_PageUp, Qt::ControlModifier).last(), u"EnterCell 0,4"_qs);
    EXPECT_EQ(owner.pointer(), 321);
}

TEST(TheHomeKey, GoesToTheRowsStartOrWithCtrlToTheFiles) {
    PagingOwner owner(1000, 641);
    owner.put(3, 4);
    EXPECT_EQ(owner.press(Qt::Key_Home), QStringList({u"LeaveCell 3,4"_qs, u"EnterCell 3,0"_qs}));
    const QStringList raised = owner.press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(raised.mid(0, 2), QStringList({u"LeaveCell 3,0"_qs, u"RequestBOF"_qs}));
    EXPECT_EQ(raised.last(), u"EnterCell 0,0"_qs);
    EXPECT_EQ(owner.pointer(), 1);
}

TEST(TheEndKey, GoesToTheRowsEndOrWithCtrlToTheFiles) {
    PagingOwner owner(1000);
    owner.put(3, 4);
    EXPECT_EQ(owner.press(Qt::Key_End), QStringList({u"LeaveCell 3,4"_qs, u"EnterCell 3,15"_qs}));
    const QStringList raised = owner.press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(raised.mid(0, 2), QStringList({u"LeaveCell 3,15"_qs, u"RequestEOF"_qs}));
    EXPECT_EQ(owner.pages.positionOf(owner.grid.cell()).number(), 1000);
}

TEST(TheEndKey, WithCtrlEndsOnTheLastByteOfAnyFile) {
    for (const qint64 length : {1, 15, 16, 17, 48, 304, 319, 320, 321, 335, 336, 640, 2147483647}) {
        PagingOwner owner(length);
        owner.press(Qt::Key_End, Qt::ControlModifier);
        EXPECT_EQ(owner.pages.positionOf(owner.grid.cell()).number(), length);
        EXPECT_EQ(owner.raised.last(), u"EnterCell %1,%2"_qs.arg(owner.grid.Row()).arg(owner.grid.Col()));
    }
}

TEST(TheEndKey, OfAPartialRowStays) {
    PagingOwner owner(5);
    owner.put(0, 2);
    EXPECT_EQ(owner.press(Qt::Key_End), QStringList());
    EXPECT_EQ(owner.grid.cell(), (HexCell{0, 2}));
}

TEST(CtrlKeys, NeedCtrlAlone) {
    PagingOwner owner(1000, 641);
    owner.put(3, 4);
    EXPECT_EQ(owner.press(Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier).last(), u"EnterCell 3,0"_qs);
    owner.press(Qt::Key_Home, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(owner.pointer(), 1);
}

TEST(AGridWithoutTheFocus, NeverAsksForAnotherPage) {
    PagingOwner owner(1000, 321);
    owner.grid.setHasFocus(false);
    owner.put(19, 15);
    QStringList raised;
    for (const int key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_PageDown, Qt::Key_PageUp})
        raised += owner.press(key);
    owner.put(0, 0);
    for (const int key : {Qt::Key_Up, Qt::Key_Left})
        raised += owner.press(key);
    for (const int key : {Qt::Key_Home, Qt::Key_End})
        raised += owner.press(key, Qt::ControlModifier);
    EXPECT_TRUE(raised.filter(u"Request"_qs).isEmpty());
    EXPECT_EQ(owner.pointer(), 321);
}

TEST(ACellThatWasSelected, IsTheOneThatIsLeft) {
    PagingOwner owner(640);
    owner.put(5, 5);
    EXPECT_EQ(owner.press(Qt::Key_Down).first(), u"LeaveCell 5,5"_qs);
    PagingOwner paged(1000);
    paged.put(3, 4);
    paged.press(Qt::Key_PageDown);
    paged.raised.clear();
    paged.grid.pressMouse(7, 7);
    EXPECT_EQ(paged.raised, QStringList({u"LeaveCell 3,4"_qs, u"EnterCell 7,7"_qs}));
}

TEST(AClick, MovesTheCursorWhereThereIsData) {
    PagingOwner owner(325, 17);
    owner.raised.clear();
    owner.grid.pressMouse(3, 4);
    EXPECT_EQ(owner.raised, QStringList({u"LeaveCell 0,0"_qs, u"EnterCell 3,4"_qs}));
    owner.raised.clear();
    owner.grid.pressMouse(3, 4);
    owner.grid.pressMouse(19, 9);
    owner.grid.pressMouse(25, 9);
    owner.grid.pressMouse(3, 16);
    EXPECT_EQ(owner.raised, QStringList());
    EXPECT_EQ(owner.grid.cell(), (HexCell{3, 4}));
    owner.grid.pressMouse(25, 2);
    EXPECT_EQ(owner.grid.cell(), (HexCell{19, 2}));
}

TEST(OtherKeys, AreNotTheGrids) {
    PagingOwner owner(640);
    for (const int key : {Qt::Key_A, Qt::Key_Tab, Qt::Key_F3, Qt::Key_Return, Qt::Key_Insert}) {
        EXPECT_FALSE(owner.grid.pressKey(key, Qt::NoModifier));
    }
}

namespace {

class APane : public testing::Test {
 protected:
    void SetUp() override {
        m_pane.setCursorName(u"Shape1"_qs);
        m_pane.show();
        m_pane.activateWindow();
        m_pane.setFocus();
        QApplication::processEvents();
    }

    QImage picture() { return m_pane.grab().toImage().convertToFormat(QImage::Format_RGB32); }
    QImage cellPicture(HexCell cell) { return picture().copy(m_pane.cellRect(cell)); }
    /// How far the background of a cell is from that of the pane.
    int strength(HexCell cell) {
        const QColor base = m_pane.palette().color(QPalette::Base);
        const QColor corner = cellPicture(cell).pixelColor(1, 1);
        return std::abs(corner.lightness() - base.lightness());
    }

    PagingOwner m_owner{640};
    GridPane m_pane{m_owner.grid, u"00"_qs};
};

}  // namespace

TEST_F(APane, HasTwentyRowsOfNineteenPixels) {
    EXPECT_EQ(m_pane.height(), 380);
    EXPECT_EQ(m_pane.width() % 16, 0);
    EXPECT_EQ(m_pane.cellRect({19, 15}).bottomRight(), m_pane.rect().bottomRight());
}

TEST_F(APane, ShowsTheSameTextAlikeAndOthersNot) {
    m_owner.grid.setValue(5, 5, u"AB"_qs);
    m_owner.grid.setValue(6, 7, u"AB"_qs);
    m_owner.grid.setValue(7, 7, u"CD"_qs);
    EXPECT_EQ(cellPicture({5, 5}), cellPicture({6, 7}));
    EXPECT_NE(cellPicture({5, 5}), cellPicture({7, 7}));
}

TEST_F(APane, ShowsNothingWhereThereIsNoByte) {
    PagingOwner owner(5);
    GridPane pane(owner.grid, u"00"_qs);
    const QImage all = pane.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QImage empty = all.copy(pane.cellRect({0, 5}));
    EXPECT_EQ(empty, all.copy(pane.cellRect({1, 0})));
    empty.fill(pane.palette().color(QPalette::Base));
    EXPECT_EQ(empty, all.copy(pane.cellRect({0, 5})));
    EXPECT_NE(empty, all.copy(pane.cellRect({0, 4})));
}

TEST_F(APane, ShowsItsCursorStrongerWithTheFocus) {
    ASSERT_TRUE(m_owner.grid.HasFocus());
    m_owner.grid.SelectCell(2, 2);
    const int active = strength({2, 2});
    m_owner.grid.setHasFocus(false);
    const int passive = strength({2, 2});
    EXPECT_GT(active, 2 * passive);
    EXPECT_GT(passive, 20);
    EXPECT_EQ(strength({3, 3}), 0);
    m_pane.setCursorShown(false);
    EXPECT_EQ(strength({2, 2}), 0);
}

TEST_F(APane, FollowsADarkPalette) {
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(20, 20, 20));
    dark.setColor(QPalette::Text, QColor(230, 230, 230));
    m_pane.setPalette(dark);
    EXPECT_EQ(cellPicture({4, 4}).pixelColor(0, 0), QColor(20, 20, 20));
    m_owner.grid.SelectCell(4, 4);
    EXPECT_EQ(cellPicture({4, 4}).pixelColor(1, 1), QColor(230, 230, 230));
}

TEST_F(APane, PassesKeysClicksAndFocusOn) {
    QTest::keyClick(&m_pane, Qt::Key_Down);
    EXPECT_EQ(m_owner.grid.cell(), (HexCell{1, 0}));
    QTest::mouseClick(&m_pane, Qt::LeftButton, {}, m_pane.cellRect({7, 8}).center());
    EXPECT_EQ(m_owner.grid.cell(), (HexCell{7, 8}));
    EXPECT_EQ(m_pane.findChild<QWidget*>(u"Shape1"_qs)->geometry(), m_pane.cellRect({7, 8}));
    m_pane.clearFocus();
    EXPECT_FALSE(m_owner.grid.HasFocus());
}

TEST_F(APane, TellsWhatWasTyped) {
    QString all;
    QObject::connect(&m_pane, &GridPane::typed, [&](const QString& text, bool*) { all += text; });
    QTest::keyClicks(&m_pane, u"aB"_qs);
    QTest::keyClick(&m_pane, Qt::Key_Return);
    QTest::keyClick(&m_pane, Qt::Key_Backspace);
    QTest::keyClick(&m_pane, Qt::Key_Delete);
    QTest::keyClick(&m_pane, Qt::Key_F, Qt::AltModifier);
    QInputMethodEvent composed;
    composed.setCommitString(u"\u00E9"_qs);
    QApplication::sendEvent(&m_pane, &composed);
    EXPECT_EQ(all, u"aB\r\b\u00E9"_qs);
}

TEST_F(APane, CountsWholeNotchesOfTheWheel) {
    int turned = 0;
    QObject::connect(&m_pane, &GridPane::wheelTurned, [&](int notches) { turned += notches; });
    const auto turn = [&](int delta) {
        QWheelEvent event(QPointF(5, 5), m_pane.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&m_pane, &event);
    };
    turn(-120);
    EXPECT_EQ(turned, -1);
    turn(-60);
    turn(-60);
    EXPECT_EQ(turned, -2);
    turn(-60);
    turn(120);
    EXPECT_EQ(turned, -1);
}

TEST_F(APane, PaintsAllBytesOfAMatchOnAnotherGround) {
    m_pane.setMatches([](HexCell cell) { return cell.row == 1 && cell.col > 2 && cell.col < 6; });
    m_pane.update();
    const QImage picture = m_pane.grab().toImage();
    const auto groundOf = [&](HexCell cell) {
        return picture.pixelColor(m_pane.cellRect(cell).topLeft() + QPoint(1, 1));
    };
    const HexColours::Cell look = HexColours::cell(m_pane.palette(), false, true);
    for (const int col : {3, 4, 5}) {
        EXPECT_EQ(groundOf({1, col}), look.ground) << col;
    }
    for (const HexCell cell : {HexCell{1, 2}, HexCell{1, 6}, HexCell{2, 4}}) {
        EXPECT_EQ(groundOf(cell), m_pane.palette().color(QPalette::Base));
    }
}

TEST_F(APane, PaintsTheCursorOfAPassivePaneInAMatchOnTheGroundOfTheMatch) {
    m_pane.setMatches([](HexCell cell) { return cell == HexCell{0, 0}; });
    m_pane.clearFocus();
    const QImage picture = m_pane.grab().toImage();
    EXPECT_EQ(picture.pixelColor(m_pane.cellRect({0, 0}).topLeft() + QPoint(2, 2)),
              HexColours::cell(m_pane.palette(), false, true).ground);
}

TEST_F(APane, HasABorderOfTwoPixelsWhileItIsInUse) {
    m_pane.setBorder(true);
    const QImage picture = m_pane.grab().toImage();
    const QColor border = HexColours::border(m_pane.palette());
    for (const int inset : {0, 1}) {
        EXPECT_EQ(picture.pixelColor(picture.width() - 1 - inset, picture.height() / 2), border) << inset;
        EXPECT_EQ(picture.pixelColor(40, picture.height() - 1 - inset), border) << inset;
    }
}
