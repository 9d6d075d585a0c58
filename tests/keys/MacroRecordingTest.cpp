#include "editor/Editor.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlClipboard.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlTyping.h"
#include "editor/windows/FindDialog.h"
#include "editor/windows/IncrementalSearchBar.h"
#include "keys/MacroFixture.h"
#include "support/Mnemonics.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QInputDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>

#include <functional>

namespace {

using Sci = QsciScintillaBase;

class MacroRecording : public MacroFixture {
 protected:
    void begin() { control.ExecuteCmd(Record); }
};

}  // namespace

TEST_F(MacroRecording, NotesTypedTextAndWhatKeysStandFor) {
    begin();
    EXPECT_TRUE(recording());
    type("ab");
    key(Qt::Key_Return);
    key(Qt::Key_Left);
    key(Qt::Key_Left, Qt::ShiftModifier);
    key(Qt::Key_Backspace);
    key(Qt::Key_A, Qt::ControlModifier);
    type("c");
    EXPECT_EQ(recorded(),
              (Steps{text(u"ab"_qs), command(Sci::SCI_NEWLINE), command(Sci::SCI_CHARLEFT),
                     command(Sci::SCI_CHARLEFTEXTEND), command(Sci::SCI_DELETEBACK), command(137), text(u"c"_qs)}));
}

TEST_F(MacroRecording, NotesNumberedCommandsOnce) {
    begin();
    for (const int number : {100, 106, 113, 125, 147, 158, 159, 160, 161, 135, 136, 137, 163, 127, 253, 254, 267, 204})
        control.ExecuteCmd(number);
    Steps expected;
    for (const int number : {100, 106, 113, 125, 147, 158, 159, 160, 161, 135, 136, 137, 163, 127, 253, 254, 267, 204})
        expected << command(number);
    EXPECT_EQ(recorded(), expected);
}

TEST_F(MacroRecording, NotesWhatAnInputMethodCommitsAndNotWhatItShowsOnTheWay) {
    begin();
    QInputMethodEvent onTheWay(u"ka"_qs, {});
    QCoreApplication::sendEvent(&control, &onTheWay);
    QInputMethodEvent commit;
    commit.setCommitString(u"か😀"_qs);
    QCoreApplication::sendEvent(&control, &commit);
    EXPECT_EQ(recorded(), Steps{text(u"か😀"_qs)});
}

TEST_F(MacroRecording, NotesTheClipboardCommandsOfMenusAndKeys) {
    control.setText(u"one"_qs);
    begin();
    control.SelectAll();
    control.clipboard().Copy();
    control.clipboard().Cut();
    control.clipboard().Paste();
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(recorded(), (Steps{command(137), command(Sci::SCI_COPY), command(Sci::SCI_CUT), command(Sci::SCI_PASTE),
                                 command(Sci::SCI_PASTE)}));
}

TEST_F(MacroRecording, NotesHowOftenSomethingWasRepeated) {
    begin();
    control.setRepeatCount(3);
    type("x");
    control.setRepeatCount(2);
    key(Qt::Key_Left);
    control.setRepeatCount(4);
    control.ExecuteCmd(160);
    EXPECT_EQ(recorded(), (Steps{command(187, u"3"_qs), text(u"x"_qs), command(187, u"2"_qs),
                                 command(Sci::SCI_CHARLEFT), command(187, u"4"_qs), command(160)}));
}

TEST_F(MacroRecording, WhatIsTypedBehindARepeatedTextIsNotRepeatedWithIt) {
    begin();
    control.setRepeatCount(3);
    type("x");
    type("yz");
    EXPECT_EQ(recorded(), (Steps{command(187, u"3"_qs), text(u"x"_qs), text(u"yz"_qs)}));
    keepAs(Qt::Key_M);
    control.setText({});
    play(1);
    EXPECT_EQ(control.Text(), u"xxxyz"_qs);
}

