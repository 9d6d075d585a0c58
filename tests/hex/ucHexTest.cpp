#include "hex/HexFixture.h"
#include "widgets/Contrast.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QToolBar>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

using TheHexView = HexFixture;
using TypingInHex = HexFixture;
using SavingHex = HexFixture;

QString reasonOf(int number) {
    return SystemError::fromErrno(number).description;
}

}  // namespace

TEST_F(TheHexView, IsShutUntilAFileIsLoaded) {
    EXPECT_FALSE(m_hex->FileOpen());
    for (const auto& name : {u"PicHex"_qs, u"PicText"_qs, u"VScroll1"_qs, u"tbScroll.MoveNextPage"_qs}) {
        EXPECT_FALSE(part<QWidget>(name)->isEnabled()) << name.toStdString();
    }
    for (const auto& name : {u"Shape1"_qs, u"Shape2"_qs, u"Sign(0)"_qs, u"Sign(1)"_qs, u"lblSelect"_qs}) {
        EXPECT_FALSE(part<QWidget>(name)->isVisible()) << name.toStdString();
    }
    EXPECT_EQ(info(1), u"000 "_qs);
    EXPECT_EQ(info(4), u"0 of 0 "_qs);
    EXPECT_EQ(info(5), u"0 Bytes "_qs);
    EXPECT_EQ(info(7), u"Text"_qs);
    EXPECT_EQ(info(8), u"0 Bytes "_qs);
}

TEST_F(TheHexView, ShowsTheFirstPageOfAFile) {
    const QByteArray bytes = someBytes(1000);
    QSignalSpy enabled(m_hex.get(), &ucHex::HexEnabled);
    QSignalSpy disabled(m_hex.get(), &ucHex::HexDisabled);
    open(bytes);
    expectShown(bytes);
    EXPECT_EQ(enabled.count(), 1);
    EXPECT_EQ(disabled.count(), 1);
    EXPECT_EQ(info(0), u"00"_qs);
    EXPECT_EQ(info(4), u"1/4"_qs);
    EXPECT_EQ(info(5), u"1000"_qs);
    EXPECT_EQ(info(8), u"320"_qs);
    EXPECT_EQ(m_hex->GetCursorPos(), u"Pg 1/4, Pos 0/999"_qs);
    EXPECT_TRUE(scrollBar()->isEnabled());
    EXPECT_FALSE(part<QWidget>(u"ProgressBar1"_qs)->isVisible());
    EXPECT_TRUE(part<QWidget>(u"Shape1"_qs)->isVisible());
    EXPECT_EQ(part<OffsetPane>(u"PicOffSet"_qs)->texts().size(), 20);
    EXPECT_EQ(part<OffsetPane>(u"PicOffSet"_qs)->texts().last(), u"0000000304"_qs);
}

TEST_F(TheHexView, ShowsFilesOfEverySizeAroundARowAndAPage) {
    for (const qsizetype length : {1, 5, 15, 16, 17, 319, 320, 321, 335, 336, 640}) {
        const QByteArray bytes = someBytes(length);
        open(bytes);
        expectShown(bytes);
        EXPECT_EQ(scrollBar()->isEnabled(), length > 320);
        EXPECT_EQ(part<OffsetPane>(u"PicOffSet"_qs)->texts().size(), std::min<qsizetype>((length + 15) / 16, 20));
        scroll(u"MoveLastPage"_qs);
        expectShown(bytes);
        press(Qt::Key_End, Qt::ControlModifier);
        EXPECT_EQ(cursor(), length);
        EXPECT_EQ(info(3), QString::number(length - 1));
    }
}

TEST_F(TheHexView, ReachesTheLastPositionThereIs) {
    const QString path = file({});
    ASSERT_EQ(::truncate(path.toUtf8().constData(), 2147483647), 0);
    ASSERT_TRUE(m_hex->OpenFile(path));
    m_hex->MoveLastPage();
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(cursor(), 2147483647);
    EXPECT_EQ(info(2), u"7FFFFFFE"_qs);
    type(u"fe"_qs);
    EXPECT_EQ(info(0), u"FE"_qs);
    EXPECT_EQ(m_hex->GetCursorPos(), u"Pg 6710887/6710887, Pos 2147483646/2147483646"_qs);
    m_hex->gotoOffset(2147483646);
    EXPECT_EQ(pointer(), 2147483633);
    m_hex->gotoOffset(2147483647);
    m_hex->gotoOffset(4294967296);
    EXPECT_EQ(pointer(), 2147483633);
}

