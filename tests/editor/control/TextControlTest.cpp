#include "editor/Editor.h"
#include "editor/control/ControlClipboard.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

struct Control : testing::Test {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    QSignalSpy changes{&control, &TextControl::Change};
    QSignalSpy moves{&control, &TextControl::SelChange};

    Control() {
        control.resize(600, 400);
        control.show();
    }
    void typeKeys(const QString& text) {
        for (const QChar c : text)
            QTest::keyClick(&control, c.toLatin1());
    }
    void forgetSignals() {
        changes.clear();
        moves.clear();
    }
};

using TextControlTyping = Control;
using TextControlText = Control;
using TextControlSelection = Control;
using TextControlUndo = Control;
using TextControlClipboard = Control;
using TextControlLock = Control;
using TextControlMouse = Control;

}  // namespace

TEST_F(TextControlTyping, PutsTheTextAtTheCaretAndTellsOfIt) {
    typeKeys(u"ab"_qs);
    EXPECT_EQ(control.Text(), u"ab"_qs);
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(moves.count(), 2);
}

TEST_F(TextControlTyping, TakesCharactersBeyondTheBasicPlane) {
    control.typing().type(QString::fromUtf8("x\U0001F600y"));
    EXPECT_EQ(control.Text(), QString::fromUtf8("x\U0001F600y"));
    EXPECT_EQ(control.SelStart(), 4);
}