TEST_F(MacroRecording, NotesASearchWithWhatItGoesByAndThatOnlyOnce) {
    control.setText(u"one two one"_qs);
    control.search().setSearchText(u"one"_qs);
    control.setSearchCaseSensitive(true);
    begin();
    control.search().findNext();
    control.ExecuteCmd(176);
    control.setSearchRegExp(true);
    control.search().findPrevious();
    EXPECT_EQ(recorded(), (Steps{command(179, u"one"_qs), command(231), command(233), command(236), command(176),
                                 command(176), command(230), command(174)}));
}

TEST_F(MacroRecording, ASearchThatFindsNothingIsNoStep) {
    control.setText(u"one"_qs);
    control.search().setSearchText(u"two"_qs);
    begin();
    control.search().findNext();
    control.ExecuteCmd(176);
    EXPECT_EQ(recorded(), Steps{});
    EXPECT_EQ(globals.recorder().missedCount(), 0);
}

TEST_F(MacroRecording, NotesReplacementsOfTheDialog) {
    control.setText(u"one two one"_qs);
    begin();
    control.ExecuteCmd(169);
    auto* dialog = control.findChild<FindDialog*>();
    dialog->findChild<QComboBox*>(u"cboFind"_qs)->setCurrentText(u"one"_qs);
    dialog->findChild<QComboBox*>(u"cboReplace"_qs)->setCurrentText(u"1"_qs);
    dialog->findChild<QPushButton*>(u"cmdReplaceAll"_qs)->click();
    ASSERT_FALSE(recorded().isEmpty());
    EXPECT_TRUE(recorded().contains(command(180, u"1"_qs)));
    EXPECT_EQ(recorded().last(), command(Command::ReplaceAll));
    EXPECT_EQ(globals.recorder().missedCount(), 0);
    dialog->close();
}

TEST_F(MacroRecording, ASearchWhileTypingIsOneStepForAllThatWasTyped) {
    control.setText(u"tab tea ten"_qs);
    begin();
    control.ExecuteCmd(257);
    auto* bar = control.findChild<IncrementalSearchBar*>();
    QTest::keyClicks(bar->findChild<QLineEdit*>(), u"ten"_qs);
    EXPECT_EQ(recorded(), (Steps{command(179, u"ten"_qs), command(231), command(233), command(237), command(176)}));
    QTest::keyClick(bar->findChild<QLineEdit*>(), Qt::Key_Escape);
    EXPECT_EQ(recorded(), Steps{});
    EXPECT_EQ(globals.recorder().missedCount(), 0);
}

TEST_F(MacroRecording, GoingToALineIsNotedWithItsNumber) {
    control.setText(u"a\nb\nc"_qs);
    begin();
    control.ExecuteCmd(192);
    auto* prompt = control.findChild<QInputDialog*>(u"GotoLine"_qs);
    prompt->setIntValue(3);
    prompt->accept();
    EXPECT_EQ(recorded(), Steps{command(192, u"3"_qs)});
    EXPECT_EQ(control.CurrentLine(), 2);
}

TEST_F(MacroRecording, WindowsThatOpenAreNoSteps) {
    begin();
    for (const int number : {178, 169, 187, 192, 224})
        control.ExecuteCmd(number);
    EXPECT_EQ(recorded(), Steps{});
    qDeleteAll(control.findChildren<QDialog*>());
}

TEST_F(MacroRecording, MouseUndoAndTheProgramsOwnEditsAreCountedAsLeftOut) {
    control.setText(u"one two three"_qs);
    control.setSelection(3, 3);
    begin();
    QTest::mouseClick(control.viewport(), Qt::LeftButton, {}, QPoint(200, 100));
    EXPECT_EQ(globals.recorder().missedCount(), 1);
    control.setSelection(0, 3);
    control.setSelText(u"1"_qs);
    EXPECT_EQ(globals.recorder().missedCount(), 3);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(globals.recorder().missedCount(), 4);
    EXPECT_EQ(recorded(), Steps{});
}

TEST_F(MacroRecording, ZoomIsNeitherAStepNorLeftOut) {
    begin();
    key(Qt::Key_Plus, Qt::ControlModifier);
    key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(recorded(), Steps{});
    EXPECT_EQ(globals.recorder().missedCount(), 0);
}