TEST_F(TheHexView, RefusesALongerFileWithTheSystemsWords) {
    const QString path = file({});
    ASSERT_EQ(::truncate(path.toUtf8().constData(), 2147483648), 0);
    EXPECT_FALSE(m_hex->OpenFile(path));
    EXPECT_EQ(m_prompts.messages, QStringList(reasonOf(EFBIG)));
    EXPECT_FALSE(m_hex->FileOpen());
    EXPECT_FALSE(pane(1)->isEnabled());
}

TEST_F(TheHexView, StaysAsItWasForAFileWithoutBytes) {
    const QByteArray bytes = someBytes(400);
    open(bytes);
    select(2, 3);
    EXPECT_FALSE(m_hex->OpenFile(file({}, u"empty"_qs)));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_TRUE(m_hex->FileOpen());
    EXPECT_EQ(cursor(), 36);
    expectShown(bytes);
}

TEST_F(TheHexView, IsShutWhenAFileCannotBeLoaded) {
    open(someBytes(400));
    EXPECT_FALSE(m_hex->OpenFile(at(u"none"_qs)));
    EXPECT_EQ(m_prompts.messages, QStringList(reasonOf(ENOENT)));
    EXPECT_FALSE(m_hex->FileOpen());
    EXPECT_FALSE(pane(1)->isEnabled());
    ASSERT_EQ(::mkfifo(at(u"pipe"_qs).toUtf8().constData(), 0600), 0);
    EXPECT_FALSE(m_hex->OpenFile(at(u"pipe"_qs)));
    open(someBytes(20));
}

TEST_F(TheHexView, LoadsASecondFileUnderTheSameWorkingName) {
    open(someBytes(400));
    const QString name = m_hex->TempFileName();
    type(u"ff"_qs);
    m_hex->cmdBookmark();
    m_hex->MoveLastPage();
    open("another");
    EXPECT_EQ(m_hex->TempFileName(), name);
    expectShown("another");
    EXPECT_FALSE(m_hex->Modified());
    EXPECT_TRUE(bookmarkTexts().isEmpty());
    m_hex->cmdUndo();
    EXPECT_EQ(workingBytes(), "another");
    m_hex.reset();
    EXPECT_FALSE(QFile::exists(name));
}

TEST_F(TheHexView, CanGoDuringALoad) {
    // The program's block is longer than this file, so progress is called once, and runs the event loop once.
    const QString path = file(someBytes(1000));
    QMetaObject::invokeMethod(
        qApp, [this] { m_hex.reset(); }, Qt::QueuedConnection);
    ucHex* const hex = m_hex.get();
    EXPECT_FALSE(hex->OpenFile(path));
    EXPECT_EQ(m_hex, nullptr);
}

TEST_F(TheHexView, MovesThePageByItsButtons) {
    const QByteArray bytes = someBytes(1000);
    open(bytes);
    const std::pair<QString, int> moves[] = {{u"MoveNextLine"_qs, 17},      {u"MoveNextPage"_qs, 337},
                                             {u"MovePreviousLine"_qs, 321}, {u"MovePreviousPage"_qs, 1},
                                             {u"MoveLastPage"_qs, 689},     {u"MoveFirstPage"_qs, 1}};
    for (const auto& [key, expected] : moves) {
        scroll(key);
        EXPECT_EQ(pointer(), expected) << key.toStdString();
        expectShown(bytes);
    }
    EXPECT_EQ(grid(1)->cell(), (HexCell{0, 0}));
}

TEST_F(TheHexView, NamesItsButtonsForThePointer) {
    QStringList tips;
    for (const QAction* action : part<QToolBar>(u"tbScroll"_qs)->actions()) {
        if (!action->isSeparator())
            tips += action->toolTip();
    }
    EXPECT_EQ(tips, QStringList({u"Goto First Page"_qs, u"Goto PreviousPage"_qs, u"Goto Previous Line"_qs,
                                 u"Goto Next Line"_qs, u"Goto Next Page"_qs, u"Goto Last Page"_qs}));
}

TEST_F(TheHexView, FollowsItsScrollBarAndMovesIt) {
    open(someBytes(640));
    scrollBar()->setValue(50);
    EXPECT_EQ(pointer(), 161);
    EXPECT_EQ(info(3), u"160"_qs);
    m_hex->MoveFirstPage();
    EXPECT_EQ(scrollBar()->value(), 0);
    EXPECT_EQ(pointer(), 1);
    m_hex->MoveLastPage();
    EXPECT_EQ(scrollBar()->value(), 100);
    EXPECT_EQ(pointer(), 337);
}

