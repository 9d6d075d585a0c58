#include "document/frmSwitch.h"
#include "document/rtCM.h"
#include "editor/held/TextLoader.h"
#include "hex/forms/frmAnsiTable.h"
#include "hex/forms/frmConvert.h"
#include "hex/grid/Grid.h"
#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"
#include "shell/FrameFixture.h"
#include "shell/bars/StatusPanels.h"
#include "shell/commands/ExpectedCommands.h"
#include "shell/documents/SystemClose.h"

#include <QDialog>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTimer>

/// Documents in hex mode, as the frame holds them.
class HexDocuments : public FrameFixture {
 protected:
    /// More than a block of a copy, so that events run in the middle of one.
    static constexpr qsizetype SeveralBlocks = 1'300'000;

    QString binary(const QString& name = u"a.bin"_qs) const { return fileOf(QByteArray("\1one two", 8), name); }
    static ucHex& hexOf(const frmDocument& document) { return *document.findChild<ucHex*>(u"ucHex1"_qs); }
    ucHex& hex() { return hexOf(*active()); }
    GridPane& pane() { return *hex().findChild<GridPane*>(u"PicHex"_qs); }
    void typeBytes(const QString& digits) { QTest::keyClicks(&pane(), digits); }
    void whileSwitching(std::function<void(frmSwitch&)> answer) {
        QTimer::singleShot(0, m_frame.get(), [answer = std::move(answer)] {
            auto* form = qobject_cast<frmSwitch*>(QApplication::activeModalWidget());
            ASSERT_NE(form, nullptr);
            answer(*form);
        });
    }
    void expectMode(bool isHex) {
        EXPECT_EQ(active()->TextEdit(), !isHex);
        EXPECT_EQ(button("ShowHex")->isChecked(), isHex);
        EXPECT_EQ(entry("mnuToggleHex")->isChecked(), isHex);
        EXPECT_EQ(entry("mnuGotoPage")->isEnabled(), isHex);
        EXPECT_EQ(entry("mnuGotoLine")->isEnabled(), !isHex);
    }
    void expectEnabled(char state) {
        for (const ExpectedCommand& expected : ExpectedCommands) {
            if (QLatin1String(expected.enabled) == QLatin1String("TLHX"))
                continue;
            EXPECT_EQ(entry(expected.name)->isEnabled(), strchr(expected.enabled, state) != nullptr)
                << expected.name << ' ' << state;
        }
        for (const ExpectedButton& expected : ExpectedButtons) {
            EXPECT_EQ(button(expected.key)->isEnabled(), strchr(expected.enabled, state) != nullptr)
                << expected.key << ' ' << state;
        }
    }
};

TEST_F(HexDocuments, ABinaryFileComesUpAsHex) {
    start();
    const QString file = binary();
    open(file);
    expectMode(true);
    EXPECT_EQ(tabs(), QStringList(u"a.bin"_qs));
    EXPECT_EQ(house().tabs.image(0), 1);
    EXPECT_EQ(active()->Caption(), file);
    EXPECT_EQ(house().status.text(2), u"Pg 1/1, Pos 0/7"_qs);
    EXPECT_EQ(house().status.text(4), u"8"_qs);
    EXPECT_EQ(m_frame->focusWidget(), &pane());
    EXPECT_EQ(recentFiles(), QStringList(file));
}

TEST_F(HexDocuments, WithTheCheckOffItComesUpAsText) {
    set("CheckHexModeWhenOpen", "0");
    start();
    open(binary());
    expectMode(false);
}

