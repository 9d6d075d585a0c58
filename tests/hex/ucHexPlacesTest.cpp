#include "hex/HexFixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>

#include <unistd.h>

#include <cerrno>

namespace {

using FindingInHex = HexFixture;
using HexMarks = HexFixture;
using HexPlaces = HexFixture;

}  // namespace

TEST_F(FindingInHex, BringsTheMatchToTheTopRowAndTellsOfTheSearch) {
    QByteArray bytes(1000, '.');
    bytes.replace(500, 3, "abc");
    open(bytes);
    QSignalSpy done(m_hex.get(), &ucHex::SearchDone);
    EXPECT_EQ(m_hex->FindDown(u"abc"_qs, 2), 501);
    EXPECT_EQ(pointer(), 497);
    EXPECT_EQ(grid(1)->cell(), (HexCell{0, 4}));
    EXPECT_EQ(grid(2)->cell(), (HexCell{0, 4}));
    EXPECT_EQ(info(3), u"500"_qs);
    EXPECT_TRUE(pane(2)->hasFocus());
    ASSERT_EQ(done.count(), 1);
    EXPECT_EQ(done[0][0].toString(), u"abc"_qs);
    EXPECT_EQ(done[0][1].toInt(), 2);
    EXPECT_EQ(m_hex->FindDown(u"61 62 63 "_qs, 0), 501);
    EXPECT_TRUE(pane(1)->hasFocus());
    EXPECT_EQ(m_hex->FindDown(u"none"_qs, 1), -1);
    EXPECT_EQ(done.count(), 3);
    EXPECT_EQ(cursor(), 501);
}

TEST_F(FindingInHex, StoresTheSearchForAllViews) {
    open("abc abc abc");
    EXPECT_EQ(m_hex->FindUp(u"ABC"_qs, 1), 9);
    EXPECT_EQ(m_findState.LastFindText, u"ABC"_qs);
    EXPECT_EQ(m_findState.LastFindType, HexFindType::AnyCase);
    EXPECT_EQ(m_findState.LastFindDirection, HexFindDirection::Up);
    EXPECT_FALSE(m_findState.HexFindActive);
}

TEST_F(FindingInHex, OnTheLastByteFindsNothingAndStoresNothing) {
    open("abc abc");
    press(Qt::Key_End, Qt::ControlModifier);
    press(Qt::Key_Right);
    EXPECT_EQ(cursor(), 7);
    QSignalSpy done(m_hex.get(), &ucHex::SearchDone);
    EXPECT_EQ(m_hex->FindDown(u"abc"_qs, 2), -1);
    EXPECT_TRUE(m_findState.LastFindText.isEmpty());
    EXPECT_EQ(done.count(), 1);
}

TEST_F(FindingInHex, GoesOnOnlyWhenTheOptionSaysSo) {
    open("abc .......");
    select(0, 5);
    EXPECT_EQ(m_hex->FindDown(u"abc"_qs, 2), 1);
    select(0, 5);
    m_options.ContinueSearch = false;
    EXPECT_EQ(m_hex->FindDown(u"abc"_qs, 2), -1);
    EXPECT_EQ(m_hex->FindUp(u"abc"_qs, 2), 1);
    EXPECT_EQ(m_hex->FindUp(u"abc"_qs, 2), -1);
    m_options.ContinueSearch = true;
    EXPECT_EQ(m_hex->FindUp(u"abc"_qs, 2), 1);
}

TEST_F(FindingInHex, FromTheBarIsMeantAsThePaneInUseShowsIt) {
    open("..AB ab \xAB");
    EXPECT_TRUE(m_hex->FindNextStr(u"AB "_qs));
    EXPECT_EQ(cursor(), 9);
    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_FALSE(m_hex->FindNextStr(u"no bytes"_qs));
    press(Qt::Key_Tab);
    m_options.CaseSensitiveOn = true;
    EXPECT_TRUE(m_hex->FindNextStr(u"ab"_qs));
    EXPECT_EQ(cursor(), 6);
    m_options.CaseSensitiveOn = false;
    EXPECT_TRUE(m_hex->FindPrevStr(u"ab"_qs));
    EXPECT_EQ(cursor(), 3);
    EXPECT_TRUE(m_hex->FindNextStr(QString()));
    EXPECT_EQ(cursor(), 6);
}

