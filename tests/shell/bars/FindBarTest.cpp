#include "editor/control/SearchHistory.h"
#include "settings/Options.h"
#include "settings/files/OwnTextFile.h"
#include "shell/FrameFixture.h"
#include "shell/bars/FindBar.h"
#include "shell/commands/SearchToggles.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QWheelEvent>

class FindBarOfTheFrame : public FrameFixture {
 protected:
    void TearDown() override { QFile::remove(listFile()); }
    static QString listFile() { return OwnTextFile::path(u"lastsearchkeys.idx"_qs); }
    QComboBox& box() { return *m_frame->findChild<QComboBox*>(u"cmbSearch"_qs); }
    QStringList keys() {
        QStringList texts;
        for (int i = 0; i < box().count(); ++i)
            texts << box().itemText(i);
        return texts;
    }
    void enter(const QString& text) {
        box().setEditText(text);
        QTest::keyClick(&box(), Qt::Key_Return);
    }
    QDialog& dialog(const char* entry) {
        const bool find = QLatin1String(entry) == QLatin1String("mnuFind");
        return *active()->findChild<QDialog*>(find ? u"FindDialog"_qs : u"ReplaceDialog"_qs);
    }
    using Selected = std::pair<qint64, qint64>;
    Selected selection() { return std::minmax(active()->GetEditor()->SelStart(), active()->GetEditor()->SelEnd()); }
    bool option(bool Options::*field) { return house().options.*field; }
};

TEST_F(FindBarOfTheFrame, StandsInTheToolBarInThePlaceKeptForIt) {
    start();
    auto* place = m_frame->findChild<QWidget*>(u"tbToolBar.SearchHistory"_qs);
    ASSERT_NE(place, nullptr);
    EXPECT_TRUE(box().isVisible());
    EXPECT_EQ(box().parentWidget(), place);
    EXPECT_EQ(box().x(), 40 / 15);
    EXPECT_TRUE(place->rect().contains(box().geometry()));
}

TEST_F(FindBarOfTheFrame, EnterSearchesAndKeepsTheText) {
    start();
    type(u"abc x abc"_qs);
    select(0, 0);
    enter(u"abc"_qs);
    EXPECT_EQ(selection(), (Selected{0, 3}));
    EXPECT_EQ(keys(), QStringList(u"abc"_qs));
    EXPECT_EQ(box().currentText(), u"abc"_qs);
    enter(u"abc"_qs);
    EXPECT_EQ(selection(), (Selected{6, 9}));
}

TEST_F(FindBarOfTheFrame, EnterSearchesByTheToggles) {
    start();
    type(u"Xa xaa xa x."_qs);
    const struct {
        const char* toggle;
        const char* text;
        Selected found;
    } cases[] = {{"mnuCaseSensitive", "xa", {3, 5}}, {"mnuWholeWord", "xa", {0, 2}}, {"mnuRegExp", "x.a", {3, 6}}};
    for (const auto& each : cases) {
        run(each.toggle);
        select(0, 0);
        enter(QString::fromLatin1(each.text));
        EXPECT_EQ(selection(), each.found) << each.toggle;
        run(each.toggle);
    }
    run("mnuCaseSensitive");
    run("mnuWholeWord");
    select(0, 0);
    enter(u"xa"_qs);
    EXPECT_EQ(selection(), (Selected{7, 9}));
}

TEST_F(FindBarOfTheFrame, ATextThatIsNotThereIsToldAndKeptAllTheSame) {
    start();
    enter(u"abc"_qs);
    EXPECT_EQ(m_prompts.messages, QStringList(u"The search string not found."_qs));
    EXPECT_EQ(keys(), QStringList(u"abc"_qs));
}

TEST_F(FindBarOfTheFrame, WhatIsNotFoundIsNoStepOfARecording) {
    start();
    type(u"one two one"_qs);
    run("mnuRecordMarco");
    for (const bool continues : {false, true}) {
        if (entry("mnuSearchContinue")->isChecked() != continues)
            run("mnuSearchContinue");
        for (const qint64 anchor : {0, 4}) {
            select(anchor, 7);
            enter(u"nowhere"_qs);
            run("mnuFindNext");
            run("mnuFindPrevious");
        }
    }
    EXPECT_EQ(m_prompts.messages, QStringList(12, u"The search string not found."_qs));
    EXPECT_TRUE(globals().control.recorder().steps().isEmpty());
    enter(u"one"_qs);
    EXPECT_EQ(globals().control.recorder().steps().last().command, Command::FindNext);
}

TEST_F(FindBarOfTheFrame, EnterMovesAKnownTextToTheTop) {
    start();
    type(u"a b"_qs);
    for (const char* text : {"a", "b", "a"})
        enter(QString::fromLatin1(text));
    EXPECT_EQ(keys(), QStringList({u"a"_qs, u"b"_qs}));
    EXPECT_EQ(box().currentText(), u"a"_qs);
}

TEST_F(FindBarOfTheFrame, WithoutADocumentTheTextStillJoinsTheList) {
    start();
    run("mnuFileClose");
    enter(u"abc"_qs);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_EQ(keys(), QStringList(u"abc"_qs));
}

