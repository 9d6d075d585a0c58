#include "document/DocumentFixture.h"
#include "document/rtCM.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"

#include <QMouseEvent>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>
#include <utility>

using documenttest::typeInto;

namespace {

using Selected = std::pair<qint64, qint64>;

}  // namespace

class TextViewFinds : public testing::Test {
 protected:
    TextViewFinds() { m_options.ContinueSearch = false; }

    void hold(const char* text) {
        m_view.setText(QString::fromUtf8(text));
        m_view.FileChanged = false;
        m_changes.clear();
        m_moves.clear();
    }
    void select(qint64 anchor, qint64 caret) {
        m_view.control().setSelection(anchor, caret);
        m_moves.clear();
    }
    Selected selected() const {
        return {m_view.control().selected().AnchorPosition(), m_view.control().selected().CaretPosition()};
    }
    bool next(const char* text) { return m_view.FindNext(QString::fromUtf8(text)); }
    bool previous(const char* text) { return m_view.FindPrev(QString::fromUtf8(text)); }
    QString all(const char* text, bool regExp = false, bool caseSensitive = false, bool wholeWord = false) {
        QString list = u"old"_qs;
        m_view.FindAllMatch(QString::fromUtf8(text), list, regExp, caseSensitive, wholeWord);
        return list;
    }
    QString replaced(const char* text, const char* by, bool regExp = false, bool caseSensitive = false,
                     bool preserveCase = false, bool wholeWord = false) {
        QString list = u"old"_qs;
        m_view.ReplaceAllMatch(QString::fromUtf8(text), QString::fromUtf8(by), list, regExp, caseSensitive,
                               preserveCase, wholeWord);
        return list;
    }
    /// So many matches that a loop over them yields on any machine.
    static constexpr qsizetype Many = 1'000'000;
    static QString manyMatches() { return u"a "_qs.repeated(Many); }

    ScriptedServices m_given;
    Options& m_options = m_given.options;
    ScriptedPrompts& m_prompts = m_given.prompts;
    const DocumentServices& m_services = m_given.all;
    rtCM m_view{m_services};
    QSignalSpy m_changes{&m_view, &rtCM::Change};
    QSignalSpy m_moves{&m_view, &rtCM::SelChange};
};

// Long searches

TEST_F(TextViewFinds, EscEndsASearchForOneMatchThatTakesLong) {
    QString text;
    for (int line = 0; line < 3000; ++line)
        text += u"aaaaaaaaaaaaaaaaaaaaaa!\n"_qs;
    m_view.setText(text);
    select(1, 3);
    m_options.RegExpOn = true;
    m_options.ContinueSearch = true;
    QTimer typist;
    bool typed = false;
    QObject::connect(&typist, &QTimer::timeout, [&] {
        typeInto(m_view.control(), u"x"_qs);
        EXPECT_FALSE(m_view.close());
        QTest::keyClick(&m_view.control(), Qt::Key_Escape);
        typed = true;
        typist.stop();
    });
    typist.start(0);
    EXPECT_FALSE(next("(a|aa)+$"));
    EXPECT_TRUE(typed);
    EXPECT_EQ(selected(), Selected(1, 3));
    EXPECT_EQ(m_view.Text(), text);
}

TEST_F(TextViewFinds, EscEndsAListOfAllMatches) {
    m_view.setText(manyMatches());
    QTimer::singleShot(0, [&] { QTest::keyClick(&m_view.control(), Qt::Key_Escape); });
    const QString list = all("a");
    EXPECT_LT(list.count(u'\t'), Many);
    EXPECT_GT(list.count(u'\t'), 0);
}

TEST_F(TextViewFinds, EscLetsAReplacementOfAllEndWithWhatItFound) {
    const QString rest = u"aaaaaaaaaaaaaaaaaaaaaa!\n"_qs.repeated(3000);
    m_view.setText(u'b' + rest);
    QSignalSpy told(&m_view, &rtCM::Notice);
    QTimer::singleShot(0, &m_view, [&] { QTest::keyClick(&m_view.control(), Qt::Key_Escape); });
    EXPECT_EQ(replaced("b|(a|aa)+$", "c", true), u"0,0,1\t"_qs);
    EXPECT_EQ(m_view.Text(), u'c' + rest);
    ASSERT_FALSE(told.isEmpty());
    EXPECT_EQ(told.last()[0].toString(), u"The search was stopped."_qs);
    m_view.Undo();
    EXPECT_EQ(m_view.Text(), u'b' + rest);
}

TEST_F(TextViewFinds, SaysThatAListOfAllMatchesWasStopped) {
    m_view.setText(manyMatches());
    QSignalSpy told(&m_view, &rtCM::Notice);
    QTimer::singleShot(0, &m_view, [&] { m_view.StopSearch(); });
    EXPECT_LT(all("a").count(u'\t'), Many);
    ASSERT_FALSE(told.isEmpty());
    EXPECT_EQ(told.last()[0].toString(), u"The search was stopped."_qs);
}

