#include "hex/HexFixture.h"

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

TEST_F(HexMarks, MoveThePaneOfDigitsAloneWhenTheOtherIsInUse) {
    open(someBytes(1000));
    m_hex->AddBookMark(u"1FF"_qs, u"511"_qs, false);
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    m_hex->cmdFirstBookmark();
    EXPECT_EQ(pointer(), 497);
    EXPECT_EQ(grid(1)->cell(), (HexCell{0, 15}));
    EXPECT_EQ(grid(2)->cell(), (HexCell{0, 1}));
    EXPECT_EQ(info(3), u"497"_qs);
    EXPECT_TRUE(pane(2)->hasFocus());
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