TEST_F(HexDocuments, EveryCommandIsEnabledAsItsTableSaysInAllFourStates) {
    start();
    open(fileOf("text"));
    struct Row {
        const char* command;
        char state;
    };
    for (const Row& row :
         {Row{"mnuToggleHex", 'H'}, Row{"mnuReadonly", 'X'}, Row{"mnuToggleHex", 'L'}, Row{"mnuReadonly", 'T'},
          Row{"mnuReadonly", 'L'}, Row{"mnuToggleHex", 'X'}, Row{"mnuReadonly", 'H'}, Row{"mnuToggleHex", 'T'}}) {
        run(row.command);
        expectEnabled(row.state);
        EXPECT_EQ(entry("mnuReadonly")->isChecked(), row.state == 'L' || row.state == 'X');
    }
}

TEST_F(HexDocuments, TheLockOfATextThatCanOnlyBeShownEndsWithTheTextView) {
    start();
    const QString file = fileOf("one\r\ntwo\n" + QByteArray(TextLoader::UncutLine, 'x'));
    open(file);
    expectEnabled('L');
    EXPECT_EQ(house().tabs.image(0), 3);
    run("mnuToggleHex");
    expectEnabled('H');
    EXPECT_FALSE(entry("mnuReadonly")->isChecked());
    EXPECT_EQ(house().tabs.image(0), 1);
    run("mnuReadonly");
    expectEnabled('X');
    run("mnuReadonly");
    expectEnabled('H');
    typeBytes(u"41"_qs);
    run("mnuFileSaveAll");
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_EQ(bytesOf(file).left(4), "Ane\r");
    run("mnuToggleHex");
    expectEnabled('L');
    EXPECT_EQ(house().tabs.image(0), 3);
}

TEST_F(HexDocuments, TheSwitchWorksByEntryAndByButton) {
    start();
    open(fileOf("text"));
    for (int i = 0; i < 2; ++i) {
        run("mnuToggleHex");
        expectMode(true);
        EXPECT_EQ(m_frame->focusWidget(), &pane());
        EXPECT_EQ(house().status.text(2), u"Pg 1/1, Pos 0/3"_qs);
        button("ShowHex")->trigger();
        expectMode(false);
        EXPECT_EQ(m_frame->focusWidget(), &textWidget());
        EXPECT_TRUE(house().status.text(2).startsWith(u"Ln 1 / 1"_qs));
    }
}

TEST_F(HexDocuments, ACancelledSwitchLeavesButtonAndMarkAsTheyWere) {
    start();
    open(fileOf("text"));
    type(u"x"_qs);
    whileSwitching([](frmSwitch& form) { form.reject(); });
    button("ShowHex")->trigger();
    expectMode(false);
    EXPECT_EQ(active()->GetEditor()->Text(), u"xtext"_qs);
}

TEST_F(HexDocuments, SavingBeforeTheSwitchSavesTheFile) {
    start();
    const QString file = fileOf("text");
    open(file);
    type(u"x"_qs);
    whileSwitching([](frmSwitch& form) { form.accept(); });
    run("mnuToggleHex");
    expectMode(true);
    EXPECT_EQ(bytesOf(file), "xtext");
    typeBytes(u"41"_qs);
    whileSwitching([](frmSwitch& form) { form.accept(); });
    run("mnuToggleHex");
    expectMode(false);
    EXPECT_EQ(bytesOf(file), "Atext");
    EXPECT_EQ(active()->GetEditor()->Text(), u"Atext"_qs);
}

TEST_F(HexDocuments, ASaveDialogThatIsCancelledDoesNotHoldTheSwitch) {
    start();
    type(u"x"_qs);
    m_prompts.answerSavePath(QString());
    whileSwitching([](frmSwitch& form) { form.accept(); });
    run("mnuToggleHex");
    expectMode(true);
    EXPECT_FALSE(hex().FileOpen());
    run("mnuToggleHex");
    expectMode(false);
    EXPECT_EQ(active()->GetEditor()->Text(), u"x"_qs);
    m_prompts.answerNo();
    run("mnuFileClose");
}