TEST_F(TextViewFinds, AnExpressionThatExplodesIsToldOfAndLosesNothing) {
    const QString text = u"c c"_qs + QString(60, u'a') + u"\nc b"_qs;
    constexpr const char* Wild = "(a+)+b|c";
    const QString tooMany = u"The expression takes too many steps; the search was stopped."_qs;
    m_view.setText(text);
    m_view.FileChanged = false;
    m_options.RegExpOn = true;
    QSignalSpy told(&m_view, &rtCM::Notice);
    const auto isTold = [&] { return !told.isEmpty() && told.takeLast()[0].toString() == tooMany; };

    select(3, 3);
    EXPECT_FALSE(next(Wild));
    EXPECT_TRUE(isTold());
    EXPECT_EQ(selected(), Selected(3, 3));
    select(text.size(), text.size());
    EXPECT_FALSE(previous(Wild));
    EXPECT_TRUE(isTold());
    EXPECT_EQ(selected(), Selected(text.size(), text.size()));
    EXPECT_EQ(all(Wild, true), u"0,0,1\t0,2,1\t"_qs);
    EXPECT_TRUE(isTold());
    EXPECT_FALSE(m_view.FileChanged);

    EXPECT_EQ(replaced(Wild, "d", true), u"0,0,1\t0,2,1\t"_qs);
    EXPECT_TRUE(isTold());
    EXPECT_EQ(m_view.Text(), u"d d"_qs + text.mid(3));
    m_view.Undo();
    EXPECT_EQ(m_view.Text(), text);
    EXPECT_EQ(m_prompts.messages, QStringList());
}

// One match

TEST_F(TextViewFinds, FindNextSelectsTheMatchBehindTheSelection) {
    hold("one two one");
    EXPECT_TRUE(next("one"));
    EXPECT_EQ(selected(), Selected(0, 3));
    EXPECT_TRUE(next("one"));
    EXPECT_EQ(selected(), Selected(8, 11));
    EXPECT_EQ(m_moves.count(), 2);
}

TEST_F(TextViewFinds, AnEmptyTextRepeatsTheLastOne) {
    hold("one two one");
    EXPECT_FALSE(next(""));
    EXPECT_FALSE(previous(""));
    EXPECT_TRUE(next("one"));
    EXPECT_TRUE(next(""));
    EXPECT_EQ(selected(), Selected(8, 11));
    EXPECT_TRUE(previous(""));
    EXPECT_EQ(selected(), Selected(0, 3));
}

TEST_F(TextViewFinds, TheTextCanBeSetAheadOfTheSearch) {
    hold("one two");
    m_view.SetFindText(u"two"_qs);
    EXPECT_EQ(selected(), Selected(0, 0));
    EXPECT_TRUE(next(""));
    EXPECT_EQ(selected(), Selected(4, 7));
}

TEST_F(TextViewFinds, TheProgramWideFlagsCountForFindNextAndFindPrev) {
    hold("One ONE ones 1ne");
    m_options.CaseSensitiveOn = true;
    EXPECT_TRUE(next("ONE"));
    EXPECT_EQ(selected(), Selected(4, 7));
    EXPECT_TRUE(m_view.SearchCaseSensitive());
    m_options.CaseSensitiveOn = false;
    m_options.WholeWord = true;
    EXPECT_FALSE(next("one"));
    EXPECT_TRUE(previous("one"));
    EXPECT_EQ(selected(), Selected(0, 3));
    EXPECT_TRUE(m_view.SearchWholeWord());
    EXPECT_FALSE(m_view.SearchCaseSensitive());
    m_options.WholeWord = false;
    m_options.RegExpOn = true;
    EXPECT_TRUE(next("\\dne"));
    EXPECT_EQ(selected(), Selected(13, 16));
    EXPECT_TRUE(m_view.SearchRegExp());
}

TEST_F(TextViewFinds, WithoutContinueSearchTheEndOfTheTextIsTheEnd) {
    hold("one two");
    select(7, 5);
    EXPECT_FALSE(next("one"));
    EXPECT_EQ(selected(), Selected(7, 5));
    select(0, 0);
    EXPECT_FALSE(previous("two"));
    EXPECT_EQ(selected(), Selected(0, 0));
}

TEST_F(TextViewFinds, ContinueSearchGoesAroundTheEnds) {
    m_options.ContinueSearch = true;
    hold("one two three");
    select(13, 13);
    EXPECT_TRUE(next("one"));
    EXPECT_EQ(selected(), Selected(0, 3));
    EXPECT_TRUE(next("one"));
    EXPECT_EQ(selected(), Selected(0, 3));
    EXPECT_TRUE(previous("three"));
    EXPECT_EQ(selected(), Selected(8, 13));
    EXPECT_TRUE(previous("three"));
    EXPECT_EQ(selected(), Selected(8, 13));
}