TEST_F(FindBarOfTheFrame, FindNextAndPreviousTakeTheText) {
    start();
    type(u"x y, x y, x y"_qs);
    select(0, 0);
    box().setEditText(u"x y"_qs);
    run("mnuFindNext");
    run("mnuFindNext");
    EXPECT_EQ(selection(), (Selected{5, 8}));
    button("FindNext")->trigger();
    EXPECT_EQ(selection(), (Selected{10, 13}));
    run("mnuFindPrevious");
    button("FindPrev")->trigger();
    EXPECT_EQ(selection(), (Selected{0, 3}));
    EXPECT_TRUE(keys().isEmpty());
}

TEST_F(FindBarOfTheFrame, TheFocusBringsWhatTheDialogsHaveSearched) {
    start();
    enter(u"own"_qs);
    box().setEditText(u"half typed"_qs);
    active()->setFocus();
    for (const char* text : {"two", "own", "one"})
        SearchHistory::ofFinds().add(QString::fromLatin1(text));
    box().setFocus();
    QStringList joined;  // the history is the whole program's: it may contain other texts
    for (const QString& key : keys()) {
        if (key == QLatin1String("one") || key == QLatin1String("two") || key == QLatin1String("own"))
            joined << key;
    }
    EXPECT_EQ(joined, QStringList({u"two"_qs, u"one"_qs, u"own"_qs}));
    EXPECT_EQ(box().currentText(), u"half typed"_qs);
}

TEST_F(FindBarOfTheFrame, ADialogsSearchShowsInTogglesAndBarAtOnce) {
    start();
    for (const char* text : {"old", "new"})
        enter(QString::fromLatin1(text));
    m_frame->AfterFind(u"old"_qs, true, false, true);
    EXPECT_TRUE(entry("mnuCaseSensitive")->isChecked());
    EXPECT_FALSE(entry("mnuRegExp")->isChecked());
    EXPECT_TRUE(entry("mnuWholeWord")->isChecked());
    EXPECT_TRUE(option(&Options::CaseSensitiveOn));
    EXPECT_FALSE(option(&Options::RegExpOn));
    EXPECT_TRUE(option(&Options::WholeWord));
    EXPECT_EQ(keys(), QStringList({u"old"_qs, u"new"_qs}));
    EXPECT_EQ(box().currentText(), u"old"_qs);
    m_frame->AfterFind(u"fresh"_qs, false, true, false);
    EXPECT_TRUE(entry("mnuRegExp")->isChecked());
    EXPECT_FALSE(entry("mnuWholeWord")->isChecked());
    EXPECT_EQ(box().currentText(), u"fresh"_qs);
}

TEST_F(FindBarOfTheFrame, ADocumentsDialogIsHeardByTheFrame) {
    start();
    Q_EMIT active()->AfterFind(u"sought"_qs, true, false, true);
    EXPECT_TRUE(entry("mnuCaseSensitive")->isChecked());
    EXPECT_FALSE(entry("mnuRegExp")->isChecked());
    EXPECT_TRUE(entry("mnuWholeWord")->isChecked());
    EXPECT_EQ(box().currentText(), u"sought"_qs);
}

TEST_F(FindBarOfTheFrame, ADialogThatIsClosedWithoutASearchLeavesTheBarAndTheToggles) {
    start();
    enter(u"searched"_qs);
    for (const char* name : {"mnuFind", "mnuReplace"}) {
        box().setEditText(u"half typed"_qs);
        run(name);
        dialog(name).findChild<QAbstractButton*>(u"chkMatchCase"_qs)->click();
        dialog(name).close();
        EXPECT_EQ(box().currentText(), u"half typed"_qs) << name;
        EXPECT_FALSE(entry("mnuCaseSensitive")->isChecked()) << name;
    }
}

TEST_F(FindBarOfTheFrame, ADialogThatHasSearchedBringsItsTextWhenItIsClosed) {
    start();
    type(u"one two"_qs);
    run("mnuFind");
    QDialog& find = dialog("mnuFind");
    find.findChild<QComboBox*>(u"cboFind"_qs)->setEditText(u"one"_qs);
    find.findChild<QAbstractButton*>(u"cmdFindNext"_qs)->click();
    box().setEditText(u"half typed"_qs);
    find.close();
    EXPECT_EQ(box().currentText(), u"one"_qs);
}

TEST_F(FindBarOfTheFrame, ADialogsSearchLeavesItsTextInTheBar) {
    start();
    type(u"one two"_qs);
    run("mnuFind");
    QDialog& find = dialog("mnuFind");
    find.findChild<QComboBox*>(u"cboFind"_qs)->setEditText(u"one"_qs);
    find.findChild<QAbstractButton*>(u"cmdFindNext"_qs)->click();
    EXPECT_EQ(box().currentText(), u"one"_qs);
    EXPECT_EQ(keys(), QStringList(u"one"_qs));
}

TEST_F(FindBarOfTheFrame, AnEmptyTextOfADialogChangesNothing) {
    start();
    enter(u"a"_qs);
    m_frame->AfterFind(QString(), true, true, true);
    EXPECT_FALSE(entry("mnuRegExp")->isChecked());
    EXPECT_EQ(keys(), QStringList(u"a"_qs));
    EXPECT_EQ(box().currentText(), u"a"_qs);
}

