#include "editor/Editor.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlReplace.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/SearchHistory.h"
#include "editor/control/TextControl.h"
#include "editor/held/TextLoader.h"
#include "text/held/Joints.h"

#include <QFile>
#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <tuple>
#include <vector>

namespace {

struct Searched : testing::Test {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    QSignalSpy wraps{&control, &TextControl::FindWrapped};
    QSignalSpy failures{&control, &TextControl::CommandFailed};
    QSignalSpy changes{&control, &TextControl::Change};
    QSignalSpy moves{&control, &TextControl::SelChange};

    Searched() {
        control.resize(600, 300);
        control.show();
    }
    void hold(const char* text, const char* find, SearchFlags flags = {}) {
        control.setText(QString::fromUtf8(text));
        look(find, flags);
        forgetSignals();
    }
    void look(const char* find, SearchFlags flags = {}) {
        control.setSearchCaseSensitive(flags.caseSensitive);
        control.setSearchRegExp(flags.regExp);
        control.setSearchWholeWord(flags.wholeWord);
        control.search().setSearchText(QString::fromUtf8(find));
    }
    void replaceBy(const char* text) { control.search().setReplacementText(QString::fromUtf8(text)); }
    void forgetSignals() {
        for (QSignalSpy* spy : {&wraps, &failures, &changes, &moves})
            spy->clear();
    }
    std::pair<qint64, qint64> selected() const { return {control.SelStart(), control.SelEnd()}; }

    using Place = std::tuple<qint64, qint64, qint64>;
    static Place placeOf(const MatchPlace& place) { return {place.line, place.position, place.length}; }
    std::vector<Place> allFound() {
        std::vector<Place> places;
        control.search().findAll([&](const MatchPlace& place) {
            places.push_back(placeOf(place));
            return true;
        });
        return places;
    }
    std::vector<Place> allReplaced() {
        std::vector<Place> places;
        ReplaceWatch watch;
        watch.replaced = [&](const MatchPlace& place) { places.push_back(placeOf(place)); };
        control.replacing().replaceAll(watch);
        return places;
    }
};

using Places = std::vector<Searched::Place>;
using Selected = std::pair<qint64, qint64>;

using FindNext = Searched;
using FindPrevious = Searched;
using FindAll = Searched;
using ReplaceNext = Searched;
using ReplaceAll = Searched;
using FindHistoryOfControls = Searched;

constexpr SearchFlags Expression{.regExp = true};

}  // namespace

TEST_F(FindNext, SelectsOneMatchAfterTheOther) {
    hold("ä one\none", "one");
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Found);
    EXPECT_EQ(selected(), Selected(2, 5));
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Found);
    EXPECT_EQ(selected(), Selected(6, 9));
    EXPECT_EQ(moves.count(), 2);
    EXPECT_EQ(wraps.count() + failures.count() + changes.count(), 0);
}

TEST_F(FindNext, GoesOnFromTheStartAndTellsOfIt) {
    hold("one two", "one");
    control.setSelection(5, 5);
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Wrapped);
    EXPECT_EQ(selected(), Selected(0, 3));
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Wrapped);
    EXPECT_EQ(selected(), Selected(0, 3));
    EXPECT_EQ(wraps.count(), 2);
    EXPECT_EQ(failures.count(), 0);
}

TEST_F(FindNext, EndsAtTheEndOfTheTextWhenToldToStopThere) {
    using Wrap = ControlSearch::Wrap;
    hold("one two", "one");
    control.setSelection(5, 5);
    EXPECT_EQ(control.search().findNext(Wrap::Stop), SearchOutcome::Failed);
    EXPECT_EQ(selected(), Selected(5, 5));
    control.search().setSearchText(u"two"_qs);
    control.setSelection(2, 2);
    forgetSignals();
    EXPECT_EQ(control.search().findPrevious(Wrap::Stop), SearchOutcome::Failed);
    EXPECT_EQ(selected(), Selected(2, 2));
    EXPECT_EQ(wraps.count() + moves.count(), 0);
    EXPECT_EQ(failures.count(), 1);
    EXPECT_EQ(control.search().findNext(Wrap::Stop), SearchOutcome::Found);
    EXPECT_EQ(selected(), Selected(4, 7));
}

TEST_F(FindNext, FailsWhereThereIsNothingAndLeavesTheSelection) {
    hold("one two", "three");
    control.setSelection(5, 2);
    forgetSignals();
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Failed);
    EXPECT_EQ(control.selected().AnchorPosition(), 5);
    EXPECT_EQ(control.selected().CaretPosition(), 2);
    EXPECT_FALSE(control.search().searchError());
    EXPECT_EQ(failures.count(), 1);
    EXPECT_EQ(wraps.count() + moves.count(), 0);
}