TEST_F(TextViewFinds, WhatIsNowhereLeavesTheSelection) {
    for (const bool goesOn : {false, true}) {
        m_options.ContinueSearch = goesOn;
        hold("one two three");
        select(7, 5);
        EXPECT_FALSE(next("four"));
        EXPECT_EQ(selected(), Selected(7, 5));
        EXPECT_FALSE(previous("four"));
        EXPECT_EQ(selected(), Selected(7, 5));
        EXPECT_FALSE(m_view.FindText(u"four"_qs, false, false, false));
        EXPECT_EQ(selected(), Selected(7, 5));
    }
}

TEST_F(TextViewFinds, WhatIsNowhereIsLookedForOnceAndMovesNothingMeanwhile) {
    QSignalSpy failures(&m_view.control(), &TextControl::CommandFailed);
    QSignalSpy wraps(&m_view.control(), &TextControl::FindWrapped);
    QSignalSpy moves(&m_view.control(), &TextControl::SelChange);
    hold("one two three");
    select(7, 5);
    moves.clear();
    for (const bool goesOn : {false, true}) {
        m_options.ContinueSearch = goesOn;
        failures.clear();
        EXPECT_FALSE(next("four"));
        EXPECT_FALSE(previous("four"));
        EXPECT_FALSE(m_view.FindText(u"four"_qs, false, false, false));
        EXPECT_EQ(failures.count(), 3);
    }
    EXPECT_EQ(wraps.count(), 0);
    EXPECT_EQ(moves.count(), 0);
}

TEST_F(TextViewFinds, TheRepeatCountIsUsedUpBySoManySearches) {
    hold("one one one two");
    m_view.control().setRepeatCount(3);
    EXPECT_TRUE(next("one"));
    EXPECT_EQ(selected(), Selected(8, 11));
    select(0, 0);
    m_view.control().setRepeatCount(4);
    EXPECT_FALSE(next("one"));
    EXPECT_EQ(selected(), Selected(0, 0));
    EXPECT_EQ(m_view.control().repeatCount(), 1);
}

class TextViewRecorded : public TextViewFinds {
 protected:
    TextViewRecorded() {
        hold("one one one two");
        m_view.RecordMacro();
    }
    bool enter(const char* text) { return m_view.FindText(QString::fromUtf8(text), false, false, false); }
    const MacroRecorder& recorder() const { return m_services.globals.control.recorder(); }
    /// The numbers of the steps that do something; the others say what is searched for.
    QList<int> commands() const {
        QList<int> numbers;
        for (const MacroStep& step : recorder().steps()) {
            if (Command::infoOf(step.command)->kind != Command::Kind::Sets)
                numbers << step.command;
        }
        return numbers;
    }
};

TEST_F(TextViewRecorded, ASearchThatFindsNothingIsNoStep) {
    for (const bool goesOn : {false, true}) {
        m_options.ContinueSearch = goesOn;
        select(4, 4);
        EXPECT_FALSE(enter("nowhere"));
        EXPECT_FALSE(next("nowhere"));
        EXPECT_FALSE(previous("nowhere"));
    }
    EXPECT_TRUE(recorder().steps().isEmpty());
}

TEST_F(TextViewRecorded, ASearchThatFailsInItsLastRepetitionIsNoStep) {
    const std::function<bool()> finds[] = {[&] { return enter("one"); }, [&] { return next("one"); }};
    for (const auto& find : finds) {
        m_view.control().setRepeatCount(4);
        EXPECT_FALSE(find());
        EXPECT_EQ(selected(), Selected(0, 0));
        EXPECT_TRUE(recorder().steps().isEmpty());
    }
}

TEST_F(TextViewRecorded, ASearchIsOneStepWithItsRepetitions) {
    m_view.control().setRepeatCount(2);
    EXPECT_TRUE(next("one"));
    EXPECT_TRUE(enter("two"));
    EXPECT_TRUE(previous("one"));
    EXPECT_EQ(commands(),
              (QList<int>{Command::SetRepeatCount, Command::FindNext, Command::FindNext, Command::FindPrevious}));
    EXPECT_EQ(recorder().missedCount(), 0);
}

TEST_F(TextViewRecorded, AFailureTakesBackNoStepButItsOwn) {
    typeInto(m_view.control(), u"x"_qs);
    EXPECT_TRUE(enter("two"));
    const auto before = recorder().steps();
    EXPECT_FALSE(enter("nowhere"));
    EXPECT_EQ(recorder().steps(), before);
}

TEST_F(TextViewFinds, FindTextThatFailsLeavesTheSelectionThoughThereIsAMatchBefore) {
    hold("one two");
    select(7, 4);
    EXPECT_FALSE(m_view.FindText(u"one"_qs, false, false, false));
    EXPECT_EQ(selected(), Selected(7, 4));
}

