#include "editor/Editor.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/SearchHistory.h"
#include "editor/control/TextControl.h"
#include "editor/windows/ControlPrompts.h"
#include "editor/windows/IncrementalSearchBar.h"
#include "editor/windows/SearchWindows.h"

#include <QAction>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <memory>

namespace {

struct SearchBar : testing::Test {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;

    SearchBar() {
        control.resize(500, 300);
        control.show();
        control.setText(u"one two\none three\ntwo"_qs);
    }
    void open(bool backwards = false) { SearchWindows::openIncremental(control, backwards); }
    IncrementalSearchBar& bar() { return *control.findChild<IncrementalSearchBar*>(); }
    QLineEdit& field() { return *bar().findChild<QLineEdit*>(); }
    QString told() { return bar().findChild<QLabel*>(u"lblIncrementalSearch"_qs)->text(); }
    void type(const char* text) { QTest::keyClicks(&field(), QString::fromUtf8(text)); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&field(), key, modifiers); }
    std::pair<qint64, qint64> selected() {
        return {control.selected().AnchorPosition(), control.selected().CaretPosition()};
    }
};

using Selected = std::pair<qint64, qint64>;

}  // namespace

TEST_F(SearchBar, SelectsTheNextMatchAsOneTypes) {
    open();
    EXPECT_TRUE(bar().isVisible());
    type("t");
    EXPECT_EQ(selected(), Selected(4, 5));
    type("h");
    EXPECT_EQ(selected(), Selected(12, 14));
    key(Qt::Key_Backspace);
    EXPECT_EQ(selected(), Selected(4, 5));
    key(Qt::Key_Backspace);
    EXPECT_EQ(selected(), Selected(0, 0));
}

TEST_F(SearchBar, SearchesBackwards) {
    control.setSelection(18, 18);
    open(true);
    type("t");
    EXPECT_EQ(selected(), Selected(12, 13));
    type("w");
    EXPECT_EQ(selected(), Selected(4, 6));
}

