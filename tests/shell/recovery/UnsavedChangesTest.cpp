// Unsaved changes from one run of the frame to the next.

#include "document/RecoveredBar.h"
#include "document/frmSwitch.h"
#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"
#include "platform/FileState.h"
#include "platform/Paths.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/JournalBase.h"
#include "recovery/journals/Journals.h"
#include "shell/FrameFixture.h"
#include "shell/recovery/frmDifferences.h"
#include "support/FailingFileSystem.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace {

const QString lossNotice = u"The unsaved changes of '%1' come back at the next start."_qs;

class UnsavedChanges : public FrameFixture {
 protected:
    void startRun() {
        m_journals = std::make_unique<Journals>(journalFolder());
        m_frame = std::make_unique<frmMain>(services());
        m_frame->resize(900, 600);
        m_frame->Load();
        m_frame->show();
        QCoreApplication::processEvents();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !house().recovery.isAtWork(); }, 30'000));
    }
    /// As by a kill: nothing is closed.
    void breakRun() {
        ASSERT_TRUE(m_journals->flush(30s));
        m_frame.reset();
        m_journals.reset();
    }
    void endRun() {
        m_frame->close();
        m_frame.reset();
        m_journals.reset();
    }
    FrameServices services() {
        FrameServices given{m_prompts,     m_registry,   m_makePanel,   {}, {}, m_programFolder.path(),
                            m_shareFolder, m_fileExists, m_printDialogs};
        given.journals = m_journals.get();
        return given;
    }
    QString journalFolder() const { return m_folder.filePath(u"state/recovery"_qs); }
    bool leavesNoJournal() {
        EXPECT_TRUE(m_journals == nullptr || m_journals->flush(30s));
        return QDir(journalFolder()).isEmpty();
    }
    RecoveredBar* bar() { return active() == nullptr ? nullptr : active()->findChild<RecoveredBar*>(); }
    void click(const char* button) { bar()->findChild<QPushButton*>(QString::fromLatin1(button))->click(); }
    QString notice() { return house().status.text(1); }
    /// Over the first one of the active document.
    void typeByte() { QTest::keyClicks(active()->findChild<GridPane*>(u"PicHex"_qs), u"41"_qs); }

    /// A run that ended with this text typed before that of the file.
    QString typeAndBreak(const QString& typed, const QByteArray& bytes = "text\n") {
        QString file = fileOf(bytes);
        startRun();
        open(file);
        type(typed);
        breakRun();
        return file;
    }

    /// What an instance that was killed has typed at the start of the file. `limits`: with which bases are copied.
    void leaveText(const QString& file, std::string_view typed, FileSystemCalls& calls = FileSystemCalls::system(),
                   const Journals::Limits& limits = {}) const {
        Journals journals(journalFolder(), calls, limits);
        journals.begin(baseOf(file, JournalBase::View::Text))->insert(0, typed);
        EXPECT_TRUE(journals.flush(30s));
    }
    /// The same with the first bytes of a file.
    void leaveBytes(const QString& file, std::string_view bytes, FileSystemCalls& calls = FileSystemCalls::system(),
                    const Journals::Limits& limits = {}) const {
        Journals journals(journalFolder(), calls, limits);
        journals.begin(baseOf(file, JournalBase::View::Hex))->overwrite(0, bytes);
        EXPECT_TRUE(journals.flush(30s));
    }
    static JournalBase baseOf(const QString& file, JournalBase::View view) {
        JournalBase base;
        base.view = view;
        base.path = file;
        base.caption = FileNameOf(file);
        base.state = FileState::of(file);
        return base;
    }
    void activate(qsizetype number) { house().active.activate(documents().at(number)); }
    QString barText() { return bar() == nullptr ? QString() : bar()->findChild<QLabel*>()->text(); }
    QString summaryOfDifferences() {
        click("cmdDifferences");
        const QPointer<frmDifferences> form = m_frame->findChild<frmDifferences*>();
        EXPECT_TRUE(QTest::qWaitFor([form] { return form->isComplete(); }, 30'000));
        QString summary = form->findChild<QLabel*>(u"lblSummary"_qs)->text();
        delete form;
        return summary;
    }

    std::unique_ptr<Journals> m_journals;
};

}  // namespace

