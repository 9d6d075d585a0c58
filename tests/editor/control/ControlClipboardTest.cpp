#include "editor/Editor.h"
#include "editor/control/ControlClipboard.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/TextControl.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

using Ranges = std::vector<std::pair<int, int>>;

struct Ranged : testing::Test {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;

    Ranged() {
        control.resize(600, 400);
        control.show();
        QGuiApplication::clipboard()->setText(u"kept"_qs);
    }
    /// Anchor and caret of each.
    void select(const Ranges& ranges) {
        control.setSelection(ranges.front().first, ranges.front().second);
        for (auto range = ranges.begin() + 1; range != ranges.end(); ++range) {
            control.SendScintilla(TextControl::SCI_ADDSELECTION, static_cast<unsigned long>(range->second),
                                  static_cast<long>(range->first));
        }
    }
    /// By keys, from the start of the text.
    void selectRectangle(int columns, int lines) {
        control.setSelection(0, 0);
        for (int step = 0; step < columns; ++step)
            QTest::keyClick(&control, Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
        for (int step = 0; step < lines; ++step)
            QTest::keyClick(&control, Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    }
    static QString held() { return QGuiApplication::clipboard()->text(); }
};

/// The data that the control offers for its selection.
struct Offering : TextControl {
    using TextControl::toMimeData;
};

using TextControlSeveralRanges = Ranged;
using TextControlRectangle = Ranged;

}  // namespace

TEST_F(TextControlSeveralRanges, AreCopiedOneALineInTheOrderOfTheText) {
    control.setText(u"one two three"_qs);
    select({{8, 13}, {0, 3}});
    control.clipboard().Copy();
    EXPECT_EQ(held(), u"one\nthree"_qs);
    EXPECT_EQ(control.Text(), u"one two three"_qs);
}

TEST_F(TextControlSeveralRanges, AreCopiedWhenTheNewestIsACaretAlone) {
    control.setText(u"one two"_qs);
    select({{0, 3}, {5, 5}});
    ASSERT_EQ(control.selected().AnchorPosition(), control.selected().CaretPosition());
    QTest::keyClick(&control, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(held(), u"one"_qs);
}

TEST_F(TextControlSeveralRanges, AreCutWithNothingLost) {
    control.setText(u"one two three"_qs);
    select({{0, 4}, {8, 10}, {6, 6}});
    control.clipboard().Cut();
    EXPECT_EQ(control.Text(), u"two ree"_qs);
    EXPECT_EQ(held(), u"one \nth"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"one two three"_qs);
}

TEST_F(TextControlSeveralRanges, OfNothingLeaveTheClipboardAlone) {
    control.setText(u"one two"_qs);
    select({{1, 1}, {5, 5}});
    control.clipboard().Copy();
    control.clipboard().Cut();
    EXPECT_EQ(held(), u"kept"_qs);
    EXPECT_EQ(control.Text(), u"one two"_qs);
}

TEST_F(TextControlRectangle, IsCopiedAndPastedAsARectangle) {
    control.setText(u"ab1\ncd2\nef3"_qs);
    selectRectangle(2, 2);
    control.clipboard().Copy();
    EXPECT_EQ(held(), u"ab\ncd\nef\n"_qs);
    control.setSelection(2, 2);
    control.clipboard().Paste();
    EXPECT_EQ(control.Text(), u"abab1\ncdcd2\nefef3"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"ab1\ncd2\nef3"_qs);
}

TEST_F(TextControlRectangle, IsPastedOverAnotherFromItsTopOn) {
    control.setText(u"ab1\ncd2\nef3"_qs);
    selectRectangle(2, 1);
    control.clipboard().Copy();
    control.setText(u"123456\n123456\n123456"_qs);
    control.setSelection(2, 2);
    for (const int command : {TextControl::SCI_LINEDOWNRECTEXTEND, TextControl::SCI_CHARRIGHTRECTEXTEND,
                              TextControl::SCI_CHARRIGHTRECTEXTEND})
        control.ExecuteCmd(command);
    control.clipboard().Paste();
    EXPECT_EQ(control.Text(), u"12ab56\n12cd56\n123456"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"123456\n123456\n123456"_qs);
}

TEST_F(TextControlRectangle, IsCut) {
    control.setText(u"ab1\ncd2"_qs);
    selectRectangle(2, 1);
    control.clipboard().Cut();
    EXPECT_EQ(control.Text(), u"1\n2"_qs);
    EXPECT_EQ(held(), u"ab\ncd\n"_qs);
}

TEST(TextControlPrimarySelection, HasNoMoreThanAMegabyte) {
    Offering control;
    const QString most(1024 * 1024, u'a');
    control.setText(most);
    control.SelectAll();
    std::unique_ptr<QMimeData> offered(control.toMimeData(most.toUtf8(), false));
    EXPECT_EQ(offered->text().size(), most.size());
    control.AddText(u"b"_qs);
    control.SelectAll();
    offered.reset(control.toMimeData((most + u'b').toUtf8(), false));
    EXPECT_FALSE(offered->hasText());
    control.clipboard().Copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text().size(), most.size() + 1);
}
