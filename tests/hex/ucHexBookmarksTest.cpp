#include "hex/HexFixture.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QSignalSpy>

#include <malloc.h>

namespace {

using HexMarks = HexFixture;

}  // namespace

TEST_F(HexMarks, AreMadeAtTheCursorAndOnce) {
    open(someBytes(400));
    select(1, 15);
    m_hex->cmdBookmark();
    m_hex->cmdBookmark_old();
    EXPECT_EQ(bookmarkTexts(), QStringList(u"1 - (1F,31)"_qs));
    EXPECT_EQ(m_prompts.messages, QStringList(u"Bookmark already exists!"_qs));
    EXPECT_TRUE(pane(1)->hasFocus());
}

TEST_F(HexMarks, OfAllMatchesAreSilentAndCountThoseThatWere) {
    open("ab.ab.ab");
    m_hex->AddBookMark(u"3"_qs, u"3"_qs, true);
    EXPECT_EQ(m_hex->MarkAll(u"61 62 "_qs, 0), 3);
    EXPECT_EQ(bookmarkTexts(), QStringList({u"1 - (3,3)"_qs, u"2 - (0,0)"_qs, u"3 - (6,6)"_qs}));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_EQ(bookmarks()->currentIndex().row(), 2);
}

TEST_F(HexMarks, AreVisitedInTheOrderOfTheList) {
    open(someBytes(1000));
    for (const int offset : {500, 31, 700})
        m_hex->AddBookMark(QString::number(offset, 16).toUpper(), QString::number(offset), false);
    m_hex->cmdFirstBookmark();
    EXPECT_EQ(cursor(), 501);
    EXPECT_EQ(grid(1)->Row(), 0);
    EXPECT_EQ(info(3), u"500"_qs);
    m_hex->cmdPreviousBookmark();
    EXPECT_EQ(cursor(), 501);
    m_hex->cmdNextBookmark();
    EXPECT_EQ(cursor(), 32);
    m_hex->cmdLastBookmark();
    EXPECT_EQ(cursor(), 701);
    press(Qt::Key_Home, Qt::ControlModifier);
    m_hex->cmdNextBookmark();
    EXPECT_EQ(cursor(), 701);
    const QRect row = bookmarks()->visualRect(bookmarks()->model()->index(1, 0));
    QTest::mouseClick(bookmarks()->viewport(), Qt::LeftButton, {}, row.center());
    EXPECT_EQ(cursor(), 32);
    QTest::keyClick(bookmarks(), Qt::Key_Up);
    QTest::keyClick(bookmarks(), Qt::Key_Return);
    EXPECT_EQ(cursor(), 501);
}

TEST_F(HexMarks, MoveTheCursorsOfBothPanesWhicheverIsInUse) {
    open(someBytes(1000));
    m_hex->AddBookMark(u"1FF"_qs, u"511"_qs, false);
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    m_hex->cmdFirstBookmark();
    EXPECT_EQ(pointer(), 497);
    EXPECT_EQ(grid(1)->cell(), (HexCell{0, 15}));
    EXPECT_EQ(grid(2)->cell(), (HexCell{0, 15}));
    EXPECT_EQ(info(3), u"511"_qs);
    EXPECT_TRUE(pane(2)->hasFocus());
    type(u"Z"_qs);
    QByteArray expected = someBytes(1000);
    expected[511] = 'Z';
    EXPECT_EQ(workingBytes(), expected);
}

TEST_F(HexMarks, AreRemovedOneOrAllWithoutMovingTheView) {
    open(someBytes(1000));
    for (const int offset : {1, 2, 3})
        m_hex->AddBookMark(QString::number(offset), QString::number(offset), false);
    m_hex->cmdFirstBookmark();
    select(5, 5);
    m_hex->DeleteBookmark();
    EXPECT_EQ(cursor(), 86);
    m_hex->AddBookMark(u"4"_qs, u"4"_qs, false);
    EXPECT_EQ(bookmarkTexts(), QStringList({u"2 - (2,2)"_qs, u"3 - (3,3)"_qs, u"3 - (4,4)"_qs}));
    m_hex->cmdClearBookmark();
    EXPECT_TRUE(bookmarkTexts().isEmpty());
    m_hex->DeleteBookmark();
    for (const auto go :
         {&ucHex::cmdFirstBookmark, &ucHex::cmdLastBookmark, &ucHex::cmdNextBookmark, &ucHex::cmdPreviousBookmark})
        (m_hex.get()->*go)();
    EXPECT_EQ(cursor(), 86);
}