TEST_F(UnsavedChanges, ComeBackWithABarAndWithoutAQuestion) {
    const QString file = typeAndBreak(u"new "_qs);
    EXPECT_EQ(bytesOf(file), "text\n");
    startRun();
    ASSERT_EQ(documents().size(), 1);
    EXPECT_EQ(active()->filename, file);
    EXPECT_EQ(text(), u"new text\n"_qs);
    EXPECT_TRUE(active()->isChange);
    ASSERT_NE(bar(), nullptr);
    EXPECT_TRUE(active()->isUntouchedRecovery());
    EXPECT_EQ(tabs(), QStringList(u"a.txt"_qs));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    click("cmdKeep");
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(file), "new text\n");
    EXPECT_TRUE(leavesNoJournal());
    endRun();
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(UnsavedChanges, UntouchedStayAtTheEndWithoutAQuestion) {
    typeAndBreak(u"new "_qs);
    for (int turn = 0; turn < 3; ++turn) {
        startRun();
        ASSERT_EQ(documents().size(), 1);
        EXPECT_EQ(text(), u"new text\n"_qs);
        endRun();
    }
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(UnsavedChanges, UntouchedAreAskedAboutWhenTheirDocumentIsClosed) {
    typeAndBreak(u"new "_qs);
    startRun();
    m_prompts.answerNo();
    run("mnuFileClose");
    EXPECT_EQ(m_prompts.questions.size(), 1);
    EXPECT_TRUE(leavesNoJournal());
}

TEST_F(UnsavedChanges, KeptAreAskedAboutAtTheEnd) {
    const QString file = typeAndBreak(u"new "_qs);
    startRun();
    click("cmdKeep");
    m_prompts.answerYes();
    endRun();
    EXPECT_EQ(bytesOf(file), "new text\n");
    EXPECT_TRUE(leavesNoJournal());
}

TEST_F(UnsavedChanges, DiscardedAreGone) {
    const QString file = typeAndBreak(u"new "_qs);
    startRun();
    click("cmdDiscard");
    EXPECT_EQ(text(), u"text\n"_qs);
    EXPECT_FALSE(active()->isChange);
    EXPECT_TRUE(leavesNoJournal());
    endRun();
    EXPECT_EQ(bytesOf(file), "text\n");
}

TEST_F(UnsavedChanges, OfADocumentWithoutAFileComeBack) {
    startRun();
    m_frame->NewDocument();
    type(u"typed"_qs);
    breakRun();
    startRun();
    ASSERT_EQ(documents().size(), 1);
    EXPECT_EQ(text(), u"typed"_qs);
    EXPECT_EQ(active()->filename, QString());
    click("cmdDiscard");
    EXPECT_TRUE(QTest::qWaitFor([this] { return documents().isEmpty(); }, 30'000));
    EXPECT_TRUE(leavesNoJournal());
}

TEST_F(UnsavedChanges, OfDocumentsWithoutAFileHaveNamesOfTheirOwn) {
    startRun();
    for (const char* typed : {"one", "two"}) {
        m_frame->NewDocument();
        type(QLatin1String(typed));
    }
    breakRun();
    set("StartNewDocument", "1");
    startRun();
    m_frame->NewDocument();
    ASSERT_EQ(documents().size(), 3);
    QStringList captions;
    for (const frmDocument* document : documents())
        captions << document->Caption();
    EXPECT_EQ(captions, tabs());
    EXPECT_EQ(captions.removeDuplicates(), 0);
}

TEST_F(UnsavedChanges, AreShownByTheDocumentThatTheSessionOpened) {
    set("LoadLastFiles", "1");
    const QString file = fileOf("text\n");
    startRun();
    open(file);
    type(u"new "_qs);
    m_frame->writeKept();
    breakRun();
    startRun();
    ASSERT_EQ(documents().size(), 1);
    EXPECT_EQ(text(), u"new text\n"_qs);
    EXPECT_NE(bar(), nullptr);
}

TEST_F(UnsavedChanges, OfAFileThatWasChangedAreWholeAndSavedAfterAQuestion) {
    const QString file = typeAndBreak(u"new "_qs);
    fileOf("somebody else's\n");
    startRun();
    EXPECT_EQ(text(), u"new text\n"_qs);
    m_prompts.answerNo();
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(file), "somebody else's\n");
    EXPECT_EQ(m_prompts.questions, QStringList(u"'%1' has been changed on disk. Overwrite it ?"_qs.arg(file)));
    m_prompts.answerYes();
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(file), "new text\n");
    EXPECT_TRUE(leavesNoJournal());
}

TEST_F(UnsavedChanges, AreComparedWithTheFileAsItIsNow) {
    typeAndBreak(u"new "_qs);
    fileOf("text of today\n");
    startRun();
    click("cmdDifferences");
    auto* form = m_frame->findChild<frmDifferences*>();
    ASSERT_NE(form, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([form] { return form->isComplete(); }, 30'000));
    EXPECT_EQ(form->findChild<QPlainTextEdit*>()->toPlainText(), u"1   - text of today\n  1 + new text"_qs);
    EXPECT_TRUE(active()->isUntouchedRecovery());
    form->close();
}

TEST_F(UnsavedChanges, AreGoneAfterANo) {
    const QString file = fileOf("text\n");
    startRun();
    open(file);
    type(u"new "_qs);
    m_prompts.answerNo();
    run("mnuFileClose");
    EXPECT_TRUE(leavesNoJournal());
    EXPECT_EQ(notice(), QString());
    open(file);
    type(u"new "_qs);
    m_prompts.answerNo();
    endRun();
    EXPECT_TRUE(leavesNoJournal());
}

TEST_F(UnsavedChanges, OfADocumentThatTheYesDidNotSaveComeBack) {
    const QString file = fileOf("text\n");
    const QString other = fileOf("other\n", u"b.txt"_qs);
    startRun();
    open(file);
    type(u"new "_qs);
    frmDocument* changed = active();
    open(other);
    m_prompts.answerYes();  // saves the active document, which is the other one
    house().children.unload(changed);
    EXPECT_EQ(bytesOf(file), "text\n");
    EXPECT_EQ(notice(), lossNotice.arg(file));
    endRun();
    startRun();
    ASSERT_EQ(documents().size(), 1);
    EXPECT_EQ(text(), u"new text\n"_qs);
    EXPECT_EQ(active()->filename, file);
}

TEST_F(UnsavedChanges, OfBytesThatTheYesDidNotSaveComeBack) {
    const QString file = fileOf("bytes\n", u"a.bin"_qs);
    const QString other = fileOf("other\n", u"b.txt"_qs);
    startRun();
    m_frame->OpenFile(file, 0, false, false);
    typeByte();
    frmDocument* changed = active();
    open(other);
    m_prompts.answerYes();  // saves the active document, which is the other one
    house().children.unload(changed);
    EXPECT_EQ(bytesOf(file), "bytes\n");
    EXPECT_EQ(notice(), lossNotice.arg(file));
    endRun();
    startRun();
    ASSERT_EQ(documents().size(), 1);
    EXPECT_EQ(active()->filename, file);
    EXPECT_FALSE(active()->TextEdit());
    EXPECT_TRUE(active()->isChange);
}

TEST_F(UnsavedChanges, OfBytesThatCouldNotBeSavedAskAgainAndAreGoneAfterANo) {
    const QString file = fileOf("bytes\n", u"a.bin"_qs);
    startRun();
    m_frame->OpenFile(file, 0, false, false);
    typeByte();
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner));
    m_prompts.answerYes();
    m_prompts.answerNo();
    run("mnuFileClose");
    EXPECT_EQ(m_prompts.questions.size(), 2);
    EXPECT_TRUE(leavesNoJournal());
    EXPECT_EQ(notice(), QString());
    EXPECT_EQ(bytesOf(file), "bytes\n");
}

/// Into either mode.
TEST_F(UnsavedChanges, ThatCouldNotBeSavedBeforeASwitchComeBack) {
    for (const bool toText : {false, true}) {
        const QString file = fileOf("bytes\n", u"a.bin"_qs);
        startRun();
        m_frame->OpenFile(file, 0, false, !toText);
        toText ? typeByte() : type(u"A"_qs);
        ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner));
        QTimer::singleShot(0, active(), [] {
            auto* form = qobject_cast<frmSwitch*>(QApplication::activeModalWidget());
            ASSERT_NE(form, nullptr);
            form->accept();  // "Save the file before" is chosen
        });
        active()->setTextEdit(toText);
        EXPECT_EQ(active()->TextEdit(), toText);
        EXPECT_EQ(notice(), lossNotice.arg(file));
        EXPECT_EQ(bytesOf(file), "bytes\n");
        endRun();
        startRun();
        ASSERT_EQ(documents().size(), 1);
        EXPECT_EQ(active()->TextEdit(), !toText);
        EXPECT_TRUE(active()->isChange);
        click("cmdDiscard");
        EXPECT_TRUE(leavesNoJournal());
        endRun();
        ASSERT_TRUE(QFile::remove(file));
    }
}