TEST_F(HexDocuments, TheModeFollowsTheActiveDocument) {
    start();
    open(binary());
    open(fileOf("text"));
    expectMode(false);
    strip().setCurrentIndex(0);
    expectMode(true);
    strip().setCurrentIndex(1);
    expectMode(false);
}

TEST_F(HexDocuments, TheFirstByteChangesTheTabAndSavingGivesItBack) {
    start();
    const QString file = binary();
    open(file);
    typeBytes(u"41"_qs);
    EXPECT_EQ(house().tabs.image(0), 2);
    run("mnuFileSave");
    EXPECT_EQ(house().tabs.image(0), 1);
    EXPECT_EQ(bytesOf(file), "Aone two");
    EXPECT_TRUE(active()->close());
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(HexDocuments, SaveAsWritesAllOfItUnderTheNewName) {
    start();
    open(binary());
    const QString target = path(u"new.bin"_qs);
    m_prompts.answerSavePath(target);
    run("mnuFileSaveAs");
    EXPECT_EQ(bytesOf(target), QByteArray("\1one two", 8));
    EXPECT_EQ(active()->filename, target);
    expectMode(true);
    EXPECT_EQ(tabs(), QStringList(u"new.bin"_qs));
}

TEST_F(HexDocuments, TheStatusBarSaysThatSaveAsWritesWhatWasReplaced) {
    start();
    open(binary());
    const QString first = active()->filename;
    const auto said = [this] { return house().status.text(1); };
    EXPECT_EQ(said(), QString());
    hex().ReplaceAll(u"6F "_qs, u"30 "_qs, 0);
    const QString notice = u"Save As writes what was replaced or filled."_qs;
    EXPECT_EQ(said(), notice);
    run("mnuFileSave");
    EXPECT_EQ(said(), notice);
    EXPECT_EQ(bytesOf(first), QByteArray("\1one two", 8));
    open(binary(u"b.bin"_qs));
    EXPECT_EQ(said(), QString());
    open(first);
    EXPECT_EQ(said(), notice);
    m_prompts.answerSavePath(path(u"new.bin"_qs));
    run("mnuFileSaveAs");
    EXPECT_EQ(said(), QString());
    EXPECT_EQ(bytesOf(path(u"new.bin"_qs)), QByteArray("\0010ne tw0", 8));
}

TEST_F(HexDocuments, SavingAnUntitledTextWritesItInHexModeToo) {
    start();
    QTest::keyClicks(active()->GetEditor()->focusProxy(), u"typed"_qs);
    whileSwitching([](frmSwitch& form) {
        form.findChild<QRadioButton*>(u"Option1(1)"_qs)->click();
        form.findChild<QPushButton*>(u"cmdSwitch"_qs)->click();
    });
    run("mnuToggleHex");
    expectMode(true);
    const QString target = path(u"new.txt"_qs);
    m_prompts.answerSavePath(target);
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(target), "typed");
    EXPECT_EQ(active()->filename, target);
    EXPECT_FALSE(active()->isChange);
}

TEST_F(HexDocuments, ClosingAChangedOneAsks) {
    start();
    const QString file = binary();
    for (const bool yes : {false, true}) {
        open(file);
        typeBytes(u"4"_qs);  // the digit alone is a change
        yes ? m_prompts.answerYes() : m_prompts.answerNo();
        run("mnuFileClose");
        EXPECT_EQ(m_prompts.questions.takeFirst(), u"Save %1 ?"_qs.arg(file));
        EXPECT_EQ(bytesOf(file).at(0), yes ? 4 : 1);
        EXPECT_TRUE(documents().isEmpty());
    }
}

TEST_F(HexDocuments, TheEndOfTheProgramAsksToo) {
    start();
    const QString file = binary();
    open(file);
    typeBytes(u"41"_qs);
    m_prompts.answerYes();
    m_frame->close();
    EXPECT_EQ(bytesOf(file), "Aone two");
}

