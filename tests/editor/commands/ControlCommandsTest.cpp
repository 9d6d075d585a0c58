#include "editor/Editor.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/TextControl.h"
#include "text/held/Joints.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputDialog>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

namespace {

constexpr int WordUpper = 100;
constexpr int WordLower = 106;
constexpr int WordCapital = 113;
constexpr int SelectionUpper = 125;
constexpr int SelectionLower = 147;
constexpr int Unindent = 127;
constexpr int SelectParagraph = 135;
constexpr int SelectLine = 136;
constexpr int SelectEverything = 137;
constexpr int DeleteToStart = 158;
constexpr int DeleteToEnd = 159;
constexpr int DeleteLine = 160;
constexpr int CutLine = 161;
constexpr int Indent = 163;
constexpr int AskRepeat = 187;
constexpr int AskLine = 192;
constexpr int SortUp = 253;
constexpr int SortDown = 254;
constexpr int SelectWord = 267;

constexpr auto Edits = std::to_array({WordUpper, WordLower, WordCapital, SelectionUpper, SelectionLower, Unindent,
                                      DeleteToStart, DeleteToEnd, DeleteLine, CutLine, Indent, SortUp, SortDown});
constexpr auto Looks = std::to_array({SelectParagraph, SelectLine, SelectEverything, SelectWord});

struct Control : testing::Test {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;

    Control() {
        control.resize(600, 400);
        control.show();
        QGuiApplication::clipboard()->setText(u"clipboard"_qs);
    }
    /// The text with "|" at the caret and "[" at the start of the selection.
    void put(const char* marked) {
        QString text = QString::fromUtf8(marked);
        const qsizetype anchor = text.indexOf(u'[');
        const qsizetype caret = text.indexOf(u'|');
        text.remove(u'[').remove(u'|');
        control.setText(text);
        const bool anchorFirst = anchor >= 0 && anchor < caret;
        const qsizetype at = anchorFirst ? caret - 1 : caret;
        const qsizetype from = anchor < 0 ? at : anchor - (anchorFirst ? 0 : 1);
        control.setSelection(from, at);
        control.SendScintilla(TextControl::SCI_EMPTYUNDOBUFFER);
    }
    /// The text and selection in the same form.
    std::string shown() const {
        QString text = control.Text();
        const qint64 caret = control.map().positionOf(control.SendScintilla(TextControl::SCI_GETCURRENTPOS));
        const qint64 anchor = control.map().positionOf(control.SendScintilla(TextControl::SCI_GETANCHOR));
        if (anchor == caret)
            return text.insert(caret, u'|').toStdString();
        text.insert(std::max(anchor, caret), anchor < caret ? u'|' : u'[');
        return text.insert(std::min(anchor, caret), anchor < caret ? u'[' : u'|').toStdString();
    }
    /// Selects several ranges, each as anchor and caret; the last is the main one.
    void select(std::initializer_list<std::pair<long, long>> ranges) {
        bool first = true;
        for (const auto& [anchor, caret] : ranges) {
            const unsigned message = first ? TextControl::SCI_SETSELECTION : TextControl::SCI_ADDSELECTION;
            control.SendScintilla(message, static_cast<unsigned long>(caret), anchor);
            first = false;
        }
    }
    /// All ranges from the top, as anchor and caret.
    std::vector<std::pair<long, long>> ranges() const {
        std::vector<std::pair<long, long>> all;
        const long count = control.SendScintilla(TextControl::SCI_GETSELECTIONS);
        for (long range = 0; range < count; ++range) {
            const auto number = static_cast<unsigned long>(range);
            all.emplace_back(control.SendScintilla(TextControl::SCI_GETSELECTIONNANCHOR, number),
                             control.SendScintilla(TextControl::SCI_GETSELECTIONNCARET, number));
        }
        std::ranges::sort(all);
        return all;
    }
    std::string after(int command, const char* marked) {
        put(marked);
        control.ExecuteCmd(command);
        return shown();
    }
    static QString clipboard() { return QGuiApplication::clipboard()->text(); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&control, key, modifiers); }
};

using TextControlCase = Control;
using TextControlLines = Control;
using TextControlSelecting = Control;
using TextControlIndenting = Control;
using TextControlSorting = Control;
using TextControlRepeating = Control;
using TextControlAsking = Control;
using SeveralRanges = Control;
using Ranges = std::vector<std::pair<long, long>>;
using TextControlEveryCommand = Control;

QString longLine(qsizetype length) {
    QString line;
    for (qsizetype at = 0; at < length; ++at)
        line += at % 9 == 8 ? u' ' : QChar(u'a' + static_cast<char16_t>(at % 26));
    return line;
}

}  // namespace

TEST_F(TextControlCase, ChangesTheWordAtTheCaret) {
    EXPECT_EQ(after(WordUpper, "one t|wo three"), "one T|WO three");
    EXPECT_EQ(after(WordLower, "ONE T|WO THREE"), "ONE t|wo THREE");
    EXPECT_EQ(after(WordCapital, "one tW|O three"), "one Tw|o three");
    EXPECT_EQ(after(WordUpper, "two|"), "TWO|");
    EXPECT_EQ(after(WordUpper, "|two"), "|TWO");
    EXPECT_EQ(after(WordUpper, "a_b1|-c"), "A_B1|-c");
}