TEST_F(HexMarks, TakeNoTextThatIsNoOffset) {
    open(someBytes(100));
    for (const auto& text : {u""_qs, u"x"_qs, u"-1"_qs, u"2147483647"_qs, u"99999999999999999999"_qs})
        m_hex->AddBookMark(text, text, false);
    EXPECT_TRUE(bookmarkTexts().isEmpty());
    m_hex->AddBookMark(u"7FFFFFFE"_qs, u"2147483646"_qs, false);
    EXPECT_EQ(bookmarkTexts(), QStringList(u"1 - (7FFFFFFE,2147483646)"_qs));
}

TEST_F(HexMarks, OfAMillionMatchesTakeTwentyFourMegabytes) {
    constexpr qsizetype Million = 1'000'000;
    constexpr size_t MostBytes = 24'000'000;
    open(QByteArray(Million, '\0'));
    const auto held = [] {
        const struct mallinfo2 info = mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    const size_t before = held();
    EXPECT_EQ(m_hex->MarkAll(u"00 "_qs, 0), Million);
    QApplication::processEvents();
    EXPECT_LE(held(), before + MostBytes);
    EXPECT_EQ(bookmarks()->currentIndex().row(), Million - 1);
    EXPECT_EQ(bookmarks()->currentIndex().data().toString(), u"1000000 - (F423F,999999)"_qs);
    EXPECT_EQ(bookmarks()->indexAt(bookmarks()->viewport()->rect().bottomLeft() - QPoint(0, 20)).row() > Million - 40,
              true);
    m_hex->cmdClearBookmark();
    QApplication::processEvents();
    EXPECT_LE(held(), before + MostBytes / 2);
}

TEST_F(HexMarks, AskForTheirMenuAtTheReleaseOfTheRightButtonWhereThePointerIs) {
    open(someBytes(400));
    m_hex->cmdBookmark();
    QSignalSpy asked(m_hex.get(), &ucHex::ContextMenuRequest);
    QWidget* const viewport = bookmarks()->viewport();
    const QPoint at = bookmarks()->visualRect(bookmarks()->currentIndex()).center();
    QTest::mousePress(viewport, Qt::RightButton, {}, at);
    QContextMenuEvent byPress(QContextMenuEvent::Mouse, at, viewport->mapToGlobal(at));
    QApplication::sendEvent(viewport, &byPress);
    EXPECT_EQ(asked.count(), 0);
    QTest::mouseRelease(viewport, Qt::RightButton, {}, at);
    ASSERT_EQ(asked.count(), 1);
    const auto place = [&](int call) { return QPoint(asked[call][0].toInt(), asked[call][1].toInt()); };
    EXPECT_EQ(place(0), viewport->mapTo(m_hex.get(), at));
    EXPECT_EQ(asked[0][2].toString(), u"BOOK"_qs);
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(viewport, &byKey);
    ASSERT_EQ(asked.count(), 2);
    const QPoint row = bookmarks()->visualRect(bookmarks()->currentIndex()).bottomLeft();
    EXPECT_EQ(place(1), viewport->mapTo(m_hex.get(), row));
}

TEST_F(HexMarks, StandUnderTheirHeading) {
    open(someBytes(400));
    const auto* heading = bookmarks()->findChild<QHeaderView*>();
    ASSERT_NE(heading, nullptr);
    EXPECT_TRUE(heading->isVisible());
    EXPECT_GT(heading->height(), 10);
    EXPECT_EQ(heading->geometry().bottom() + 1, bookmarks()->viewport()->geometry().top());
    EXPECT_EQ(heading->model()->headerData(0, Qt::Horizontal).toString(), u"Bookmarks"_qs);
}