TEST_F(MacroRecording, WhatALockedTextDoesNotTakeIsNoStep) {
    control.setText(u"one"_qs);
    control.setLocked(true);
    begin();
    type("x");
    control.ExecuteCmd(160);
    key(Qt::Key_Right);
    EXPECT_EQ(recorded(), Steps{command(Sci::SCI_CHARRIGHT)});
}

TEST_F(MacroRecording, APlayedMacroIsOneStep) {
    put(2, {text(u"x"_qs), text(u"y"_qs)});
    begin();
    control.setRepeatCount(2);
    play(2);
    EXPECT_EQ(recorded(), (Steps{command(187, u"2"_qs), command(215)}));
}

TEST_F(MacroRecording, TheSameCommandEndsItInADialogThatShowsTheSteps) {
    begin();
    type("abc");
    key(Qt::Key_Home);
    QTest::mouseClick(control.viewport(), Qt::LeftButton, {}, QPoint(200, 4));
    control.ExecuteCmd(Record);
    EXPECT_FALSE(recording());
    ASSERT_NE(dialog(), nullptr);
    const auto& list = part<QListWidget>("lstSteps");
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.item(0)->text(), u"Type \"abc\""_qs);
    EXPECT_EQ(list.item(1)->text(), u"Start of line"_qs);
    EXPECT_FALSE(part<QLabel>("lblMissed").isHidden());
    EXPECT_FALSE(canKeep());
}

TEST_F(MacroRecording, WithoutAStepThereIsNothingToKeep) {
    const QSignalSpy told(&control, &TextControl::Notice);
    begin();
    control.ExecuteCmd(Record);
    EXPECT_EQ(dialog(), nullptr);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0][0].toString(), u"Nothing was recorded."_qs);
}

TEST_F(MacroRecording, FollowsOneControlAndCanBeEndedInAnother) {
    const std::unique_ptr<TextControl> otherOwner{makeEditor()};
    TextControl& other = *otherOwner;
    other.macros().setGlobals(globals);
    begin();
    other.typing().type(u"elsewhere"_qs);
    type("here");
    EXPECT_EQ(recorded(), Steps{text(u"here"_qs)});
    other.ExecuteCmd(Record);
    EXPECT_FALSE(recording());
    EXPECT_NE(other.findChild<MacroDialog*>(), nullptr);
}

TEST_F(MacroRecording, IsOverWithItsControl) {
    {
        const std::unique_ptr<TextControl> otherOwner{makeEditor()};
        TextControl& other = *otherOwner;
        other.macros().setGlobals(globals);
        other.ExecuteCmd(Record);
        other.typing().type(u"x"_qs);
        EXPECT_TRUE(recording());
    }
    EXPECT_FALSE(recording());
    EXPECT_EQ(recorded(), Steps{});
    begin();
    EXPECT_TRUE(recording());
}