TEST_F(TextControlTyping, LeavesAltWithALetterToTheMenus) {
    QTest::keyClick(&control, Qt::Key_F, Qt::AltModifier);
    QTest::keyClick(&control, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(control.Text(), QString());
}

TEST_F(TextControlTyping, MakesALoneSurrogateAReplacementCharacter) {
    control.typing().type(QString(QChar(0xD83D)) + u"a"_qs);
    EXPECT_EQ(control.Text(), QString(QChar(0xFFFD)) + u"a"_qs);
}

TEST_F(TextControlTyping, ReturnMakesTheTextsOwnLineEnd) {
    typeKeys(u"a"_qs);
    QTest::keyClick(&control, Qt::Key_Return);
    EXPECT_EQ(control.Text(), u"a\n"_qs);
}

TEST_F(TextControlText, KeepsNulCharacters) {
    const QString text = u"a"_qs + QChar(0) + u"b"_qs;
    control.setText(text);
    EXPECT_EQ(control.Text(), text);
    EXPECT_EQ(control.GetLine(0), text);
}

TEST_F(TextControlText, IsCountedInUtf16Units) {
    control.setText(QString::fromUtf8("ä\U0001F600\nxyz"));
    control.setSelection(3, 5);
    EXPECT_EQ(control.SelStart(), 3);
    EXPECT_EQ(control.SelEnd(), 5);
    EXPECT_EQ(control.SelText(), u"\nx"_qs);
    EXPECT_EQ(control.CurrentLine(), 1);
    EXPECT_EQ(control.CurrentColumn(), 1);
    EXPECT_EQ(control.TotalLines(), 2);
}

TEST_F(TextControlText, GivesLinesWithoutTheirEnds) {
    control.setText(u"one\r\ntwo\nthree"_qs);
    EXPECT_EQ(control.GetLine(0), u"one"_qs);
    EXPECT_EQ(control.GetLine(1), u"two"_qs);
    EXPECT_EQ(control.GetLine(2), u"three"_qs);
    EXPECT_EQ(control.GetLine(3), QString());
    EXPECT_EQ(control.GetLine(-1), QString());
}

TEST_F(TextControlText, IsAppendedToWithoutMovingTheCaret) {
    control.setText(u"one"_qs);
    control.AddText(u"two"_qs);
    EXPECT_EQ(control.Text(), u"onetwo"_qs);
    EXPECT_EQ(control.SelStart(), 0);
}

TEST_F(TextControlSelection, KeepsItsDirection) {
    control.setText(u"one\ntwo\nthree"_qs);
    control.setSelection(9, 1);
    EXPECT_EQ(control.selected().StartLineNo(), 2);
    EXPECT_EQ(control.selected().EndLineNo(), 0);
    EXPECT_EQ(control.selected().EndColNo(), 1);
    EXPECT_EQ(control.SelStart(), 1);
    EXPECT_EQ(control.SelEnd(), 9);
}

TEST_F(TextControlSelection, TellsOnceOfAMove) {
    control.setText(u"abc"_qs);
    forgetSignals();
    control.setSelection(1, 2);
    control.setSelection(1, 2);
    EXPECT_EQ(moves.count(), 1);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(TextControlSelection, FollowsTheKeys) {
    control.setText(u"one two"_qs);
    forgetSignals();
    QTest::keyClick(&control, Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(control.SelText(), u"one "_qs);
    EXPECT_EQ(moves.count(), 1);
}

TEST_F(TextControlSelection, IsNeverBeyondTheText) {
    control.setText(u"abc"_qs);
    control.setSelection(-5, 99);
    EXPECT_EQ(control.SelStart(), 0);
    EXPECT_EQ(control.SelEnd(), 3);
}

TEST_F(TextControlUndo, TakesBackOneRunOfTypingAtATime) {
    typeKeys(u"abc"_qs);
    QTest::keyClick(&control, Qt::Key_Return);
    typeKeys(u"def"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"abc\n"_qs);
    control.Undo();
    control.Undo();
    EXPECT_EQ(control.Text(), QString());
    EXPECT_FALSE(control.CanUndo());
    control.Redo();
    EXPECT_EQ(control.Text(), u"abc"_qs);
    EXPECT_TRUE(control.CanRedo());
}

TEST_F(TextControlUndo, BeginsAnewWhenTheCaretWasMoved) {
    typeKeys(u"abc"_qs);
    QTest::keyClick(&control, Qt::Key_Left);
    QTest::keyClick(&control, Qt::Key_Right);
    typeKeys(u"d"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"abc"_qs);
}

TEST_F(TextControlUndo, TellsOfTheChange) {
    typeKeys(u"a"_qs);
    forgetSignals();
    control.Undo();
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(TextControlUndo, TakesATextSetAsAWholeBackInOneStep) {
    control.setText(u"one\ntwo"_qs);
    control.setText(u"three"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"one\ntwo"_qs);
}

TEST_F(TextControlClipboard, CarriesWhatIsSelected) {
    const QString text = u"a"_qs + QChar(0) + u"bcd"_qs;
    control.setText(text);
    control.setSelection(0, 3);
    control.clipboard().Copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), text.left(3));
    control.setSelection(5, 5);
    control.clipboard().Paste();
    EXPECT_EQ(control.Text(), text + text.left(3));
}

TEST_F(TextControlClipboard, IsLeftAloneWhenNothingIsSelected) {
    QGuiApplication::clipboard()->setText(u"kept"_qs);
    control.setText(u"abc"_qs);
    control.clipboard().Copy();
    control.clipboard().Cut();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"kept"_qs);
    EXPECT_EQ(control.Text(), u"abc"_qs);
}

TEST_F(TextControlClipboard, IsFilledByCut) {
    control.setText(u"abc"_qs);
    control.setSelection(1, 2);
    control.clipboard().Cut();
    EXPECT_EQ(control.Text(), u"ac"_qs);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"b"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"abc"_qs);
}

TEST_F(TextControlClipboard, BringsLineEndsInTheTextsOwnForm) {
    QGuiApplication::clipboard()->setText(u"x\r\ny\rz\n"_qs);
    control.clipboard().Paste();
    EXPECT_EQ(control.Text(), u"x\ny\nz\n"_qs);
}