TEST_F(FindingInHex, IsRepeatedOnceSomethingWasFound) {
    open("abc abc abc");
    EXPECT_EQ(m_hex->FindDown(u"abc"_qs, 2), 5);
    m_hex->FindNextItem();
    EXPECT_EQ(cursor(), 5);
    m_findState.HexFindActive = true;
    m_hex->FindNextItem();
    EXPECT_EQ(cursor(), 9);
    press(Qt::Key_F3);
    EXPECT_EQ(cursor(), 1);
    m_findState.LastFindText = u"none"_qs;
    m_hex->FindNextItem();
    press(Qt::Key_F3);
    EXPECT_EQ(m_prompts.messages, QStringList({u"Not Found"_qs, QString()}));
}

TEST_F(FindingInHex, CountsAndReplaces) {
    open("\xAA\xAA\xAA abc");
    EXPECT_EQ(m_hex->CountBytes(u"AA AA "_qs, 0), 2);
    EXPECT_EQ(m_hex->CountBytes(u"ABC"_qs, 1), 1);
    EXPECT_EQ(m_hex->CountBytes(u"ABC"_qs, 2), 0);
    EXPECT_EQ(m_hex->CountBytes(u"no bytes"_qs, 0), 0);
    EXPECT_EQ(m_hex->ReplaceAll(u"ABC"_qs, u"31 32 33 34 "_qs, 1), 1);
    EXPECT_EQ(workingBytes(), "\xAA\xAA\xAA 123");
    m_hex->ReplaceBytes(u"41 42 43 "_qs, 6);
    EXPECT_EQ(workingBytes(), "\xAA\xAA\xAA 1AB");
}

TEST_F(FindingInHex, WithoutAFileFindsNothing) {
    EXPECT_EQ(m_hex->FindDown(u"a"_qs, 2), -1);
    EXPECT_EQ(m_hex->FindUp(u"a"_qs, 2), -1);
    EXPECT_EQ(m_hex->CountBytes(u"a"_qs, 2), 0);
    EXPECT_EQ(m_hex->MarkAll(u"a"_qs, 2), 0);
    EXPECT_EQ(m_hex->ReplaceAll(u"a"_qs, u"41 "_qs, 2), 0);
}

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

TEST_F(HexPlaces, OfATypedOffsetAreOneByteBehindIt) {
    open(someBytes(1000));
    press(Qt::Key_Tab);
    m_hex->gotoOffset(0);
    EXPECT_EQ(cursor(), 2);
    EXPECT_TRUE(pane(1)->hasFocus());
    m_hex->gotoOffset(15);
    EXPECT_EQ(cursor(), 17);
}

TEST_F(HexPlaces, BehindTheEndShowTheLastRowAndLeaveTheCursorOnAByte) {
    open(someBytes(1000));
    select(0, 3);
    m_hex->gotoOffset(99999);
    EXPECT_EQ(pointer(), 993);
    EXPECT_EQ(grid(1)->cell(), (HexCell{0, 3}));
    m_hex->MoveFirstPage();
    select(9, 12);
    m_hex->gotoOffset(99999);
    EXPECT_EQ(cursor(), 1000);
}

TEST_F(HexPlaces, OfAPageBeginIt) {
    open(someBytes(640));
    m_hex->gotoPage(2);
    EXPECT_EQ(pointer(), 321);
    m_hex->gotoPage(99);
    EXPECT_EQ(pointer(), 641);
    EXPECT_EQ(info(4), u"3/2"_qs);
    for (int col = 0; col < 16; ++col) {
        EXPECT_EQ(grid(1)->Value(0, col), u"-1"_qs);
    }
    type(u"ff"_qs);
    EXPECT_EQ(workingBytes(), someBytes(640));
    m_hex->MovePreviousLine();
    EXPECT_EQ(pointer(), 625);
    expectShown(someBytes(640));
}

TEST_F(HexPlaces, OfABlockAreCopiedAsText) {
    open(someBytes(40));
    m_hex->copyBlock(Offset(2), Offset(1), BlockForm::HexValues);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"01 02 "_qs);
    m_hex->copyBlock(Offset(39), Offset(90), BlockForm::CSource);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"unsigned char data[1] = {\r\n\t0x27\r\n};"_qs);
}

TEST_F(HexPlaces, OfABlockTooLargeForTheClipboardAreRefused) {
    const QString path = file({});
    ASSERT_EQ(::truncate(path.toUtf8().constData(), 2147483647), 0);
    ASSERT_TRUE(m_hex->OpenFile(path));
    QGuiApplication::clipboard()->setText(u"before"_qs);
    m_hex->copyBlock(Offset(0), Offset(2147483646), BlockForm::CSource);
    EXPECT_EQ(m_prompts.messages, QStringList(SystemError::fromErrno(ENOMEM).description));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"before"_qs);
}