TEST_F(TextViewFinds, AFailureLeavesSeveralRangesAndThePartInSight) {
    TextControl& control = m_view.control();
    m_view.resize(400, 200);
    m_view.show();
    hold("one\n");
    m_view.AddText(u"two\n"_qs.repeated(200));
    const auto ask = [&](unsigned message) { return control.SendScintilla(message); };
    for (const bool goesOn : {false, true}) {
        m_options.ContinueSearch = goesOn;
        for (const char* text : {"one", "nowhere"}) {
            if (goesOn && QByteArray(text) == "one")
                continue;
            select(40, 44);
            control.SendScintilla(TextControl::SCI_ADDSELECTION, 50UL, 48L);
            control.SendScintilla(TextControl::SCI_SETFIRSTVISIBLELINE, 100UL);
            EXPECT_FALSE(next(text));
            EXPECT_EQ(ask(TextControl::SCI_GETSELECTIONS), 2);
            EXPECT_EQ(selected(), Selected(48, 50));
            EXPECT_EQ(ask(TextControl::SCI_GETFIRSTVISIBLELINE), 100);
        }
    }
}

TEST_F(TextViewFinds, AFailureLeavesARectangle) {
    TextControl& control = m_view.control();
    hold("one\ntwo\nsix");
    control.SendScintilla(TextControl::SCI_SETRECTANGULARSELECTIONANCHOR, 5UL);
    control.SendScintilla(TextControl::SCI_SETRECTANGULARSELECTIONCARET, 11UL);
    control.SendScintilla(TextControl::SCI_SETRECTANGULARSELECTIONCARETVIRTUALSPACE, 2UL);
    EXPECT_FALSE(next("one"));
    EXPECT_NE(control.SendScintilla(TextControl::SCI_SELECTIONISRECTANGLE), 0);
    EXPECT_EQ(control.SendScintilla(TextControl::SCI_GETRECTANGULARSELECTIONANCHOR), 5);
    EXPECT_EQ(control.SendScintilla(TextControl::SCI_GETRECTANGULARSELECTIONCARET), 11);
    EXPECT_EQ(control.SendScintilla(TextControl::SCI_GETRECTANGULARSELECTIONCARETVIRTUALSPACE), 2);
    control.typing().type(u"-"_qs);
    EXPECT_EQ(m_view.Text().count(u'-'), 2);
}

TEST_F(TextViewFinds, AFailureOfTheSecondTryLetsEventsRunToo) {
    m_options.ContinueSearch = true;
    hold("one\ntwo");
    const auto fails = [&](const std::function<bool()>& search) {
        select(5, 5);
        bool ran = false;
        QTimer::singleShot(0, &m_view, [&] { ran = true; });
        EXPECT_FALSE(search());
        EXPECT_TRUE(ran);
        EXPECT_GE(m_moves.count(), 1);
        EXPECT_EQ(selected(), Selected(5, 5));
        EXPECT_EQ(m_view.LastHighlightLine(), 1);
    };
    fails([&] { return next("four"); });
    fails([&] { return previous("four"); });
    fails([&] { return m_view.FindText(u"four"_qs, false, false, false); });
}

TEST_F(TextViewFinds, AFailureBringsHighlightAndOwnersUpToDateAndLetsEventsRun) {
    hold("one\ntwo");
    select(5, 5);
    bool ran = false;
    QTimer::singleShot(0, &m_view, [&] { ran = true; });
    m_moves.clear();
    EXPECT_FALSE(next("four"));
    EXPECT_TRUE(ran);
    EXPECT_GE(m_moves.count(), 1);
    EXPECT_EQ(m_view.LastHighlightLine(), 1);
}

TEST_F(TextViewFinds, NothingIsPaintedWhileAMatchIsLookedFor) {
    hold("one two");
    select(7, 7);
    m_options.ContinueSearch = true;
    std::vector<bool> painted;
    QObject::connect(&m_view, &rtCM::SelChange, [&] { painted.push_back(m_view.control().updatesEnabled()); });
    EXPECT_TRUE(next("one"));
    EXPECT_FALSE(painted.empty());
    EXPECT_EQ(std::count(painted.begin(), painted.end(), true), 0);
    EXPECT_TRUE(m_view.control().updatesEnabled());
    EXPECT_FALSE(next("four"));
    EXPECT_TRUE(m_view.control().updatesEnabled());
}

TEST_F(TextViewFinds, AnInvalidExpressionIsNotFound) {
    m_options.RegExpOn = true;
    m_options.ContinueSearch = true;
    hold("a(b");
    select(2, 1);
    EXPECT_FALSE(next("a(b"));
    EXPECT_FALSE(previous("[z"));
    EXPECT_FALSE(m_view.FindText(u"+"_qs, true, false, false));
    EXPECT_EQ(all("(", true), QString());
    EXPECT_EQ(replaced("(", "x", true), QString());
    EXPECT_EQ(m_view.Text(), u"a(b"_qs);
}

TEST_F(TextViewFinds, FindTextGoesByTheFlagsItIsGiven) {
    hold("One ones onE");
    m_options.CaseSensitiveOn = true;
    EXPECT_TRUE(m_view.FindText(u"ONE"_qs, false, false, true));
    EXPECT_EQ(selected(), Selected(0, 3));
    EXPECT_TRUE(m_view.FindText(u"ONE"_qs, false, false, true));
    EXPECT_EQ(selected(), Selected(9, 12));
    EXPECT_TRUE(m_options.CaseSensitiveOn);
    EXPECT_FALSE(m_options.WholeWord);
    EXPECT_FALSE(m_view.FindText(u"ONE"_qs, false, true, false));
    select(0, 0);
    EXPECT_TRUE(m_view.FindText(u"o.es"_qs, true, true, false));
    EXPECT_EQ(selected(), Selected(4, 8));
}

