#include "keys/MacroDialog.h"
#include "keys/MacroStore.h"
#include "keys/StrokeEdit.h"
#include "properties/frmMacro.h"
#include "properties/ucMarco.h"
#include "shell/FrameFixture.h"
#include "shell/commands/MenuText.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

class MacrosOfTheFrame : public FrameFixture {
 protected:
    QStringList shownMacros() {
        QStringList captions;
        for (const QAction* action : house().entries.menu("mnuMacro")->actions()) {
            if (action->isVisible())
                captions << MenuText::captionOf(*action);
        }
        return captions.mid(5);
    }
    QString statusText() { return house().status.text(1); }
    void keepUnder(Qt::Key key) {
        auto* asked = textWidget().findChild<MacroDialog*>();
        ASSERT_NE(asked, nullptr);
        QTest::keyClick(asked->findChild<StrokeEdit*>(), key, Qt::ControlModifier | Qt::ShiftModifier);
        asked->findChild<QPushButton*>(u"cmdKeep"_qs)->click();
    }
    void putMacro(int n, const QString& typed) {
        Macro macro;
        macro.addText(typed);
        ASSERT_TRUE(globals().macros.setMacro(n - 1, macro));
    }
    QString macroFolder() const { return m_programFolder.filePath(u"macros"_qs); }
};

TEST_F(MacrosOfTheFrame, ShowWithAHotKeyAndWhenWanted) {
    bindMacro(1, u'Q');
    bindMacro(3, u'W');
    bindMacro(10, u'E');
    set("1Display", "1");
    set("2Display", "1");
    set("3Display", "0");
    set("10Display", "1");
    set("10Desc", "Sort & go");
    start();
    EXPECT_EQ(shownMacros(), QStringList({u"Ctrl + Q"_qs, u"Sort & go"_qs}));
    EXPECT_TRUE(slot("mnuExecMacro", 10)->isVisible());
    globals().hotKeys.reset();
    m_frame->UpdateMacroMenu();
    EXPECT_EQ(shownMacros(), QStringList(u"Macro(s)"_qs));
    EXPECT_TRUE(entry("mnuMacroSep02")->isVisible());
}

TEST_F(MacrosOfTheFrame, WithAnEmptyNameAreCalledByTheirHotKey) {
    bindMacro(1, u'Q');
    set("1Display", "1");
    set("1Desc", "");
    start();
    EXPECT_EQ(shownMacros(), QStringList(u"Ctrl + Q"_qs));
}

TEST_F(MacrosOfTheFrame, AreOrganizedInADialogThatTheMenuFollows) {
    bindMacro(2, u'Q');
    start();
    QString title;
    QStringList during;
    QTimer::singleShot(0, m_frame.get(), [&] {
        auto* form = m_frame->findChild<frmMacro*>();
        title = form->windowTitle();
        form->findChild<QCheckBox*>(u"chkDisplay"_qs)->click();
        during = shownMacros();
        form->findChild<QLineEdit*>(u"txtName"_qs)->setText(u"Mine"_qs);
        form->findChild<QPushButton*>(u"cmdClose"_qs)->click();
    });
    run("mnuOrganizeMarco");
    EXPECT_EQ(title, u"Organize Marco"_qs);
    EXPECT_EQ(during, QStringList(u"Ctrl + Q"_qs));
    EXPECT_EQ(shownMacros(), QStringList(u"Mine"_qs));
    EXPECT_TRUE(QDir(macroFolder()).exists());
}

TEST_F(MacrosOfTheFrame, LoseTheirHotKeysAfterAQuestion) {
    bindMacro(2, u'Q');
    set("2Display", "1");
    start();
    m_prompts.answerNo();
    run("mnuResetKey");
    EXPECT_EQ(shownMacros(), QStringList(u"Ctrl + Q"_qs));
    m_prompts.answerYes();
    run("mnuResetKey");
    EXPECT_EQ(m_prompts.questions.last(),
              u"Reset all hot keys will delete all marcos, do you want to reset all hot keys ?"_qs);
    EXPECT_EQ(shownMacros(), QStringList(u"Macro(s)"_qs));
    EXPECT_EQ(globals().hotKeys, HotKeys(GlobalObject::defaultHotKeys()));
}

TEST_F(MacrosOfTheFrame, ArePlayedFromTheirEntries) {
    bindMacro(4, u'Q');
    set("4Display", "1");
    start();
    putMacro(4, u"abc"_qs);
    slot("mnuExecMacro", 4)->trigger();
    EXPECT_EQ(text(), u"abc"_qs);
}