TEST_F(HexDocuments, AReloadComesBackAsTextWithItsCommands) {
    start();
    const QString file = binary();
    open(file);
    active()->LastUpdate = active()->KnownUpdate = u"2000/01/01 00:00:00"_qs;
    m_prompts.answerYes();
    m_frame->CheckFileUpdate();
    expectMode(false);
    EXPECT_TRUE(house().status.text(2).startsWith(u"Ln 1"_qs));
}

TEST_F(HexDocuments, F6LeadsBackToThePaneInUse) {
    start();
    open(binary());
    m_frame->activateWindow();
    QApplication::processEvents();
    QTest::keyClick(&pane(), Qt::Key_Tab);
    QWidget* const textPane = hex().findChild<GridPane*>(u"PicText"_qs);
    ASSERT_EQ(m_frame->focusWidget(), textPane);
    QStringList round;
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(m_frame->focusWidget(), Qt::Key_F6);
        round << m_frame->focusWidget()->objectName();
    }
    EXPECT_EQ(round.last(), u"PicText"_qs) << round.join(u' ').toStdString();
}

TEST_F(HexDocuments, ButtonsAndBookmarksAreReachedByKeyboard) {
    start();
    open(binary());
    m_frame->activateWindow();
    QApplication::processEvents();
    ASSERT_EQ(m_frame->focusWidget(), &pane());
    QTest::keyClick(&pane(), Qt::Key_F6);
    QStringList walked;
    for (int i = 0; i < 40 && !hex().isAncestorOf(m_frame->focusWidget()); ++i)
        QTest::keyClick(m_frame->focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    for (int i = 0; i < 10 && qobject_cast<GridPane*>(m_frame->focusWidget()) == nullptr; ++i) {
        walked << m_frame->focusWidget()->objectName();
        QTest::keyClick(m_frame->focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    }
    EXPECT_TRUE(walked.contains(u"lsBookmark"_qs)) << walked.join(u' ').toStdString();
    EXPECT_TRUE(walked.contains(u"lblSelect"_qs)) << walked.join(u' ').toStdString();
    EXPECT_EQ(walked.filter(u"tbScroll."_qs).size(), 6) << walked.join(u' ').toStdString();
}

// Loading and saving run the event loop

TEST_F(HexDocuments, WhileBytesLoadNothingClosesAndASecondFileWaits) {
    start();
    QByteArray bytes(SeveralBlocks, 'a');
    bytes[0] = 1;
    const QString file = fileOf(bytes, u"big.bin"_qs);
    const QString second = binary();
    int tried = 0;
    QObject::connect(active(), &QObject::destroyed, m_frame.get(), [] { FAIL() << "the document went"; });
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, m_frame.get(), [&] {
        if (!hexOf(*documents().first()).isVisible() || hexOf(*documents().first()).FileOpen())
            return;
        if (tried++ > 0)
            return;
        EXPECT_TRUE(house().systemClose.isGreyed());
        EXPECT_FALSE(m_frame->close());
        run("mnuFileClose");
        run("mnuToggleHex");
        open(second);
        EXPECT_EQ(documents().size(), 1);
    });
    timer.start(0);
    open(file);
    timer.stop();
    EXPECT_EQ(tried > 0, true);
    QApplication::processEvents();
    ASSERT_EQ(documents().size(), 2);
    EXPECT_EQ(documents().at(0)->filename, file);
    EXPECT_EQ(documents().at(1)->filename, second);
    EXPECT_TRUE(hexOf(*documents().at(0)).FileOpen());
    EXPECT_TRUE(hexOf(*documents().at(1)).FileOpen());
    QObject::disconnect(documents().at(0), nullptr, m_frame.get(), nullptr);
    EXPECT_TRUE(m_frame->close());
}

TEST_F(HexDocuments, WhileBytesLoadASaveIsRefusedWithoutAQuestion) {
    start();
    const QByteArray bytes(SeveralBlocks, '\1');
    const QString file = fileOf(bytes, u"big.bin"_qs);
    QSignalSpy notices(active(), &frmDocument::Notice);
    bool tried = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, m_frame.get(), [&] {
        if (tried || !hexOf(*active()).isVisible() || hexOf(*active()).FileOpen())
            return;
        tried = true;
        for (const char* command : {"mnuFileSave", "mnuFileSaveAs", "mnuFileSaveAll"})
            run(command);
    });
    timer.start(0);
    open(file);
    timer.stop();
    ASSERT_TRUE(tried);
    EXPECT_TRUE(m_prompts.fileDialogs.empty());
    ASSERT_EQ(notices.count(), 4);
    EXPECT_EQ(notices[0][0].toString(), u"Not saved: the file is still being read or written."_qs);
    EXPECT_EQ(notices[3][0].toString(), QString());
    EXPECT_EQ(active()->filename, file);
    typeBytes(u"41"_qs);
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(file), 'A' + bytes.mid(1));
    EXPECT_EQ(notices.count(), 4);
}