TEST_F(TextControlCase, KeepsTheCaretBehindAWordThatGrows) {
    EXPECT_EQ(after(WordUpper, "größ|e x"), "GRÖSS|E x");
    EXPECT_EQ(after(WordCapital, "ß|x y"), "Ss|x y");
}

TEST_F(TextControlCase, WithoutAWordAtTheCaretNothingHappens) {
    QSignalSpy changes(&control, &TextControl::Change);
    EXPECT_EQ(after(WordUpper, "a  |  b"), "a  |  b");
    changes.clear();
    control.ExecuteCmd(WordUpper);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(TextControlCase, ChangesTheSelectionAndKeepsIt) {
    EXPECT_EQ(after(SelectionUpper, "a[ß d|f"), "a[SS D|f");
    EXPECT_EQ(after(SelectionUpper, "a|ß d[f"), "a|SS D[f");
    EXPECT_EQ(after(SelectionLower, "A[B\nC|D"), "A[b\nc|D");
    EXPECT_EQ(after(SelectionUpper, "a|b"), "a|b");
}

TEST_F(TextControlCase, ChangesEachOfSeveralSelections) {
    control.setText(u"aß bß cß"_qs);
    control.SendScintilla(TextControl::SCI_SETMULTIPLESELECTION, 1UL);
    control.SendScintilla(TextControl::SCI_SETSELECTION, 3UL, 0L);
    control.SendScintilla(TextControl::SCI_ADDSELECTION, 8UL, 11L);
    control.ExecuteCmd(SelectionUpper);
    EXPECT_EQ(control.Text(), u"ASS bß CSS"_qs);
    EXPECT_EQ(control.SendScintilla(TextControl::SCI_GETSELECTIONS), 2);
    EXPECT_EQ(control.SendScintilla(TextControl::SCI_GETSELECTIONNCARET, 0UL), 3);
    EXPECT_EQ(control.SendScintilla(TextControl::SCI_GETSELECTIONNCARET, 1UL), 8);
    EXPECT_EQ(control.SendScintilla(TextControl::SCI_GETSELECTIONNANCHOR, 1UL), 11);
}

TEST_F(TextControlCase, WhatHasTheCaseAlreadyIsNoChange) {
    put("[ABC|");
    QSignalSpy changes(&control, &TextControl::Change);
    control.ExecuteCmd(SelectionUpper);
    control.ExecuteCmd(WordUpper);
    EXPECT_EQ(changes.count(), 0);
    EXPECT_FALSE(control.CanUndo());
}

TEST_F(TextControlLines, DeletesFromTheCaretToAnEndOfTheLine) {
    EXPECT_EQ(after(DeleteToStart, "one\ntw|o\nthree"), "one\n|o\nthree");
    EXPECT_EQ(after(DeleteToEnd, "one\ntw|o\r\nthree"), "one\ntw|\r\nthree");
    EXPECT_EQ(after(DeleteToStart, "one\n|two"), "one\n|two");
    EXPECT_EQ(after(DeleteToEnd, "one|\ntwo"), "one|\ntwo");
    EXPECT_EQ(after(DeleteToEnd, "on|e"), "on|");
}

TEST_F(TextControlLines, DeletesFromTheCaretWhateverIsSelected) {
    EXPECT_EQ(after(DeleteToStart, "o[ne\ntw|o"), "one\n|o");
    EXPECT_EQ(after(DeleteToEnd, "t[w|o\nx"), "tw|\nx");
}

TEST_F(TextControlLines, KeysDeleteFromTheCaretToo) {
    put("t[w|o x\ny");
    key(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shown(), "tw|\ny");
    put("t[w|o x\ny");
    key(Qt::Key_Backspace, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shown(), "|o x\ny");
    control.setLocked(true);
    key(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shown(), "|o x\ny");
}

TEST_F(TextControlLines, DeletesTheLine) {
    EXPECT_EQ(after(DeleteLine, "one\ntw|o\nthree"), "one\n|three");
    EXPECT_EQ(after(DeleteLine, "one\r\ntw|o\r\nthree"), "one\r\n|three");
    EXPECT_EQ(after(DeleteLine, "one\ntw|o"), "one\n|");
    EXPECT_EQ(after(DeleteLine, "one|"), "|");
}

TEST_F(TextControlLines, DeletesEveryLineThatTheSelectionTouches) {
    EXPECT_EQ(after(DeleteLine, "one\nt[wo\nth|ree\nfour"), "one\n|four");
    EXPECT_EQ(after(DeleteLine, "one\nt|wo\nth[ree\nfour"), "one\n|four");
    EXPECT_EQ(after(DeleteLine, "one\n[two\n|three\nfour"), "one\n|three\nfour");
}

TEST_F(TextControlLines, CutsTheLineToTheClipboard) {
    EXPECT_EQ(after(CutLine, "one\ntw|o\nthree"), "one\n|three");
    EXPECT_EQ(clipboard(), u"two\n"_qs);
    EXPECT_EQ(after(CutLine, "one\nt[wo\nth|ree"), "one\n|");
    EXPECT_EQ(clipboard(), u"two\nthree"_qs);
}

TEST_F(TextControlLines, CuttingAnEmptyLastLineLeavesTheClipboard) {
    EXPECT_EQ(after(CutLine, "one\n|"), "one\n|");
    EXPECT_EQ(clipboard(), u"clipboard"_qs);
}

TEST_F(TextControlSelecting, TakesTheLineWithItsLineEnd) {
    EXPECT_EQ(after(SelectLine, "one\ntw|o\nthree"), "one\n[two\n|three");
    EXPECT_EQ(after(SelectLine, "one\ntw|o"), "one\n[two|");
    EXPECT_EQ(after(SelectLine, "o[ne\ntw|o\r\nthree"), "[one\ntwo\r\n|three");
    control.ExecuteCmd(SelectLine);
    EXPECT_EQ(shown(), "[one\ntwo\r\n|three");
}

TEST_F(TextControlSelecting, TakesTheParagraphBetweenLinesOfBlanks) {
    EXPECT_EQ(after(SelectParagraph, "a\n\nb\nc|\nd\n \t\ne"), "a\n\n[b\nc\nd\n| \t\ne");
    EXPECT_EQ(after(SelectParagraph, "|a\nb"), "[a\nb|");
    EXPECT_EQ(after(SelectParagraph, "a\n|\nb"), "a\n|\nb");
    EXPECT_EQ(after(SelectParagraph, "a\r\n\r\nb|\r\n\r\n"), "a\r\n\r\n[b\r\n|\r\n");
}

TEST_F(TextControlSelecting, TakesTheWord) {
    EXPECT_EQ(after(SelectWord, "one t|wo three"), "one [two| three");
    EXPECT_EQ(after(SelectWord, "x für_größe|, y"), "x [für_größe|, y");
    EXPECT_EQ(after(SelectWord, "漢字|テスト x"), "[漢字テスト| x");
    EXPECT_EQ(after(SelectWord, "a , | ."), "a , | .");
}

TEST_F(TextControlSelecting, TakesEverything) {
    EXPECT_EQ(after(SelectEverything, "one\nt|wo"), "|one\ntwo[");
}

TEST_F(TextControlIndenting, PutsATabBeforeEachSelectedLine) {
    EXPECT_EQ(after(Indent, "one\nt[wo\nth|ree\nfour"), "one\n\tt[wo\n\tth|ree\nfour");
    EXPECT_EQ(after(Indent, "t|wo"), "\tt|wo");
    EXPECT_EQ(after(Indent, "|two"), "\t|two");
    EXPECT_EQ(after(Indent, "|"), "\t|");
}

TEST_F(TextControlIndenting, LeavesEmptyLinesAmongOthersEmpty) {
    EXPECT_EQ(after(Indent, "o[ne\r\n\r\nt|wo"), "\to[ne\r\n\r\n\tt|wo");
}

TEST_F(TextControlIndenting, ASelectionThatEndsAtTheStartOfALineLeavesThatLine) {
    EXPECT_EQ(after(Indent, "o[ne\n|two"), "\to[ne\n|two");
}

TEST_F(TextControlIndenting, PutsBlanksWhereTheyAreSet) {
    control.SendScintilla(TextControl::SCI_SETUSETABS, 0UL);
    control.SendScintilla(TextControl::SCI_SETTABWIDTH, 3UL);
    EXPECT_EQ(after(Indent, "t|wo"), "   t|wo");
    EXPECT_EQ(after(Unindent, "     t|wo"), "  t|wo");
}

TEST_F(TextControlIndenting, TakesOneStepAway) {
    EXPECT_EQ(after(Unindent, "\t\t[one\n    two\n  \tthree\n  four\nfive|"), "\t[one\ntwo\nthree\nfour\nfive|");
    EXPECT_EQ(after(Unindent, "|"), "|");
}

TEST_F(TextControlIndenting, TabAndBacktabMoveSeveralLines) {
    put("o[ne\nt|wo");
    key(Qt::Key_Tab);
    EXPECT_EQ(shown(), "\to[ne\n\tt|wo");
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(shown(), "o[ne\nt|wo");
    control.Undo();
    control.Undo();
    EXPECT_EQ(control.Text(), u"one\ntwo"_qs);
    EXPECT_FALSE(control.CanUndo());
}

TEST_F(TextControlSorting, SortsTheSelectedLines) {
    EXPECT_EQ(after(SortUp, "x\nc[\nb\na|\nw"), "x\n[a\nb\nc\n|w");
    EXPECT_EQ(after(SortDown, "x\na[\nb\nc|\nw"), "x\n[c\nb\na\n|w");
    EXPECT_EQ(after(SortUp, "[b\na\n|0"), "[a\nb\n|0");
    EXPECT_EQ(after(SortUp, "[b\na|"), "[a\nb|");
}

TEST_F(TextControlSorting, WithNothingSelectedSortsNothing) {
    EXPECT_EQ(after(SortUp, "b|\na"), "b|\na");
}

TEST_F(TextControlSorting, SortedLinesAreNoChange) {
    put("[a\nb|");
    QSignalSpy changes(&control, &TextControl::Change);
    control.ExecuteCmd(SortUp);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(TextControlRepeating, RepeatsTheNextCommandOnceAndAsOneStep) {
    put("|a\nb\nc\nd");
    control.setRepeatCount(3);
    control.ExecuteCmd(DeleteLine);
    EXPECT_EQ(shown(), "|d");
    EXPECT_EQ(control.repeatCount(), 1);
    control.Undo();
    EXPECT_EQ(control.Text(), u"a\nb\nc\nd"_qs);
}

TEST_F(TextControlRepeating, CutsTheLinesOfAllRepeatsAsOneText) {
    put("0\n|a\nb\nc\nd");
    control.setRepeatCount(3);
    const QSignalSpy put(QGuiApplication::clipboard(), &QClipboard::dataChanged);
    control.ExecuteCmd(CutLine);
    EXPECT_EQ(clipboard(), u"a\nb\nc\n"_qs);
    EXPECT_EQ(put.count(), 1);
    EXPECT_EQ(shown(), "0\n|d");
    EXPECT_EQ(control.repeatCount(), 1);
    control.Undo();
    EXPECT_EQ(control.Text(), u"0\na\nb\nc\nd"_qs);
    EXPECT_FALSE(control.CanUndo());
}

TEST_F(TextControlRepeating, CuttingEndsWithTheText) {
    put("0\n|a\nb");
    control.setRepeatCount(TextControl::LargestRepeatCount);
    control.ExecuteCmd(CutLine);
    EXPECT_EQ(clipboard(), u"a\nb"_qs);
    EXPECT_EQ(shown(), "0\n|");
    control.setRepeatCount(2);
    control.ExecuteCmd(CutLine);
    EXPECT_EQ(clipboard(), u"a\nb"_qs) << "nothing was cut";
    EXPECT_EQ(control.repeatCount(), 1);
}

TEST_F(TextControlRepeating, CutLinesOfSeveralRangesStayLines) {
    control.SendScintilla(TextControl::SCI_SETEOLMODE, TextControl::SC_EOL_LF);
    control.setText(u"0\n1\n2\n3"_qs);
    select({{6, 6}, {2, 2}});
    control.setRepeatCount(2);
    control.ExecuteCmd(CutLine);
    EXPECT_EQ(clipboard(), u"1\n3\n2\n"_qs);
    EXPECT_EQ(control.Text(), u"0\n"_qs);
}

TEST_F(TextControlRepeating, RepeatsATypedKey) {
    put("a|b");
    control.setRepeatCount(4);
    key(Qt::Key_X);
    key(Qt::Key_Y);
    EXPECT_EQ(shown(), "axxxxy|b");
    control.Undo();
    EXPECT_EQ(shown(), "axxxx|b");
    control.Undo();
    EXPECT_EQ(shown(), "a|b");
}

TEST_F(TextControlRepeating, RepeatsAKeyOfTheControl) {
    put("abcdef|");
    control.setRepeatCount(2);
    key(Qt::Key_Left);
    EXPECT_EQ(shown(), "abcd|ef");
    control.setRepeatCount(3);
    key(Qt::Key_Backspace);
    EXPECT_EQ(shown(), "a|ef");
    control.Undo();
    EXPECT_EQ(control.Text(), u"abcdef"_qs);
}

TEST_F(TextControlRepeating, TakesBackAndBringsBackSeveralSteps) {
    put("|");
    for (const Qt::Key each : {Qt::Key_A, Qt::Key_Return, Qt::Key_B, Qt::Key_Return})
        key(each);
    control.setRepeatCount(3);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(control.Text(), u"a"_qs);
    control.setRepeatCount(3);
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(control.Text(), u"a\nb\n"_qs);
}

TEST_F(TextControlRepeating, RepeatsWhatAnInputMethodCommits) {
    put("|");
    control.setRepeatCount(3);
    QInputMethodEvent composing(u"k"_qs, {});
    QCoreApplication::sendEvent(&control, &composing);
    QInputMethodEvent committed;
    committed.setCommitString(QString::fromUtf8("か"));
    QCoreApplication::sendEvent(&control, &committed);
    EXPECT_EQ(control.Text(), QString::fromUtf8("かかか"));
    control.Undo();
    EXPECT_EQ(control.Text(), QString());
}

TEST_F(TextControlRepeating, LeavesTheCountToWhatActs) {
    put("|");
    control.setRepeatCount(2);
    control.ExecuteCmd(179, u"text"_qs);
    control.ExecuteCmd(236);
    EXPECT_EQ(control.repeatCount(), 2);
}

TEST_F(TextControlRepeating, EscapeLeavesTheCount) {
    put("|");
    control.setRepeatCount(5);
    key(Qt::Key_Escape);
    key(Qt::Key_X);
    EXPECT_EQ(shown(), "x|");
}

TEST_F(TextControlRepeating, ACommandThatALockRefusesUsesTheCountUp) {
    put("a[b|c");
    control.setLocked(true);
    for (const int command : Edits) {
        control.setRepeatCount(3);
        control.ExecuteCmd(command);
        EXPECT_EQ(control.repeatCount(), 1) << command;
    }
}

TEST_F(TextControlRepeating, AnotherCountIsReportedOnce) {
    put("|");
    const QSignalSpy reported(&control, &TextControl::RepeatCountChanged);
    control.setRepeatCount(3);
    EXPECT_EQ(reported.count(), 1);
    control.setRepeatCount(3);
    EXPECT_EQ(reported.count(), 1);
    key(Qt::Key_X);
    EXPECT_EQ(reported.count(), 2);
    key(Qt::Key_Y);
    control.ExecuteCmd(DeleteLine);
    EXPECT_EQ(reported.count(), 2);
    control.setRepeatCount(2);
    EXPECT_EQ(control.takeRepeatCount(), 2);
    EXPECT_EQ(control.takeRepeatCount(), 1);
    EXPECT_EQ(reported.count(), 4);
}

TEST_F(TextControlRepeating, TheCountHasBounds) {
    control.setRepeatCount(0);
    EXPECT_EQ(control.repeatCount(), 1);
    control.setRepeatCount(1'000'000);
    EXPECT_EQ(control.repeatCount(), TextControl::LargestRepeatCount);
}

TEST_F(TextControlAsking, ForALineMovesThere) {
    put("one\ntwo\nthree|");
    control.ExecuteCmd(AskLine);
    auto* prompt = control.findChild<QInputDialog*>(u"GotoLine"_qs);
    ASSERT_NE(prompt, nullptr);
    EXPECT_TRUE(prompt->isVisible());
    EXPECT_EQ(prompt->intValue(), 3);
    auto* box = prompt->findChild<QSpinBox*>();
    ASSERT_NE(box, nullptr);
    QTest::keyClicks(box, u"9x2"_qs);
    EXPECT_EQ(box->value(), 2);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(shown(), "one\n|two\nthree");
    EXPECT_FALSE(prompt->isVisible());
}

TEST_F(TextControlAsking, ForALineCanBeLeft) {
    put("one\ntwo|");
    control.ExecuteCmd(AskLine);
    auto* prompt = control.findChild<QInputDialog*>(u"GotoLine"_qs);
    ASSERT_NE(prompt, nullptr);
    QTest::keyClick(prompt, Qt::Key_Escape);
    EXPECT_EQ(shown(), "one\ntwo|");
}

TEST_F(TextControlAsking, TwiceShowsOnePrompt) {
    put("one\ntwo|");
    control.ExecuteCmd(AskLine);
    control.setText(u"1\n2\n3\n4"_qs);
    control.ExecuteCmd(AskLine);
    const auto prompts = control.findChildren<QInputDialog*>(u"GotoLine"_qs);
    ASSERT_EQ(prompts.size(), 1);
    EXPECT_EQ(prompts.front()->intMaximum(), 4);
}

TEST_F(TextControlAsking, ForARepeatCountSetsIt) {
    put("|");
    control.ExecuteCmd(AskRepeat);
    auto* prompt = control.findChild<QInputDialog*>(u"RepeatCount"_qs);
    ASSERT_NE(prompt, nullptr);
    auto* box = prompt->findChild<QSpinBox*>();
    ASSERT_NE(box, nullptr);
    QTest::keyClicks(box, u"3"_qs);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(control.repeatCount(), 3);
    key(Qt::Key_X);
    EXPECT_EQ(shown(), "xxx|");
}

TEST_F(TextControlEveryCommand, OfAnUnknownOrReservedNumberDoesNothing) {
    put("a[b|c");
    for (const int number : {-1, 0, 99, 213, 214, 223, 10'000})
        control.ExecuteCmd(number);
    EXPECT_EQ(shown(), "a[b|c");
}

TEST_F(TextControlEveryCommand, ThatEditsKeepsStillWhileLocked) {
    put("  b c[\n\ta|");
    control.setLocked(true);
    QSignalSpy changes(&control, &TextControl::Change);
    for (const int number : Edits) {
        control.ExecuteCmd(number);
        EXPECT_EQ(shown(), "  b c[\n\ta|") << number;
    }
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(clipboard(), u"clipboard"_qs);
}

TEST_F(TextControlEveryCommand, ThatLooksWorksWhileLocked) {
    put("one t|wo");
    control.setLocked(true);
    control.ExecuteCmd(SelectWord);
    EXPECT_EQ(shown(), "one [two|");
}

TEST_F(TextControlEveryCommand, TakesAnEmptyText) {
    for (const int number : Edits) {
        put("|");
        control.ExecuteCmd(number);
        EXPECT_EQ(shown(), number == Indent ? "\t|" : "|") << number;
    }
    for (const int number : Looks) {
        put("|");
        control.ExecuteCmd(number);
        EXPECT_EQ(shown(), "|") << number;
    }
}

TEST_F(TextControlEveryCommand, IsOneUndoStep) {
    for (const int number : Edits) {
        put("\tword[b\n\ta|\nc");
        control.ExecuteCmd(number);
        if (!control.CanUndo())
            continue;
        control.Undo();
        EXPECT_EQ(control.Text(), u"\twordb\n\ta\nc"_qs) << number;
        EXPECT_FALSE(control.CanUndo()) << number;
    }
}

TEST_F(TextControlEveryCommand, TellsOfItsChangeOnce) {
    put("\tone[ b\n\ta|\nc");
    QSignalSpy changes(&control, &TextControl::Change);
    control.ExecuteCmd(Indent);
    EXPECT_EQ(changes.count(), 1);
}

/// Each command has the same effect on a line that is held in pieces as on a short one.
TEST_F(TextControlEveryCommand, IsTheSameOnALineHeldInPieces) {
    const QString line = longLine(150'000);
    const QString text = u"first\n"_qs + line + u"\nlast"_qs;
    const qint64 begin = 6;
    const qint64 end = begin + line.size();
    const qint64 middle = begin + 75'000;
    struct Row {
        int command;
        qint64 anchor;
        qint64 caret;
        QString expected;
    };
    const Row rows[] = {
        {DeleteToStart, middle, middle, text.first(begin) + text.sliced(middle)},
        {DeleteToEnd, middle, middle, text.first(middle) + text.sliced(end)},
        {DeleteLine, middle, middle, u"first\nlast"_qs},
        {CutLine, middle, middle, u"first\nlast"_qs},
        {Indent, middle, middle, u"first\n\t"_qs + text.sliced(begin)},
        {Indent, 2, end - 1, u"\tfirst\n\t"_qs + text.sliced(begin)},
        {SelectionUpper, begin, end, text.first(begin) + line.toUpper() + text.sliced(end)},
        {SelectionUpper, begin + 3, end - 3,
         text.first(begin + 3) + text.sliced(begin + 3, line.size() - 6).toUpper() + text.sliced(end - 3)},
        {SortUp, 0, text.size(), line + u"\nfirst\nlast"_qs},
        {SortDown, 0, text.size(), u"last\nfirst\n"_qs + line},
    };
    for (const Row& row : rows) {
        control.setText(text);
        ASSERT_FALSE(control.map().joints().empty());
        control.SendScintilla(TextControl::SCI_EMPTYUNDOBUFFER);
        control.setSelection(row.anchor, row.caret);
        control.ExecuteCmd(row.command);
        EXPECT_TRUE(control.Text() == row.expected) << row.command;
        control.Undo();
        EXPECT_TRUE(control.Text() == text) << row.command;
        EXPECT_FALSE(control.CanUndo()) << row.command;
    }
}

TEST_F(TextControlSelecting, SeesNoJoint) {
    const QString line = QString(100'000, u'w');
    control.setText(u"a "_qs + line + u" b\n\nc"_qs);
    ASSERT_FALSE(control.map().joints().empty());
    control.setSelection(50'000, 50'000);
    control.ExecuteCmd(SelectWord);
    EXPECT_EQ(control.SelStart(), 2);
    EXPECT_EQ(control.SelEnd(), 100'002);
    control.setSelection(50'000, 50'000);
    control.ExecuteCmd(SelectLine);
    EXPECT_EQ(control.SelStart(), 0);
    EXPECT_EQ(control.SelEnd(), 100'005);
    control.setSelection(50'000, 50'000);
    control.ExecuteCmd(SelectParagraph);
    EXPECT_EQ(control.SelStart(), 0);
    EXPECT_EQ(control.SelEnd(), 100'005);
    control.setSelection(50'000, 50'000);
    control.ExecuteCmd(WordUpper);
    EXPECT_TRUE(control.Text() == u"a "_qs + line.toUpper() + u" b\n\nc"_qs);
    EXPECT_EQ(control.SelStart(), 50'000);
}

TEST_F(TextControlSelecting, StaysWhenALineIsCutIntoPieces) {
    control.setText(longLine(100'000) + u"\nb"_qs);
    ASSERT_FALSE(control.map().joints().empty());
    control.setSelection(10, 100'002);
    control.ExecuteCmd(SelectionUpper);
    EXPECT_EQ(control.SelStart(), 10);
    EXPECT_EQ(control.SelEnd(), 100'002);
}

TEST_F(TextControlIndenting, TabMovesALineHeldInPiecesAsOne) {
    const QString text = u"a\n"_qs + longLine(100'000) + u"\nb"_qs;
    control.setText(text);
    control.SelectAll();
    key(Qt::Key_Tab);
    EXPECT_TRUE(control.Text() == u"\ta\n\t"_qs + text.sliced(2, 100'001) + u"\tb"_qs);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(control.Text() == text);
}

TEST_F(TextControlRepeating, TakesBackAndBringsBackInALineHeldInPieces) {
    const QString text = longLine(100'000);
    control.setText(text);
    control.setSelection(50'000, 50'000);
    control.SendScintilla(TextControl::SCI_EMPTYUNDOBUFFER);
    key(Qt::Key_X);
    const QString typed = control.Text();
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(control.Text() == text);
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_TRUE(control.Text() == typed);
}

TEST_F(TextControlEveryCommand, ThatReplacesLinesKeepsTheirBookmarks) {
    for (const int number : {SortUp, SortDown, SelectionUpper, Indent}) {
        put("d[\nb\nc\na|");
        control.bookmarks().ClearAllBookmarks();
        control.bookmarks().setBookmarkAt(1, true);
        control.bookmarks().setBookmarkAt(2, true);
        const auto marked = [this] {
            QString lines;
            for (qint64 line = 0; line < 4; ++line)
                lines += control.bookmarks().BookmarkAt(line) ? u'x' : u'-';
            return lines;
        };
        control.ExecuteCmd(number);
        EXPECT_EQ(marked(), u"-xx-"_qs) << number;
        control.Undo();
        EXPECT_EQ(marked(), u"-xx-"_qs) << number;
        control.Redo();
        EXPECT_EQ(marked(), u"-xx-"_qs) << number;
        control.SelectAll();
        control.setSelText(u"1\n2\n3\n4"_qs);
        EXPECT_EQ(marked(), u"-xx-"_qs) << number;
    }
}

TEST_F(TextControlEveryCommand, TakesALineOfManyMegabytes) {
    const QString line = u"wort_"_qs.repeated(800'000);
    for (const int number : Edits) {
        control.setText(line);
        control.setSelection(2'000'000, number == SortUp || number == SortDown ? 2'000'500 : 2'000'000);
        control.SendScintilla(TextControl::SCI_EMPTYUNDOBUFFER);
        control.ExecuteCmd(number);
        EXPECT_EQ(control.TotalLines(), 1) << number;
        if (control.CanUndo())
            control.Undo();
        EXPECT_TRUE(control.Text() == line) << number;
        EXPECT_FALSE(control.CanUndo()) << number;
    }
    for (const int number : Looks) {
        control.setSelection(2'000'000, 2'000'000);
        control.ExecuteCmd(number);
        EXPECT_EQ(control.SelStart(), 0) << number;
        EXPECT_EQ(control.SelEnd(), line.size()) << number;
    }
}

TEST_F(TextControlEveryCommand, TakesALoneSurrogate) {
    const QString alone = u"a"_qs + QChar(0xD83D) + u"b"_qs;
    const QString held = QString::fromUtf8("a\uFFFDb");
    for (const int number : Edits) {
        control.setText(alone);
        control.setSelection(1, 2);
        control.SendScintilla(TextControl::SCI_EMPTYUNDOBUFFER);
        control.ExecuteCmd(number);
        if (control.CanUndo())
            control.Undo();
        EXPECT_EQ(control.Text(), held) << number;
    }
}

TEST_F(TextControlEveryCommand, OfLinesTakesARectangleForTheLinesItCrosses) {
    for (const int number : {SortUp, Indent, DeleteLine}) {
        control.setText(u"bb\naa\ncc"_qs);
        control.setSelection(1, 1);
        key(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
        ASSERT_NE(control.SendScintilla(TextControl::SCI_SELECTIONISRECTANGLE), 0);
        control.ExecuteCmd(number);
        const QString expected = number == SortUp   ? u"aa\nbb\ncc"_qs
                                 : number == Indent ? u"\tbb\n\taa\ncc"_qs
                                                    : u"cc"_qs;
        EXPECT_EQ(control.Text(), expected) << number;
    }
}

TEST_F(SeveralRanges, DeleteTheirOwnLinesAndNoneBetween) {
    const QString text = u"0\n1\n2\n3\n4\n5"_qs;
    control.setText(text);
    select({{2, 2}, {8, 8}});
    control.ExecuteCmd(DeleteLine);
    EXPECT_EQ(control.Text(), u"0\n2\n3\n5"_qs);
    EXPECT_EQ(ranges(), (Ranges{{2, 2}, {6, 6}}));
    control.ExecuteCmd(DeleteLine);
    EXPECT_EQ(control.Text(), u"0\n3\n"_qs);
    control.Undo();
    control.Undo();
    EXPECT_EQ(control.Text(), text);
    select({{0, 3}, {6, 6}, {11, 10}});
    control.ExecuteCmd(DeleteLine);
    EXPECT_EQ(control.Text(), u"2\n4\n"_qs);
    EXPECT_EQ(ranges(), (Ranges{{0, 0}, {2, 2}, {4, 4}}));
}

TEST_F(SeveralRanges, InOneLineAreOneLine) {
    control.setText(u"0\nabc\n2"_qs);
    select({{2, 2}, {4, 5}});
    control.ExecuteCmd(DeleteLine);
    EXPECT_EQ(control.Text(), u"0\n2"_qs);
    EXPECT_EQ(ranges(), (Ranges{{2, 2}}));
    control.setText(u"0\n1\n2\n3"_qs);
    select({{2, 2}, {4, 4}});
    control.ExecuteCmd(DeleteLine);
    EXPECT_EQ(control.Text(), u"0\n3"_qs);
    EXPECT_EQ(ranges(), (Ranges{{2, 2}})) << "neighbours leave one caret";
}

TEST_F(SeveralRanges, AreCutAsOneText) {
    control.setText(u"0\n1\n2\n3"_qs);
    select({{6, 6}, {2, 2}});
    control.ExecuteCmd(CutLine);
    EXPECT_EQ(clipboard(), u"1\n3"_qs);
    EXPECT_EQ(control.Text(), u"0\n2\n"_qs);
}

TEST_F(SeveralRanges, AreIndentedAndUnindentedLineByLine) {
    control.setText(u"0\n1\n\n3\n4"_qs);
    select({{0, 0}, {5, 5}, {8, 8}});
    control.ExecuteCmd(Indent);
    EXPECT_EQ(control.Text(), u"\t0\n1\n\n\t3\n\t4"_qs);
    EXPECT_EQ(ranges(), (Ranges{{1, 1}, {7, 7}, {11, 11}}));
    control.ExecuteCmd(Unindent);
    EXPECT_EQ(control.Text(), u"0\n1\n\n3\n4"_qs);
    EXPECT_EQ(ranges(), (Ranges{{0, 0}, {5, 5}, {8, 8}}));
    control.setText(u"  0\n  1\n  2\n  3"_qs);
    select({{0, 5}, {13, 14}});
    control.ExecuteCmd(Unindent);
    EXPECT_EQ(control.Text(), u"0\n1\n  2\n3"_qs);
}

TEST_F(SeveralRanges, SelectTheirOwnLines) {
    control.setText(u"0\n1\n2\n3"_qs);
    select({{2, 2}, {7, 7}});
    control.ExecuteCmd(SelectLine);
    EXPECT_EQ(ranges(), (Ranges{{2, 4}, {6, 7}}));
    EXPECT_EQ(control.SelText(), u"3"_qs) << "the main one stays so";
    control.ExecuteCmd(SelectLine);
    EXPECT_EQ(ranges(), (Ranges{{2, 4}, {6, 7}}));
}

TEST_F(SeveralRanges, SelectTheirOwnWordsAndParagraphs) {
    control.setText(u"aa bb\n\ncc dd\nee"_qs);
    select({{4, 4}, {8, 8}});
    control.ExecuteCmd(SelectWord);
    EXPECT_EQ(ranges(), (Ranges{{3, 5}, {7, 9}}));
    select({{4, 4}, {8, 8}, {14, 14}});
    control.ExecuteCmd(SelectParagraph);
    EXPECT_EQ(ranges(), (Ranges{{0, 6}, {7, 15}}));
}

TEST_F(SeveralRanges, ChangeTheCaseOfTheirOwnWords) {
    control.setText(QString::fromUtf8("aß bb ccc"));
    select({{1, 1}, {3, 3}, {8, 8}});
    control.ExecuteCmd(WordUpper);
    EXPECT_EQ(control.Text(), u"ASS bb CCC"_qs);
    EXPECT_EQ(ranges(), (Ranges{{1, 1}, {3, 3}, {8, 8}}));
}

TEST_F(SeveralRanges, DeleteToTheEndsOfTheirOwnLines) {
    control.setText(u"abcd\nefgh\nijkl"_qs);
    select({{1, 1}, {3, 3}, {12, 12}});
    control.ExecuteCmd(DeleteToStart);
    EXPECT_EQ(control.Text(), u"d\nefgh\nkl"_qs);
    EXPECT_EQ(ranges(), (Ranges{{0, 0}, {7, 7}}));
    control.setText(u"abcd\nefgh\nijkl"_qs);
    select({{1, 1}, {3, 3}, {12, 12}});
    control.ExecuteCmd(DeleteToEnd);
    EXPECT_EQ(control.Text(), u"a\nefgh\nij"_qs);
    EXPECT_EQ(ranges(), (Ranges{{1, 1}, {9, 9}}));
}

TEST_F(SeveralRanges, AreSortedEachByItself) {
    const QString text = u"d\nc\nb\nx\nb\na\n"_qs;
    control.setText(text);
    select({{0, 3}, {8, 12}});
    control.ExecuteCmd(SortUp);
    EXPECT_EQ(control.Text(), u"c\nd\nb\nx\na\nb\n"_qs);
    EXPECT_EQ(ranges(), (Ranges{{0, 4}, {8, 12}}));
    control.Undo();
    EXPECT_EQ(control.Text(), text);
    select({{0, 0}, {9, 9}});
    control.ExecuteCmd(SortUp);
    EXPECT_EQ(control.Text(), text) << "carets select nothing";
}

TEST_F(SeveralRanges, ByCtrlAndClickLoseNoLineBetween) {
    control.setText(u"1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n"_qs);
    const auto click = [this](long byte, Qt::KeyboardModifiers held) {
        const QPoint at(static_cast<int>(control.SendScintilla(TextControl::SCI_POINTXFROMPOSITION, 0UL, byte)) + 1,
                        static_cast<int>(control.SendScintilla(TextControl::SCI_POINTYFROMPOSITION, 0UL, byte)) + 3);
        QTest::mouseClick(control.viewport(), Qt::LeftButton, held, at);
    };
    click(0, {});
    click(18, Qt::ControlModifier);
    ASSERT_EQ(ranges().size(), 2U);
    control.ExecuteCmd(DeleteLine);
    EXPECT_EQ(control.Text(), u"2\n3\n4\n5\n6\n7\n8\n9\n"_qs);
}
