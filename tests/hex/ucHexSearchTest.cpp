#include "hex/HexFixture.h"

#include <QSignalSpy>

namespace {

using FindingInHex = HexFixture;

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
    EXPECT_TRUE(m_hex->FindNextStr(u"6162"_qs));
    EXPECT_EQ(cursor(), 6);
    EXPECT_TRUE(m_hex->FindPrevStr(u"2E41 42"_qs));
    EXPECT_EQ(cursor(), 2);
    press(Qt::Key_Home, Qt::ControlModifier);
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

TEST_F(FindingInHex, ShowsTheWholeMatchInBothPanesUntilTheCursorLeavesIt) {
    QByteArray bytes(1000, '.');
    bytes.replace(510, 4, "abcd");
    open(bytes);
    const auto found = [this] {
        QList<int> cells;
        for (int cell = 0; cell < 320; ++cell) {
            const HexCell at{cell / 16, cell % 16};
            EXPECT_EQ(pane(1)->isFound(at), pane(2)->isFound(at));
            if (pane(1)->isFound(at))
                cells += cell;
        }
        return cells;
    };
    const QList<int> whole{14, 15, 16, 17};
    EXPECT_EQ(m_hex->FindDown(u"ABCD"_qs, 1), 511);
    EXPECT_EQ(found(), whole);
    EXPECT_EQ(m_hex->FindDown(u"none"_qs, 1), -1);
    EXPECT_EQ(found(), whole);
    press(Qt::Key_Right);
    EXPECT_EQ(found(), whole);
    m_hex->MovePreviousLine();
    EXPECT_EQ(found(), QList<int>({30, 31, 32, 33}));
    m_hex->MoveNextLine();
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_EQ(found(), QList<int>());
    EXPECT_EQ(m_hex->FindDown(u"63 64 "_qs, 0), 513);
    EXPECT_EQ(found(), QList<int>({0, 1}));
    open(bytes);
    EXPECT_EQ(found(), QList<int>());
}

TEST_F(FindingInHex, AMatchLongerThanThePageFillsIt) {
    open(QByteArray(1000, 'a'));
    EXPECT_EQ(m_hex->FindDown(QString(400, u'a'), 2), 2);
    EXPECT_FALSE(pane(1)->isFound({0, 0}));
    EXPECT_TRUE(pane(1)->isFound({0, 1}));
    EXPECT_TRUE(pane(1)->isFound({19, 15}));
}

TEST_F(FindingInHex, SaysOfReplacedAndFilledBytesThatSaveAsWritesThem) {
    const QString notice = u"Save As writes what was replaced or filled."_qs;
    QSignalSpy changed(m_hex.get(), &ucHex::LimitationsChanged);
    open("abc abc");
    EXPECT_EQ(m_hex->limitations(), QString());
    EXPECT_EQ(m_hex->ReplaceAll(u"none"_qs, u"31 "_qs, 2), 0);
    EXPECT_EQ(m_hex->limitations(), QString());
    EXPECT_EQ(m_hex->ReplaceAll(u"abc"_qs, u"31 "_qs, 2), 2);
    EXPECT_EQ(m_hex->limitations(), notice);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(m_hex->SaveFile(at(u"file"_qs), false));
    EXPECT_EQ(m_hex->limitations(), notice);
    EXPECT_TRUE(m_hex->SaveFile(at(u"other"_qs), true));
    EXPECT_EQ(m_hex->limitations(), QString());
    EXPECT_EQ(changed.count(), 2);
    m_hex->ReplaceBytes(u"32 "_qs, 1);
    EXPECT_EQ(m_hex->limitations(), notice);
    open("abc");
    EXPECT_EQ(m_hex->limitations(), QString());
    m_hex->fillBlock(Offset(0), Offset(1), 0);
    EXPECT_EQ(m_hex->limitations(), notice);
    type(u"41"_qs);
    EXPECT_TRUE(m_hex->SaveFile(at(u"file"_qs), false));
    EXPECT_EQ(m_hex->limitations(), QString());
    EXPECT_EQ(bytesOf(at(u"file"_qs)), QByteArray("A\0c", 3));
}
