#include "editor/Editor.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/TextControl.h"
#include "editor/windows/MatchHighlight.h"
#include "editor/windows/SearchWindows.h"

#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

struct Highlight : testing::Test {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    std::unique_ptr<MatchHighlight::Hold> window;

    MatchHighlight& highlight() { return MatchHighlight::of(control, control.search()); }

    void hold(const QString& text) {
        control.resize(500, 300);
        control.show();
        control.setText(text);
        window = std::make_unique<MatchHighlight::Hold>(control, control.search());
    }
    void look(const char* text) {
        control.search().setSearchText(QString::fromUtf8(text));
        highlight().refresh();
    }
    bool marked(qint64 byte) const {
        return control.SendScintilla(QsciScintillaBase::SCI_INDICATORVALUEAT,
                                     static_cast<unsigned long>(QsciScintillaBase::INDIC_CONTAINER),
                                     static_cast<long>(byte)) != 0;
    }
    std::string marks(qint64 from, qint64 to) const {
        std::string row;
        for (qint64 byte = from; byte < to; ++byte)
            row += marked(byte) ? '#' : '.';
        return row;
    }
};

}  // namespace

TEST_F(Highlight, MarksAllMatchesInSight) {
    hold(u"one two one"_qs);
    look("one");
    EXPECT_EQ(marks(0, 11), "###.....###");
    look("two");
    EXPECT_EQ(marks(0, 11), "....###....");
    look("");
    EXPECT_EQ(marks(0, 11), "...........");
    look("one");
    window.reset();
    EXPECT_EQ(marks(0, 11), "...........");
}

TEST_F(Highlight, FollowsTheFlagsAndEdits) {
    hold(u"one ONE"_qs);
    look("one");
    EXPECT_EQ(marks(0, 7), "###.###");
    control.setSearchCaseSensitive(true);
    highlight().refresh();
    EXPECT_EQ(marks(0, 7), "###....");
    control.setSelection(0, 1);
    control.setSelText(QString());
    highlight().refresh();
    EXPECT_EQ(marks(0, 6), "......");
}

TEST_F(Highlight, LeavesAloneWhatIsOutOfSight) {
    hold(u"a\n"_qs.repeated(100'000));
    look("a");
    EXPECT_TRUE(marked(0));
    EXPECT_FALSE(marked(199'998));
    control.runCommand(QsciScintillaBase::SCI_DOCUMENTEND);
    highlight().refresh();
    EXPECT_FALSE(marked(0));
    EXPECT_TRUE(marked(199'998));
}

TEST_F(Highlight, TakesNoEmptyMatchesAndNoInvalidExpression) {
    hold(u"a\nb"_qs);
    control.setSearchRegExp(true);
    look("^");
    EXPECT_EQ(marks(0, 3), "...");
    look("(");
    EXPECT_EQ(marks(0, 3), "...");
}

TEST_F(Highlight, RunsAcrossTheJointsOfALongLine) {
    hold(u"x"_qs.repeated(200'000));
    look("x+");
    control.setSearchRegExp(true);
    highlight().refresh();
    EXPECT_TRUE(marked(0));
    EXPECT_TRUE(marked(5000));
}

TEST_F(Highlight, ComesAndGoesWithTheBar) {
    hold(u"one two one"_qs);
    window.reset();
    SearchWindows::openIncremental(control, false);
    auto* field = control.findChild<QWidget*>(u"txtIncrementalSearch"_qs);
    QTest::keyClicks(field, u"o"_qs);
    EXPECT_TRUE(QTest::qWaitFor([&] { return marked(8); }));
    EXPECT_EQ(marks(0, 11), "#.....#.#..");
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(marks(0, 11), "...........");
}

TEST_F(Highlight, StaysAsLongAsOneOfTwoWindowsIsOpen) {
    hold(u"one two one"_qs);
    auto second = std::make_unique<MatchHighlight::Hold>(control, control.search());
    look("one");
    second.reset();
    EXPECT_EQ(marks(0, 11), "###.....###");
    highlight().refresh();
    EXPECT_EQ(marks(0, 11), "###.....###");
    window.reset();
    EXPECT_EQ(marks(0, 11), "...........");
}

TEST_F(Highlight, OfTheFindDialogOutlivesTheBar) {
    hold(u"one two one"_qs);
    window.reset();
    SearchWindows::openFind(control);
    SearchWindows::openIncremental(control, false);
    auto* field = control.findChild<QWidget*>(u"txtIncrementalSearch"_qs);
    QTest::keyClicks(field, u"one"_qs);
    QTest::keyClick(field, Qt::Key_Escape);
    highlight().refresh();
    EXPECT_EQ(marks(0, 11), "###.....###");
}

TEST_F(Highlight, OfASearchWithoutAWindowStaysUntilEscape) {
    hold(u"one two one"_qs);
    window.reset();
    control.search().setSearchText(u"one"_qs);
    highlight().refresh();
    EXPECT_EQ(marks(0, 11), "...........");
    control.ExecuteCmd(176);
    highlight().refresh();
    EXPECT_EQ(marks(0, 11), "###.....###");
    QTest::keyClick(&control, Qt::Key_Right);
    highlight().refresh();
    EXPECT_EQ(marks(0, 11), "###.....###");
    QTest::keyClick(&control, Qt::Key_Escape);
    EXPECT_EQ(marks(0, 11), "...........");
    control.ExecuteCmd(174);
    highlight().refresh();
    EXPECT_EQ(marks(0, 11), "###.....###");
}

TEST_F(Highlight, OfASearchEndsWithAnotherText) {
    hold(u"one two one"_qs);
    window.reset();
    control.search().setSearchText(u"one"_qs);
    control.ExecuteCmd(176);
    highlight().refresh();
    control.search().setSearchText(u"two"_qs);
    highlight().refresh();
    EXPECT_EQ(marks(0, 11), "...........");
    control.ExecuteCmd(176);
    highlight().refresh();
    EXPECT_EQ(marks(0, 11), "....###....");
}

TEST_F(Highlight, HasTheColourOfThePalette) {
    hold(u"one"_qs);
    QPalette palette = control.palette();
    palette.setColor(QPalette::Highlight, QColor(1, 2, 3));
    control.setPalette(palette);
    EXPECT_EQ(control.SendScintilla(QsciScintillaBase::SCI_INDICGETFORE,
                                    static_cast<unsigned long>(QsciScintillaBase::INDIC_CONTAINER)),
              1 | 2 << 8 | 3 << 16);
}