TEST_F(TextViewFinds, FindTextGoesAroundTheEndWithContinueSearch) {
    m_options.ContinueSearch = true;
    hold("one two");
    select(7, 7);
    EXPECT_TRUE(m_view.FindText(u"one"_qs, false, false, false));
    EXPECT_EQ(selected(), Selected(0, 3));
}

TEST_F(TextViewFinds, ALockedDocumentIsSearchedAndNotReplacedIn) {
    hold("one one");
    m_view.setLocked(true);
    EXPECT_TRUE(next("one"));
    EXPECT_EQ(all("one"), u"0,0,3\t0,4,3\t"_qs);
    EXPECT_EQ(replaced("one", "1"), QString());
    EXPECT_EQ(m_view.Text(), u"one one"_qs);
    EXPECT_EQ(m_changes.count(), 0);
    EXPECT_FALSE(m_view.FileChanged);
}

TEST_F(TextViewFinds, OneLineOfManyMegabytesIsSearchedThrough) {
    m_options.ContinueSearch = true;
    const QString line = QString(5'000'000, u'x') + u"needle"_qs + QString(5'000'000, u'x');
    m_view.setText(line);
    EXPECT_TRUE(next("needle"));
    EXPECT_EQ(selected(), Selected(5'000'000, 5'000'006));
    select(10'000'006, 10'000'006);
    EXPECT_TRUE(previous("needle"));
    EXPECT_EQ(all("needle"), u"0,5000000,6\t"_qs);
    EXPECT_EQ(replaced("needle", "thread!"), u"0,5000000,7\t"_qs);
    EXPECT_EQ(m_view.TotalLines(), 1);
    EXPECT_EQ(m_view.Text().size(), 10'000'007);
}

// All matches

TEST_F(TextViewFinds, FindAllMatchListsLinePositionAndLength) {
    hold("one\r\nöne one\r\n\U0001F600one");
    select(3, 5);
    EXPECT_EQ(all("one"), u"0,0,3\t1,9,3\t2,16,3\t"_qs);
    EXPECT_EQ(selected(), Selected(16, 19));
    EXPECT_FALSE(m_view.IgnoreCmdFailure);
    EXPECT_EQ(m_changes.count(), 0);
}

TEST_F(TextViewFinds, FindAllMatchGoesByTheFlagsItIsGiven) {
    hold("One ones one");
    EXPECT_EQ(all("one"), u"0,0,3\t0,4,3\t0,9,3\t"_qs);
    EXPECT_EQ(all("one", false, true), u"0,4,3\t0,9,3\t"_qs);
    EXPECT_EQ(all("one", false, false, true), u"0,0,3\t0,9,3\t"_qs);
    EXPECT_EQ(all("o\\w+", true), u"0,0,3\t0,4,4\t0,9,3\t"_qs);
    EXPECT_TRUE(m_view.SearchRegExp());
    EXPECT_FALSE(m_options.RegExpOn);
}

TEST_F(TextViewFinds, FindAllMatchListsAnEmptyMatchOnceALine) {
    hold("a\nb\nc");
    EXPECT_EQ(all("^", true), u"0,0,0\t1,2,0\t2,4,0\t"_qs);
}

TEST_F(TextViewFinds, NothingToFindGivesAnEmptyList) {
    hold("one");
    select(1, 2);
    EXPECT_EQ(all(""), QString());
    EXPECT_EQ(replaced("", "x"), QString());
    EXPECT_EQ(selected(), Selected(1, 2));
    EXPECT_EQ(all("two"), QString());
    EXPECT_EQ(selected(), Selected(0, 0));
}

TEST_F(TextViewFinds, AnEmptyDocumentIsSentNoCommand) {
    QSignalSpy failures(&m_view.control(), &TextControl::CommandFailed);
    m_view.SetFindText(u"kept"_qs);
    EXPECT_EQ(all("x", true), QString());
    EXPECT_EQ(replaced("x", "y", true), QString());
    EXPECT_EQ(failures.count(), 0);
    EXPECT_EQ(m_view.control().search().searchText(), u"kept"_qs);
    EXPECT_FALSE(m_view.SearchRegExp());
    EXPECT_EQ(m_changes.count(), 0);
}

TEST_F(TextViewFinds, ReplaceAllMatchListsWhereTheReplacementsLie) {
    hold("one\none one");
    EXPECT_EQ(replaced("one", "three"), u"0,0,5\t1,6,5\t1,12,5\t"_qs);
    EXPECT_EQ(m_view.Text(), u"three\nthree three"_qs);
    EXPECT_EQ(selected(), Selected(12, 17));
    EXPECT_TRUE(m_view.FileChanged);
    EXPECT_GE(m_changes.count(), 1);
    m_view.Undo();
    EXPECT_EQ(m_view.Text(), u"one\none one"_qs);
}