TEST_F(SearchBar, GoesToFurtherMatchesByEnterAndF3) {
    open();
    type("two");
    EXPECT_EQ(selected(), Selected(4, 7));
    key(Qt::Key_Return);
    EXPECT_EQ(selected(), Selected(18, 21));
    key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(selected(), Selected(4, 7));
    key(Qt::Key_F3);
    EXPECT_EQ(selected(), Selected(18, 21));
    key(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(selected(), Selected(4, 7));
    key(Qt::Key_Down);
    EXPECT_EQ(selected(), Selected(18, 21));
    EXPECT_EQ(told(), QString());
    key(Qt::Key_Down);
    EXPECT_EQ(selected(), Selected(4, 7));
    EXPECT_FALSE(told().isEmpty());
}

TEST_F(SearchBar, SearchingBackwardsGoesOnWithTheMatchItStandsOn) {
    control.setSelection(19, 19);
    open(true);
    type("t");
    EXPECT_EQ(selected(), Selected(18, 19));
    type("wo");
    EXPECT_EQ(selected(), Selected(18, 21));
    key(Qt::Key_Up);
    EXPECT_EQ(selected(), Selected(4, 7));
    type("\\");
    key(Qt::Key_Backspace);
    EXPECT_EQ(selected(), Selected(4, 7));
}

TEST_F(SearchBar, WhatIsTypedBehindAMatchFoundBackwardsMakesItLonger) {
    control.setSelection(13, 13);
    open(true);
    type("o");
    EXPECT_EQ(selected(), Selected(8, 9));
    key(Qt::Key_Up);
    EXPECT_EQ(selected(), Selected(6, 7));
    key(Qt::Key_Up);
    EXPECT_EQ(selected(), Selected(0, 1));
    type("ne");
    EXPECT_EQ(selected(), Selected(0, 3));
}

TEST_F(SearchBar, EscapeGivesBackSeveralRangesAndThePartInSight) {
    control.setText(u"one two\n"_qs.repeated(200));
    control.setSelection(0, 3);
    control.SendScintilla(QsciScintillaBase::SCI_ADDSELECTION, 8UL, 11L);
    control.SendScintilla(QsciScintillaBase::SCI_SETFIRSTVISIBLELINE, 50UL);
    open();
    type("two");
    EXPECT_NE(control.SendScintilla(QsciScintillaBase::SCI_GETFIRSTVISIBLELINE), 50);
    key(Qt::Key_Escape);
    EXPECT_EQ(control.SendScintilla(QsciScintillaBase::SCI_GETFIRSTVISIBLELINE), 50);
    EXPECT_EQ(control.SendScintilla(QsciScintillaBase::SCI_GETSELECTIONS), 2);
    EXPECT_EQ(selected(), Selected(11, 8));
}

TEST_F(SearchBar, EscapeInTheTextClosesItWhereTheSearchHasComeTo) {
    open();
    type("three");
    QTest::keyClick(&control, Qt::Key_Escape);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_EQ(selected(), Selected(12, 17));
}

TEST_F(SearchBar, EscapeOnAButtonClosesIt) {
    open();
    type("three");
    QTest::keyClick(bar().findChild<QToolButton*>(u"cmdIncrementalNext"_qs), Qt::Key_Escape);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_EQ(selected(), Selected(0, 0));
}

TEST_F(SearchBar, EnterKeepsToTheDirection) {
    control.setSelection(21, 21);
    open(true);
    type("two");
    EXPECT_EQ(selected(), Selected(18, 21));
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(selected(), Selected(4, 7));
    key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(selected(), Selected(18, 21));
}

TEST_F(SearchBar, EscapeGivesTheSelectionBack) {
    control.setSelection(9, 3);
    open();
    type("three");
    EXPECT_EQ(selected(), Selected(12, 17));
    key(Qt::Key_Escape);
    EXPECT_EQ(selected(), Selected(9, 3));
    EXPECT_FALSE(bar().isVisible());
}

TEST_F(SearchBar, ItsButtonLeavesTheMatch) {
    open();
    type("three");
    bar().findChild<QToolButton*>(u"cmdIncrementalClose"_qs)->click();
    EXPECT_FALSE(bar().isVisible());
    EXPECT_EQ(selected(), Selected(12, 17));
}

TEST_F(SearchBar, TellsWhatIsNotThere) {
    open();
    type("x");
    EXPECT_FALSE(told().isEmpty());
    EXPECT_EQ(selected(), Selected(0, 0));
    key(Qt::Key_Backspace);
    EXPECT_EQ(told(), QString());
}

TEST_F(SearchBar, TellsWhatIsWrongWithAnExpression) {
    control.setSearchRegExp(true);
    open();
    type("(");
    EXPECT_TRUE(told().contains(u"missing closing parenthesis"_qs));
    type("two)$");
    EXPECT_EQ(selected(), Selected(4, 7));
    EXPECT_EQ(told(), QString());
}

TEST_F(SearchBar, OpenedAgainGoesAMatchFurther) {
    open();
    type("two");
    open();
    EXPECT_EQ(selected(), Selected(18, 21));
    open(true);
    EXPECT_EQ(selected(), Selected(4, 7));
}

TEST_F(SearchBar, OpenedTwiceLooksForTheLastText) {
    control.search().setSearchText(u"three"_qs);
    open();
    open();
    EXPECT_EQ(selected(), Selected(12, 17));
}

TEST_F(SearchBar, PutsIntoTheHistoryOnlyWhatWasLookedForOnPurpose) {
    open();
    type("thr");
    EXPECT_NE(SearchHistory::ofFinds().entries().value(0), u"thr"_qs);
    key(Qt::Key_Return);
    EXPECT_EQ(SearchHistory::ofFinds().entries().value(0), u"thr"_qs);
    EXPECT_FALSE(SearchHistory::ofFinds().entries().contains(u"th"_qs));
}

TEST_F(SearchBar, LiesBelowTheText) {
    const int before = control.viewport()->height();
    open();
    EXPECT_LT(control.viewport()->height(), before);
    EXPECT_GE(bar().geometry().top(), control.viewport()->geometry().bottom());
    EXPECT_LE(bar().geometry().bottom(), control.height());
    control.resize(700, 200);
    EXPECT_GE(bar().geometry().top(), control.viewport()->geometry().bottom());
    EXPECT_GT(bar().width(), 500);
    key(Qt::Key_Escape);
    control.resize(500, 300);
    EXPECT_EQ(control.viewport()->height(), before);
}

TEST_F(SearchBar, ItsKeysComeBeforeThoseOfMenus) {
    open();
    for (const Qt::Key own : {Qt::Key_F3, Qt::Key_Escape, Qt::Key_Return}) {
        QKeyEvent asked(QEvent::ShortcutOverride, own, Qt::NoModifier);
        asked.ignore();
        QCoreApplication::sendEvent(&field(), &asked);
        EXPECT_TRUE(asked.isAccepted()) << own;
    }
    QKeyEvent other(QEvent::ShortcutOverride, Qt::Key_F3, Qt::ControlModifier);
    other.ignore();
    QCoreApplication::sendEvent(&field(), &other);
    EXPECT_FALSE(other.isAccepted());
}

TEST_F(SearchBar, GoesWithItsControlInTheMiddleOfASearch) {
    auto* gone = makeEditor();
    gone->setText(u"aaaaaaaaaaaaaaaaaaaaaa!\n"_qs.repeated(3000));
    gone->show();
    gone->setSearchRegExp(true);
    SearchWindows::openIncremental(*gone, false);
    const QPointer<IncrementalSearchBar> goneBar = gone->findChild<IncrementalSearchBar*>();
    auto* goneField = goneBar->findChild<QLineEdit*>();
    goneField->setText(u"(a|aa)+$"_qs);
    gone->search().setSearchWatch([gone](bool) {
        delete gone;
        return true;
    });
    QTest::keyClick(goneField, Qt::Key_Return);
    EXPECT_FALSE(goneBar);
}

TEST_F(SearchBar, SaysThatASearchWasStopped) {
    control.setText(u"aaaaaaaaaaaaaaaaaaaaaa!\n"_qs.repeated(3000));
    control.setSearchRegExp(true);
    control.setSelection(3, 3);
    control.search().setSearchWatch([](bool) { return false; });
    for (const bool backwards : {false, true}) {
        open(backwards);
        field().clear();
        QTest::keyClicks(&field(), u"(a|aa)+$"_qs);
        EXPECT_EQ(told(), u"The search was stopped."_qs);
        EXPECT_EQ(selected(), Selected(3, 3));
        key(Qt::Key_Escape);
    }
}

TEST_F(SearchBar, LeavesTheKeyboardToTheTextOnceALineIsGoneTo) {
    open();
    type("o");
    ASSERT_EQ(control.window()->focusWidget(), &field());
    ControlPrompts::askLine(control);
    auto* prompt = control.findChild<QInputDialog*>(u"GotoLine"_qs);
    prompt->setIntValue(3);
    prompt->accept();
    EXPECT_EQ(control.CurrentLine(), 2);
    EXPECT_EQ(control.window()->focusWidget(), &control);
}
