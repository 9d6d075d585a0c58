#include "shell/FrameFixture.h"

/// How often the display is updated: counted where it is requested, in a whole frame.
class ReportsOfDocuments : public FrameFixture {
 protected:
    using What = ActiveDocument::What;

    void begin() {
        start();
        const auto count = [this](frmDocument*, ActiveDocument::Changes what) {
            for (const What each : {What::State, What::File, What::Mode, What::Language, What::Caret, What::View})
                m_changes[each] += what & each ? 1 : 0;
        };
        QObject::connect(&house().active, &ActiveDocument::changed, m_frame.get(), count);
        // One of these is enabled in each mode. It is disabled again, so that each setting of the states is noticed.
        for (QAction* each : {entry("mnuCountAll"), entry("mnuSelectBlock")}) {
            each->setEnabled(false);
            QObject::connect(each, &QAction::enabledChanged, m_frame.get(), [this, each](bool enabled) {
                m_timesCommandsWereSet += enabled ? 1 : 0;
                each->setEnabled(false);
            });
        }
        forget();
    }
    void forget() {
        m_changes.clear();
        m_timesCommandsWereSet = 0;
        m_explorer.calls.clear();
    }
    int timesCommandsWereSet() const { return m_timesCommandsWereSet; }
    int timesPositionWasAsked() { return m_changes[What::Caret]; }
    int timesTabWasCaptioned() { return m_changes[What::State]; }
    void press(Qt::Key key) {
        forget();
        QTest::keyClick(&textWidget(), key);
    }

    std::map<What, int> m_changes;
    int m_timesCommandsWereSet = 0;
};

TEST_F(ReportsOfDocuments, OneOpenedFileSetsTheCommandStatesOnce) {
    begin();
    open(fileOf("1"));
    EXPECT_EQ(timesCommandsWereSet(), 1);
    EXPECT_EQ(timesTabWasCaptioned(), 1);
}

TEST_F(ReportsOfDocuments, AFileThatNeedsANewDocumentSetsThemForItsWindowAndForItsContents) {
    begin();
    open(fileOf("1", u"1.txt"_qs));
    forget();
    open(fileOf("2", u"2.txt"_qs));
    EXPECT_EQ(timesCommandsWereSet(), 2);
    EXPECT_EQ(timesTabWasCaptioned(), 1);
}

TEST_F(ReportsOfDocuments, ANewDocumentAndATabClickSetTheCommandStatesOnce) {
    begin();
    run("mnuFileNew");
    EXPECT_EQ(timesCommandsWereSet(), 1);
    forget();
    strip().setCurrentIndex(0);
    EXPECT_EQ(active()->fIdx, u"F1"_qs);
    EXPECT_EQ(timesCommandsWereSet(), 1);
    EXPECT_EQ(m_explorer.take(), QStringList(u"FileSelected F1"_qs));
}

TEST_F(ReportsOfDocuments, OneKeyAsksForTheCursorPositionOnce) {
    begin();
    type(u"one\ntwo"_qs);
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_Left, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Return, Qt::Key_Up}) {
        press(key);
        EXPECT_EQ(timesPositionWasAsked(), 1) << key;
        EXPECT_EQ(house().status.text(2), active()->GetCursorPos()) << key;
    }
    press(Qt::Key_Shift);
    EXPECT_EQ(timesPositionWasAsked(), 0);
}

TEST_F(ReportsOfDocuments, AMoveAfterAnEditThatLeftTheCaretIsAskedFor) {
    begin();
    type(u"one"_qs);
    select(0, 0);
    press(Qt::Key_Delete);
    press(Qt::Key_Right);
    EXPECT_EQ(timesPositionWasAsked(), 1);
    EXPECT_EQ(house().status.text(2), u"Ln 1 / 1, Col 2, Pos 2"_qs);
}

TEST_F(ReportsOfDocuments, TheFirstEditCaptionsTheTabAndTheNextDoesNot) {
    begin();
    press(Qt::Key_A);
    EXPECT_EQ(timesTabWasCaptioned(), 1);
    EXPECT_EQ(timesCommandsWereSet(), 0);
    press(Qt::Key_B);
    EXPECT_EQ(timesTabWasCaptioned(), 0);
}

TEST_F(ReportsOfDocuments, OneSaveCaptionsTheTabOnce) {
    begin();
    const QString file = fileOf("1");
    open(file);
    for (const char* command : {"mnuFileSave", "mnuUTF8"}) {
        type(u"x"_qs);
        forget();
        run(command);
        EXPECT_EQ(timesTabWasCaptioned(), 1) << command;
        EXPECT_EQ(timesCommandsWereSet(), 1) << command;
        EXPECT_EQ(m_explorer.take(), QStringList(u"SetFile %1 F1 1"_qs.arg(file))) << command;
        EXPECT_EQ(house().tabs.image(0), 1) << command;
    }
}

TEST_F(ReportsOfDocuments, SavingUnderAnotherNameCaptionsTheTabOnce) {
    begin();
    open(fileOf("1"));
    forget();
    m_prompts.answerSavePath(path(u"b.txt"_qs));
    run("mnuFileSaveAs");
    EXPECT_EQ(timesTabWasCaptioned(), 1);
    EXPECT_EQ(m_changes[What::File], 1);
    EXPECT_EQ(tabs(), QStringList(u"b.txt"_qs));
}

TEST_F(ReportsOfDocuments, OneSwitchSetsTheCommandStatesOnce) {
    begin();
    open(fileOf("123"));
    for (const bool hex : {true, false}) {
        forget();
        run("mnuToggleHex");
        EXPECT_EQ(active()->TextEdit(), !hex);
        EXPECT_EQ(timesCommandsWereSet(), 1);
        EXPECT_EQ(timesTabWasCaptioned(), 1);
    }
}

TEST_F(ReportsOfDocuments, LockingSetsTheCommandStatesAndTheTabOnce) {
    begin();
    run("mnuReadonly");
    EXPECT_EQ(timesCommandsWereSet(), 1);
    EXPECT_EQ(timesTabWasCaptioned(), 1);
    EXPECT_EQ(house().tabs.image(0), 3);
}

TEST_F(ReportsOfDocuments, WhatHappensToAnotherDocumentLeavesTheCommandsAlone) {
    begin();
    const QString file = fileOf("1");
    open(file);
    frmDocument* first = active();
    run("mnuFileNew");
    const QString position = house().status.text(2);
    forget();
    first->GetEditor()->AddText(u"\nx"_qs);
    EXPECT_EQ(house().status.text(2), position);
    m_frame->SaveDocument(first, true, 1);
    EXPECT_EQ(timesCommandsWereSet(), 0);
    EXPECT_EQ(house().status.text(4), QString());
    EXPECT_EQ(house().tabs.image(0), 1);
}

TEST_F(ReportsOfDocuments, AListenerThatFailsDoesNotKeepTheOthersFromBeingCalled) {
    begin();
    m_explorer.fails = true;
    static QStringList lines;
    lines.clear();
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) { lines.append(text); });
    open(fileOf("1"), 1);
    qInstallMessageHandler(before);
    ASSERT_FALSE(lines.isEmpty());
    for (const QString& line : lines) {
        EXPECT_EQ(line, u"SetFile was given up: the panel is not ready"_qs);
    }
    EXPECT_EQ(recentFiles(), QStringList(path(u"a.txt"_qs)));
    EXPECT_FALSE(button("Save")->isEnabled());
    EXPECT_EQ(house().status.text(4), u"1"_qs);
}