TEST_F(TextViewFinds, ReplaceAllMatchListsTheLengthOfTheReplacementAsItWasGiven) {
    hold("ab");
    EXPECT_EQ(replaced("(a)(b)", "$2$1$2", true), u"0,0,6\t"_qs);
    EXPECT_EQ(m_view.Text(), u"bab"_qs);
}

TEST_F(TextViewFinds, ReplaceAllMatchGoesByTheFlagsItIsGiven) {
    hold("one One ONE ones");
    replaced("one", "two", false, false, true, true);
    EXPECT_EQ(m_view.Text(), u"two Two TWO ones"_qs);
    replaced("TWO", "x", false, true);
    EXPECT_EQ(m_view.Text(), u"two Two x ones"_qs);
}

TEST_F(TextViewFinds, ReplaceAllMatchEndsWhenTheReplacementHoldsTheText) {
    hold("a b a");
    EXPECT_EQ(replaced("a", "aaa"), u"0,0,3\t0,6,3\t"_qs);
    EXPECT_EQ(m_view.Text(), u"aaa b aaa"_qs);
}

TEST_F(TextViewFinds, ACommandFailureRedrawsOnlyDuringTheLoops) {
    hold("one");
    std::vector<bool> ignored;
    QObject::connect(&m_view.control(), &TextControl::CommandFailed,
                     [&] { ignored.push_back(m_view.IgnoreCmdFailure); });
    next("two");
    all("two");
    replaced("two", "x");
    EXPECT_EQ(ignored, (std::vector<bool>{false, true, true}));
}

class TextViewPainting : public TextViewFinds {
 protected:
    struct Paints : QObject {
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    };

    TextViewPainting() {
        hold("one");
        m_view.control().SendScintilla(TextControl::SCI_SETCARETPERIOD, 0UL);
        m_view.show();
        settle();
        m_view.control().viewport()->installEventFilter(&m_paints);
    }
    static void settle() {
        for (int round = 0; round < 5; ++round)
            QTest::qWait(10);
    }
    int paintsSince() {
        settle();
        return std::exchange(m_paints.count, 0);
    }

    Paints m_paints;
};

TEST_F(TextViewPainting, IsDoneForACommandThatFailsInALoopAndForNoOther) {
    Q_EMIT m_view.control().CommandFailed();
    EXPECT_EQ(paintsSince(), 0);
    m_view.IgnoreCmdFailure = true;
    Q_EMIT m_view.control().CommandFailed();
    EXPECT_GE(paintsSince(), 1);
}

TEST_F(TextViewPainting, IsDoneAfterASearchThatMovedNothing) {
    EXPECT_EQ(paintsSince(), 0);
    EXPECT_FALSE(next("two"));
    EXPECT_GE(paintsSince(), 1);
}

TEST_F(TextViewFinds, ALoopOverMatchesLetsEventsRunAndCanBeStopped) {
    const QString text = manyMatches();
    m_view.setText(text);
    QTimer::singleShot(0, &m_view, [&] {
        EXPECT_TRUE(m_view.IgnoreCmdFailure);
        m_view.StopSearch();
    });
    // However fast the machine is, at one of these the first 20 ms have passed.
    qsizetype found = 0;
    for (int round = 0; round < 100 && found % Many == 0; ++round)
        found += all("a").count(u'\t');
    EXPECT_NE(found % Many, 0);
    EXPECT_FALSE(m_view.IgnoreCmdFailure);
    EXPECT_EQ(all("a").count(u'\t'), Many);
}

TEST_F(TextViewFinds, AStoppedReplacementHasReplacedWhatItFound) {
    m_view.setText(QString(Many, u'a'));
    QTimer stopper;
    QObject::connect(&stopper, &QTimer::timeout, [&] { m_view.StopSearch(); });
    stopper.start(0);
    QString list;
    for (int round = 0; round < 100; ++round) {
        list = replaced("a", "b", false, true);
        if (list.count(u'\t') < Many)
            break;
        m_view.Undo();
    }
    const qsizetype count = list.count(u'\t');
    EXPECT_GT(count, 0);
    EXPECT_LT(count, Many);
    EXPECT_EQ(m_view.Text(), QString(count, u'b') + QString(Many - count, u'a'));
}

TEST_F(TextViewFinds, AViewThatGoesMeanwhileEndsTheLoop) {
    for (const bool replaces : {false, true}) {
        auto* mortal = new rtCM(m_services);
        const QPointer<rtCM> alive(mortal);
        mortal->setText(manyMatches());
        QTimer::singleShot(0, [&] { delete mortal; });
        QString list;
        for (int round = 0; round < 100 && alive; ++round) {
            if (replaces)
                mortal->ReplaceAllMatch(u"a"_qs, u"a"_qs, list, false, false, false, false);
            else
                mortal->FindAllMatch(u"a"_qs, list, false, false, false);
        }
        EXPECT_FALSE(alive);
        EXPECT_LT(list.count(u'\t'), Many);
    }
}