TEST_F(UnsavedChanges, ThatCouldNotBeSavedAskAgainAndAreGoneAfterANo) {
    const QString file = fileOf("caf\xe9\n");
    startRun();
    open(file);
    type(u"ж"_qs);
    m_prompts.answerYes();
    m_prompts.answerNo();
    run("mnuFileClose");
    EXPECT_EQ(m_prompts.questions.size(), 2);
    EXPECT_EQ(bytesOf(file), "caf\xe9\n");
    EXPECT_TRUE(leavesNoJournal());
    EXPECT_EQ(notice(), QString());
}

TEST_F(UnsavedChanges, ThatTheirEncodingCannotHoldComeBack) {
    const QString file = typeAndBreak(u"ж"_qs, "caf\xe9\n");
    startRun();
    EXPECT_EQ(text(), u"жcafé\n"_qs);
    run("mnuFileSave");
    EXPECT_EQ(m_prompts.messages.size() + m_prompts.stops.size(), 1);
    EXPECT_EQ(bytesOf(file), "caf\xe9\n");
    breakRun();
    startRun();
    EXPECT_EQ(text(), u"жcafé\n"_qs);
}

TEST_F(UnsavedChanges, OfBytesComeBackAndAreCompared) {
    const QString file = fileOf(QByteArray(100, 'a'));
    startRun();
    m_frame->OpenFile(file, 0, false, false);
    auto* view = active()->findChild<ucHex*>();
    view->ReplaceBytes(u"62"_qs, 3);
    breakRun();
    startRun();
    ASSERT_EQ(documents().size(), 1);
    EXPECT_FALSE(active()->TextEdit());
    ASSERT_NE(bar(), nullptr);
    click("cmdDifferences");
    auto* form = m_frame->findChild<frmDifferences*>();
    ASSERT_TRUE(QTest::qWaitFor([form] { return form->isComplete(); }, 30'000));
    EXPECT_EQ(form->findChild<QLabel*>(u"lblSummary"_qs)->text(), u"1 byte differs from the file as it is now."_qs);
    EXPECT_EQ(form->findChild<QPlainTextEdit*>()->toPlainText(), u"00000002 - 00000002   1 byte"_qs);
    form->close();
    click("cmdDiscard");
    EXPECT_TRUE(leavesNoJournal());
    EXPECT_FALSE(active()->isChange);
    EXPECT_EQ(bytesOf(file), QByteArray(100, 'a'));
}

TEST_F(UnsavedChanges, OfThreeInstancesComeBackAsOneDocumentOfTheFileAndTwoUntitledOnes) {
    const QString file = fileOf("text\n");
    for (const char* typed : {"1 ", "2 ", "3 "})
        leaveText(file, typed);
    startRun();
    ASSERT_EQ(documents().size(), 3);
    EXPECT_EQ(active()->filename, file);
    EXPECT_EQ(text(), u"3 text\n"_qs);
    EXPECT_FALSE(barText().contains(u"version"_qs));
    for (const int number : {1, 2}) {
        activate(number);
        EXPECT_EQ(active()->filename, QString());
        EXPECT_EQ(text(), u"%1 text\n"_qs.arg(3 - number));
        EXPECT_TRUE(barText().endsWith(u" were recovered. They are another version of 'a.txt'."_qs))
            << barText().toStdString();
        EXPECT_EQ(summaryOfDifferences(), u"- in the file as it is now: 1 line.  + recovered: 1 line."_qs);
    }
    EXPECT_EQ(tabs().value(0), u"a.txt"_qs);
    EXPECT_EQ(tabs().removeDuplicates(), 0);

    click("cmdDiscard");
    EXPECT_TRUE(QTest::qWaitFor([this] { return documents().size() == 2; }, 30'000));
    EXPECT_EQ(bytesOf(file), "text\n");
    activate(0);
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(file), "3 text\n");
    activate(1);
    click("cmdKeep");
    const QString other = path(u"other.txt"_qs);
    m_prompts.answerSavePath(other);
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(other), "2 text\n");
    EXPECT_EQ(bytesOf(file), "3 text\n");
    EXPECT_TRUE(leavesNoJournal());
    endRun();
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(UnsavedChanges, OfSeveralInstancesComeBackAgainUntouchedInTheSameOrder) {
    const QString file = fileOf("text\n");
    for (const char* typed : {"1 ", "2 ", "3 "})
        leaveText(file, typed);
    for (int turn = 0; turn < 3; ++turn) {
        startRun();
        ASSERT_EQ(documents().size(), 3);
        for (const int number : {0, 1, 2}) {
            EXPECT_EQ(documents().at(number)->filename, number == 0 ? file : QString());
            EXPECT_EQ(documents().at(number)->GetEditor()->Text(), u"%1 text\n"_qs.arg(3 - number));
        }
        if (turn == 1)
            breakRun();
        else
            endRun();
    }
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(UnsavedChanges, OfTextAndBytesOfOneFileComeBackBoth) {
    const QString file = fileOf("text\n");
    leaveText(file, "typed ");
    leaveBytes(file, "BY");
    startRun();
    ASSERT_EQ(documents().size(), 2);
    EXPECT_EQ(active()->filename, file);
    EXPECT_FALSE(active()->TextEdit());
    EXPECT_EQ(summaryOfDifferences(), u"2 bytes differ from the file as it is now."_qs);
    activate(1);
    EXPECT_TRUE(active()->TextEdit());
    EXPECT_EQ(active()->filename, QString());
    EXPECT_EQ(text(), u"typed text\n"_qs);
    activate(0);
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(file), "BYxt\n");
    endRun();
    EXPECT_TRUE(m_prompts.questions.isEmpty());
    startRun();
    ASSERT_EQ(documents().size(), 1);
    EXPECT_EQ(active()->filename, file);
    EXPECT_EQ(text(), u"typed text\n"_qs);
    EXPECT_TRUE(barText().endsWith(u"The file has been changed since."_qs));
}

TEST_F(UnsavedChanges, OfBytesBesideTextOfTheirFileAreUntitled) {
    const QString file = fileOf("text\n");
    leaveBytes(file, "BY");
    leaveText(file, "typed ");
    startRun();
    ASSERT_EQ(documents().size(), 2);
    EXPECT_EQ(text(), u"typed text\n"_qs);
    activate(1);
    EXPECT_FALSE(active()->TextEdit());
    EXPECT_EQ(active()->filename, QString());
    EXPECT_TRUE(barText().contains(u"another version"_qs));
    EXPECT_EQ(summaryOfDifferences(), u"2 bytes differ from the file as it is now."_qs);
    const QString other = path(u"other.bin"_qs);
    m_prompts.answerSavePath(other);
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(other), "BYxt\n");
    EXPECT_EQ(active()->filename, other);
    EXPECT_EQ(active()->recoveredBar(), nullptr);
    activate(0);
    click("cmdDiscard");
    EXPECT_EQ(text(), u"text\n"_qs);
    EXPECT_TRUE(leavesNoJournal());
}

TEST_F(UnsavedChanges, OfBytesBesideTextAreDiscardedWithoutAQuestion) {
    const QString file = fileOf("text\n");
    leaveBytes(file, "BY");
    leaveText(file, "typed ");
    startRun();
    activate(1);
    click("cmdDiscard");
    EXPECT_TRUE(QTest::qWaitFor([this] { return documents().size() == 1; }, 30'000));
    activate(0);
    click("cmdDiscard");
    EXPECT_TRUE(leavesNoJournal());
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(UnsavedChanges, OfAVersionOutliveASaveOfTheOtherWithoutACopyOfTheFile) {
    FailingFileSystem calls;
    calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
    Journals::Limits limits;
    limits.copied = 2;
    for (const bool isText : {true, false}) {
        const QString file = fileOf("text\n");
        if (isText)
            leaveText(file, "old ", calls, limits);
        else
            leaveBytes(file, "BY", calls, limits);
        leaveText(file, "typed ", calls, limits);
        ASSERT_TRUE(QDir(journalFolder()).entryList({u"*.base"_qs}).isEmpty());
        startRun();
        ASSERT_EQ(documents().size(), 2);
        run("mnuFileSave");
        EXPECT_EQ(bytesOf(file), "typed text\n");
        breakRun();
        startRun();
        ASSERT_EQ(documents().size(), 1);
        EXPECT_EQ(active()->filename, file);
        EXPECT_EQ(active()->TextEdit(), isText);
        EXPECT_EQ(summaryOfDifferences(), isText ? u"- in the file as it is now: 1 line.  + recovered: 1 line."_qs
                                                 : u"11 bytes differ from the file as it is now."_qs);
        click("cmdDiscard");
        EXPECT_TRUE(leavesNoJournal());
        endRun();
    }
}

TEST_F(UnsavedChanges, BesideAnOpenDocumentThatIsChangedAreUntitled) {
    const QString file = fileOf("text\n");
    startRun();
    open(file);
    type(u"typed "_qs);
    leaveText(file, "other ");
    house().recovery.start();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !house().recovery.isAtWork(); }, 30'000));
    ASSERT_EQ(documents().size(), 2);
    EXPECT_EQ(text(), u"typed text\n"_qs);
    EXPECT_EQ(documents().at(1)->filename, QString());
    EXPECT_EQ(documents().at(1)->GetEditor()->Text(), u"other text\n"_qs);
}
