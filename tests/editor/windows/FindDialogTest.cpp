#include "editor/Editor.h"
#include "editor/control/ControlReplace.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/SearchHistory.h"
#include "editor/control/TextControl.h"
#include "editor/windows/FindDialog.h"
#include "editor/windows/SearchWindows.h"
#include "support/Mnemonics.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

struct Dialogs : testing::Test {
    std::unique_ptr<TextControl> owned = std::unique_ptr<TextControl>(makeEditor());
    TextControl& control = *owned;
    QSignalSpy told{&control, &TextControl::AfterFind};

    Dialogs() {
        control.resize(500, 300);
        control.show();
    }
    FindDialog* find() { return control.findChild<FindDialog*>(u"FindDialog"_qs); }
    FindDialog* replace() { return control.findChild<FindDialog*>(u"ReplaceDialog"_qs); }
    FindDialog& openFind() {
        SearchWindows::openFind(control);
        return *find();
    }
    FindDialog& openReplace() {
        SearchWindows::openReplace(control);
        return *replace();
    }
    template <typename Widget>
    static Widget& in(FindDialog& dialog, const char* name) {
        auto* found = dialog.findChild<Widget*>(QString::fromUtf8(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    static void enter(FindDialog& dialog, const char* field, const char* text) {
        in<QComboBox>(dialog, field).setEditText(QString::fromUtf8(text));
    }
    static void check(FindDialog& dialog, const char* name) { in<QCheckBox>(dialog, name).click(); }
    static void press(FindDialog& dialog, const char* name) { in<QPushButton>(dialog, name).click(); }
    static QString result(FindDialog& dialog) { return in<QLabel>(dialog, "lblResult").text(); }
    QString selected() { return control.SelText(); }
};

using FindDialogWindow = Dialogs;
using ReplaceDialogWindow = Dialogs;

}  // namespace

TEST_F(ReplaceDialogWindow, NoLetterStandsForTwoThings) {
    EXPECT_EQ(doubledMnemonics(openFind()), QStringList());
    EXPECT_EQ(doubledMnemonics(openReplace()), QStringList());
}

TEST_F(FindDialogWindow, OpensWithTheSelectedTextAndTheControlsFlags) {
    control.setText(u"one two\nthree"_qs);
    control.setSelection(4, 7);
    control.setSearchWholeWord(true);
    SearchWindows::openFind(control);
    ASSERT_NE(find(), nullptr);
    FindDialog& dialog = *find();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(dialog.isModal());
    EXPECT_EQ(in<QComboBox>(dialog, "cboFind").currentText(), u"two"_qs);
    EXPECT_TRUE(in<QCheckBox>(dialog, "chkWholeWord").isChecked());
    EXPECT_FALSE(in<QCheckBox>(dialog, "chkMatchCase").isChecked());
    EXPECT_FALSE(in<QCheckBox>(dialog, "chkInSelection").isChecked());
    EXPECT_EQ(told.count(), 0);
    EXPECT_EQ(dialog.findChild<QComboBox*>(u"cboReplace"_qs), nullptr);
}

TEST_F(FindDialogWindow, OpensWithTheLastTextWhereLinesAreSelected) {
    control.setText(u"one two\nthree"_qs);
    SearchHistory::ofFinds().add(u"last"_qs);
    control.SelectAll();
    FindDialog& dialog = openFind();
    EXPECT_EQ(in<QComboBox>(dialog, "cboFind").currentText(), u"last"_qs);
    EXPECT_TRUE(in<QCheckBox>(dialog, "chkInSelection").isChecked());
}

TEST_F(FindDialogWindow, IsThereOnceAndComesToTheFrontAgain) {
    openFind();
    openFind();
    EXPECT_EQ(control.findChildren<FindDialog*>().size(), 1);
}

TEST_F(FindDialogWindow, FindsBothWays) {
    control.setText(u"one two one"_qs);
    FindDialog& dialog = openFind();
    enter(dialog, "cboFind", "one");
    press(dialog, "cmdFindNext");
    EXPECT_EQ(control.SelStart(), 0);
    EXPECT_EQ(result(dialog), QString());
    press(dialog, "cmdFindNext");
    EXPECT_EQ(control.SelStart(), 8);
    press(dialog, "cmdFindNext");
    EXPECT_EQ(control.SelStart(), 0);
    EXPECT_FALSE(result(dialog).isEmpty());
    press(dialog, "cmdFindPrevious");
    EXPECT_EQ(control.SelStart(), 8);
    EXPECT_EQ(told.count(), 4);
    EXPECT_EQ(SearchHistory::ofFinds().entries().first(), u"one"_qs);
    EXPECT_EQ(in<QComboBox>(dialog, "cboFind").itemText(0), u"one"_qs);
}

TEST_F(FindDialogWindow, SearchesAtEnter) {
    control.setText(u"one two"_qs);
    FindDialog& dialog = openFind();
    enter(dialog, "cboFind", "two");
    QTest::keyClick(in<QComboBox>(dialog, "cboFind").lineEdit(), Qt::Key_Return);
    EXPECT_EQ(selected(), u"two"_qs);
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(FindDialogWindow, SearchesByItsFlags) {
    control.setText(u"Ones ONE o.e"_qs);
    FindDialog& dialog = openFind();
    enter(dialog, "cboFind", "ONE");
    check(dialog, "chkMatchCase");
    press(dialog, "cmdFindNext");
    EXPECT_EQ(control.SelStart(), 5);
    check(dialog, "chkMatchCase");
    check(dialog, "chkWholeWord");
    enter(dialog, "cboFind", "one");
    control.setSelection(0, 0);
    press(dialog, "cmdFindNext");
    EXPECT_EQ(control.SelStart(), 5);
    check(dialog, "chkWholeWord");
    check(dialog, "chkRegExp");
    enter(dialog, "cboFind", "o\\.e");
    press(dialog, "cmdFindNext");
    EXPECT_EQ(control.SelStart(), 9);
    EXPECT_TRUE(control.SearchRegExp());
    EXPECT_FALSE(control.SearchCaseSensitive());
}

TEST_F(FindDialogWindow, TellsInPlaceWhatWentWrong) {
    control.setText(u"one"_qs);
    FindDialog& dialog = openFind();
    enter(dialog, "cboFind", "two");
    press(dialog, "cmdFindNext");
    const QString notFound = result(dialog);
    EXPECT_FALSE(notFound.isEmpty());
    check(dialog, "chkRegExp");
    enter(dialog, "cboFind", "on(e");
    EXPECT_EQ(result(dialog), QString());
    press(dialog, "cmdFindNext");
    EXPECT_TRUE(result(dialog).contains(u"missing closing parenthesis"_qs));
    EXPECT_TRUE(result(dialog).contains(u"5"_qs));
    EXPECT_EQ(in<QComboBox>(dialog, "cboFind").lineEdit()->cursorPosition(), 4);
    EXPECT_EQ(told.count(), 2);
}

TEST_F(FindDialogWindow, BeginsWithTheNewestTextOfAnyControl) {
    const std::unique_ptr<TextControl> otherOwner{makeEditor()};
    TextControl& other = *otherOwner;
    other.setText(u"newest"_qs);
    other.search().setSearchText(u"newest"_qs);
    other.search().setReplacementText(u"by"_qs);
    other.replacing().replaceNext();
    control.search().setSearchText(u"older"_qs);
    EXPECT_EQ(in<QComboBox>(openFind(), "cboFind").currentText(), u"newest"_qs);
    EXPECT_EQ(in<QComboBox>(openReplace(), "cboReplace").currentText(), u"by"_qs);
}

TEST_F(FindDialogWindow, GoesOnByF3) {
    control.setText(u"one two one"_qs);
    for (FindDialog* dialog : {&openFind(), &openReplace()}) {
        control.setSelection(0, 0);
        enter(*dialog, "cboFind", "one");
        auto* field = in<QComboBox>(*dialog, "cboFind").lineEdit();
        QTest::keyClick(field, Qt::Key_F3);
        QTest::keyClick(field, Qt::Key_F3);
        EXPECT_EQ(control.SelStart(), 8);
        QTest::keyClick(&in<QPushButton>(*dialog, "cmdClose"), Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(control.SelStart(), 0);
        enter(*dialog, "cboFind", "");
        QTest::keyClick(field, Qt::Key_F3);
        EXPECT_EQ(control.SelStart(), 0);
    }
}

TEST_F(FindDialogWindow, OpensInTheUpperRightCornerOfTheText) {
    control.move(100, 50);
    FindDialog& dialog = openFind();
    const QRect text(control.mapToGlobal(QPoint()), control.size());
    EXPECT_LT(dialog.frameGeometry().right(), text.right());
    EXPECT_GT(dialog.frameGeometry().right(), text.center().x());
    EXPECT_GT(dialog.frameGeometry().top(), text.top());
    EXPECT_LT(dialog.frameGeometry().top(), text.center().y());
}

TEST_F(FindDialogWindow, StepsAsideForAMatchItCovers) {
    control.resize(500, 500);
    control.setText(u"\n\n\n"_qs + QString(60, u' ') + u"one\n"_qs);
    FindDialog& dialog = openFind();
    dialog.move(control.mapToGlobal(QPoint(0, 0)));
    dialog.resize(500, 150);
    enter(dialog, "cboFind", "one");
    press(dialog, "cmdFindNext");
    const auto y = static_cast<int>(control.SendScintilla(QsciScintillaBase::SCI_POINTYFROMPOSITION, 0UL, 63L));
    EXPECT_GT(dialog.frameGeometry().top(), control.viewport()->mapToGlobal(QPoint(0, y)).y());
    const QPoint place = dialog.pos();
    press(dialog, "cmdFindNext");
    EXPECT_EQ(dialog.pos(), place);
}

TEST_F(FindDialogWindow, ClosesWhenAnotherTextOfTheWindowGetsTheFocus) {
    QWidget window;
    auto* first = makeEditor(&window);
    auto* second = makeEditor(&window);
    window.show();
    SearchWindows::openFind(*first);
    auto* dialog = first->findChild<FindDialog*>();
    const std::unique_ptr<TextControl> elsewhereOwner{makeEditor()};
    TextControl& elsewhere = *elsewhereOwner;
    Q_EMIT qApp->focusChanged(dialog, first);
    Q_EMIT qApp->focusChanged(dialog, &elsewhere);
    EXPECT_TRUE(dialog->isVisible());
    Q_EMIT qApp->focusChanged(dialog, second);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(FindDialogWindow, KeepsToTheRangeThatWasChosen) {
    control.setText(u"x a a\na a\na"_qs);
    control.setSelection(2, 8);
    FindDialog& dialog = openFind();
    enter(dialog, "cboFind", "a");
    press(dialog, "cmdFindNext");
    press(dialog, "cmdCount");
    EXPECT_TRUE(result(dialog).startsWith(u"3 "_qs)) << result(dialog).toStdString();
    control.setSelection(0, 0);
    control.setSelText(u"aaa\n"_qs);
    press(dialog, "cmdFindNext");
    press(dialog, "cmdCount");
    EXPECT_TRUE(result(dialog).startsWith(u"3 "_qs)) << result(dialog).toStdString();
    control.setSelection(0, 2);
    press(dialog, "cmdFindNext");
    press(dialog, "cmdCount");
    EXPECT_TRUE(result(dialog).startsWith(u"2 "_qs)) << result(dialog).toStdString();
}

TEST_F(FindDialogWindow, Counts) {
    control.setText(u"a a\na a"_qs);
    control.setSelection(1, 5);
    FindDialog& dialog = openFind();
    enter(dialog, "cboFind", "a");
    EXPECT_TRUE(in<QCheckBox>(dialog, "chkInSelection").isChecked());
    press(dialog, "cmdCount");
    EXPECT_TRUE(result(dialog).startsWith(u"2 "_qs));
    check(dialog, "chkInSelection");
    press(dialog, "cmdCount");
    EXPECT_TRUE(result(dialog).startsWith(u"4 "_qs));
    enter(dialog, "cboFind", "b");
    press(dialog, "cmdCount");
    EXPECT_FALSE(result(dialog).startsWith(u"0"_qs));
    EXPECT_EQ(control.SelStart(), 1);
}

TEST_F(FindDialogWindow, CountsWithinTheLinesPartsOfARectangle) {
    control.setText(u"a a\na a\na a"_qs);
    control.SendScintilla(TextControl::SCI_SETRECTANGULARSELECTIONANCHOR, 2UL);
    control.SendScintilla(TextControl::SCI_SETRECTANGULARSELECTIONCARET, 11UL);
    FindDialog& dialog = openFind();
    enter(dialog, "cboFind", "a");
    EXPECT_TRUE(in<QCheckBox>(dialog, "chkInSelection").isChecked());
    press(dialog, "cmdCount");
    EXPECT_TRUE(result(dialog).startsWith(u"3 "_qs)) << result(dialog).toStdString();
}

TEST_F(ReplaceDialogWindow, ReplacesAllWithinTheLinesPartsOfARectangleAgainAndAgain) {
    control.setText(u"a a\na a\na a"_qs);
    control.SendScintilla(TextControl::SCI_SETRECTANGULARSELECTIONANCHOR, 2UL);
    control.SendScintilla(TextControl::SCI_SETRECTANGULARSELECTIONCARET, 11UL);
    FindDialog& dialog = openReplace();
    enter(dialog, "cboFind", "a");
    enter(dialog, "cboReplace", "aa");
    press(dialog, "cmdReplaceAll");
    EXPECT_EQ(control.Text(), u"a aa\na aa\na aa"_qs);
    press(dialog, "cmdReplaceAll");
    EXPECT_EQ(control.Text(), u"a aaaa\na aaaa\na aaaa"_qs);
    EXPECT_TRUE(result(dialog).startsWith(u"6 "_qs)) << result(dialog).toStdString();
}

TEST_F(FindDialogWindow, SearchesForNothingWithoutAText) {
    FindDialog& dialog = openFind();
    enter(dialog, "cboFind", "");
    for (const char* name : {"cmdFindNext", "cmdFindPrevious", "cmdCount"}) {
        EXPECT_FALSE(in<QPushButton>(dialog, name).isEnabled()) << name;
    }
    EXPECT_TRUE(in<QPushButton>(dialog, "cmdClose").isEnabled());
    enter(dialog, "cboFind", "a");
    EXPECT_TRUE(in<QPushButton>(dialog, "cmdFindNext").isEnabled());
}

TEST_F(FindDialogWindow, TellsWhenItIsClosedAfterASearch) {
    FindDialog& dialog = openFind();
    const std::function<void()> closings[] = {[&] { QTest::keyClick(&dialog, Qt::Key_Escape); },
                                              [&] { dialog.close(); }, [&] { press(dialog, "cmdClose"); }};
    for (const auto& close : closings) {
        openFind();
        enter(dialog, "cboFind", "one");
        press(dialog, "cmdFindNext");
        told.clear();
        close();
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(told.count(), 1);
    }
}

TEST_F(FindDialogWindow, TellsNothingWhenItIsClosedWithoutASearch) {
    for (FindDialog* dialog : {&openFind(), &openReplace()}) {
        SearchWindows::openFind(control);
        SearchWindows::openReplace(control);
        told.clear();
        enter(*dialog, "cboFind", "one");
        check(*dialog, "chkMatchCase");
        dialog->close();
        EXPECT_EQ(told.count(), 0);
    }
}

TEST_F(FindDialogWindow, TellsNothingOfASearchBeforeItWasOpenedAgain) {
    FindDialog& dialog = openFind();
    enter(dialog, "cboFind", "one");
    press(dialog, "cmdCount");
    openFind();  // in front already: it is not opened anew
    EXPECT_EQ(told.count(), 1);
    dialog.close();
    EXPECT_EQ(told.count(), 2);
    openFind();
    dialog.close();
    EXPECT_EQ(told.count(), 2);
}

TEST_F(FindDialogWindow, GoesWithItsControl) {
    const QPointer<FindDialog> alive(&openFind());
    SearchWindows::openReplace(control);
    SearchWindows::openIncremental(control, false);
    owned.reset();
    EXPECT_FALSE(alive);
}

TEST_F(FindDialogWindow, HasAKeyForEveryControl) {
    for (FindDialog* dialog : {&openFind(), &openReplace()}) {
        QSet<QChar> letters;
        int controls = 0;
        const auto take = [&](const QString& caption) {
            const qsizetype mark = caption.indexOf(u'&');
            ASSERT_GE(mark, 0) << caption.toStdString();
            letters.insert(caption[mark + 1].toLower());
            ++controls;
        };
        for (const auto* button : dialog->findChildren<QAbstractButton*>()) {
            if (button->objectName() != u"cmdClose"_qs && !button->objectName().startsWith(u"qt_"))
                take(button->text());
        }
        for (const auto* label : dialog->findChildren<QLabel*>()) {
            if (label->buddy() != nullptr)
                take(label->text());
        }
        EXPECT_EQ(letters.size(), controls);
        for (const auto* field : dialog->findChildren<QComboBox*>()) {
            EXPECT_FALSE(field->accessibleName().isEmpty());
        }
    }
}

TEST_F(ReplaceDialogWindow, ReplacesOneMatchAfterTheOther) {
    control.setText(u"one two one"_qs);
    FindDialog& dialog = openReplace();
    enter(dialog, "cboFind", "one");
    enter(dialog, "cboReplace", "1");
    press(dialog, "cmdReplace");
    EXPECT_EQ(control.Text(), u"one two one"_qs);
    press(dialog, "cmdReplace");
    EXPECT_EQ(control.Text(), u"1 two one"_qs);
    press(dialog, "cmdReplace");
    EXPECT_EQ(control.Text(), u"1 two 1"_qs);
    EXPECT_FALSE(result(dialog).isEmpty());
    EXPECT_EQ(told.count(), 3);
    EXPECT_EQ(SearchHistory::ofReplacements().entries().first(), u"1"_qs);
}

TEST_F(ReplaceDialogWindow, ReplacesAllAndTellsHowMany) {
    control.setText(u"Red red\nRED"_qs);
    FindDialog& dialog = openReplace();
    enter(dialog, "cboFind", "red");
    enter(dialog, "cboReplace", "blue");
    check(dialog, "chkPreserveCase");
    press(dialog, "cmdReplaceAll");
    EXPECT_EQ(control.Text(), u"Blue blue\nBLUE"_qs);
    EXPECT_TRUE(result(dialog).startsWith(u"3 "_qs));
    press(dialog, "cmdReplaceAll");
    EXPECT_EQ(control.Text(), u"Blue blue\nBLUE"_qs);
    EXPECT_FALSE(result(dialog).startsWith(u"0"_qs));
    EXPECT_EQ(told.count(), 2);
}

TEST_F(ReplaceDialogWindow, KeepsToTheSelectedLines) {
    control.setText(u"a\na\na"_qs);
    control.setSelection(0, 3);
    FindDialog& dialog = openReplace();
    enter(dialog, "cboFind", "a");
    enter(dialog, "cboReplace", "b");
    press(dialog, "cmdReplaceAll");
    EXPECT_EQ(control.Text(), u"b\nb\na"_qs);
}

TEST_F(ReplaceDialogWindow, ReplacesInTheChosenRangeAfterSingleReplacements) {
    control.setText(u"a\na\na\na"_qs);
    control.setSelection(0, 5);
    FindDialog& dialog = openReplace();
    enter(dialog, "cboFind", "a");
    enter(dialog, "cboReplace", "long");
    control.setSelection(0, 0);
    press(dialog, "cmdReplace");
    press(dialog, "cmdReplace");
    EXPECT_EQ(control.Text(), u"long\na\na\na"_qs);
    press(dialog, "cmdReplaceAll");
    EXPECT_EQ(control.Text(), u"long\nlong\nlong\na"_qs);
}

TEST_F(ReplaceDialogWindow, ReplacesNothingInALockedText) {
    control.setText(u"a"_qs);
    control.setLocked(true);
    FindDialog& dialog = openReplace();
    enter(dialog, "cboFind", "a");
    EXPECT_FALSE(in<QPushButton>(dialog, "cmdReplace").isEnabled());
    EXPECT_FALSE(in<QPushButton>(dialog, "cmdReplaceAll").isEnabled());
    EXPECT_TRUE(in<QPushButton>(dialog, "cmdFindNext").isEnabled());
}

TEST_F(ReplaceDialogWindow, StandsBesideTheFindDialog) {
    FindDialog& find = openFind();
    FindDialog& replace = openReplace();
    EXPECT_TRUE(find.isVisible());
    EXPECT_TRUE(replace.isVisible());
}

TEST_F(ReplaceDialogWindow, GoesWithItsControlInTheMiddleOfASearch) {
    for (const char* button : {"cmdFindNext", "cmdFindPrevious", "cmdReplace", "cmdReplaceAll", "cmdCount"}) {
        auto* gone = makeEditor();
        gone->setText(u"aaaaaaaaaaaaaaaaaaaaaa!\n"_qs.repeated(3000));
        gone->setSearchRegExp(true);
        SearchWindows::openReplace(*gone);
        const QPointer<FindDialog> dialog = gone->findChild<FindDialog*>();
        enter(*dialog, "cboFind", "(a|aa)+$");
        gone->search().setSearchWatch([gone](bool) {
            delete gone;
            return true;
        });
        press(*dialog, button);
        EXPECT_FALSE(dialog) << button;
    }
}

TEST_F(ReplaceDialogWindow, SaysThatASearchWasStopped) {
    control.setText(u"b"_qs + u"aaaaaaaaaaaaaaaaaaaaaa!\n"_qs.repeated(3000));
    control.search().setSearchWatch([](bool) { return false; });
    FindDialog& dialog = openReplace();
    check(dialog, "chkRegExp");
    enter(dialog, "cboFind", "(a|aa)+$");
    for (const char* button : {"cmdFindNext", "cmdReplaceAll", "cmdCount"}) {
        press(dialog, button);
        EXPECT_EQ(result(dialog), u"The search was stopped."_qs) << button;
    }
    enter(dialog, "cboFind", "b|(a|aa)+$");
    enter(dialog, "cboReplace", "c");
    press(dialog, "cmdCount");
    EXPECT_EQ(result(dialog), u"1 found. The search was stopped."_qs);
    press(dialog, "cmdReplaceAll");
    EXPECT_EQ(result(dialog), u"1 replaced. The search was stopped."_qs);
    EXPECT_TRUE(control.Text().startsWith(u"ca"_qs));
}
