#include "FrameFixture.h"
#include "editor/SearchHistory.h"
#include "settings/Options.h"
#include "shell/FindBar.h"
#include "shell/ListFile.h"
#include "shell/SearchToggles.h"

#include <QComboBox>
#include <QLineEdit>

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

TEST_F(FindBarOfTheFrame, EnterSearchesWithTheTogglesAndKeepsTheText) {
    start();
    run("mnuCaseSensitive");
    run("mnuWholeWord");
    m_rooms.calls.clear();
    enter(QStringLiteral("abc"));
    EXPECT_EQ(m_rooms.calls, QStringList(QStringLiteral("FindText abc 011")));
    EXPECT_EQ(keys(), QStringList(QStringLiteral("abc")));
    EXPECT_EQ(box().currentText(), QStringLiteral("abc"));
}

TEST_F(FindBarOfTheFrame, EnterMovesAKnownTextToTheTop) {
    start();
    for (const char* text : {"a", "b", "a"})
        enter(QString::fromLatin1(text));
    EXPECT_EQ(keys(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(box().currentText(), QStringLiteral("a"));
}

TEST_F(FindBarOfTheFrame, WithoutADocumentTheTextStillJoinsTheList) {
    start();
    run("mnuFileClose");
    m_rooms.calls.clear();
    enter(QStringLiteral("abc"));
    EXPECT_TRUE(m_rooms.calls.isEmpty());
    EXPECT_EQ(keys(), QStringList(QStringLiteral("abc")));
}

TEST_F(FindBarOfTheFrame, FindNextAndPreviousTakeTheText) {
    start();
    box().setEditText(QStringLiteral("x y"));
    m_rooms.calls.clear();
    run("mnuFindNext");
    run("mnuFindPrevious");
    button("FindNext")->trigger();
    EXPECT_EQ(m_rooms.calls, QStringList({QStringLiteral("FindNext x y"), QStringLiteral("FindPrev x y"),
                                          QStringLiteral("FindNext x y")}));
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
    EXPECT_EQ(keys(), QStringList({QStringLiteral("two"), QStringLiteral("one"), QStringLiteral("own")}));
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