TEST_F(TheHexView, TurnsThreeLinesANotchWithOnePage) {
    open(someBytes(1000));
    QSignalSpy filled(m_hex.get(), &ucHex::PositionChanged);
    const auto turnOver = [](QWidget* part, int delta) {
        QWheelEvent event(QPointF(5, 5), part->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(part, &event);
    };
    const auto turn = [&](int delta) { turnOver(pane(1), delta); };
    turn(-120);
    EXPECT_EQ(pointer(), 49);
    EXPECT_EQ(filled.count(), 1);
    turn(-240);
    EXPECT_EQ(pointer(), 145);
    turn(120);
    EXPECT_EQ(pointer(), 97);
    m_hex->MoveFirstPage();
    filled.clear();
    turn(120);
    EXPECT_EQ(filled.count(), 0);
    turnOver(part<OffsetPane>(u"PicOffSet"_qs), -120);
    EXPECT_EQ(pointer(), 49);
}

TEST_F(TheHexView, PagesByKeys) {
    const QByteArray bytes = someBytes(1000);
    open(bytes);
    press(Qt::Key_PageDown);
    EXPECT_EQ(pointer(), 321);
    EXPECT_EQ(info(3), u"320"_qs);
    press(Qt::Key_Up);
    EXPECT_EQ(pointer(), 305);
    EXPECT_EQ(info(3), u"304"_qs);
    press(Qt::Key_Left);
    EXPECT_EQ(pointer(), 289);
    EXPECT_EQ(cursor(), 304);
    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(cursor(), 1);
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(cursor(), 1000);
    EXPECT_EQ(m_hex->GetCursorPos(), u"Pg 4/4, Pos 999/999"_qs);
    expectShown(bytes);
}

TEST_F(TheHexView, KeepsItsPanesInStep) {
    open(someBytes(400));
    QSignalSpy moved(m_hex.get(), &ucHex::PositionChanged);
    select(3, 4);
    EXPECT_EQ(grid(2)->cell(), (HexCell{3, 4}));
    EXPECT_EQ(info(0), u"34"_qs);
    EXPECT_EQ(info(1), u"52"_qs);
    EXPECT_EQ(info(2), u"34"_qs);
    EXPECT_EQ(info(3), u"52"_qs);
    EXPECT_GE(moved.count(), 1);
    press(Qt::Key_Tab);
    EXPECT_TRUE(pane(2)->hasFocus());
    EXPECT_EQ(m_hex->ActiveGrid(), 2);
    EXPECT_TRUE(pane(2)->hasBorder());
    EXPECT_FALSE(pane(1)->hasBorder());
    press(Qt::Key_Right);
    EXPECT_EQ(grid(1)->cell(), (HexCell{3, 5}));
    EXPECT_EQ(info(3), u"53"_qs);
    press(Qt::Key_Tab);
    EXPECT_TRUE(pane(1)->hasFocus());
    EXPECT_EQ(m_hex->ActiveGrid(), 1);
}

TEST_F(TheHexView, MarksTheColumnAndTheRow) {
    open(someBytes(400));
    select(3, 4);
    EXPECT_EQ(part<QWidget>(u"Sign(0)"_qs)->x(), part<QWidget>(u"Label2(4)"_qs)->x() + 6);
    EXPECT_EQ(part<QWidget>(u"Sign(1)"_qs)->y(), 6 + 19 * 3);
}

TEST_F(TheHexView, ShowsOffsetsInEitherRadix) {
    open(someBytes(400));
    auto* caption = part<ClickLabel>(u"lblSelect"_qs);
    EXPECT_EQ(caption->text(), u"Offset - DEC"_qs);
    EXPECT_EQ(part<ClickLabel>(u"Label2(10)"_qs)->text(), u"10"_qs);
    QTest::mouseClick(caption, Qt::LeftButton);
    EXPECT_EQ(caption->text(), u"Offset - HEX"_qs);
    EXPECT_EQ(part<ClickLabel>(u"Label2(10)"_qs)->text(), u"0A"_qs);
    EXPECT_EQ(part<OffsetPane>(u"PicOffSet"_qs)->texts().at(1), u"0000000010"_qs);
    m_hex->MoveNextLine();
    EXPECT_EQ(part<OffsetPane>(u"PicOffSet"_qs)->texts().last(), u"0000000140"_qs);
    QTest::mouseClick(part<OffsetPane>(u"PicOffSet"_qs), Qt::LeftButton);
    EXPECT_EQ(caption->text(), u"Offset - DEC"_qs);
    QTest::mouseClick(part<ClickLabel>(u"Label2(3)"_qs), Qt::LeftButton);
    EXPECT_TRUE(m_hex->OffsetHexMode());
    // A button released elsewhere does nothing.
    for (QWidget* clicked :
         {static_cast<QWidget*>(caption), static_cast<QWidget*>(part<OffsetPane>(u"PicOffSet"_qs))}) {
        QTest::mousePress(clicked, Qt::LeftButton);
        QTest::mouseRelease(clicked, Qt::LeftButton, {}, QPoint(-20, -20));
        EXPECT_TRUE(m_hex->OffsetHexMode());
    }
}

TEST_F(TheHexView, ShowsOffsetsInEitherRadixByTheKeyboardToo) {
    open(someBytes(400));
    auto* caption = part<ClickLabel>(u"lblSelect"_qs);
    EXPECT_TRUE(caption->focusPolicy() & Qt::TabFocus);
    bookmarks()->setFocus();
    for (int i = 0; i < 30 && QApplication::focusWidget() != caption; ++i)
        press(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(QApplication::focusWidget(), caption);
    press(Qt::Key_Space);
    EXPECT_TRUE(m_hex->OffsetHexMode());
    EXPECT_EQ(caption->text(), u"Offset - HEX"_qs);
    press(Qt::Key_Return);
    EXPECT_FALSE(m_hex->OffsetHexMode());
    press(Qt::Key_A);
    EXPECT_FALSE(m_hex->OffsetHexMode());
}

TEST_F(TheHexView, ExchangesTheEditModeByAClickOnItsLabelsOnly) {
    const auto colour = [this](int number) {
        return part<QLabel>(u"lblInfo(%1)"_qs.arg(number))->palette().color(QPalette::WindowText);
    };
    const QColor red(255, 0, 0);
    const QColor green(0, 64, 0);
    open(someBytes(400));
    EXPECT_EQ(colour(6), red);
    EXPECT_EQ(colour(7), green);
    press(Qt::Key_Tab);
    EXPECT_EQ(colour(6), red);
    QTest::mouseClick(part<ClickLabel>(u"lblInfo(0)"_qs), Qt::LeftButton);
    EXPECT_EQ(colour(6), green);
    EXPECT_EQ(colour(7), red);
    EXPECT_TRUE(pane(2)->hasFocus());
    QTest::mouseClick(part<ClickLabel>(u"lblInfo(7)"_qs), Qt::LeftButton);
    EXPECT_EQ(colour(6), red);
    EXPECT_TRUE(pane(1)->hasFocus());
}

TEST_F(TheHexView, AsksForItsMenusWhereThePointerIs) {
    QSignalSpy asked(m_hex.get(), &ucHex::ContextMenuRequest);
    QTest::mouseClick(pane(1), Qt::RightButton, {}, QPoint(30, 40));
    EXPECT_EQ(asked.count(), 0);
    open(someBytes(400));
    QTest::mouseClick(pane(2), Qt::RightButton, {}, QPoint(30, 40));
    ASSERT_EQ(asked.count(), 1);
    EXPECT_EQ(QPoint(asked[0][0].toInt(), asked[0][1].toInt()), pane(2)->pos() + QPoint(30, 40));
    EXPECT_EQ(asked[0][2].toString(), u"HEX"_qs);
    QTest::mouseClick(bookmarks()->viewport(), Qt::RightButton, {}, QPoint(5, 6));
    EXPECT_EQ(asked[1][2].toString(), u"BOOK"_qs);
    select(3, 4);
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(pane(1), &byKey);
    const QPoint cell = pane(1)->pos() + pane(1)->cellRect({3, 4}).center();
    EXPECT_EQ(QPoint(asked[2][0].toInt(), asked[2][1].toInt()), cell);
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, {}, {});
    QApplication::sendEvent(pane(1), &byMouse);
    EXPECT_EQ(asked.count(), 3);
}

TEST_F(TheHexView, PutsTheCurrentByteOnTheClipboard) {
    open("\x80\x41");
    m_hex->cmdCopy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"80"_qs);
    press(Qt::Key_Tab);
    m_hex->cmdCopy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"\u20AC"_qs);
}