TEST_F(HexDocuments, ADocumentThatLoadsDoesNotSpeakForTheOneInFront) {
    start();
    const QString file = fileOf(QByteArray(SeveralBlocks, '\1'), u"big.bin"_qs);
    bool left = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, m_frame.get(), [&] {
        const ucHex& loading = hexOf(*documents().first());
        if (left || !loading.isVisible() || loading.FileOpen())
            return;
        left = true;
        run("mnuFileNew");
    });
    timer.start(0);
    open(file);
    timer.stop();
    ASSERT_TRUE(left);
    EXPECT_EQ(active(), documents().at(1));
    expectMode(false);
    EXPECT_EQ(m_frame->focusWidget(), &textWidget());
    EXPECT_TRUE(house().status.text(2).startsWith(u"Ln 1 / 1"_qs));
    EXPECT_EQ(house().status.text(4), QString());
    strip().setCurrentIndex(0);
    expectMode(true);
}

TEST_F(HexDocuments, ExitChosenWhileBytesAreSavedRunsWhenTheyAre) {
    start();
    const QString file = fileOf(QByteArray(SeveralBlocks, '\1'), u"big.bin"_qs);
    open(file);
    typeBytes(u"41"_qs);
    bool tried = false;
    QTimer::singleShot(0, m_frame.get(), [&] {
        tried = true;
        EXPECT_TRUE(active()->isChange);
        EXPECT_FALSE(m_frame->close());
        run("mnuFileClose");
        run("mnuToggleHex");
        run("mnuFileExit");
        EXPECT_TRUE(m_frame->isVisible());
    });
    run("mnuFileSave");
    EXPECT_TRUE(tried);
    QApplication::processEvents();
    EXPECT_FALSE(m_frame->isVisible());
    EXPECT_EQ(bytesOf(file).size(), SeveralBlocks);
    EXPECT_EQ(bytesOf(file).at(0), 'A');
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(HexDocuments, WhatTheyAskForIsShownByTheFrame) {
    start();
    open(binary());
    hex().cmdProperties();
    QString asked;
    QTimer::singleShot(0, m_frame.get(), [&] {
        auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(form, nullptr);
        asked = form->objectName();
        form->reject();
    });
    hex().cmdLanguage();
    EXPECT_EQ(asked, u"LanguageChooser"_qs);
    EXPECT_EQ(m_frame->findChild<QDialog*>(u"frmFileProperties"_qs), nullptr);
    Q_EMIT hex().PropertiesRequest(binary());
    auto* properties = m_frame->findChild<QDialog*>(u"frmFileProperties"_qs);
    ASSERT_NE(properties, nullptr);
    EXPECT_EQ(properties->findChild<QLabel*>(u"lblPath"_qs)->text(), binary());
    QTemporaryDir programs;
    QFile program(programs.filePath(u"xcalc"_qs));
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\n/usr/bin/touch '" + QFile::encodeName(programs.path()) + "/started'\n");
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    program.close();
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(programs.path()));
    hex().cmdCalculator();
    qputenv("PATH", before);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(programs.filePath(u"started"_qs)); }, 20'000));
}