TEST_F(MacrosOfTheFrame, EachEntryPlaysItsOwnInTheActiveDocumentOnly) {
    start();
    m_frame->NewDocument();
    ASSERT_EQ(documents().size(), 2);
    const frmDocument* other = documents().first() == active() ? documents().last() : documents().first();
    QString typed;
    for (int n = 1; n <= 10; ++n) {
        putMacro(n, QString::number(n) + u' ');
        slot("mnuExecMacro", n)->trigger();
        typed += QString::number(n) + u' ';
        EXPECT_EQ(text(), typed) << n;
    }
    EXPECT_EQ(other->GetEditor()->Text(), QString());
}

TEST_F(MacrosOfTheFrame, AnEntryWithoutAMacroDoesNothing) {
    start();
    type(u"text"_qs);
    putMacro(5, u"x"_qs);
    for (int n = 0; n <= 10; ++n) {
        if (n != 5)
            slot("mnuExecMacro", n)->trigger();
    }
    EXPECT_EQ(text(), u"text"_qs);
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(MacrosOfTheFrame, ArePlayedByTheRepeatCountAndTakenBackAtOnce) {
    start();
    putMacro(10, u"ab"_qs);
    setRepeatCount(3);
    slot("mnuExecMacro", 10)->trigger();
    EXPECT_EQ(text(), u"ababab"_qs);
    run("mnuEditUndo");
    EXPECT_EQ(text(), QString());
}

TEST_F(MacrosOfTheFrame, AreNotPlayedInHexModeOrWithoutADocument) {
    start();
    open(fileOf("text"));
    putMacro(1, u"x"_qs);
    run("mnuToggleHex");
    ASSERT_FALSE(active()->TextEdit());
    slot("mnuExecMacro", 1)->trigger();
    run("mnuToggleHex");
    EXPECT_EQ(text(), u"text"_qs);
    run("mnuAllFileClose");
    ASSERT_EQ(active(), nullptr);
    slot("mnuExecMacro", 1)->trigger();
    run("mnuRecordMarco");
    EXPECT_FALSE(globals().control.recorder().isRecording());
}

TEST_F(MacrosOfTheFrame, ARecordingIsMarkedAndToldUntilItEnds) {
    start();
    run("mnuRecordMarco");
    EXPECT_TRUE(entry("mnuRecordMarco")->isChecked());
    EXPECT_TRUE(statusText().startsWith(QLatin1String("Recording: 0 step")));
    type(u"a"_qs);
    execute(Command::WordToUpper);
    EXPECT_TRUE(statusText().startsWith(QLatin1String("Recording: 2 step")));
    EXPECT_FALSE(statusText().contains(QLatin1String("left out")));
    select(0, 0);
    EXPECT_TRUE(statusText().contains(QLatin1String("left out")));
    m_frame->SetDocumentEnv(active());
    EXPECT_TRUE(entry("mnuRecordMarco")->isChecked());
    run("mnuRecordMarco");
    EXPECT_FALSE(entry("mnuRecordMarco")->isChecked());
    EXPECT_EQ(statusText(), QString());
}

TEST_F(MacrosOfTheFrame, ARecordedOneIsInTheMenuAsSoonAsItIsWantedThere) {
    set("1Display", "0");
    start();
    run("mnuRecordMarco");
    type(u"a"_qs);
    run("mnuRecordMarco");
    keepUnder(Qt::Key_M);
    EXPECT_EQ(shownMacros(), QStringList(u"Macro(s)"_qs));
    set("1Display", "1");
    m_frame->UpdateMacroMenu();
    EXPECT_EQ(shownMacros(), QStringList(u"Ctrl + Shift + M"_qs));
}

TEST_F(MacrosOfTheFrame, OneThatGetsItsNameWhenItIsKeptIsInTheMenuAtOnce) {
    start();
    run("mnuRecordMarco");
    type(u"a"_qs);
    run("mnuRecordMarco");
    auto* asked = textWidget().findChild<MacroDialog*>();
    ASSERT_NE(asked, nullptr);
    asked->findChild<QLineEdit*>(u"txtName"_qs)->setText(u"First"_qs);
    asked->findChild<QCheckBox*>(u"chkDisplay"_qs)->click();
    keepUnder(Qt::Key_M);
    EXPECT_EQ(shownMacros(), QStringList(u"First"_qs));
}

TEST_F(MacrosOfTheFrame, ASecondStrokeThatIsWaitedForStandsInTheStatusBar) {
    start();
    globals().hotKeys.bind(214, {{HotKeyStroke::Ctrl, u"K"_qs}, {0, u"C"_qs}});
    QTest::keyClick(&textWidget(), Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(statusText(), u"Ctrl + K: press the second key, or Esc to leave."_qs);
    QTest::keyClick(&textWidget(), Qt::Key_Escape);
    EXPECT_EQ(statusText(), QString());
}

TEST_F(MacrosOfTheFrame, AreThereAgainAtTheNextStart) {
    start();
    run("mnuRecordMarco");
    type(u"again"_qs);
    run("mnuRecordMarco");
    keepUnder(Qt::Key_M);
    m_prompts.answerNo();
    m_frame->close();
    EXPECT_TRUE(QFile::exists(macroFolder() + QLatin1String("/0.dem")));
    m_frame.reset();
    start();
    QTest::keyClick(&textWidget(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(text(), u"again"_qs);
}

TEST_F(MacrosOfTheFrame, OneThatIsRecordedWhenTheProgramEndsIsAskedFor) {
    start();
    run("mnuRecordMarco");
    type(u"again"_qs);
    m_prompts.answerNo();
    QTimer::singleShot(0, m_frame.get(), [&] { keepUnder(Qt::Key_M); });
    m_frame->close();
    m_frame.reset();
    start();
    QTest::keyClick(&textWidget(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(text(), u"again"_qs);
}

TEST_F(MacrosOfTheFrame, ACountThatIsPendingStandsInTheStatusBarOfItsDocument) {
    const QString pending = u"The next command or key is done 3 times. Esc cancels this."_qs;
    start();
    frmDocument* first = active();
    run("mnuSetRepeat");
    auto* prompt = first->findChild<QInputDialog*>(u"RepeatCount"_qs);
    ASSERT_NE(prompt, nullptr);
    prompt->setIntValue(3);
    EXPECT_EQ(statusText(), QString());
    prompt->accept();
    EXPECT_EQ(statusText(), pending);
    m_frame->NewDocument();
    EXPECT_EQ(statusText(), QString());
    house().children.bringToFront(first);
    EXPECT_EQ(statusText(), pending);
    globals().hotKeys.bind(214, {{HotKeyStroke::Ctrl, u"K"_qs}, {0, u"C"_qs}});
    QTest::keyClick(&textWidget(), Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(statusText(), u"Ctrl + K: press the second key, or Esc to leave."_qs);
    QTest::keyClick(&textWidget(), Qt::Key_Escape);
    EXPECT_EQ(statusText(), pending);
    QTest::keyClick(&textWidget(), Qt::Key_Escape);
    EXPECT_EQ(statusText(), QString());
    setRepeatCount(3);
    QApplication::clipboard()->setText(u"ab"_qs);
    run("mnuEditPaste");
    EXPECT_EQ(text(), u"ababab"_qs);
    EXPECT_EQ(statusText(), QString());
    setRepeatCount(3);
    m_prompts.answerNo();
    run("mnuAllFileClose");
    EXPECT_EQ(statusText(), QString());
}

TEST_F(MacrosOfTheFrame, ACountIsShownBeforeARecording) {
    start();
    run("mnuRecordMarco");
    setRepeatCount(2);
    EXPECT_EQ(statusText(), u"The next command or key is done 2 times. Esc cancels this."_qs);
    type(u"a"_qs);
    EXPECT_TRUE(statusText().startsWith(QLatin1String("Recording: 2 step")));
}

TEST_F(MacrosOfTheFrame, TheHiddenEntrySavesThem) {
    start();
    putMacro(2, u"x"_qs);
    EXPECT_FALSE(entry("mnuSaveMarco")->isVisible());
    run("mnuSaveMarco");
    EXPECT_TRUE(QFile::exists(macroFolder() + QLatin1String("/1.dem")));
}

TEST_F(MacrosOfTheFrame, AHotKeyTakesF3AndItsLikeFromTheView) {
    start();
    putMacro(1, u"x"_qs);
    globals().hotKeys.bind(214, {{HotKeyStroke::Ctrl | HotKeyStroke::Shift, QString(QChar(114))}, {}});
    QTest::keyClick(&textWidget(), Qt::Key_F3, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(text(), u"x"_qs);
    EXPECT_TRUE(textWidget().findChildren<QDialog*>().isEmpty());
}
