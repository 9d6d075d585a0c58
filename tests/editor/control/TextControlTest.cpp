#include "editor/control/TextControl.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

struct Control : testing::Test {
    TextControl control;
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
    typeKeys(QStringLiteral("ab"));
    EXPECT_EQ(control.Text(), QStringLiteral("ab"));
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(moves.count(), 2);
}

TEST_F(TextControlTyping, TakesCharactersBeyondTheBasicPlane) {
    control.type(QString::fromUtf8("x\U0001F600y"));
    EXPECT_EQ(control.Text(), QString::fromUtf8("x\U0001F600y"));
    EXPECT_EQ(control.SelStart(), 4);
}

TEST_F(TextControlTyping, LeavesAltWithALetterToTheMenus) {
    QTest::keyClick(&control, Qt::Key_F, Qt::AltModifier);
    QTest::keyClick(&control, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(control.Text(), QString());
}

TEST_F(TextControlTyping, MakesALoneSurrogateAReplacementCharacter) {
    control.type(QString(QChar(0xD83D)) + QStringLiteral("a"));
    EXPECT_EQ(control.Text(), QString(QChar(0xFFFD)) + QStringLiteral("a"));
}

TEST_F(TextControlTyping, ReturnMakesTheTextsOwnLineEnd) {
    typeKeys(QStringLiteral("a"));
    QTest::keyClick(&control, Qt::Key_Return);
    EXPECT_EQ(control.Text(), QStringLiteral("a\n"));
}

TEST_F(TextControlText, KeepsNulCharacters) {
    const QString text = QStringLiteral("a") + QChar(0) + QStringLiteral("b");
    control.setText(text);
    EXPECT_EQ(control.Text(), text);
    EXPECT_EQ(control.GetLine(0), text);
}

TEST_F(TextControlText, IsCountedInUtf16Units) {
    control.setText(QString::fromUtf8("ä\U0001F600\nxyz"));
    control.setSelection(3, 5);
    EXPECT_EQ(control.SelStart(), 3);
    EXPECT_EQ(control.SelEnd(), 5);
    EXPECT_EQ(control.SelText(), QStringLiteral("\nx"));
    EXPECT_EQ(control.CurrentLine(), 1);
    EXPECT_EQ(control.CurrentColumn(), 1);
    EXPECT_EQ(control.TotalLines(), 2);
}

TEST_F(TextControlText, GivesLinesWithoutTheirEnds) {
    control.setText(QStringLiteral("one\r\ntwo\nthree"));
    EXPECT_EQ(control.GetLine(0), QStringLiteral("one"));
    EXPECT_EQ(control.GetLine(1), QStringLiteral("two"));
    EXPECT_EQ(control.GetLine(2), QStringLiteral("three"));
    EXPECT_EQ(control.GetLine(3), QString());
    EXPECT_EQ(control.GetLine(-1), QString());
}

TEST_F(TextControlText, IsAppendedToWithoutMovingTheCaret) {
    control.setText(QStringLiteral("one"));
    control.AddText(QStringLiteral("two"));
    EXPECT_EQ(control.Text(), QStringLiteral("onetwo"));
    EXPECT_EQ(control.SelStart(), 0);
}

TEST_F(TextControlSelection, KeepsItsDirection) {
    control.setText(QStringLiteral("one\ntwo\nthree"));
    control.setSelection(9, 1);
    EXPECT_EQ(control.StartLineNo(), 2);
    EXPECT_EQ(control.EndLineNo(), 0);
    EXPECT_EQ(control.EndColNo(), 1);
    EXPECT_EQ(control.SelStart(), 1);
    EXPECT_EQ(control.SelEnd(), 9);
}

TEST_F(TextControlSelection, TellsOnceOfAMove) {
    control.setText(QStringLiteral("abc"));
    forgetSignals();
    control.setSelection(1, 2);
    control.setSelection(1, 2);
    EXPECT_EQ(moves.count(), 1);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(TextControlSelection, FollowsTheKeys) {
    control.setText(QStringLiteral("one two"));
    forgetSignals();
    QTest::keyClick(&control, Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(control.SelText(), QStringLiteral("one "));
    EXPECT_EQ(moves.count(), 1);
}

TEST_F(TextControlSelection, IsNeverBeyondTheText) {
    control.setText(QStringLiteral("abc"));
    control.setSelection(-5, 99);
    EXPECT_EQ(control.SelStart(), 0);
    EXPECT_EQ(control.SelEnd(), 3);
}

TEST_F(TextControlUndo, TakesBackOneRunOfTypingAtATime) {
    typeKeys(QStringLiteral("abc"));
    QTest::keyClick(&control, Qt::Key_Return);
    typeKeys(QStringLiteral("def"));
    control.Undo();
    EXPECT_EQ(control.Text(), QStringLiteral("abc\n"));
    control.Undo();
    control.Undo();
    EXPECT_EQ(control.Text(), QString());
    EXPECT_FALSE(control.CanUndo());
    control.Redo();
    EXPECT_EQ(control.Text(), QStringLiteral("abc"));
    EXPECT_TRUE(control.CanRedo());
}

TEST_F(TextControlUndo, BeginsAnewWhenTheCaretWasMoved) {
    typeKeys(QStringLiteral("abc"));
    QTest::keyClick(&control, Qt::Key_Left);
    QTest::keyClick(&control, Qt::Key_Right);
    typeKeys(QStringLiteral("d"));
    control.Undo();
    EXPECT_EQ(control.Text(), QStringLiteral("abc"));
}

TEST_F(TextControlUndo, TellsOfTheChange) {
    typeKeys(QStringLiteral("a"));
    forgetSignals();
    control.Undo();
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(TextControlUndo, TakesATextSetAsAWholeBackInOneStep) {
    control.setText(QStringLiteral("one\ntwo"));
    control.setText(QStringLiteral("three"));
    control.Undo();
    EXPECT_EQ(control.Text(), QStringLiteral("one\ntwo"));
}

TEST_F(TextControlClipboard, CarriesWhatIsSelected) {
    const QString text = QStringLiteral("a") + QChar(0) + QStringLiteral("bcd");
    control.setText(text);
    control.setSelection(0, 3);
    control.Copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), text.left(3));
    control.setSelection(5, 5);
    control.Paste();
    EXPECT_EQ(control.Text(), text + text.left(3));
}

TEST_F(TextControlClipboard, IsLeftAloneWhenNothingIsSelected) {
    QGuiApplication::clipboard()->setText(QStringLiteral("kept"));
    control.setText(QStringLiteral("abc"));
    control.Copy();
    control.Cut();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("kept"));
    EXPECT_EQ(control.Text(), QStringLiteral("abc"));
}

TEST_F(TextControlClipboard, IsFilledByCut) {
    control.setText(QStringLiteral("abc"));
    control.setSelection(1, 2);
    control.Cut();
    EXPECT_EQ(control.Text(), QStringLiteral("ac"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("b"));
    control.Undo();
    EXPECT_EQ(control.Text(), QStringLiteral("abc"));
}

TEST_F(TextControlClipboard, BringsLineEndsInTheTextsOwnForm) {
    QGuiApplication::clipboard()->setText(QStringLiteral("x\r\ny\rz\n"));
    control.Paste();
    EXPECT_EQ(control.Text(), QStringLiteral("x\ny\nz\n"));
}

TEST_F(TextControlClipboard, BringsALoneSurrogateAsReplacementCharacter) {
    auto* mime = new QMimeData;
    mime->setText(QString(QChar(0xDC00)) + QStringLiteral("k"));
    QGuiApplication::clipboard()->setMimeData(mime);
    control.Paste();
    EXPECT_EQ(control.Text(), QString(QChar(0xFFFD)) + QStringLiteral("k"));
}

TEST_F(TextControlLock, RefusesEveryEdit) {
    control.setText(QStringLiteral("abc"));
    control.setSelection(0, 1);
    control.setLocked(true);
    forgetSignals();
    typeKeys(QStringLiteral("x"));
    QTest::keyClick(&control, Qt::Key_Delete);
    control.Cut();
    control.Paste();
    control.Undo();
    control.setSelText(QStringLiteral("y"));
    control.AddText(QStringLiteral("z"));
    EXPECT_EQ(control.Text(), QStringLiteral("abc"));
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(control.Locked());
}

TEST_F(TextControlLock, CanBeTakenOff) {
    control.setLocked(true);
    control.setLocked(false);
    typeKeys(QStringLiteral("x"));
    EXPECT_EQ(control.Text(), QStringLiteral("x"));
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
    control.setText(QStringLiteral("one\ntwo"));
    forgetSignals();
    QTest::mouseClick(control.viewport(), Qt::LeftButton, {}, {400, 100});
    EXPECT_EQ(control.SelStart(), 7);
    EXPECT_EQ(moves.count(), 1);
}

TEST_F(TextControlMouse, DropsFilesByNameOneAfterTheOther) {
    QSignalSpy drops(&control, &TextControl::DropFile);
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(QStringLiteral("/a/one")), QUrl(QStringLiteral("https://example.org/x")),
                  QUrl::fromLocalFile(QStringLiteral("/b/two"))});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &enter);
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &drop);
    ASSERT_EQ(drops.count(), 2);
    EXPECT_EQ(drops[0][0].toString(), QStringLiteral("/a/one"));
    EXPECT_EQ(drops[1][0].toString(), QStringLiteral("/b/two"));
    EXPECT_EQ(control.Text(), QString());
}

TEST_F(TextControlMouse, DropsATextWithEverythingInIt) {
    control.setText(QStringLiteral("abc"));
    QMimeData mime;
    mime.setText(QStringLiteral("1") + QChar(0) + QStringLiteral("2\r\n"));
    QDragEnterEvent enter({400, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &enter);
    QDropEvent drop(QPointF(400, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &drop);
    EXPECT_EQ(control.Text(), QStringLiteral("abc1") + QChar(0) + QStringLiteral("2\n"));
    control.Undo();
    EXPECT_EQ(control.Text(), QStringLiteral("abc"));
}

TEST(TextControlFont, KeepsOddSizesAsGiven) {
    TextControl control;
    for (const int size : {71, 10, 2, 0, -2}) {
        control.setTextFont(QStringLiteral("monospace"), size);
        EXPECT_EQ(control.FontSize(), size);
    }
    EXPECT_EQ(control.FontName(), QStringLiteral("monospace"));
}