TEST_F(TypingInHex, WritesAByteAtItsSecondDigit) {
    open(QByteArray(40, '\0'));
    QSignalSpy changed(m_hex.get(), &ucHex::DataChanged);
    type(u"f"_qs);
    EXPECT_EQ(grid(1)->Value(0, 0), u"F"_qs);
    EXPECT_FALSE(m_hex->Modified());
    EXPECT_EQ(changed.count(), 0);
    type(u"f"_qs);
    EXPECT_EQ(grid(1)->Value(0, 0), u"FF"_qs);
    EXPECT_EQ(grid(2)->Value(0, 0), u"\u00FF"_qs);
    EXPECT_TRUE(m_hex->Modified());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(cursor(), 1);
    EXPECT_EQ(workingBytes(), "\xFF" + QByteArray(39, '\0'));
    type(u"12"_qs);
    EXPECT_EQ(workingBytes().left(2), QByteArray("\x12\0", 2));
}

TEST_F(TypingInHex, FinishesAHalfByteByEnterTabCursorClickOrCommand) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"enter", [this] { press(Qt::Key_Return); }},
        {"tab", [this] { press(Qt::Key_Tab); }},
        {"down", [this] { press(Qt::Key_Down); }},
        {"page down", [this] { press(Qt::Key_PageDown); }},
        {"ctrl end", [this] { press(Qt::Key_End, Qt::ControlModifier); }},
        {"click", [this] { select(3, 3); }},
        {"button", [this] { scroll(u"MoveLastPage"_qs); }},
        {"scroll bar", [this] { scrollBar()->setValue(70); }},
        {"go to", [this] { m_hex->gotoOffset(500); }},
        {"find", [this] { m_hex->FindDown(u"zzz"_qs, 2); }},
        {"bookmark", [this] { m_hex->cmdBookmark(); }},
        {"save", [this] { m_hex->SaveFile(at(u"saved"_qs), true); }},
    };
    for (const auto& [name, act] : ways) {
        open(QByteArray(1000, '\0'));
        type(u"f"_qs);
        act();
        EXPECT_EQ(workingBytes(), "\x0F" + QByteArray(999, '\0')) << name;
        EXPECT_TRUE(name == std::string("save") || m_hex->Modified()) << name;
    }
    EXPECT_EQ(bytesOf(at(u"saved"_qs)).left(2), QByteArray("\x0F\0", 2));
}

