#include "editor/control/ControlMouse.h"
#include "editor/control/TextControl.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace {

/// Calls a function during a drag out of the selection, when the drag requests its data.
struct Dragged : TextControl {
    std::function<void()> meanwhile;

    QMimeData* toMimeData(const QByteArray& text, bool rectangular) const override {
        if (meanwhile)
            meanwhile();
        return TextControl::toMimeData(text, rectangular);
    }
};

struct Dragging : testing::Test {
    std::unique_ptr<Dragged> owned = std::make_unique<Dragged>();
    Dragged& control = *owned;
    QMimeData mime;

    Dragging() {
        control.resize(600, 400);
        control.show();
        control.setText(u"one two three"_qs);
    }
    QPoint placeOf(long byte) const {
        return {static_cast<int>(control.SendScintilla(TextControl::SCI_POINTXFROMPOSITION, 0UL, byte)),
                static_cast<int>(control.SendScintilla(TextControl::SCI_POINTYFROMPOSITION, 0UL, byte)) + 3};
    }
    bool hover(QPoint at) {
        QDragEnterEvent enter(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(control.viewport(), &enter);
        QDragMoveEvent move(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(control.viewport(), &move);
        return enter.isAccepted() && move.isAccepted();
    }
    /// The action that is reported to the source, IgnoreAction when the drop was refused.
    Qt::DropAction drop(QPoint at, Qt::DropAction action = Qt::CopyAction) {
        hover(at);
        QDropEvent event(QPointF(at), action, &mime, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(control.viewport(), &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }
    /// Drags the selection and drops it elsewhere.
    void dragSelection(long from, long to, Qt::DropAction action) {
        mime.setText(control.SelText());
        control.meanwhile = [this, to, action] { drop(placeOf(to), action); };
        QTest::mousePress(control.viewport(), Qt::LeftButton, {}, placeOf(from));
        const QPoint away = placeOf(from) + QPoint(60, 0);
        QMouseEvent move(QEvent::MouseMove, away, control.viewport()->mapToGlobal(away), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(control.viewport(), &move);
        EXPECT_TRUE(std::exchange(control.meanwhile, {}));
        QTest::mouseRelease(control.viewport(), Qt::LeftButton, {}, away);
    }
};

using TextControlDroppedText = Dragging;
using TextControlDroppedFiles = Dragging;

}  // namespace

TEST_F(TextControlDroppedText, LeavesNoMarkOfTheDrag) {
    mime.setText(u"x"_qs);
    control.setSelection(13, 13);
    const QImage before = control.grab().toImage();
    EXPECT_TRUE(hover(placeOf(4)));
    EXPECT_NE(control.grab().toImage(), before);
    EXPECT_EQ(drop(placeOf(4)), Qt::CopyAction);
    EXPECT_EQ(control.Text(), u"one xtwo three"_qs);
    control.setText(u"one two three"_qs);
    control.setSelection(13, 13);
    EXPECT_EQ(control.grab().toImage(), before);
}

TEST_F(TextControlDroppedText, IsMovedFromElsewhereUnlessCtrlIsHeld) {
    mime.setText(u"x"_qs);
    EXPECT_EQ(drop(placeOf(0), Qt::MoveAction), Qt::MoveAction);
    EXPECT_EQ(drop(placeOf(0), Qt::CopyAction), Qt::CopyAction);
    EXPECT_EQ(control.Text(), u"xxone two three"_qs);
    EXPECT_EQ(control.SelText(), u"x"_qs);
}

TEST_F(TextControlDroppedText, IsNotTakenByALockedText) {
    mime.setText(u"x"_qs);
    control.setLocked(true);
    EXPECT_FALSE(hover(placeOf(0)));
    EXPECT_EQ(drop(placeOf(0), Qt::MoveAction), Qt::IgnoreAction);
    EXPECT_EQ(control.Text(), u"one two three"_qs);
}

TEST_F(TextControlDroppedText, MovesWithinTheText) {
    control.setSelection(0, 4);
    dragSelection(2, 13, Qt::MoveAction);
    EXPECT_EQ(control.Text(), u"two threeone "_qs);
    EXPECT_EQ(control.SelText(), u"one "_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"one two three"_qs);
    control.setSelection(8, 13);
    dragSelection(9, 0, Qt::MoveAction);
    EXPECT_EQ(control.Text(), u"threeone two "_qs);
}

TEST_F(TextControlDroppedText, IsCopiedWithinTheTextWithCtrl) {
    control.setSelection(4, 0);
    dragSelection(2, 13, Qt::CopyAction);
    EXPECT_EQ(control.Text(), u"one two threeone "_qs);
}

TEST_F(TextControlDroppedText, StaysWhereItIsDroppedOnItself) {
    control.setSelection(0, 7);
    dragSelection(2, 5, Qt::MoveAction);
    EXPECT_EQ(control.Text(), u"one two three"_qs);
    EXPECT_EQ(control.SelText(), u"one two"_qs);
}

TEST_F(TextControlDroppedText, AfterADragOutOfTheSelectionTakesNothingAway) {
    control.setSelection(0, 4);
    dragSelection(2, 2, Qt::MoveAction);
    mime.setText(u"x"_qs);
    control.setSelection(0, 4);
    drop(placeOf(13), Qt::MoveAction);
    EXPECT_EQ(control.Text(), u"one two threex"_qs);
}

TEST_F(TextControlDroppedText, SwitchingDraggingOffEndsADragAboveTheText) {
    mime.setText(u"x"_qs);
    const QImage before = control.grab().toImage();
    EXPECT_TRUE(hover(placeOf(4)));
    control.mouse().setDragDrop(false);
    EXPECT_EQ(control.grab().toImage(), before);
    EXPECT_FALSE(hover(placeOf(4)));
    EXPECT_EQ(drop(placeOf(4)), Qt::IgnoreAction);
    EXPECT_EQ(control.Text(), u"one two three"_qs);
}

TEST_F(TextControlDroppedText, SwitchedOffDraggingIsNotBegunByAPressFromBefore) {
    control.setSelection(0, 4);
    bool begun = false;
    control.meanwhile = [&] { begun = true; };
    QTest::mousePress(control.viewport(), Qt::LeftButton, {}, placeOf(2));
    control.mouse().setDragDrop(false);
    const QPoint away = placeOf(2) + QPoint(60, 0);
    QMouseEvent move(QEvent::MouseMove, away, control.viewport()->mapToGlobal(away), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &move);
    EXPECT_FALSE(begun);
}

TEST_F(TextControlDroppedText, IsALinkWhereNoFileIsBrought) {
    QSignalSpy files(&control, &TextControl::DropFile);
    mime.setUrls({QUrl(u"https://example.org/x"_qs)});
    EXPECT_TRUE(hover(placeOf(0)));
    EXPECT_EQ(drop(placeOf(0)), Qt::CopyAction);
    EXPECT_EQ(control.Text(), u"https://example.org/xone two three"_qs);
    control.mouse().setDragDrop(false);
    EXPECT_FALSE(hover(placeOf(0)));
    EXPECT_EQ(files.count(), 0);
}

TEST_F(TextControlDroppedFiles, EndWithTheControl) {
    mime.setUrls({QUrl::fromLocalFile(u"/a"_qs), QUrl::fromLocalFile(u"/b"_qs)});
    int told = 0;
    QObject::connect(&control, &TextControl::DropFile, [&] {
        ++told;
        owned.reset();
    });
    hover(QPoint(5, 5));
    QDropEvent event(QPointF(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &event);
    EXPECT_EQ(told, 1);
}
