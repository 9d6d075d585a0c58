#include "editor/Editor.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "editor/held/Margins.h"

#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

struct Mouse : testing::Test {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    QSignalSpy presses{&control, &TextControl::MouseDown};

    Mouse() {
        control.resize(600, 400);
        control.show();
        control.setText(u"aaaa bbbb\ncccc dddd\neeee"_qs);
    }
    long ask(unsigned message, unsigned long first = 0, long second = 0) const {
        return control.SendScintilla(message, first, second);
    }
    QPoint placeOf(long byte) const {
        return {static_cast<int>(ask(TextControl::SCI_POINTXFROMPOSITION, 0, byte)) + 1,
                static_cast<int>(ask(TextControl::SCI_POINTYFROMPOSITION, 0, byte)) + 3};
    }
    void send(QEvent::Type type, Qt::MouseButton button, Qt::KeyboardModifiers held, QPoint at) {
        const bool up = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, control.viewport()->mapToGlobal(at), button, up ? Qt::NoButton : button, held);
        QCoreApplication::sendEvent(control.viewport(), &event);
    }
    void click(Qt::MouseButton button, QPoint at, Qt::KeyboardModifiers held = {}) {
        send(QEvent::MouseButtonPress, button, held, at);
        send(QEvent::MouseButtonRelease, button, held, at);
    }
    void drag(QPoint from, QPoint to, Qt::KeyboardModifiers held) {
        send(QEvent::MouseButtonPress, Qt::LeftButton, held, from);
        send(QEvent::MouseMove, Qt::LeftButton, held, to);
        send(QEvent::MouseButtonRelease, Qt::LeftButton, held, to);
    }
    long ranges() const { return ask(TextControl::SCI_GETSELECTIONS); }
};

using TextControlPresses = Mouse;
using TextControlAddedRanges = Mouse;
using TextControlRightButton = Mouse;

}  // namespace

TEST_F(TextControlPresses, AreToldOfADoubleClicksSecondToo) {
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        presses.clear();
        click(button, placeOf(2));
        send(QEvent::MouseButtonDblClick, button, {}, placeOf(2));
        send(QEvent::MouseButtonRelease, button, {}, placeOf(2));
        ASSERT_EQ(presses.count(), 2);
        EXPECT_EQ(presses[1][0].value<Qt::MouseButton>(), button);
        EXPECT_EQ(presses[1][1].toInt(), placeOf(2).x());
    }
    EXPECT_EQ(control.SelText(), u"aaaa"_qs);
}

TEST_F(TextControlAddedRanges, AreDrawnWithCtrl) {
    control.setSelection(0, 2);
    drag(placeOf(10), placeOf(13), Qt::ControlModifier);
    EXPECT_EQ(ranges(), 2);
    EXPECT_EQ(control.SelText(), u"ccc"_qs);
    drag(placeOf(24), placeOf(20), Qt::ControlModifier);
    EXPECT_EQ(ranges(), 3);
    control.typing().type(u"-"_qs);
    EXPECT_EQ(control.Text(), u"-aa bbbb\n-c dddd\n-"_qs);
    drag(placeOf(0), placeOf(3), {});
    EXPECT_EQ(ranges(), 1);
    EXPECT_EQ(control.SelText(), u"-aa"_qs);
}

TEST_F(TextControlAddedRanges, AreNotBegunInAMargin) {
    control.lineNumbers().setLineNumbering(true);
    control.setSelection(2, 2);
    click(Qt::LeftButton, QPoint(10, placeOf(12).y()), Qt::ControlModifier);
    EXPECT_EQ(ranges(), 1);
    EXPECT_EQ(control.selected().CaretPosition(), 2);
    click(Qt::LeftButton, QPoint(Margins::BookmarksWidth + 5, placeOf(12).y()), Qt::ControlModifier);
    EXPECT_EQ(ranges(), 1);
}

TEST_F(TextControlRightButton, MovesTheCaretWhereNothingIsSelected) {
    control.setSelection(0, 4);
    click(Qt::RightButton, placeOf(12));
    EXPECT_EQ(control.selected().AnchorPosition(), 12);
    EXPECT_EQ(control.selected().CaretPosition(), 12);
}

TEST_F(TextControlRightButton, LeavesTheSelectionItFallsInto) {
    control.setSelection(4, 0);
    click(Qt::RightButton, placeOf(2));
    EXPECT_EQ(control.SelText(), u"aaaa"_qs);
    EXPECT_EQ(control.selected().CaretPosition(), 0);
    ask(TextControl::SCI_ADDSELECTION, 14, 10);
    click(Qt::RightButton, placeOf(2));
    EXPECT_EQ(ranges(), 2);
}

TEST_F(TextControlRightButton, LeavesTheCaretWhereItIsInTheMargin) {
    control.lineNumbers().setLineNumbering(true);
    control.setSelection(2, 2);
    click(Qt::RightButton, QPoint(10, placeOf(12).y()));
    click(Qt::RightButton, QPoint(Margins::BookmarksWidth + 5, placeOf(12).y()));
    EXPECT_EQ(control.selected().CaretPosition(), 2);
}

TEST_F(Mouse, TheMiddleButtonLeavesTheTextAloneWithoutAPrimarySelection) {
    click(Qt::MiddleButton, placeOf(2));
    EXPECT_EQ(control.Text(), u"aaaa bbbb\ncccc dddd\neeee"_qs);
    EXPECT_EQ(presses.count(), 1);
}