// Bookmarks

TEST_F(TextViewFinds, BookmarkCommandsGoThroughTheMarkedLines) {
    hold("0\n1\n2\n3\n4");
    m_view.EnableBookmarkAt(2, true);
    m_view.EnableBookmarkAt(4, true);
    m_view.EnableBookmarkAt(0, true);
    m_view.EnableBookmarkAt(6, true);
    m_view.BookmarkLast();
    EXPECT_EQ(m_view.CurrentLine(), 3);
    m_view.BookmarkFirst();
    EXPECT_EQ(m_view.CurrentLine(), 1);
    m_view.NextBookmark();
    EXPECT_EQ(m_view.CurrentLine(), 3);
    m_view.NextBookmark();
    EXPECT_EQ(m_view.CurrentLine(), 1);
    m_view.PrevBookmark();
    EXPECT_EQ(m_view.CurrentLine(), 3);
    m_view.ToggleBookmark();
    EXPECT_FALSE(m_view.control().bookmarks().BookmarkAt(3));
    m_view.EnableBookmarkAt(2, false);
    EXPECT_FALSE(m_view.control().bookmarks().BookmarkAt(1));
    m_view.ToggleBookmark();
    m_view.ClearAllBookmark();
    EXPECT_FALSE(m_view.control().bookmarks().BookmarkAt(3));
}

class TextViewMargin : public TextViewFinds {
 protected:
    TextViewMargin() {
        hold("0\n1\n2\n3\n4");
        m_view.resize(400, 300);
        m_view.show();
    }
    /// A click into line 2 that far from the left.
    void click(int x, Qt::MouseButton button = Qt::LeftButton) {
        TextControl& control = m_view.control();
        const long start = control.SendScintilla(TextControl::SCI_POSITIONFROMLINE, 2UL);
        const auto y = static_cast<int>(control.SendScintilla(TextControl::SCI_POINTYFROMPOSITION, 0UL, start)) + 2;
        mouse(QEvent::MouseButtonPress, button, {x, y});
        mouse(QEvent::MouseButtonRelease, button, {x, y});
    }
    void mouse(QEvent::Type type, Qt::MouseButton button, QPoint place) {
        QWidget* surface = m_view.control().viewport();
        const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? button : Qt::NoButton;
        QMouseEvent event(type, place, surface->mapToGlobal(place), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(surface, &event);
    }
    bool marked() const { return m_view.control().bookmarks().BookmarkAt(2); }

    QSignalSpy m_clicks{&m_view, &rtCM::ClickLeftMargin};
    QSignalSpy m_presses{&m_view, &rtCM::MouseDown};
    QSignalSpy m_menus{&m_view, &rtCM::ShowMenu};
};

TEST_F(TextViewMargin, AClickTogglesTheBookmarkOfItsLine) {
    click(6);
    EXPECT_TRUE(marked());
    ASSERT_EQ(m_clicks.count(), 1);
    EXPECT_EQ(m_clicks[0][0].toLongLong(), 2);
    EXPECT_TRUE(m_clicks[0][1].toBool());
    click(24);
    EXPECT_FALSE(marked());
    ASSERT_EQ(m_clicks.count(), 2);
    EXPECT_FALSE(m_clicks[1][1].toBool());
    EXPECT_EQ(m_presses.count(), 2);
    EXPECT_EQ(selected(), Selected(0, 0));
}

TEST_F(TextViewMargin, AClickBesideItTogglesNothing) {
    click(5);
    click(25);
    EXPECT_FALSE(marked());
    EXPECT_EQ(m_clicks.count(), 0);
    EXPECT_EQ(m_presses.count(), 2);
}

TEST_F(TextViewMargin, ARightClickOpensTheMenuAndTogglesNothing) {
    click(10, Qt::RightButton);
    EXPECT_FALSE(marked());
    EXPECT_EQ(m_clicks.count(), 0);
    EXPECT_EQ(m_presses.count(), 1);
    EXPECT_EQ(m_menus.count(), 1);
}

TEST_F(TextViewMargin, NoOtherButtonTogglesWhereverItIsPressed) {
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        for (const int x : {6, 24, 25, 120})
            click(x, button);
    }
    EXPECT_FALSE(marked());
    EXPECT_EQ(m_clicks.count(), 0);
    EXPECT_EQ(m_presses.count(), 8);
    EXPECT_EQ(m_menus.count(), 4);
}

TEST_F(TextViewMargin, TwoQuickClicksToggleTwice) {
    click(10);
    EXPECT_TRUE(marked());
    TextControl& control = m_view.control();
    const auto y =
        static_cast<int>(control.SendScintilla(TextControl::SCI_POINTYFROMPOSITION, 0UL,
                                               control.SendScintilla(TextControl::SCI_POSITIONFROMLINE, 2UL))) +
        2;
    QMouseEvent second(QEvent::MouseButtonDblClick, QPoint(10, y), control.viewport()->mapToGlobal(QPoint(10, y)),
                       Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &second);
    EXPECT_FALSE(marked());
    EXPECT_EQ(m_presses.count(), 2);
    EXPECT_EQ(m_clicks.count(), 2);
}