TEST_F(FindNext, FailsWithoutAText) {
    hold("one", "");
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Failed);
    EXPECT_EQ(control.search().findPrevious(), SearchOutcome::Failed);
    EXPECT_EQ(control.replacing().replaceNext(), SearchOutcome::Failed);
    EXPECT_EQ(control.replacing().replaceSelectedMatch(), SearchOutcome::Failed);
    EXPECT_EQ(control.replacing().replaceAll(), 0);
    EXPECT_EQ(control.replacing().replaceAllIn(control.selected().selectedRanges()), 0);
    EXPECT_EQ(control.search().countMatches(), 0);
    EXPECT_EQ(allFound(), Places());
    EXPECT_EQ(failures.count(), 7);
    EXPECT_TRUE(control.search().searchError());
}

TEST_F(FindNext, FailsInAnEmptyDocument) {
    hold("", "one");
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Failed);
    EXPECT_EQ(control.search().findPrevious(), SearchOutcome::Failed);
    EXPECT_EQ(control.replacing().replaceNext(), SearchOutcome::Failed);
    EXPECT_EQ(control.replacing().replaceAll(), 0);
    EXPECT_EQ(failures.count(), 4);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(FindNext, FollowsTheFlags) {
    hold("Ones ONE one", "ONE", {.caseSensitive = true});
    control.search().findNext();
    EXPECT_EQ(selected(), Selected(5, 8));
    look("one", {.wholeWord = true});
    control.setSelection(0, 0);
    control.search().findNext();
    EXPECT_EQ(selected(), Selected(5, 8));
    look("o.e", Expression);
    control.setSelection(0, 0);
    control.search().findNext();
    EXPECT_EQ(selected(), Selected(0, 3));
    look("o.e");
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Failed);
}

TEST_F(FindNext, TellsWhereAnExpressionIsWrong) {
    hold("one", "on(e", Expression);
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Failed);
    EXPECT_EQ(control.search().searchError().position, 4);
    EXPECT_EQ(failures.count(), 1);
    look("one");
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Found);
    EXPECT_FALSE(control.search().searchError());
}

TEST_F(FindNext, GivesUpAnExpressionThatExplodes) {
    hold("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa!", "^(a+)+$", Expression);
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Failed);
    EXPECT_TRUE(control.search().searchError());
    EXPECT_EQ(control.search().findPrevious(), SearchOutcome::Failed);
    EXPECT_EQ(control.replacing().replaceAll(), 0);
    EXPECT_EQ(failures.count(), 3);
}

namespace {

/// Each line takes the expression some milliseconds.
constexpr const char* Slow = "(a|aa)+$";
QString slowLines() {
    QString text = u"first"_qs;
    for (int line = 0; line < 3000; ++line)
        text += u"aaaaaaaaaaaaaaaaaaaaaa!\n"_qs;
    return text;
}

}  // namespace

TEST_F(FindNext, IsStoppedByItsWatch) {
    control.setText(slowLines());
    look(Slow, Expression);
    control.setSelection(2, 4);
    int asked = 0;
    control.search().setSearchWatch([&asked](bool) { return ++asked % 3 != 0; });
    const std::function<SearchOutcome()> searches[] = {[this] { return control.search().findNext(); },
                                                       [this] { return control.search().findPrevious(); },
                                                       [this] { return control.replacing().replaceNext(); },
                                                       [this] { return control.replacing().replaceSelectedMatch(); }};
    for (const auto& search : searches) {
        asked = 0;
        EXPECT_EQ(search(), SearchOutcome::Failed);
        EXPECT_EQ(asked, 3);
        EXPECT_TRUE(control.search().searchError());
        EXPECT_EQ(selected(), Selected(2, 4));
    }
    for (const bool backwards : {false, true}) {
        asked = 0;
        EXPECT_EQ(control.search().findTyped(backwards), SearchOutcome::Failed);
        EXPECT_EQ(asked, 3);
        EXPECT_EQ(selected(), Selected(2, 4));
    }
    EXPECT_EQ(control.search().countMatches(), 0);
    EXPECT_TRUE(control.search().searchError());
    EXPECT_EQ(control.replacing().replaceAll(), 0);
    EXPECT_FALSE(control.CanUndo() && control.Text() != slowLines());
    EXPECT_TRUE(allFound().empty());
}

TEST_F(FindNext, IsNotBegunAgainForTheRestOfARepeatCountWhenItWasStopped) {
    control.setText(slowLines());
    look(Slow, Expression);
    int asked = 0;
    control.search().setSearchWatch([&asked](bool) { return ++asked < 3; });
    for (const int command : {170, 173, 174, 176}) {
        asked = 0;
        control.setRepeatCount(50);
        control.ExecuteCmd(command);
        EXPECT_EQ(asked, 3) << command;
        EXPECT_EQ(control.repeatCount(), 1);
    }
}

TEST_F(FindNext, TellsThatItTakesLongUntilItIsOver) {
    control.setText(slowLines());
    look(Slow, Expression);
    const QSignalSpy told(&control, &TextControl::Notice);
    bool knew = false;
    control.search().setSearchWatch([&](bool takesLong) {
        EXPECT_EQ(takesLong, !told.isEmpty());
        knew = takesLong;
        return !takesLong;
    });
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Failed);
    EXPECT_TRUE(knew);
    ASSERT_EQ(told.count(), 2);
    EXPECT_EQ(told[0][0].toString(), u"Searching. Esc stops it."_qs);
    EXPECT_EQ(told[1][0].toString(), QString());
}

