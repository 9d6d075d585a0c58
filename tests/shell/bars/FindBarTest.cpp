#include "editor/control/SearchHistory.h"
#include "settings/Options.h"
#include "settings/files/ListFile.h"
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
    static QString listFile() { return ListFile::path(QStringLiteral("lastsearchkeys.idx")); }
    QComboBox& box() { return *m_frame->findChild<QComboBox*>(QStringLiteral("cmbSearch")); }
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
        return *active()->findChild<QDialog*>(find ? QStringLiteral("FindDialog") : QStringLiteral("ReplaceDialog"));
    }
    using Selected = std::pair<qint64, qint64>;
    Selected selection() { return std::minmax(control().SelStart(), control().SelEnd()); }
    bool option(bool Options::*field) { return parts().options->*field; }
};

TEST_F(FindBarOfTheFrame, StandsInTheToolBarInThePlaceKeptForIt) {
    start();
    auto* place = m_frame->findChild<QWidget*>(QStringLiteral("tbToolBar.SearchHistory"));
    ASSERT_NE(place, nullptr);
    EXPECT_TRUE(box().isVisible());
    EXPECT_EQ(box().parentWidget(), place);
    EXPECT_EQ(box().x(), 40 / 15);
    EXPECT_TRUE(place->rect().contains(box().geometry()));
}

TEST_F(FindBarOfTheFrame, EnterSearchesAndKeepsTheText) {
    start();
    type(QStringLiteral("abc x abc"));
    control().setSelection(0, 0);
    enter(QStringLiteral("abc"));
    EXPECT_EQ(selection(), (Selected{0, 3}));
    EXPECT_EQ(keys(), QStringList(QStringLiteral("abc")));
    EXPECT_EQ(box().currentText(), QStringLiteral("abc"));
    enter(QStringLiteral("abc"));
    EXPECT_EQ(selection(), (Selected{6, 9}));
}

TEST_F(FindBarOfTheFrame, EnterSearchesByTheToggles) {
    start();
    type(QStringLiteral("Xa xaa xa x."));
    const struct {
        const char* toggle;
        const char* text;
        Selected found;
    } cases[] = {{"mnuCaseSensitive", "xa", {3, 5}}, {"mnuWholeWord", "xa", {0, 2}}, {"mnuRegExp", "x.a", {3, 6}}};
    for (const auto& each : cases) {
        run(each.toggle);
        control().setSelection(0, 0);
        enter(QString::fromLatin1(each.text));
        EXPECT_EQ(selection(), each.found) << each.toggle;
        run(each.toggle);
    }
    run("mnuCaseSensitive");
    run("mnuWholeWord");
    control().setSelection(0, 0);
    enter(QStringLiteral("xa"));
    EXPECT_EQ(selection(), (Selected{7, 9}));
}

TEST_F(FindBarOfTheFrame, ATextThatIsNotThereIsToldAndKeptAllTheSame) {
    start();
    enter(QStringLiteral("abc"));
    EXPECT_EQ(m_prompts.messages, QStringList(QStringLiteral("The search string not found.")));
    EXPECT_EQ(keys(), QStringList(QStringLiteral("abc")));
}