TEST_F(TypingInHex, IgnoresOtherCharactersAndEnterOnAWholeByte) {
    open(someBytes(40));
    type(u"gz -"_qs);
    press(Qt::Key_Return);
    press(Qt::Key_Backspace);
    EXPECT_EQ(workingBytes(), someBytes(40));
    EXPECT_FALSE(m_hex->Modified());
}

TEST_F(TypingInHex, TakesAnyCharacterInTheTextPane) {
    open(someBytes(40));
    press(Qt::Key_Tab);
    const std::pair<std::function<void()>, char> keys[] = {
        {[this] { type(u"x"_qs); }, 'x'},
        {[this] { type(u" "_qs); }, ' '},
        {[this] { press(Qt::Key_Return); }, '\r'},
        {[this] { press(Qt::Key_Backspace); }, '\b'},
    };
    for (const auto& [act, byte] : keys) {
        act();
        EXPECT_EQ(workingBytes(), byte + someBytes(40).mid(1));
        EXPECT_EQ(grid(2)->Value(0, 0), HexText::ByteToTextCell(byte));
        EXPECT_EQ(grid(1)->Value(0, 0), HexText::ByteToHexCell(byte));
    }
    EXPECT_EQ(cursor(), 1);
    QInputMethodEvent composed;
    composed.setCommitString(u"\u20AC"_qs);
    QApplication::sendEvent(pane(2), &composed);
    composed.setCommitString(u"\u0416"_qs);
    QApplication::sendEvent(pane(2), &composed);
    EXPECT_EQ(workingBytes(), "\x80" + someBytes(40).mid(1));
}

TEST_F(TypingInHex, IsRefusedWhileLockedOrCtrlIsDown) {
    open(someBytes(40));
    m_hex->setLocked(true);
    type(u"ff"_qs);
    press(Qt::Key_Tab);
    type(u"x"_qs);
    m_hex->setLocked(false);
    press(Qt::Key_C, Qt::ControlModifier);
    press(Qt::Key_Tab);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(workingBytes(), someBytes(40));
    EXPECT_EQ(grid(1)->Value(0, 0), u"00"_qs);
    type(u"cc"_qs);
    EXPECT_EQ(workingBytes(), "\xCC" + someBytes(40).mid(1));
}

TEST_F(TypingInHex, LeavesAKeyThatIsRefusedAsItCame) {
    open(someBytes(40));
    const auto isTaken = [this](int number, const QString& text, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_A, modifiers, text);
        QApplication::sendEvent(pane(number), &event);
        return event.isAccepted();
    };
    for (const int number : {1, 2}) {
        m_hex->setLocked(true);
        EXPECT_FALSE(isTaken(number, u"a"_qs));
        m_hex->setLocked(false);
        EXPECT_FALSE(isTaken(number, u"\u0001"_qs, Qt::ControlModifier));
        EXPECT_TRUE(isTaken(number, u"z"_qs));
    }
}