TEST_F(FindNext, EndsWhenAnotherTextComesWhileItIsWatched) {
    control.setText(slowLines());
    look(Slow, Expression);
    control.search().setSearchWatch([this](bool) {
        control.setText(u"another"_qs);
        return true;
    });
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Failed);
    EXPECT_EQ(control.Text(), u"another"_qs);
    control.setText(slowLines());
    EXPECT_EQ(control.replacing().replaceAllIn(control.selected().selectedRanges()), 0);
}

TEST_F(FindNext, OutlivesTheControlThatGoesWhileItIsWatched) {
    for (const int command : {170, 171, 172, 173, 174, 176}) {
        auto* gone = makeEditor();
        gone->setText(slowLines());
        gone->setSearchRegExp(true);
        gone->search().setSearchText(QString::fromLatin1(Slow));
        gone->SelectAll();
        const QPointer<TextControl> alive(gone);
        gone->search().setSearchWatch([gone](bool) {
            delete gone;
            return true;
        });
        gone->ExecuteCmd(command);
        EXPECT_FALSE(alive) << command;
    }
}

TEST_F(FindNext, TakesEachEmptyMatchOnce) {
    hold("a\nb\nc", "^", Expression);
    std::vector<qint64> places;
    for (int step = 0; step < 4; ++step) {
        control.search().findNext();
        places.push_back(control.SelStart());
    }
    EXPECT_EQ(places, (std::vector<qint64>{0, 2, 4, 0}));
    EXPECT_EQ(wraps.count(), 1);
}

TEST_F(FindNext, SeesTheTextInFrontOfTheSelection) {
    hold("abab", "(?<=a)b", Expression);
    control.setSelection(1, 1);
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Found);
    EXPECT_EQ(selected(), Selected(1, 2));
    look("\\bb", Expression);
    control.setSelection(1, 1);
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Failed);
}

TEST_F(FindNext, GoesOnFromTheNewestOfSeveralCaretsAndLeavesOneSelection) {
    hold("one two one two", "one");
    control.setSelection(14, 14);
    control.SendScintilla(QsciScintillaBase::SCI_ADDSELECTION, 1UL, 1L);
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Found);
    EXPECT_EQ(control.SelStart(), 8);
    EXPECT_EQ(control.SendScintilla(QsciScintillaBase::SCI_GETSELECTIONS), 1);
}

TEST_F(FindNext, WorksInALockedDocument) {
    hold("one", "one");
    control.setLocked(true);
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Found);
}

TEST_F(FindNext, FindsWhatWasTypedForALoneSurrogate) {
    hold("", "");
    control.typing().type(u"x"_qs + QChar(0xDC00));
    control.search().setSearchText(QString(QChar(0xD83D)));
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Wrapped);
    EXPECT_EQ(selected(), Selected(1, 2));
}

TEST_F(FindPrevious, SelectsOneMatchBeforeTheOther) {
    hold("one\none x", "one");
    control.setSelection(9, 9);
    EXPECT_EQ(control.search().findPrevious(), SearchOutcome::Found);
    EXPECT_EQ(selected(), Selected(4, 7));
    EXPECT_EQ(control.search().findPrevious(), SearchOutcome::Found);
    EXPECT_EQ(selected(), Selected(0, 3));
    EXPECT_EQ(control.search().findPrevious(), SearchOutcome::Wrapped);
    EXPECT_EQ(selected(), Selected(4, 7));
    EXPECT_EQ(wraps.count(), 1);
}

TEST_F(FindPrevious, TakesWholeMatchesOfAnExpression) {
    hold("x 12345 y", "\\d+", Expression);
    control.setSelection(9, 9);
    control.search().findPrevious();
    EXPECT_EQ(selected(), Selected(2, 7));
}

TEST_F(FindPrevious, TakesEachEmptyMatchOnce) {
    hold("a\nb\nc", "^", Expression);
    control.setSelection(5, 5);
    std::vector<qint64> places;
    for (int step = 0; step < 4; ++step) {
        control.search().findPrevious();
        places.push_back(control.SelStart());
    }
    EXPECT_EQ(places, (std::vector<qint64>{4, 2, 0, 4}));
    EXPECT_EQ(wraps.count(), 1);
}

TEST_F(FindPrevious, FindsAnEmptyMatchAtTheEnd) {
    hold("ab", "$", Expression);
    control.setSelection(2, 2);
    EXPECT_EQ(control.search().findPrevious(), SearchOutcome::Found);
    EXPECT_EQ(selected(), Selected(2, 2));
}

TEST_F(FindAll, ListsEachMatchOnceAndSelectsTheLast) {
    hold("one\nöne one\n", "one");
    EXPECT_EQ(allFound(), (Places{{0, 0, 3}, {1, 8, 3}}));
    EXPECT_EQ(selected(), Selected(8, 11));
    EXPECT_EQ(moves.count(), 1);
    EXPECT_EQ(wraps.count(), 1);
    EXPECT_EQ(failures.count(), 0);
}

