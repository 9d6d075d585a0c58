#include "editor/control/TextControl.h"

#include <gtest/gtest.h>

namespace {

struct Asked : TextControl {
    using TextControl::inputMethodQuery;

    QString text(Qt::InputMethodQuery query) const { return inputMethodQuery(query).toString(); }
    qint64 number(Qt::InputMethodQuery query) const { return inputMethodQuery(query).toLongLong(); }
};

}  // namespace

TEST(TextControlInputMethod, IsToldOfTheLineAroundTheCaret) {
    Asked control;
    control.setText(u"über\nein Wörtchen\nmehr"_qs);
    control.setSelection(9, 10);
    EXPECT_EQ(control.text(Qt::ImSurroundingText), u"ein Wörtchen"_qs);
    EXPECT_EQ(control.number(Qt::ImCursorPosition), 5);
    EXPECT_EQ(control.text(Qt::ImTextBeforeCursor), u"ein W"_qs);
    EXPECT_EQ(control.text(Qt::ImTextAfterCursor), u"örtchen"_qs);
    EXPECT_EQ(control.number(Qt::ImAbsolutePosition), 10);
    EXPECT_EQ(control.text(Qt::ImCurrentSelection), u"W"_qs);
}

TEST(TextControlInputMethod, IsToldOfNoMoreThanTheNeighbourhood) {
    Asked control;
    control.setText(QString(50'000, u'ä'));
    control.setSelection(20'000, 20'000);
    const QString around = control.text(Qt::ImSurroundingText);
    EXPECT_LE(around.toUtf8().size(), 2 * 1024);
    EXPECT_GT(around.size(), 900);
    EXPECT_EQ(around.count(u'ä'), around.size());
    EXPECT_EQ(control.number(Qt::ImCursorPosition), control.text(Qt::ImTextBeforeCursor).size());
    EXPECT_EQ(control.number(Qt::ImAbsolutePosition), 20'000);
    control.SelectAll();
    EXPECT_EQ(control.text(Qt::ImCurrentSelection), QString());
}