TEST_F(FindBarOfTheFrame, TogglesComeFromTheSettings) {
    start();
    for (const char* name : {"mnuWholeWord", "mnuRegExp", "mnuCaseSensitive"}) {
        EXPECT_FALSE(entry(name)->isChecked()) << name;
    }
    EXPECT_TRUE(entry("mnuSearchContinue")->isChecked());
    set("ToolbarWholeWord", "1");
    set("ToolbarRegExp", "1");
    set("ToolbarCase", "1");
    set("ContinueSearch", "0");
    start();
    for (const char* name : {"mnuWholeWord", "mnuRegExp", "mnuCaseSensitive"}) {
        EXPECT_TRUE(entry(name)->isChecked()) << name;
    }
    EXPECT_FALSE(entry("mnuSearchContinue")->isChecked());
}

TEST_F(FindBarOfTheFrame, AToggleSetsVariableAndMarkAndNothingInTheStore) {
    start();
    const std::pair<const char*, bool Options::*> toggles[] = {{"mnuWholeWord", &Options::WholeWord},
                                                               {"mnuRegExp", &Options::RegExpOn},
                                                               {"mnuCaseSensitive", &Options::CaseSensitiveOn},
                                                               {"mnuSearchContinue", &Options::ContinueSearch}};
    for (const auto& [name, field] : toggles) {
        const bool before = option(field);
        run(name);
        EXPECT_EQ(option(field), !before) << name;
        EXPECT_EQ(entry(name)->isChecked(), !before) << name;
        run(name);
        EXPECT_EQ(option(field), before) << name;
        EXPECT_EQ(entry(name)->isChecked(), before) << name;
    }
    EXPECT_EQ(Settings(m_registry).forFrame(u"ToolbarCase"_qs), u"0"_qs);
}

TEST_F(FindBarOfTheFrame, TheListComesBackInTheNextRun) {
    start();
    for (const char* text : {"a", "b", "c"})
        enter(QString::fromLatin1(text));
    m_frame->close();
    EXPECT_EQ(bytesOf(listFile()), QByteArray("a\r\nb\r\nc\r\n"));
    start();
    EXPECT_EQ(keys(), QStringList({u"c"_qs, u"b"_qs, u"a"_qs}));
    EXPECT_EQ(box().currentText(), QString());
}

TEST_F(FindBarOfTheFrame, TheWheelLeavesWhatIsTyped) {
    start();
    for (const char* text : {"a", "b"})
        enter(QString::fromLatin1(text));
    box().setEditText(u"typed"_qs);
    for (QWidget* target : {static_cast<QWidget*>(&box()), static_cast<QWidget*>(box().lineEdit())}) {
        const QPointF place = target->rect().center();
        QWheelEvent wheel(place, target->mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(target, &wheel);
        EXPECT_EQ(box().currentText(), u"typed"_qs);
    }
}

TEST_F(FindBarOfTheFrame, KeysOfTheBarAreNotTakenByTheMenus) {
    start();
    type(u"text"_qs);
    box().setFocus();
    box().setEditText(u"abc"_qs);
    QTest::keyClick(&box(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(box().lineEdit()->selectedText(), u"abc"_qs);
    EXPECT_EQ(active()->GetEditor()->SelText(), QString());
}

TEST_F(FindBarOfTheFrame, EscapeGoesBackToTheDocument) {
    start();
    box().setFocus();
    QTest::keyClick(&box(), Qt::Key_Escape);
    EXPECT_TRUE(textWidget().hasFocus());
    EXPECT_EQ(documents().size(), 1);
}

TEST_F(FindBarOfTheFrame, OneKeyWalksFromTheDocumentToTheBarToTheTabs) {
    start();
    active()->setFocus();
    QTest::keyClick(&textWidget(), Qt::Key_F6);
    EXPECT_TRUE(box().hasFocus());
    QTest::keyClick(&box(), Qt::Key_F6);
    EXPECT_TRUE(strip().hasFocus());
    QTest::keyClick(&strip(), Qt::Key_F6);
    EXPECT_TRUE(textWidget().hasFocus());
    QTest::keyClick(&textWidget(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_TRUE(strip().hasFocus());
    run("mnuShowFilesTab");
    active()->setFocus();
    QTest::keyClick(&textWidget(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_TRUE(box().hasFocus());
}

TEST_F(FindBarOfTheFrame, WhatWasSearchedForInAnEarlierRunIsOfferedByTheFindDialogToo) {
    OwnTextFile::writeLines(listFile(), {u"older"_qs, u"of the last run"_qs});
    start();
    type(u"text"_qs);
    run("mnuFind");
    const auto* offered = dialog("mnuFind").findChild<QComboBox*>();
    EXPECT_EQ(offered->itemText(0), u"of the last run"_qs);
    EXPECT_EQ(offered->itemText(1), u"older"_qs);
    EXPECT_EQ(offered->currentText(), u"of the last run"_qs);
}