TEST_F(TypingInHex, IsTakenBackThirtyOneTimes) {
    open(QByteArray(40, '\0'));
    for (int i = 1; i <= 32; ++i) {
        type(HexText::ByteToHexCell(i));
        press(Qt::Key_Right);
    }
    for (int i = 0; i < 31; ++i)
        m_hex->cmdUndo();
    EXPECT_EQ(workingBytes(), "\x01" + QByteArray(39, '\0'));
    EXPECT_EQ(cursor(), 2);
    m_hex->cmdUndo();
    EXPECT_EQ(workingBytes(), "\x01" + QByteArray(39, '\0'));
    EXPECT_TRUE(m_hex->Modified());
    expectShown(workingBytes());
}

TEST_F(TypingInHex, IsTakenBackOnThePageOfTheEdit) {
    open(someBytes(1000));
    m_hex->MoveNextLine();
    select(5, 6);
    type(u"ff"_qs);
    m_hex->MoveLastPage();
    QSignalSpy changed(m_hex.get(), &ucHex::DataChanged);
    m_hex->cmdUndo();
    EXPECT_EQ(pointer(), 17);
    EXPECT_EQ(grid(1)->cell(), (HexCell{5, 6}));
    EXPECT_EQ(grid(2)->cell(), (HexCell{5, 6}));
    EXPECT_EQ(changed.count(), 0);
    expectShown(someBytes(1000));
}

TEST_F(TypingInHex, OfOneByteTwiceIsTakenBackTwice) {
    open(someBytes(40));
    type(u"aa"_qs);
    type(u"bb"_qs);
    m_hex->cmdUndo();
    EXPECT_EQ(workingBytes().left(1), "\xAA");
    m_hex->cmdUndo();
    EXPECT_EQ(workingBytes(), someBytes(40));
    m_hex->cmdUndo();
    EXPECT_EQ(workingBytes(), someBytes(40));
}

TEST_F(TypingInHex, TheSameByteCountsAsAnEdit) {
    open(QByteArray(40, '\0'));
    type(u"00"_qs);
    EXPECT_TRUE(m_hex->Modified());
}