TEST_F(MacroRecording, KeptItHasTheFirstFreeSlotAndItsHotKeyPlaysIt) {
    hotKeys.bind(214, hotKey(HotKeyStroke::Ctrl, u'1'));
    const QSignalSpy changed(&globals, &GlobalObject::macrosChanged);
    begin();
    type("abc");
    keepAs(Qt::Key_M);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(hotKeys.HotKeyText(u"2"_qs), u"Ctrl + Shift + M"_qs);
    key(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(control.Text(), u"abcabc"_qs);
}

TEST_F(MacroRecording, TwoStrokesPlayItToo) {
    begin();
    type("x");
    control.ExecuteCmd(Record);
    press(Qt::Key_K, Qt::ControlModifier);
    press(Qt::Key_C);
    EXPECT_EQ(part<StrokeEdit>("txtHotKey").text(), u"Ctrl + K, C"_qs);
    keep();
    key(Qt::Key_K, Qt::ControlModifier);
    key(Qt::Key_C);
    EXPECT_EQ(control.Text(), u"xx"_qs);
}

TEST_F(MacroRecording, CancelKeepsNothing) {
    begin();
    type("x");
    control.ExecuteCmd(Record);
    press(Qt::Key_M, Qt::ControlModifier);
    prompts.answerYes();
    part<QPushButton>("cmdCancel").click();
    EXPECT_FALSE(dialog() != nullptr && dialog()->isVisible());
    EXPECT_EQ(hotKeys.HotKeyText(u"1"_qs), QString());
    EXPECT_FALSE(store.macro(0).has_value());
    EXPECT_EQ(hotKeys, HotKeys(GlobalObject::defaultHotKeys()));
}

TEST_F(MacroRecording, TheStepsAreDroppedOnlyAfterAQuestion) {
    begin();
    type("x");
    control.ExecuteCmd(Record);
    press(Qt::Key_M, Qt::ControlModifier);
    const std::function<void()> refusals[] = {[&] { QTest::keyClick(dialog(), Qt::Key_Escape); },
                                              [&] { press(Qt::Key_Escape); }, [&] { dialog()->close(); },
                                              [&] { part<QPushButton>("cmdCancel").click(); }};
    for (const auto& refuse : refusals) {
        prompts.questions.clear();
        prompts.answerNo();
        refuse();
        EXPECT_EQ(prompts.questions, QStringList(u"Drop the recorded steps?"_qs));
        ASSERT_NE(dialog(), nullptr);
        EXPECT_TRUE(dialog()->isVisible());
    }
    keep();
    EXPECT_EQ(store.macro(0), Macro(Steps{text(u"x"_qs)}));
    EXPECT_EQ(prompts.questions.size(), 1) << "what is kept is not asked about";
}

TEST_F(MacroRecording, AControlThatGoesDuringTheQuestionTakesTheDialogWithIt) {
    std::unique_ptr<TextControl> other(makeEditor());
    other->macros().setGlobals(globals);
    other->ExecuteCmd(Record);
    other->typing().type(u"x"_qs);
    other->ExecuteCmd(Record);
    const QPointer<MacroDialog> asked = other->findChild<MacroDialog*>();
    ASSERT_FALSE(asked.isNull());
    prompts.answerYes();
    prompts.whileShown([&] { other.reset(); });
    asked->reject();
    EXPECT_TRUE(asked.isNull());
}

TEST_F(MacroRecording, WhatIsKeptIsSavedAtOnce) {
    begin();
    type("abc");
    keepAs(Qt::Key_M);
    HotKeys hotKeysOfNextRun{GlobalObject::defaultHotKeys()};
    hotKeysOfNextRun.load(registry);
    EXPECT_EQ(hotKeysOfNextRun.HotKeyText(u"1"_qs), u"Ctrl + Shift + M"_qs);
    MacroStore ofNextRun(registry, hotKeysOfNextRun, home.path());
    ofNextRun.LoadMacros();
    EXPECT_EQ(ofNextRun.macro(0), Macro(Steps{text(u"abc"_qs)}));
    EXPECT_EQ(prompts.messages, QStringList());
}

TEST_F(MacroRecording, WhatCannotBeSavedIsSaidAndCanBePlayed) {
    QFile inTheWay(home.filePath(u"macros"_qs));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    begin();
    type("abc");
    keepAs(Qt::Key_M);
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_TRUE(prompts.messages.first().startsWith(
        u"The macro can be played until the program ends, but it could not be saved.\n'%1' can't be written: "_qs.arg(
            inTheWay.fileName())))
        << prompts.messages.first().toStdString();
    EXPECT_EQ(dialog(), nullptr);
    key(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(control.Text(), u"abcabc"_qs);
}

TEST_F(MacroRecording, HotKeysThatWouldSwallowTypingAreRefused) {
    begin();
    type("x");
    control.ExecuteCmd(Record);
    const std::pair<Qt::Key, Qt::KeyboardModifiers> typed[] = {{Qt::Key_A, {}},
                                                               {Qt::Key_Z, Qt::ShiftModifier},
                                                               {Qt::Key_0, {}},
                                                               {Qt::Key_9, Qt::KeypadModifier},
                                                               {Qt::Key_Space, {}}};
    for (const auto& [pressed, held] : typed) {
        press(Qt::Key_Delete);
        press(pressed, held);
        EXPECT_FALSE(canKeep()) << pressed;
        EXPECT_TRUE(verdict().contains(u"typing"_qs)) << verdict().toStdString();
    }
    for (const auto held : {Qt::ControlModifier, Qt::AltModifier}) {
        press(Qt::Key_Delete);
        press(Qt::Key_9, held);
        EXPECT_TRUE(canKeep()) << held;
    }
    press(Qt::Key_Delete);
    press(Qt::Key_F9);
    EXPECT_TRUE(canKeep());
}

TEST_F(MacroRecording, KeysOutsideTheTableAreRefused) {
    begin();
    type("x");
    control.ExecuteCmd(Record);
    for (const auto pressed : {Qt::Key_Period, Qt::Key_Adiaeresis, Qt::Key_F17, Qt::Key_MediaPlay}) {
        press(pressed, Qt::ControlModifier);
        EXPECT_FALSE(canKeep()) << pressed;
        EXPECT_TRUE(verdict().startsWith(u"A hot key is made of"_qs));
        EXPECT_TRUE(part<StrokeEdit>("txtHotKey").text().isEmpty());
    }
}

TEST_F(MacroRecording, AConflictIsShownBeforeItIsTaken) {
    begin();
    type("x");
    control.ExecuteCmd(Record);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(canKeep());
    EXPECT_EQ(verdict(), u"This hot key will be taken away from \"Copy\" (Ctrl + C)."_qs);
    EXPECT_FALSE(hotKeys.hotKeysOf(Sci::SCI_COPY).size() < 2);
    keep();
    EXPECT_EQ(hotKeys.hotKeysOf(Sci::SCI_COPY), QList<HotKey>{hotKey(HotKeyStroke::Ctrl, 45)});
    EXPECT_EQ(hotKeys.HotKeyText(u"1"_qs), u"Ctrl + C"_qs);
}

TEST_F(MacroRecording, ThatAMacroWouldLoseItsOnlyHotKeyIsSaid) {
    const HotKeyStroke ctrlK{HotKeyStroke::Ctrl, u"K"_qs};
    put(2, {text(u"a"_qs)});
    hotKeys.bind(215, {ctrlK, {0, u"A"_qs}});
    hotKeys.bind(216, {ctrlK, {0, u"B"_qs}});
    hotKeys.bind(216, {ctrlK, {0, u"C"_qs}});
    hotKeys.bind(217, {ctrlK, {0, u"D"_qs}});
    hotKeys.bind(217, hotKey(HotKeyStroke::Ctrl, u'D'));
    Settings(registry).write(u"2Desc"_qs, u"First"_qs);
    begin();
    type("x");
    control.ExecuteCmd(Record);
    press(Qt::Key_K, Qt::ControlModifier);
    EXPECT_TRUE(canKeep());
    EXPECT_EQ(verdict(),
              u"This hot key will be taken away from \"First\" (Ctrl + K, A), \"Play macro 3\" (Ctrl + K, B), "
              "\"Play macro 3\" (Ctrl + K, C), \"Play macro 4\" (Ctrl + K, D). No hot key is left to \"First\", "
              "\"Play macro 3\", which will be deleted."_qs);
    keep();
    EXPECT_EQ(store.macro(1), Macro(Steps{text(u"a"_qs)})) << "the new one has another place";
    EXPECT_EQ(hotKeys.HotKeyText(u"1"_qs), u"Ctrl + K"_qs);
}

TEST_F(MacroRecording, ANewOneIsNotPutOverAMacroThatHasLostItsHotKey) {
    put(1, {text(u"lost"_qs)});
    begin();
    type("x");
    keepAs(Qt::Key_M);
    EXPECT_EQ(store.macro(0), Macro(Steps{text(u"lost"_qs)}));
    EXPECT_EQ(hotKeys.HotKeyText(u"2"_qs), u"Ctrl + Shift + M"_qs);
}

TEST_F(MacroRecording, TheHotKeyOfAMacroChosenAgainReplacesItInItsSlot) {
    put(4, {text(u"old"_qs)});
    hotKeys.bind(217, hotKey(HotKeyStroke::Ctrl, u'M'));
    Settings(registry).write(u"4Desc"_qs, u"My macro"_qs);
    begin();
    type("new");
    control.ExecuteCmd(Record);
    press(Qt::Key_M, Qt::ControlModifier);
    EXPECT_EQ(verdict(), u"The macro \"My macro\" has this hot key. It will be replaced."_qs);
    keep();
    EXPECT_EQ(store.macro(3), Macro(Steps{text(u"new"_qs)}));
    EXPECT_FALSE(store.macro(0).has_value());
    EXPECT_EQ(store.nameOf(4), u"My macro"_qs);
}

TEST_F(MacroRecording, ANameAndAPlaceInTheMenuAreGivenWithTheHotKey) {
    begin();
    type("x");
    control.ExecuteCmd(Record);
    part<QLineEdit>("txtName").setText(u"Sort & go"_qs);
    part<QCheckBox>("chkDisplay").setChecked(true);
    press(Qt::Key_M, Qt::ControlModifier);
    keep();
    EXPECT_EQ(store.nameOf(1), u"Sort & go"_qs);
    EXPECT_EQ(Settings(registry).forFrame(u"1Display"_qs), u"1"_qs);

    begin();
    type("y");
    control.ExecuteCmd(Record);
    press(Qt::Key_M, Qt::ControlModifier);
    keep();
    EXPECT_EQ(store.macro(0), Macro(Steps{text(u"y"_qs)}));
    EXPECT_EQ(store.nameOf(1), u"Sort & go"_qs) << "what is left empty stays";
    EXPECT_EQ(Settings(registry).forFrame(u"1Display"_qs), u"1"_qs);
}

TEST_F(MacroRecording, EachFieldOfTheDialogHasANameToBeReadOut) {
    begin();
    type("x");
    control.ExecuteCmd(Record);
    EXPECT_EQ(doubledMnemonics(*dialog()), QStringList());
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog()));
    QStringList reached;
    for (int field = 0; field < 6; ++field) {
        QWidget* focused = QApplication::focusWidget();
        reached << focused->objectName();
        EXPECT_FALSE(QAccessible::queryAccessibleInterface(focused)->text(QAccessible::Name).isEmpty())
            << reached.last().toStdString();
        QTest::keyClick(focused, Qt::Key_Tab);
    }
    EXPECT_EQ(reached, (QStringList{u"txtHotKey"_qs, u"txtName"_qs, u"chkDisplay"_qs, u"cmdCancel"_qs, u"lstSteps"_qs,
                                    u"txtHotKey"_qs}));
}

