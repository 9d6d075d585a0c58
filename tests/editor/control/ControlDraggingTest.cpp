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

/// Does something in the midst of a drag out of the selection, when the drag asks for what it is to carry.
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
        control.setText(QStringLiteral("one two three"));
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
    /// What the source is told, IgnoreAction when nothing was taken.
    Qt::DropAction drop(QPoint at, Qt::DropAction action = Qt::CopyAction) {
        hover(at);
        QDropEvent event(QPointF(at), action, &mime, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(control.viewport(), &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }
    /// Drags what is selected and lets it go elsewhere.
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
    mime.setText(QStringLiteral("x"));
    control.setSelection(13, 13);
    const QImage before = control.grab().toImage();
    EXPECT_TRUE(hover(placeOf(4)));
    EXPECT_NE(control.grab().toImage(), before);
    EXPECT_EQ(drop(placeOf(4)), Qt::CopyAction);
    EXPECT_EQ(control.Text(), QStringLiteral("one xtwo three"));
    control.setText(QStringLiteral("one two three"));
    control.setSelection(13, 13);
    EXPECT_EQ(control.grab().toImage(), before);
}

TEST_F(TextControlDroppedText, IsMovedFromElsewhereUnlessCtrlIsHeld) {
    mime.setText(QStringLiteral("x"));
    EXPECT_EQ(drop(placeOf(0), Qt::MoveAction), Qt::MoveAction);
    EXPECT_EQ(drop(placeOf(0), Qt::CopyAction), Qt::CopyAction);
    EXPECT_EQ(control.Text(), QStringLiteral("xxone two three"));
    EXPECT_EQ(control.SelText(), QStringLiteral("x"));
}

TEST_F(TextControlDroppedText, IsNotTakenByALockedText) {
    mime.setText(QStringLiteral("x"));
    control.setLocked(true);
    EXPECT_FALSE(hover(placeOf(0)));
    EXPECT_EQ(drop(placeOf(0), Qt::MoveAction), Qt::IgnoreAction);
    EXPECT_EQ(control.Text(), QStringLiteral("one two three"));
}

TEST_F(TextControlDroppedText, MovesWithinTheText) {
    control.setSelection(0, 4);
    dragSelection(2, 13, Qt::MoveAction);
    EXPECT_EQ(control.Text(), QStringLiteral("two threeone "));
    EXPECT_EQ(control.SelText(), QStringLiteral("one "));
    control.Undo();
    EXPECT_EQ(control.Text(), QStringLiteral("one two three"));
    control.setSelection(8, 13);
    dragSelection(9, 0, Qt::MoveAction);
    EXPECT_EQ(control.Text(), QStringLiteral("threeone two "));
}

TEST_F(TextControlDroppedText, IsCopiedWithinTheTextWithCtrl) {
    control.setSelection(4, 0);
    dragSelection(2, 13, Qt::CopyAction);
    EXPECT_EQ(control.Text(), QStringLiteral("one two threeone "));
}

TEST_F(TextControlDroppedText, StaysWhereItIsDroppedOnItself) {
    control.setSelection(0, 7);
    dragSelection(2, 5, Qt::MoveAction);
    EXPECT_EQ(control.Text(), QStringLiteral("one two three"));
    EXPECT_EQ(control.SelText(), QStringLiteral("one two"));
}

TEST_F(TextControlDroppedText, AfterADragOutOfTheSelectionTakesNothingAway) {
    control.setSelection(0, 4);
    dragSelection(2, 2, Qt::MoveAction);
    mime.setText(QStringLiteral("x"));
    control.setSelection(0, 4);
    drop(placeOf(13), Qt::MoveAction);
    EXPECT_EQ(control.Text(), QStringLiteral("one two threex"));
}

TEST_F(TextControlDroppedText, SwitchingDraggingOffEndsADragAboveTheText) {
    mime.setText(QStringLiteral("x"));
    const QImage before = control.grab().toImage();
    EXPECT_TRUE(hover(placeOf(4)));
    control.setDragDrop(false);
    EXPECT_EQ(control.grab().toImage(), before);
    EXPECT_FALSE(hover(placeOf(4)));
    EXPECT_EQ(drop(placeOf(4)), Qt::IgnoreAction);
    EXPECT_EQ(control.Text(), QStringLiteral("one two three"));
}

TEST_F(TextControlDroppedText, SwitchedOffDraggingIsNotBegunByAPressFromBefore) {
    control.setSelection(0, 4);
    bool begun = false;
    control.meanwhile = [&] { begun = true; };
    QTest::mousePress(control.viewport(), Qt::LeftButton, {}, placeOf(2));
    control.setDragDrop(false);
    const QPoint away = placeOf(2) + QPoint(60, 0);
    QMouseEvent move(QEvent::MouseMove, away, control.viewport()->mapToGlobal(away), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &move);
    EXPECT_FALSE(begun);
}

TEST_F(TextControlDroppedText, IsALinkWhereNoFileIsBrought) {
    QSignalSpy files(&control, &TextControl::DropFile);
    mime.setUrls({QUrl(QStringLiteral("https://example.org/x"))});
    EXPECT_TRUE(hover(placeOf(0)));
    EXPECT_EQ(drop(placeOf(0)), Qt::CopyAction);
    EXPECT_EQ(control.Text(), QStringLiteral("https://example.org/xone two three"));
    control.setDragDrop(false);
    EXPECT_FALSE(hover(placeOf(0)));
    EXPECT_EQ(files.count(), 0);
}

TEST_F(TextControlDroppedFiles, EndWithTheControl) {
    mime.setUrls({QUrl::fromLocalFile(QStringLiteral("/a")), QUrl::fromLocalFile(QStringLiteral("/b"))});
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