TEST_F(SavingHex, WritesTheCopyOverTheFileWhenModifiedOrForced) {
    const QByteArray bytes = someBytes(400);
    open(bytes);
    const QString path = at(u"file"_qs);
    EXPECT_TRUE(m_hex->SaveFile(at(u"new"_qs), false));
    EXPECT_FALSE(QFile::exists(at(u"new"_qs)));
    EXPECT_TRUE(m_hex->SaveFile(at(u"new"_qs), true));
    EXPECT_EQ(bytesOf(at(u"new"_qs)), bytes);
    type(u"ff"_qs);
    EXPECT_EQ(bytesOf(path), bytes);
    EXPECT_TRUE(m_hex->SaveFile(path, false));
    EXPECT_EQ(bytesOf(path), "\xFF" + bytes.mid(1));
    EXPECT_FALSE(m_hex->Modified());
    EXPECT_FALSE(part<QWidget>(u"ProgressBar1"_qs)->isVisible());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(SavingHex, KeepsTheUndoLogAndTheTailOfALongerFile) {
    open(someBytes(20));
    type(u"ff"_qs);
    const QString longer = file(QByteArray(30, 'x'), u"longer"_qs);
    EXPECT_TRUE(m_hex->SaveFile(longer, false));
    EXPECT_EQ(bytesOf(longer), "\xFF" + someBytes(20).mid(1) + QByteArray(10, 'x'));
    m_hex->cmdUndo();
    EXPECT_FALSE(m_hex->Modified());
    EXPECT_EQ(workingBytes(), someBytes(20));
}

TEST_F(SavingHex, PassesOverWhatIsNotTracked) {
    open("one two one");
    EXPECT_EQ(m_hex->ReplaceAll(u"one"_qs, u"31 31 31 "_qs, 2), 2);
    m_hex->ReplaceBytes(u"32 "_qs, 5);
    m_hex->fillBlock(Offset(6), Offset(6), 0x33);
    EXPECT_EQ(workingBytes(), "111 2w3 111");
    expectShown("111 2w3 111");
    EXPECT_FALSE(m_hex->Modified());
    EXPECT_TRUE(m_hex->SaveFile(at(u"file"_qs), false));
    EXPECT_EQ(bytesOf(at(u"file"_qs)), "one two one");
    m_hex->cmdUndo();
    EXPECT_EQ(workingBytes(), "111 2w3 111");
    EXPECT_TRUE(m_hex->SaveFile(at(u"file"_qs), true));
    EXPECT_EQ(bytesOf(at(u"file"_qs)), "111 2w3 111");
}

TEST_F(SavingHex, TellsNumberAndDescriptionOfAFailure) {
    open(someBytes(20));
    type(u"ff"_qs);
    EXPECT_FALSE(m_hex->SaveFile(at(u"none/file"_qs), false));
    EXPECT_EQ(m_prompts.messages, QStringList(QString::number(ENOENT) + u'\n' + reasonOf(ENOENT)));
    EXPECT_TRUE(m_hex->Modified());
    EXPECT_TRUE(part<QWidget>(u"ProgressBar1"_qs)->isVisible());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(SavingHex, WithoutAFileDoesNothing) {
    EXPECT_TRUE(m_hex->SaveFile(at(u"new"_qs), true));
    EXPECT_FALSE(QFile::exists(at(u"new"_qs)));
}

TEST_F(SavingHex, UnderTheNameThatWasSetNeedsAName) {
    m_hex->setSaveAsName(at(u"early"_qs));
    m_hex->cmdSaveAs();
    EXPECT_FALSE(QFile::exists(at(u"early"_qs)));
    open(someBytes(20));
    m_hex->setSaveAsName(u"  "_qs);
    m_hex->cmdSaveAs();
    type(u"f"_qs);
    m_hex->setSaveAsName(at(u"other"_qs) + QChar(u'\0') + u"tail"_qs);
    m_hex->cmdSaveAs();
    EXPECT_EQ(bytesOf(at(u"other"_qs)), "\x0F" + someBytes(20).mid(1));
    EXPECT_FALSE(m_hex->Modified());
    EXPECT_EQ(bytesOf(at(u"file"_qs)), someBytes(20));
    m_hex->setSaveAsName(at(u"none/file"_qs));
    m_hex->cmdSaveAs();
    EXPECT_EQ(m_prompts.messages, QStringList(QString::number(ENOENT) + u'\n' + reasonOf(ENOENT)));
}

TEST_F(TheHexView, AsksOthersForWhatLiesOutsideIt) {
    QSignalSpy properties(m_hex.get(), &ucHex::PropertiesRequest);
    QSignalSpy calculator(m_hex.get(), &ucHex::CalculatorRequest);
    QSignalSpy language(m_hex.get(), &ucHex::LanguageRequest);
    m_hex->cmdProperties();
    EXPECT_EQ(properties.count(), 0);
    open(someBytes(20));
    m_hex->cmdProperties();
    m_hex->cmdCalculator();
    m_hex->cmdLanguage();
    ASSERT_EQ(properties.count(), 1);
    EXPECT_EQ(properties[0][0].toString(), QString());
    EXPECT_EQ(calculator.count(), 1);
    EXPECT_EQ(language.count(), 1);
}

TEST_F(TheHexView, ShowsItsFieldsToScripts) {
    open(someBytes(400));
    EXPECT_EQ(m_hex->property("PageRows").toInt(), 20);
    EXPECT_EQ(m_hex->property("RowHeight").toInt(), 19);
    EXPECT_FALSE(m_hex->property("ScrollSync").toBool());
    press(Qt::Key_Right);
    EXPECT_FALSE(m_hex->property("CtrlDown").toBool());
    press(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_TRUE(m_hex->property("CtrlDown").toBool());
}

TEST_F(TheHexView, ShowsItsEditModeOnALightGroundInADarkTheme) {
    const auto contrastOf = [this](int number) {
        const QWidget* label = part<QLabel>(u"lblInfo(%1)"_qs.arg(number));
        const QWidget* ground = label->autoFillBackground() ? label : m_hex.get();
        return Contrast::between(label->palette().color(QPalette::WindowText),
                                 ground->palette().color(QPalette::Window));
    };
    open(someBytes(400));
    QTest::mouseClick(part<ClickLabel>(u"lblInfo(0)"_qs), Qt::LeftButton);
    for (const QColor& window : {QColor(32, 32, 32), QColor(240, 240, 240), QColor(0, 0, 0)}) {
        QPalette palette;
        palette.setColor(QPalette::Window, window);
        m_hex->setPalette(palette);
        EXPECT_GE(contrastOf(6), 4.5) << window.name().toStdString();
        EXPECT_GE(contrastOf(7), 3) << window.name().toStdString();
        EXPECT_EQ(part<QLabel>(u"lblInfo(7)"_qs)->palette().color(QPalette::WindowText), QColor(255, 0, 0));
    }
}

TEST_F(TheHexView, LeavesTheLabelsBelowWhereTheyAre) {
    open(QByteArray(300000, '\0'));
    QApplication::processEvents();
    const int before = part<QLabel>(u"lblInfo(8)"_qs)->x();
    press(Qt::Key_End, Qt::ControlModifier);
    type(u"ff"_qs);
    QApplication::processEvents();
    EXPECT_EQ(part<QLabel>(u"lblInfo(8)"_qs)->x(), before);
    for (int number = 0; number < 9; ++number) {
        const auto* label = part<QLabel>(u"lblInfo(%1)"_qs.arg(number));
        EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(label->text())) << number;
    }
}

TEST_F(TheHexView, TakesTheCursorOfThePaneInUseBackToAByteToo) {
    open(someBytes(1000));
    press(Qt::Key_Tab);
    QTest::mouseClick(pane(2), Qt::LeftButton, {}, pane(2)->cellRect({19, 12}).center());
    ASSERT_EQ(grid(2)->cell(), (HexCell{19, 12}));
    scroll(u"MoveLastPage"_qs);
    for (const int number : {1, 2}) {
        EXPECT_EQ(grid(number)->cell(), (HexCell{19, 7})) << number;
    }
    EXPECT_EQ(info(3), u"999"_qs);
}

TEST_F(TheHexView, HoldsOneRowMoreThanItShows) {
    const QByteArray bytes = someBytes(400);
    open(bytes);
    EXPECT_EQ(grid(1)->Value(20, 0), HexText::ByteToHexCell(static_cast<quint8>(bytes[320])));
    EXPECT_EQ(grid(2)->Value(20, 15), HexText::ByteToTextCell(static_cast<quint8>(bytes[335])));
    EXPECT_EQ(grid(1)->Value(21, 0), QString());
}

TEST_F(TheHexView, TakesBackByTheUndoKeyInBothPanes) {
    open("abc");
    type(u"78"_qs);
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    type(u"y"_qs);
    EXPECT_EQ(workingBytes(), "xyc");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(workingBytes(), "xbc");
    press(Qt::Key_Tab);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(workingBytes(), "abc");
    press(Qt::Key_Z, Qt::ControlModifier);
    expectShown("abc");
}

TEST_F(TheHexView, TakesNothingBackByAKeyWhileItIsLocked) {
    open("abc");
    type(u"78"_qs);
    m_hex->setLocked(true);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(workingBytes(), "xbc");
}

TEST_F(TheHexView, KnowsWhereTheCursorOfThePaneInUseIs) {
    open(someBytes(400));
    const auto inView = [this](int number, HexCell cell) {
        const QRect rect = pane(number)->cellRect(cell);
        return QRect(pane(number)->mapTo(m_hex.get(), rect.topLeft()), rect.size());
    };
    select(2, 5);
    EXPECT_EQ(m_hex->cursorRect(), inView(1, {2, 5}));
    EXPECT_EQ(m_hex->cursorRect().size(), part<QWidget>(u"Shape1"_qs)->size());
    press(Qt::Key_Tab);
    press(Qt::Key_Down);
    EXPECT_EQ(m_hex->cursorRect(), inView(2, {3, 5}));
}

TEST_F(TheHexView, NamesTheOffsetThatItsLabelsShow) {
    open(someBytes(400));
    EXPECT_EQ(m_hex->GetCursorPos(), u"Pg 1/2, Pos 0/399"_qs);
    for (const int offset : {17, 250, 399}) {
        m_hex->gotoOffset(offset);
        EXPECT_TRUE(m_hex->GetCursorPos().endsWith(u"Pos %1/399"_qs.arg(info(3)))) << offset;
    }
    m_hex->AddBookMark(u"20"_qs, u"32"_qs, false);
    press(Qt::Key_Tab);
    m_hex->cmdFirstBookmark();
    EXPECT_TRUE(m_hex->GetCursorPos().endsWith(u"Pos %1/399"_qs.arg(info(3))));
}

TEST_F(TheHexView, KeepsItsEditModeWhenThePaletteChanges) {
    open(someBytes(40));
    const auto colourOf = [this](int label) {
        return part<QLabel>(u"lblInfo(%1)"_qs.arg(label))->palette().color(QPalette::WindowText);
    };
    const QColor inUse = colourOf(6);
    QTest::mouseClick(part<QLabel>(u"lblInfo(7)"_qs), Qt::LeftButton);
    ASSERT_EQ(colourOf(7), inUse);
    QPalette dark;
    dark.setColor(QPalette::Window, Qt::black);
    m_hex->setPalette(dark);
    EXPECT_EQ(colourOf(7), inUse);
    EXPECT_NE(colourOf(6), inUse);
    EXPECT_TRUE(pane(2)->hasFocus());
}