TEST_F(TextViewMargin, WithoutAMarginAClickAtTheLeftEdgeIsOneIntoTheText) {
    m_view.setDisplayLeftMargin(false);
    m_view.setLineNumbering(false);
    for (const int x : {6, 10, 24})
        click(x);
    EXPECT_FALSE(marked());
    EXPECT_EQ(m_clicks.count(), 0);
    EXPECT_EQ(m_presses.count(), 3);
    EXPECT_EQ(m_view.CurrentLine(), 2);
}

TEST_F(TextViewMargin, EitherMarginTakesClicksWithoutTheOther) {
    m_view.setDisplayLeftMargin(false);
    click(10);
    EXPECT_TRUE(marked());
    m_view.setDisplayLeftMargin(true);
    m_view.setLineNumbering(false);
    click(24);
    EXPECT_FALSE(marked());
    click(25);
    EXPECT_EQ(m_clicks.count(), 2);
}

TEST_F(TextViewMargin, AClickTogglesNothingWhenSwitchedOff) {
    m_view.ClickLeftMarginBookmark = false;
    click(10);
    EXPECT_FALSE(marked());
    EXPECT_EQ(m_clicks.count(), 0);
    EXPECT_EQ(m_presses.count(), 1);
}

TEST_F(TextViewMargin, TheMouseIsToldOfBeforeTheBookmark) {
    QStringList order;
    QObject::connect(&m_view, &rtCM::MouseDown, [&] { order << u"mouse"_qs; });
    QObject::connect(&m_view, &rtCM::ClickLeftMargin, [&] { order << u"margin"_qs; });
    click(10);
    EXPECT_EQ(order, (QStringList{u"mouse"_qs, u"margin"_qs}));
}

// The control's windows

class TextViewDialogs : public TextViewFinds {
 protected:
    TextViewDialogs() {
        m_view.resize(400, 300);
        m_view.show();
    }
    void key(int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(&m_view.control(), &press);
    }
    bool shown(const char* name) const {
        const auto* window = m_view.findChild<QWidget*>(QString::fromUtf8(name));
        return window != nullptr && window->isVisible();
    }
    void closeAll() {
        for (const char* name : {"FindDialog", "ReplaceDialog"}) {
            if (auto* window = m_view.findChild<QWidget*>(QString::fromUtf8(name)))
                window->close();
        }
    }

    QSignalSpy m_told{&m_view, &rtCM::AfterFind};
};

TEST_F(TextViewDialogs, OpenWithTheProgramWideFlags) {
    m_options.WholeWord = true;
    m_options.RegExpOn = true;
    m_view.Find();
    EXPECT_TRUE(shown("FindDialog"));
    EXPECT_FALSE(shown("ReplaceDialog"));
    EXPECT_TRUE(m_view.SearchWholeWord());
    EXPECT_TRUE(m_view.SearchRegExp());
    EXPECT_FALSE(m_view.SearchCaseSensitive());
    m_view.ReplaceText();
    EXPECT_TRUE(shown("ReplaceDialog"));
    closeAll();
    EXPECT_EQ(m_told.count(), 0);
}

TEST_F(TextViewDialogs, OpenByTheirKeys) {
    struct Row {
        int key;
        Qt::KeyboardModifiers modifiers;
        bool find;
        bool replace;
    };
    const Row rows[] = {
        {Qt::Key_F, Qt::ControlModifier, true, false},  {Qt::Key_F3, Qt::AltModifier, true, true},
        {Qt::Key_H, Qt::ControlModifier, false, true},  {Qt::Key_F3, Qt::NoModifier, false, true},
        {Qt::Key_F3, Qt::ShiftModifier, false, true},   {Qt::Key_F3, Qt::ControlModifier, false, true},
        {Qt::Key_G, Qt::ControlModifier, false, false}, {Qt::Key_F, Qt::NoModifier, false, false},
    };
    for (const Row& row : rows) {
        key(row.key, row.modifiers);
        EXPECT_EQ(shown("FindDialog"), row.find) << row.key;
        EXPECT_EQ(shown("ReplaceDialog"), row.replace) << row.key;
        closeAll();
    }
}

TEST_F(TextViewDialogs, TheBarOpensBothWays) {
    hold("one two one");
    select(7, 7);
    m_options.CaseSensitiveOn = true;
    m_view.IncrementalSearch();
    EXPECT_TRUE(shown("IncrementalSearchBar"));
    EXPECT_TRUE(m_view.SearchCaseSensitive());
    auto* field = m_view.findChild<QWidget*>(u"txtIncrementalSearch"_qs);
    typeInto(*field, u"one"_qs);
    EXPECT_EQ(selected(), Selected(8, 11));
    m_view.ReverseIncrementalSearch();
    EXPECT_EQ(selected(), Selected(0, 3));
    EXPECT_EQ(m_told.count(), 0);
}