TEST_F(TextControlClipboard, BringsALoneSurrogateAsReplacementCharacter) {
    auto* mime = new QMimeData;
    mime->setText(QString(QChar(0xDC00)) + u"k"_qs);
    QGuiApplication::clipboard()->setMimeData(mime);
    control.clipboard().Paste();
    EXPECT_EQ(control.Text(), QString(QChar(0xFFFD)) + u"k"_qs);
}

TEST_F(TextControlLock, RefusesEveryEdit) {
    control.setText(u"abc"_qs);
    control.setSelection(0, 1);
    control.setLocked(true);
    forgetSignals();
    typeKeys(u"x"_qs);
    QTest::keyClick(&control, Qt::Key_Delete);
    control.clipboard().Cut();
    control.clipboard().Paste();
    control.Undo();
    control.setSelText(u"y"_qs);
    control.AddText(u"z"_qs);
    EXPECT_EQ(control.Text(), u"abc"_qs);
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(control.Locked());
}

TEST_F(TextControlLock, CanBeTakenOff) {
    control.setLocked(true);
    control.setLocked(false);
    typeKeys(u"x"_qs);
    EXPECT_EQ(control.Text(), u"x"_qs);
}

TEST_F(TextControlMouse, TellsOfButtonsAndAsksForTheMenuOnRelease) {
    QSignalSpy presses(&control, &TextControl::MouseDown);
    QSignalSpy menus(&control, &TextControl::ShowMenu);
    QTest::mousePress(control.viewport(), Qt::RightButton, {}, {50, 60});
    ASSERT_EQ(presses.count(), 1);
    EXPECT_EQ(menus.count(), 0);
    QTest::mouseRelease(control.viewport(), Qt::RightButton, {}, {50, 60});
    ASSERT_EQ(menus.count(), 1);
    EXPECT_EQ(menus[0][0].toInt(), 50);
    EXPECT_EQ(menus[0][1].toInt(), 60);
}

TEST_F(TextControlMouse, MovesTheCaret) {
    control.setText(u"one\ntwo"_qs);
    forgetSignals();
    QTest::mouseClick(control.viewport(), Qt::LeftButton, {}, {400, 100});
    EXPECT_EQ(control.SelStart(), 7);
    EXPECT_EQ(moves.count(), 1);
}

TEST_F(TextControlMouse, DropsFilesByNameOneAfterTheOther) {
    QSignalSpy drops(&control, &TextControl::DropFile);
    QMimeData mime;
    mime.setUrls(
        {QUrl::fromLocalFile(u"/a/one"_qs), QUrl(u"https://example.org/x"_qs), QUrl::fromLocalFile(u"/b/two"_qs)});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &enter);
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &drop);
    ASSERT_EQ(drops.count(), 2);
    EXPECT_EQ(drops[0][0].toString(), u"/a/one"_qs);
    EXPECT_EQ(drops[1][0].toString(), u"/b/two"_qs);
    EXPECT_EQ(control.Text(), QString());
}

TEST_F(TextControlMouse, DropsATextWithEverythingInIt) {
    control.setText(u"abc"_qs);
    QMimeData mime;
    mime.setText(u"1"_qs + QChar(0) + u"2\r\n"_qs);
    QDragEnterEvent enter({400, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &enter);
    QDropEvent drop(QPointF(400, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &drop);
    EXPECT_EQ(control.Text(), u"abc1"_qs + QChar(0) + u"2\n"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"abc"_qs);
}

TEST(TextControlFont, KeepsOddSizesAndRefusesThoseBelowOne) {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    for (const int size : {71, 10, 2, 1}) {
        control.look().setTextFont(u"monospace"_qs, size);
        EXPECT_EQ(control.look().FontSize(), size);
    }
    for (const int refused : {0, -2}) {
        control.look().setTextFont(u"serif"_qs, refused);
        EXPECT_EQ(control.look().FontSize(), 1);
    }
    EXPECT_EQ(control.look().FontName(), u"serif"_qs);
}