TEST_F(FindAll, StandsAtTheStartWhenThereIsNothing) {
    hold("one two", "three");
    control.setSelection(3, 5);
    forgetSignals();
    EXPECT_EQ(allFound(), Places());
    EXPECT_EQ(selected(), Selected(0, 0));
    EXPECT_EQ(failures.count(), 1);
}

TEST_F(FindAll, StopsWhenTold) {
    hold("a a a a", "a");
    int seen = 0;
    EXPECT_EQ(control.search().findAll([&](const MatchPlace&) { return ++seen < 2; }), 2);
    EXPECT_EQ(selected(), Selected(2, 3));
}

TEST_F(FindAll, EndsWhenAnotherTextIsLoadedMeanwhile) {
    QTemporaryDir folder;
    QFile file(folder.filePath(u"other"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("x");
    file.close();
    hold("a a a a", "a");
    EXPECT_EQ(control.search().findAll([&](const MatchPlace&) { return !control.file().OpenFile(file.fileName()); }),
              1);
    EXPECT_EQ(control.Text(), u"x"_qs);
    EXPECT_FALSE(control.Locked());
    control.typing().type(u"y"_qs);
    EXPECT_EQ(control.Text(), u"yx"_qs);
}

TEST_F(FindAll, OutlivesTheControl) {
    auto mortal = std::unique_ptr<TextControl>(makeEditor());
    mortal->setText(u"a a a"_qs);
    mortal->search().setSearchText(u"a"_qs);
    EXPECT_EQ(mortal->search().findAll([&](const MatchPlace&) {
        mortal.reset();
        return true;
    }),
              1);
    mortal = std::unique_ptr<TextControl>(makeEditor());
    mortal->setText(u"a a a"_qs);
    mortal->search().setSearchText(u"a"_qs);
    ReplaceWatch watch;
    watch.goesOn = [&] {
        mortal.reset();
        return true;
    };
    EXPECT_EQ(mortal->replacing().replaceAll(watch), 0);
}

TEST_F(FindAll, KeepsTheTextFromBeingEditedMeanwhile) {
    hold("a a a", "a");
    EXPECT_EQ(control.search().findAll([&](const MatchPlace&) {
        control.typing().type(u"b"_qs);
        return true;
    }),
              3);
    EXPECT_EQ(control.Text(), u"a a a"_qs);
    control.typing().type(u"b"_qs);
    EXPECT_EQ(control.Text(), u"a a b"_qs);
}

TEST_F(FindAll, CountsWithoutMoving) {
    hold("a a a a", "a");
    control.setSelection(5, 1);
    forgetSignals();
    EXPECT_EQ(control.search().countMatches(), 4);
    EXPECT_EQ(control.search().countMatches(control.selected().selectedRanges()), 2);
    EXPECT_EQ(control.selected().AnchorPosition(), 5);
    EXPECT_EQ(moves.count(), 0);
}

TEST_F(ReplaceNext, PutsTheReplacementInPlaceOfTheNextMatch) {
    hold("one two one", "one");
    replaceBy("three");
    EXPECT_EQ(control.replacing().replaceNext(), SearchOutcome::Found);
    EXPECT_EQ(control.Text(), u"three two one"_qs);
    EXPECT_EQ(control.SelText(), u"three"_qs);
    EXPECT_EQ(control.replacing().replaceNext(), SearchOutcome::Found);
    EXPECT_EQ(control.Text(), u"three two three"_qs);
    EXPECT_EQ(control.replacing().replaceNext(), SearchOutcome::Failed);
    EXPECT_EQ(changes.count(), 2);
    control.Undo();
    EXPECT_EQ(control.Text(), u"three two one"_qs);
}

TEST_F(ReplaceNext, GoesOnFromTheStart) {
    hold("one two", "one");
    replaceBy("1");
    control.setSelection(5, 5);
    EXPECT_EQ(control.replacing().replaceNext(), SearchOutcome::Wrapped);
    EXPECT_EQ(control.Text(), u"1 two"_qs);
    EXPECT_EQ(wraps.count(), 1);
}

TEST_F(ReplaceNext, OfTheSelectionFindsFirstAndReplacesThen) {
    hold("one two one", "(o)ne", Expression);
    replaceBy("$1");
    EXPECT_EQ(control.replacing().replaceSelectedMatch(), SearchOutcome::Found);
    EXPECT_EQ(control.Text(), u"one two one"_qs);
    EXPECT_EQ(selected(), Selected(0, 3));
    EXPECT_EQ(control.replacing().replaceSelectedMatch(), SearchOutcome::Found);
    EXPECT_EQ(control.Text(), u"o two one"_qs);
    EXPECT_EQ(selected(), Selected(6, 9));
    EXPECT_EQ(control.replacing().replaceSelectedMatch(), SearchOutcome::Failed);
    EXPECT_EQ(control.Text(), u"o two o"_qs);
}

TEST_F(ReplaceNext, OfTheSelectionTakesEachEmptyMatchOnce) {
    hold("a\nb", "^", Expression);
    replaceBy("> ");
    control.replacing().replaceSelectedMatch();
    EXPECT_EQ(control.Text(), u"a\nb"_qs);
    control.replacing().replaceSelectedMatch();
    EXPECT_EQ(control.Text(), u"> a\nb"_qs);
    EXPECT_EQ(selected(), Selected(4, 4));
    control.replacing().replaceSelectedMatch();
    EXPECT_EQ(control.Text(), u"> a\n> b"_qs);
}

TEST_F(ReplaceNext, LeavesALockedDocumentAsItIs) {
    hold("one one", "one");
    replaceBy("1");
    control.setSelection(0, 3);
    control.setLocked(true);
    EXPECT_EQ(control.replacing().replaceNext(), SearchOutcome::Failed);
    EXPECT_EQ(control.replacing().replaceSelectedMatch(), SearchOutcome::Failed);
    EXPECT_EQ(control.replacing().replaceAll(), 0);
    EXPECT_EQ(control.replacing().replaceAllIn(control.selected().selectedRanges()), 0);
    EXPECT_EQ(failures.count(), 4);
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(control.Text(), u"one one"_qs);
    EXPECT_TRUE(control.Locked());
    EXPECT_TRUE(control.search().searchError());
}

TEST_F(ReplaceAll, IsOneChangeAndOneUndoStep) {
    hold("one\nöne one", "one");
    replaceBy("größer");
    EXPECT_EQ(allReplaced(), (Places{{0, 0, 6}, {1, 11, 6}}));
    EXPECT_EQ(control.Text(), QString::fromUtf8("größer\nöne größer"));
    EXPECT_EQ(selected(), Selected(11, 17));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(wraps.count(), 1);
    control.Undo();
    EXPECT_EQ(control.Text(), QString::fromUtf8("one\nöne one"));
    control.Redo();
    EXPECT_EQ(control.Text(), QString::fromUtf8("größer\nöne größer"));
}

TEST_F(ReplaceAll, EndsWhenTheReplacementHoldsTheText) {
    hold("a a", "a");
    replaceBy("aa");
    EXPECT_EQ(control.replacing().replaceAll(), 2);
    EXPECT_EQ(control.Text(), u"aa aa"_qs);
}

TEST_F(ReplaceAll, PutsLinesInAndTakesThemAway) {
    hold("a;b;c\nd", "[;\\n]", Expression);
    replaceBy("\\n\\n");
    EXPECT_EQ(allReplaced(), (Places{{0, 1, 2}, {2, 4, 2}, {4, 7, 2}}));
    EXPECT_EQ(control.Text(), u"a\n\nb\n\nc\n\nd"_qs);
    look("\\n+", Expression);
    replaceBy("");
    EXPECT_EQ(allReplaced(), (Places{{0, 1, 0}, {0, 2, 0}, {0, 3, 0}}));
    EXPECT_EQ(control.Text(), u"abcd"_qs);
}

TEST_F(ReplaceAll, TakesEmptyMatches) {
    hold("a\nb\n", "^", Expression);
    replaceBy("> ");
    EXPECT_EQ(control.replacing().replaceAll(), 2);
    EXPECT_EQ(control.Text(), u"> a\n> b\n"_qs);
}

TEST_F(ReplaceAll, FollowsTheCaseOfEachMatchWhenTold) {
    hold("red RED Red rEd", "red");
    replaceBy("blue");
    control.search().setPreserveCase(true);
    control.replacing().replaceAll();
    EXPECT_EQ(control.Text(), u"blue BLUE Blue blue"_qs);
}

TEST_F(ReplaceAll, KeepsToTheSelection) {
    hold("aa aa aa aa", "aa");
    replaceBy("bcd");
    control.setSelection(1, 10);
    EXPECT_EQ(control.replacing().replaceAllIn(control.selected().selectedRanges()), 2);
    EXPECT_EQ(control.Text(), u"aa bcd bcd aa"_qs);
    EXPECT_EQ(selected(), Selected(1, 12));
    EXPECT_EQ(changes.count(), 1);
    control.Undo();
    EXPECT_EQ(control.Text(), u"aa aa aa aa"_qs);
}

TEST_F(ReplaceAll, KeepsToEachOfSeveralSelectedRanges) {
    hold("aa aa aa aa", "aa");
    replaceBy("bcd");
    control.SendScintilla(TextControl::SCI_SETSELECTION, 11UL, 9L);
    control.SendScintilla(TextControl::SCI_ADDSELECTION, 0UL, 4L);
    forgetSignals();
    EXPECT_EQ(control.search().countMatches(control.selected().selectedRanges()), 2);
    EXPECT_EQ(control.replacing().replaceAllIn(control.selected().selectedRanges()), 2);
    EXPECT_EQ(control.Text(), u"bcd aa aa bcd"_qs);
    EXPECT_EQ(control.selected().selectedRanges(), (std::vector<TextMatch>{{0, 5}, {10, 13}}));
    EXPECT_EQ(changes.count(), 1);
    control.Undo();
    EXPECT_EQ(control.Text(), u"aa aa aa aa"_qs);
}

TEST_F(ReplaceAll, KeepsToTheLinesPartsOfARectangle) {
    const auto selectRectangle = [this](long anchor, unsigned long caret) {
        control.SendScintilla(TextControl::SCI_SETRECTANGULARSELECTIONANCHOR, static_cast<unsigned long>(anchor));
        control.SendScintilla(TextControl::SCI_SETRECTANGULARSELECTIONCARET, caret);
    };
    hold("a a a\na a a\n\na a a", "a");
    replaceBy("");
    selectRectangle(2, 16);
    EXPECT_EQ(control.search().countMatches(control.selected().selectedRanges()), 3);
    control.ExecuteCmd(Command::ReplaceAllInSelection);
    EXPECT_EQ(control.Text(), u"a  a\na  a\n\na  a"_qs);
    control.Undo();
    selectRectangle(3, 15);
    EXPECT_EQ(control.search().countMatches(control.selected().selectedRanges()), 3) << "from right to left";
    selectRectangle(0, 13);
    EXPECT_EQ(control.search().countMatches(control.selected().selectedRanges()), 0) << "without a width";
}

TEST_F(ReplaceAll, ReplacesWhatWasFoundUntilItIsStopped) {
    hold("a a a a", "a");
    replaceBy("b");
    int asked = 0;
    ReplaceWatch watch;
    watch.goesOn = [&] { return ++asked < 2; };
    EXPECT_EQ(control.replacing().replaceAll(watch), 2);
    EXPECT_EQ(control.Text(), u"b b a a"_qs);
}

TEST_F(ReplaceAll, KeepsBookmarksOnTheirLines) {
    hold("one\ntwo one\nthree", "one");
    replaceBy("1");
    for (const qint64 line : {0, 1, 2})
        control.bookmarks().setBookmarkAt(line, true);
    control.replacing().replaceAll();
    control.Undo();
    for (const qint64 line : {0, 1, 2}) {
        EXPECT_TRUE(control.bookmarks().BookmarkAt(line)) << line;
    }
}

TEST_F(ReplaceAll, MakesLineEndsOfTheReplacementThoseOfTheText) {
    struct Row {
        long lineEnds;
        const char* text;
        const char* find;
        const char* by;
        const char* expected;
    };
    const Row rows[] = {
        {TextControl::SC_EOL_CRLF, "a;b\r\nc;d", ";", "\\n", "a\r\nb\r\nc\r\nd"},
        {TextControl::SC_EOL_CRLF, "a;b\r\nc;d", ";", "\\r\\n\\n", "a\r\n\r\nb\r\nc\r\n\r\nd"},
        {TextControl::SC_EOL_CRLF, "a;b\r\n", "(;)", "$1\\n\\t$1", "a;\r\n\t;b\r\n"},
        {TextControl::SC_EOL_LF, "a;b\n", ";", "\\r\\n", "a\nb\n"},
        {TextControl::SC_EOL_CR, "a;b\r", ";", "\\n", "a\rb\r"},
        // What is taken over from the text stays as it is.
        {TextControl::SC_EOL_CRLF, "a\nb\r\n", "(a\\n)b", "$1c\\n", "a\nc\r\n\r\n"},
        // A match that has half of a line end does not make a lone half of the other one.
        {TextControl::SC_EOL_CRLF, "a\r\nb", "\\n", "\\n", "a\r\nb"},
        {TextControl::SC_EOL_CRLF, "a\r\nb\r\n", "\\n", "\\n\\n", "a\r\n\r\nb\r\n\r\n"},
        {TextControl::SC_EOL_CRLF, "a\r\nb\r\n", "\\r", ",\\n", "a,\r\nb,\r\n"},
        {TextControl::SC_EOL_CRLF, "a\r\nb", "a\\r", "\\n", "\r\nb"},
        {TextControl::SC_EOL_CRLF, "a\r\nb\r\n", "\\n", "-\\n", "a-\r\nb-\r\n"},
        {TextControl::SC_EOL_CRLF, "a\r\nb", "\\n", "-\\n", "a-\r\nb"},
        {TextControl::SC_EOL_CRLF, "a\r\nb", "\\n", "", "ab"},
        {TextControl::SC_EOL_CRLF, "a\r\nb", "\\r", "", "ab"},
        {TextControl::SC_EOL_CRLF, "a\r\n\r\nb", "\\n", "", "ab"},
        {TextControl::SC_EOL_CRLF, "\r\n", "\\n", "x", "x"},
        {TextControl::SC_EOL_CRLF, "a\r\nb\r\nc", "\\nb\\r", ";", "a;c"},
        {TextControl::SC_EOL_CRLF, "a\r\nb", "(\\n)", "$1x", "a\r\nxb"},
        {TextControl::SC_EOL_CRLF, "a\r\nb", "(\\n)", "x$1", "ax\r\nb"},
        {TextControl::SC_EOL_CRLF, "a\r\nb", "(\\r)", "x$1", "ax\r\nb"},
        {TextControl::SC_EOL_CRLF, "a\r\nb", "(a)(\\r)", "$2$1", "\r\nab"},
        {TextControl::SC_EOL_CRLF, "a\r\nb\r\nc", "\\nb\\r", "\\n", "a\r\nc"},
        // Each half is a match of its own.
        {TextControl::SC_EOL_CRLF, "a\r\nb", "\\r|\\n", "\\n", "a\r\n\r\nb"},
        {TextControl::SC_EOL_CRLF, "a\r\nb", "\\r|\\n", "", "ab"},
        {TextControl::SC_EOL_CRLF, "a\r\nb", "\\r|\\n", "x", "axxb"},
        {TextControl::SC_EOL_CRLF, "a\r\nb\r\n", "([\\r\\n])", "$1", "a\r\nb\r\n"},
        {TextControl::SC_EOL_CRLF, "a\r\nb", "(\\r)|\\n", "$1x", "a\rxxb"},
    };
    for (const Row& row : rows) {
        for (const bool all : {true, false}) {
            control.SendScintilla(TextControl::SCI_SETEOLMODE, row.lineEnds);
            hold(row.text, row.find, {.regExp = true});
            replaceBy(row.by);
            if (all) {
                control.replacing().replaceAll();
                EXPECT_EQ(control.Text(), QString::fromLatin1(row.expected)) << row.find << " by " << row.by;
            } else if (control.Text().count(QRegularExpression(QString::fromLatin1(row.find))) == 1) {
                control.setSelection(0, 0);
                control.replacing().replaceNext();
                EXPECT_EQ(control.Text(), QString::fromLatin1(row.expected)) << row.find << " by " << row.by;
            }
        }
    }
}

TEST_F(ReplaceAll, LeavesBookmarksOnTheLinesBehindALineEndOfWhichTheMatchHasHalf) {
    control.SendScintilla(TextControl::SCI_SETEOLMODE, TextControl::SC_EOL_CRLF);
    hold("a\r\nb\r\nc", "\\n", Expression);
    control.bookmarks().setBookmarkAt(2, true);
    replaceBy("\\n\\t");
    EXPECT_EQ(control.replacing().replaceAll(), 2);
    EXPECT_EQ(control.Text(), u"a\r\n\tb\r\n\tc"_qs);
    EXPECT_TRUE(control.bookmarks().BookmarkAt(2));
    EXPECT_FALSE(control.bookmarks().BookmarkAt(1));
}

TEST_F(ReplaceAll, CountsALineEndOfWhichTheMatchHasHalfOnce) {
    control.SendScintilla(TextControl::SCI_SETEOLMODE, TextControl::SC_EOL_CRLF);
    hold("a\r\nb\r\nc", "\\n", Expression);
    replaceBy("-\\n");
    EXPECT_EQ(control.search().countMatches(), 2);
    EXPECT_EQ(control.replacing().replaceAll(), 2);
    EXPECT_EQ(control.Text(), u"a-\r\nb-\r\nc"_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"a\r\nb\r\nc"_qs);
    EXPECT_EQ(control.replacing().replaceAllIn({{0, 4}}), 1);
    EXPECT_EQ(control.Text(), u"a-\r\nb\r\nc"_qs);
}

TEST_F(ReplaceNext, ReplacesTheWholeLineEndOfWhichTheMatchHasHalf) {
    control.SendScintilla(TextControl::SCI_SETEOLMODE, TextControl::SC_EOL_CRLF);
    hold("a\r\nb\r\nc", "\\n", Expression);
    replaceBy("-\\n");
    control.setSelection(0, 0);
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Found);
    EXPECT_EQ(control.replacing().replaceSelectedMatch(), SearchOutcome::Found);
    EXPECT_EQ(control.Text(), u"a-\r\nb\r\nc"_qs);
    control.replacing().replaceSelectedMatch();
    EXPECT_EQ(control.Text(), u"a-\r\nb-\r\nc"_qs);
}

TEST_F(FindHistoryOfControls, HasTheNewestInFront) {
    hold("text", "first");
    control.search().findNext();
    control.search().setSearchText(u"second"_qs);
    control.search().findPrevious();
    control.search().setSearchText(u"first"_qs);
    control.search().findNext();
    const QStringList entries = SearchHistory::ofFinds().text().split(u'\n');
    ASSERT_GE(entries.size(), 2);
    EXPECT_EQ(entries[0], u"first"_qs);
    EXPECT_EQ(entries[1], u"second"_qs);
    EXPECT_EQ(entries.count(u"first"_qs), 1);
}

TEST(SearchHistory, KeepsNeitherEmptyTextsNorLinesNorTooMany) {
    SearchHistory history;
    history.add(QString());
    history.add(u"a\nb"_qs);
    EXPECT_TRUE(history.entries().isEmpty());
    for (int number = 0; number < 40; ++number)
        history.add(QString::number(number));
    EXPECT_EQ(history.entries().size(), SearchHistory::Most);
    EXPECT_EQ(history.entries().first(), u"39"_qs);
}

namespace {

/// A control with one line far too long, cut into pieces.
struct SearchedLongLine : Searched {
    QTemporaryDir folder;

    void load(const QByteArray& bytes) {
        QFile file(folder.filePath(u"text"_qs));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        ASSERT_FALSE(control.file().OpenFile(file.fileName()));
        ASSERT_FALSE(control.map().joints().empty());
        forgetSignals();
    }
};

QByteArray words(qsizetype size, std::mt19937& random) {
    static const char* const some[] = {"one", "two ", "größe", "漢字 ", "1", "\U0001F600"};
    QByteArray line;
    while (line.size() < size)
        line += some[random() % 6];
    return line;
}

}  // namespace

TEST_F(SearchedLongLine, GivesThePlacesOfTheTextWithoutJoints) {
    std::mt19937 random(3);
    const QByteArray bytes = words(200'000, random) + "\r\n" + words(100'000, random) + "\r\none";
    load(bytes);
    const QString text = QString::fromUtf8(bytes);
    look("one");
    Places expected;
    for (qsizetype at = text.indexOf(u"one"_qs); at >= 0; at = text.indexOf(u"one"_qs, at + 3))
        expected.emplace_back(text.left(at).count(u'\n'), at, 3);
    EXPECT_EQ(allFound(), expected);
    EXPECT_EQ(selected(), Selected(text.size() - 3, text.size()));
    control.search().findPrevious();
    EXPECT_EQ(control.SelStart(), std::get<1>(expected[expected.size() - 2]));
}

TEST_F(SearchedLongLine, IsReplacedAsIfThereWereNoJoints) {
    for (const char* replacement : {"", "x", "a much longer one than before", "\r\n", "1\n2"}) {
        std::mt19937 random(4);
        const QByteArray bytes = words(150'000, random) + "\r\n" + words(80'000, random);
        load(bytes);
        look("e1|one");
        control.setSearchRegExp(true);
        replaceBy(replacement);
        QString expected = QString::fromUtf8(bytes);
        const QString lines = QString::fromUtf8(replacement).replace(u"\r\n"_qs, u"\n"_qs);
        const QString held = QString(lines).replace(u'\n', u"\r\n"_qs);
        expected.replace(QRegularExpression(u"e1|one"_qs), held);
        EXPECT_GT(control.replacing().replaceAll(), 1000);
        EXPECT_EQ(control.Text(), expected) << replacement;
        EXPECT_EQ(control.TotalLines(), expected.count(u'\n') + 1);
        control.Undo();
        EXPECT_EQ(control.Text(), QString::fromUtf8(bytes));
        EXPECT_EQ(control.TotalLines(), 2);
    }
}

TEST_F(SearchedLongLine, FindsAMatchThatIsLongerThanManyPieces) {
    load("start" + QByteArray(300'000, 'x') + "end\nsecond");
    look("start.*end", Expression);
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Found);
    EXPECT_EQ(selected(), Selected(0, 300'008));
    replaceBy("$0$0");
    EXPECT_EQ(control.replacing().replaceAll(), 1);
    EXPECT_EQ(control.Text().size(), 2 * 300'008 + 7);
    EXPECT_EQ(control.TotalLines(), 2);
}

TEST_F(SearchedLongLine, IsSearchedWhereItsLineEndsAreMixed) {
    load("one\r\ntwo\n" + QByteArray(TextLoader::UncutLine, 'x') + "one\rthree");
    ASSERT_TRUE(control.Locked());
    look("one$", Expression);
    EXPECT_EQ(allFound(), (Places{{0, 0, 3}, {2, TextLoader::UncutLine + 9, 3}}));
}

TEST_F(FindNext, IsReachedByTheNumbersOfItsCommands) {
    hold("one One two", "");
    control.ExecuteCmd(179, u"o.E"_qs);
    control.ExecuteCmd(180, u"tHree"_qs);
    control.ExecuteCmd(230);
    control.ExecuteCmd(232);
    control.ExecuteCmd(234);
    control.ExecuteCmd(236);
    EXPECT_TRUE(control.SearchRegExp() && control.SearchWholeWord() && control.search().PreserveCase());
    control.ExecuteCmd(176);
    EXPECT_EQ(failures.count(), 1);
    control.ExecuteCmd(237);
    control.ExecuteCmd(191);
    EXPECT_EQ(selected(), Selected(11, 11));
    control.ExecuteCmd(174);
    EXPECT_EQ(selected(), Selected(4, 7));
    control.ExecuteCmd(189);
    EXPECT_EQ(selected(), Selected(0, 0));
    control.setRepeatCount(2);
    control.ExecuteCmd(170);
    EXPECT_EQ(control.Text(), u"three Three two"_qs);
    for (const int off : {231, 233, 235})
        control.ExecuteCmd(off);
    EXPECT_FALSE(control.SearchRegExp() || control.SearchWholeWord() || control.search().PreserveCase());
}