TEST_F(MacroRecording, ANewMacroHasNoNameOfOneThatLostItsHotKey) {
    Settings(registry).write(u"1Desc"_qs, u"Gone"_qs);
    Settings(registry).write(u"1Display"_qs, u"1"_qs);
    begin();
    type("x");
    keepAs(Qt::Key_M);
    EXPECT_EQ(store.nameOf(1), QString());
    EXPECT_EQ(Settings(registry).forFrame(u"1Display"_qs), u"0"_qs);
}

TEST_F(MacroRecording, AnEleventhIsRefusedWithAMessage) {
    for (int n = 1; n <= 10; ++n)
        hotKeys.bind(Record + n, hotKey(HotKeyStroke::Alt, static_cast<char16_t>(111 + n)));
    begin();
    EXPECT_FALSE(recording());
    EXPECT_TRUE(toldInABox().startsWith(u"There are ten macros already."_qs));
}

TEST_F(MacroRecording, WithTenMacrosMadeMeanwhileOnlyOneOfThemCanBeReplaced) {
    begin();
    type("x");
    for (int n = 1; n <= 10; ++n)
        hotKeys.bind(Record + n, hotKey(HotKeyStroke::Alt, static_cast<char16_t>(111 + n)));
    control.ExecuteCmd(Record);
    press(Qt::Key_M, Qt::ControlModifier);
    EXPECT_FALSE(canKeep());
    EXPECT_TRUE(verdict().startsWith(u"There are ten macros already."_qs));
    press(Qt::Key_Delete);
    press(Qt::Key_F3, Qt::AltModifier);
    EXPECT_TRUE(canKeep());
    keep();
    EXPECT_TRUE(store.macro(2).has_value());
}