TEST_F(FindBarOfTheFrame, EnterMovesAKnownTextToTheTop) {
    start();
    type(QStringLiteral("a b"));
    for (const char* text : {"a", "b", "a"})
        enter(QString::fromLatin1(text));
    EXPECT_EQ(keys(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(box().currentText(), QStringLiteral("a"));
}

TEST_F(FindBarOfTheFrame, WithoutADocumentTheTextStillJoinsTheList) {
    start();
    run("mnuFileClose");
    enter(QStringLiteral("abc"));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_EQ(keys(), QStringList(QStringLiteral("abc")));
}

TEST_F(FindBarOfTheFrame, FindNextAndPreviousTakeTheText) {
    start();
    type(QStringLiteral("x y, x y, x y"));
    control().setSelection(0, 0);
    box().setEditText(QStringLiteral("x y"));
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
    enter(QStringLiteral("own"));
    box().setEditText(QStringLiteral("half typed"));
    active()->setFocus();
    for (const char* text : {"two", "own", "one"})
        SearchHistory::ofFinds().add(QString::fromLatin1(text));
    box().setFocus();
    QStringList joined;  // the history is the whole program's: other texts may stand in it
    for (const QString& key : keys()) {
        if (key == QLatin1String("one") || key == QLatin1String("two") || key == QLatin1String("own"))
            joined << key;
    }
    EXPECT_EQ(joined, QStringList({QStringLiteral("two"), QStringLiteral("one"), QStringLiteral("own")}));
    EXPECT_EQ(box().currentText(), QStringLiteral("half typed"));
}

TEST_F(FindBarOfTheFrame, ADialogsSearchShowsInTogglesAndBarAtOnce) {
    start();
    for (const char* text : {"old", "new"})
        enter(QString::fromLatin1(text));
    m_frame->AfterFind(QStringLiteral("old"), true, false, true);
    EXPECT_TRUE(entry("mnuCaseSensitive")->isChecked());
    EXPECT_FALSE(entry("mnuRegExp")->isChecked());
    EXPECT_TRUE(entry("mnuWholeWord")->isChecked());
    EXPECT_TRUE(option(&Options::CaseSensitiveOn));
    EXPECT_FALSE(option(&Options::RegExpOn));
    EXPECT_TRUE(option(&Options::WholeWord));
    EXPECT_EQ(keys(), QStringList({QStringLiteral("old"), QStringLiteral("new")}));
    EXPECT_EQ(box().currentText(), QStringLiteral("old"));
    m_frame->AfterFind(QStringLiteral("fresh"), false, true, false);
    EXPECT_TRUE(entry("mnuRegExp")->isChecked());
    EXPECT_FALSE(entry("mnuWholeWord")->isChecked());
    EXPECT_EQ(box().currentText(), QStringLiteral("fresh"));
}

TEST_F(FindBarOfTheFrame, ADocumentsDialogIsHeardByTheFrame) {
    start();
    Q_EMIT active()->AfterFind(QStringLiteral("sought"), true, false, true);
    EXPECT_TRUE(entry("mnuCaseSensitive")->isChecked());
    EXPECT_FALSE(entry("mnuRegExp")->isChecked());
    EXPECT_TRUE(entry("mnuWholeWord")->isChecked());
    EXPECT_EQ(box().currentText(), QStringLiteral("sought"));
}

TEST_F(FindBarOfTheFrame, OpeningADialogLeavesTheBarAndClosingItBringsTheLastSearch) {
    start();
    enter(QStringLiteral("searched"));
    for (const char* name : {"mnuFind", "mnuReplace"}) {
        box().setEditText(QStringLiteral("half typed"));
        run(name);
        EXPECT_EQ(box().currentText(), QStringLiteral("half typed")) << name;
        dialog(name).close();
        EXPECT_EQ(box().currentText(), QStringLiteral("searched")) << name;
    }
}

TEST_F(FindBarOfTheFrame, ADialogsSearchLeavesItsTextInTheBar) {
    start();
    type(QStringLiteral("one two"));
    run("mnuFind");
    QDialog& find = dialog("mnuFind");
    find.findChild<QComboBox*>(QStringLiteral("cboFind"))->setEditText(QStringLiteral("one"));
    find.findChild<QAbstractButton*>(QStringLiteral("cmdFindNext"))->click();
    EXPECT_EQ(box().currentText(), QStringLiteral("one"));
    EXPECT_EQ(keys(), QStringList(QStringLiteral("one")));
}

TEST_F(FindBarOfTheFrame, AnEmptyTextOfADialogChangesNothing) {
    start();
    enter(QStringLiteral("a"));
    m_frame->AfterFind(QString(), true, true, true);
    EXPECT_FALSE(entry("mnuRegExp")->isChecked());
    EXPECT_EQ(keys(), QStringList(QStringLiteral("a")));
    EXPECT_EQ(box().currentText(), QStringLiteral("a"));
}

TEST_F(FindBarOfTheFrame, TogglesComeFromTheSettings) {
    start();
    for (const char* name : {"mnuWholeWord", "mnuRegExp", "mnuCaseSensitive"})
        EXPECT_FALSE(entry(name)->isChecked()) << name;
    EXPECT_TRUE(entry("mnuSearchContinue")->isChecked());
    set("ToolbarWholeWord", "1");
    set("ToolbarRegExp", "1");
    set("ToolbarCase", "1");
    set("ContinueSearch", "0");
    start();
    for (const char* name : {"mnuWholeWord", "mnuRegExp", "mnuCaseSensitive"})
        EXPECT_TRUE(entry(name)->isChecked()) << name;
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
    EXPECT_EQ(Settings(m_registry).forFrame(QStringLiteral("ToolbarCase")), QStringLiteral("0"));
}

TEST_F(FindBarOfTheFrame, TheListComesBackInTheNextRun) {
    start();
    for (const char* text : {"a", "b", "c"})
        enter(QString::fromLatin1(text));
    m_frame->close();
    EXPECT_EQ(bytesOf(listFile()), QByteArray("a\r\nb\r\nc\r\n"));
    start();
    EXPECT_EQ(keys(), QStringList({QStringLiteral("c"), QStringLiteral("b"), QStringLiteral("a")}));
    EXPECT_EQ(box().currentText(), QString());
}

TEST_F(FindBarOfTheFrame, TheWheelLeavesWhatIsTyped) {
    start();
    for (const char* text : {"a", "b"})
        enter(QString::fromLatin1(text));
    box().setEditText(QStringLiteral("typed"));
    for (QWidget* target : {static_cast<QWidget*>(&box()), static_cast<QWidget*>(box().lineEdit())}) {
        const QPointF place = target->rect().center();
        QWheelEvent wheel(place, target->mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(target, &wheel);
        EXPECT_EQ(box().currentText(), QStringLiteral("typed"));
    }
}

TEST_F(FindBarOfTheFrame, KeysOfTheBarAreNotTakenByTheMenus) {
    start();
    type(QStringLiteral("text"));
    box().setFocus();
    box().setEditText(QStringLiteral("abc"));
    QTest::keyClick(&box(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(box().lineEdit()->selectedText(), QStringLiteral("abc"));
    EXPECT_EQ(active()->GetEditor()->SelText(), QString());
}

TEST_F(FindBarOfTheFrame, EscapeGoesBackToTheDocument) {
    start();
    box().setFocus();
    QTest::keyClick(&box(), Qt::Key_Escape);
    EXPECT_TRUE(control().hasFocus());
    EXPECT_EQ(documents().size(), 1);
}

TEST_F(FindBarOfTheFrame, OneKeyWalksFromTheDocumentToTheBarToTheTabs) {
    start();
    active()->setFocus();
    QTest::keyClick(&control(), Qt::Key_F6);
    EXPECT_TRUE(box().hasFocus());
    QTest::keyClick(&box(), Qt::Key_F6);
    EXPECT_TRUE(strip().hasFocus());
    QTest::keyClick(&strip(), Qt::Key_F6);
    EXPECT_TRUE(control().hasFocus());
    QTest::keyClick(&control(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_TRUE(strip().hasFocus());
    run("mnuShowFilesTab");
    active()->setFocus();
    QTest::keyClick(&control(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_TRUE(box().hasFocus());
}

TEST_F(FindBarOfTheFrame, WhatWasSearchedForInAnEarlierRunIsOfferedByTheFindDialogToo) {
    ListFile::write(listFile(), {QStringLiteral("older"), QStringLiteral("of the last run")});
    start();
    type(QStringLiteral("text"));
    run("mnuFind");
    const auto* offered = dialog("mnuFind").findChild<QComboBox*>();
    EXPECT_EQ(offered->itemText(0), QStringLiteral("of the last run"));
    EXPECT_EQ(offered->itemText(1), QStringLiteral("older"));
    EXPECT_EQ(offered->currentText(), QStringLiteral("of the last run"));
}