TEST_F(HexDocuments, ArrangingTheWindowsLeavesTheKeyboardInTheBytes) {
    start();
    m_frame->activateWindow();
    open(fileOf("text"));
    open(binary(u"b.bin"_qs));
    open(binary());
    house().children.maximise(active());
    QApplication::processEvents();
    for (const char* command : {"mnuWindowCascade", "mnuWindowTileHorizontal", "mnuWindowTileVertical"}) {
        for (const bool fromMenu : {false, true}) {
            active()->setFocus();
            ASSERT_EQ(m_frame->focusWidget(), &pane());
            if (fromMenu)
                m_frame->menuBar()->setFocus(Qt::MenuBarFocusReason);
            run(command);
            QApplication::processEvents();
            EXPECT_EQ(m_frame->focusWidget(), &pane()) << command << fromMenu;
            house().children.maximise(active());
            EXPECT_EQ(m_frame->focusWidget(), &pane()) << command << fromMenu;
        }
    }
}

TEST_F(HexDocuments, KeysOfAFormStayInTheForm) {
    start();
    open(fileOf("text"));
    open(binary());
    frmDocument* const before = active();
    m_frame->activateWindow();
    QApplication::processEvents();
    QTimer::singleShot(0, m_frame.get(), [&] {
        auto* form = QApplication::activeModalWidget();
        ASSERT_NE(form, nullptr);
        auto* tabs = form->findChild<QTabBar*>(u"TabStrip1"_qs);
        ASSERT_NE(tabs, nullptr);
        form->activateWindow();
        QApplication::processEvents();
        QWidget* const focused = form->focusWidget();
        ASSERT_EQ(tabs->currentIndex(), 3);
        QTest::keyPress(focused, Qt::Key_Control, Qt::ControlModifier);
        QTest::keyClick(focused, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QTest::keyRelease(focused, Qt::Key_Control);
        EXPECT_EQ(tabs->currentIndex(), 2);
        EXPECT_EQ(active(), before);
        form->close();
    });
    run("mnuFind");
    EXPECT_EQ(active(), before);
}

TEST_F(HexDocuments, FormsGoWithTheirDocument) {
    start();
    open(binary());
    QTimer::singleShot(0, m_frame.get(), [&] {
        ASSERT_NE(QApplication::activeModalWidget(), nullptr);
        house().children.unload(active());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    });
    hex().cmdFindHex();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

// The Tools menu

TEST_F(HexDocuments, ToolsStandBesideTheFrameOnceEach) {
    start();
    for (const char* command : {"mnuAnsiTable", "mnuConvertor"}) {
        run(command);
        run(command);
    }
    for (QDialog* form : {static_cast<QDialog*>(m_frame->findChild<frmAnsiTable*>()),
                          static_cast<QDialog*>(m_frame->findChild<frmConvert*>())}) {
        ASSERT_NE(form, nullptr);
        EXPECT_TRUE(form->isVisible());
        EXPECT_FALSE(form->isModal());
    }
    EXPECT_EQ(m_frame->findChildren<frmAnsiTable*>().size(), 1);
    EXPECT_EQ(m_frame->findChildren<frmConvert*>().size(), 1);
    type(u"x"_qs);
    EXPECT_EQ(active()->GetEditor()->Text(), u"x"_qs);

    QTest::keyClick(m_frame->findChild<frmAnsiTable*>(), Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(m_frame->findChild<frmAnsiTable*>(), nullptr);
    run("mnuAnsiTable");
    EXPECT_TRUE(m_frame->findChild<frmAnsiTable*>()->isVisible());
    m_prompts.answerNo();
    run("mnuFileClose");
}
