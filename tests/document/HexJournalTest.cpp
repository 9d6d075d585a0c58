// What is kept of the changes of a hex document, and how it comes back.

#include "document/frmDocument.h"
#include "document/frmSwitch.h"
#include "document/rtCM.h"
#include "hex/SomeBytes.h"
#include "hex/grid/Grid.h"
#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journals.h"
#include "recovery/saves/SaveRecords.h"
#include "recovery/saves/SaveRecovery.h"
#include "support/FailingFileSystem.h"
#include "support/RecordingHost.h"
#include "support/ScriptedServices.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <memory>
#include <random>

namespace {

using Outcome = RecoveryOutcome;

constexpr std::chrono::seconds Long{60};
const QString KeptNotice = u"The unsaved changes of '%1' come back at the next start."_qs;

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
}

/// The delays are so long that nothing is written but by flush() and at the end.
Journals::Limits patient() {
    Journals::Limits limits;
    limits.afterLast = std::chrono::hours(1);
    limits.whileEditing = std::chrono::hours(1);
    return limits;
}

/// A document in hex mode, its journals, and a second life after a kill.
class HexJournals : public testing::Test {
 protected:
    explicit HexJournals(qint64 hexBlockSize = WorkingCopy::BlockSize) : m_given(hexBlockSize) {
        m_given.all.journals = m_journals.get();
    }

    QString at(const QString& name) const { return m_folder.filePath(name); }
    QString file(const QByteArray& bytes, const QString& name = u"a.bin"_qs) const {
        QFile out(at(name));
        EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write(bytes) == bytes.size());
        return out.fileName();
    }
    bool open(const QByteArray& bytes) {
        m_document = std::make_unique<frmDocument>(&m_host, m_given.all);
        m_document->show();
        return m_document->OpenFile(file(bytes), false, false, false);
    }

    static ucHex& hexOf(frmDocument& document) { return *document.findChild<ucHex*>(u"ucHex1"_qs); }
    ucHex& hex() { return hexOf(*m_document); }
    static QByteArray workingBytes(frmDocument& document) { return readFile(hexOf(document).TempFileName()); }
    void press(const QString& digits) { QTest::keyClicks(hex().findChild<GridPane*>(u"PicHex"_qs), digits); }
    void pressKey(Qt::Key key) { QTest::keyClick(hex().findChild<GridPane*>(u"PicHex"_qs), key); }
    /// Types a byte and goes on to the next.
    void typeByte(const QString& digits) {
        press(digits);
        pressKey(Qt::Key_Right);
    }

    /// What a start would find if the process were killed once everything is on the disk.
    std::vector<std::unique_ptr<FoundJournal>> foundAfterKill() {
        EXPECT_TRUE(m_journals->flush(Long));
        return foundNow();
    }
    /// The same if it were killed at this moment.
    std::vector<std::unique_ptr<FoundJournal>> foundNow() {
        const QString copy = at(u"copy%1"_qs.arg(++m_copies));
        QDir().mkpath(copy);
        QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const QDir folder(m_recovery);
        for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden)) {
            EXPECT_TRUE(QFile::copy(folder.filePath(name), copy + u'/' + name));
        }
        m_second = std::make_unique<Journals>(copy, FileSystemCalls::system(), patient());
        return m_second->takeAbandoned();
    }
    std::size_t countAfterKill() { return foundAfterKill().size(); }
    /// A second document with what was found.
    Outcome bringBack() { return bringBack(foundAfterKill()); }
    Outcome bringBack(std::vector<std::unique_ptr<FoundJournal>> found) {
        m_again.reset();
        EXPECT_EQ(found.size(), 1U);
        if (found.size() != 1)
            return Outcome::Failed;
        m_restored = found.front()->restore();
        m_secondGiven.all.journals = m_second.get();
        m_again = std::make_unique<frmDocument>(&m_host, m_secondGiven.all);
        return m_again->bringBack(std::move(found.front()));
    }
    void expectSame() {
        ASSERT_EQ(bringBack(), Outcome::Shown);
        EXPECT_EQ(workingBytes(*m_again), workingBytes(*m_document));
        EXPECT_EQ(hexOf(*m_again).edits().state().marks, hex().edits().state().marks);
        EXPECT_EQ(hexOf(*m_again).edits().state().undo, hex().edits().state().undo);
    }
    void expectSameBytes() {
        ASSERT_EQ(bringBack(), Outcome::Shown);
        EXPECT_EQ(workingBytes(*m_again), workingBytes(*m_document));
    }
    void close() {
        QCloseEvent event;
        QApplication::sendEvent(m_document.get(), &event);
        m_document.reset();
    }
    void answerSwitch(int option) {
        QTimer::singleShot(0, m_document.get(), [option] {
            auto* form = qobject_cast<frmSwitch*>(QApplication::activeModalWidget());
            ASSERT_NE(form, nullptr);
            form->findChild<QRadioButton*>(u"Option1(%1)"_qs.arg(option))->click();
            form->accept();
        });
    }

    QTemporaryDir m_folder;
    QString m_recovery = m_folder.filePath(u"recovery"_qs);
    std::unique_ptr<Journals> m_journals = std::make_unique<Journals>(m_recovery, FileSystemCalls::system(), patient());
    std::unique_ptr<Journals> m_second;
    ScriptedServices m_given;
    ScriptedServices m_secondGiven;
    RecordingHost m_host;
    std::unique_ptr<frmDocument> m_document;
    std::unique_ptr<frmDocument> m_again;
    FoundJournal::Outcome m_restored = FoundJournal::Outcome::Failed;
    int m_copies = 0;
};

}  // namespace

TEST_F(HexJournals, BeginWithTheFirstChange) {
    ASSERT_TRUE(open(someBytes(1000)));
    hex().MoveNextPage();
    hex().CountBytes(u"01 "_qs, 0);
    EXPECT_TRUE(m_journals->flush(Long));
    EXPECT_FALSE(QDir(m_recovery).exists());
    press(u"A"_qs);
    EXPECT_EQ(countAfterKill(), 1U);
}

TEST_F(HexJournals, BringBackBytesMarksUndoAndState) {
    ASSERT_TRUE(open(someBytes(1000)));
    for (const QString& digits : {u"11"_qs, u"22"_qs, u"33"_qs})
        typeByte(digits);
    hex().cmdUndo();
    expectSame();
    EXPECT_EQ(m_again->filename, m_document->filename);
    EXPECT_TRUE(m_again->isChange);
    EXPECT_FALSE(m_again->isNew);
    EXPECT_EQ(m_again->DocIcon(), m_document->DocIcon());
    EXPECT_FALSE(m_again->TextEdit());
    EXPECT_TRUE(m_again->holdsFile());
    EXPECT_FALSE(m_again->IsChangedOnDisk());
    EXPECT_EQ(readFile(at(u"a.bin"_qs)), someBytes(1000));
    // And it is saved like any other.
    EXPECT_TRUE(m_again->SaveFile(m_again->filename));
    EXPECT_EQ(readFile(at(u"a.bin"_qs)), workingBytes(*m_document));
    EXPECT_FALSE(m_again->isChange);
    EXPECT_TRUE(m_second->flush(Long));
    EXPECT_EQ(QDir(at(u"copy1"_qs)).entryList(QDir::Files), QStringList());
}

TEST_F(HexJournals, HaveTheFirstDigitOfAByteAtAnyMoment) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    press(u"7"_qs);
    ASSERT_EQ(bringBack(), Outcome::Shown);
    EXPECT_EQ(workingBytes(*m_again).first(3), QByteArray("\x11\x07\x02", 3));
    press(u"C"_qs);
    expectSame();
    pressKey(Qt::Key_Right);
    press(u"5"_qs);
    pressKey(Qt::Key_Right);
    expectSame();
    press(u"9"_qs);
    hex().cmdUndo();
    expectSame();
}

/// The first digit makes the byte what it was at first, for a moment.
TEST_F(HexJournals, KeepTheMarkOfAByteThatItsFirstDigitWouldRestore) {
    ASSERT_TRUE(open(QByteArray("\x07\x01", 2)));
    press(u"AA"_qs);
    press(u"7"_qs);
    press(u"B"_qs);
    EXPECT_EQ(hex().edits().state().marks.front(), (std::pair<FilePosition, quint8>(1, 0x07)));
    expectSame();
}

TEST_F(HexJournals, OfMoreEditsThanTheUndoLogHolds) {
    ASSERT_TRUE(open(someBytes(1000)));
    for (int i = 0; i < 40; ++i)
        typeByte(u"%1"_qs.arg(i + 10));
    for (int i = 0; i < 35; ++i)
        hex().cmdUndo();
    expectSame();
    EXPECT_EQ(workingBytes(*m_document).first(9), QByteArray("\x10\x11\x12\x13\x14\x15\x16\x17\x18"));
}

TEST_F(HexJournals, HaveWhatWasReplacedAndFilled) {
    ASSERT_TRUE(open(someBytes(5000)));
    hex().ReplaceAll(u"05 06 "_qs, u"EE EE EE "_qs, 0);
    hex().ReplaceBytes(u"01 02 03 "_qs, 4999);
    hex().fillBlock(Offset(100), Offset(4000), 0xCC);
    EXPECT_FALSE(m_document->isChange);
    expectSameBytes();
    // Brought back it counts as changed: a plain save writes all of it.
    EXPECT_TRUE(m_again->isChange);
    EXPECT_TRUE(m_again->SaveFile(m_again->filename));
    EXPECT_EQ(readFile(at(u"a.bin"_qs)), workingBytes(*m_document));
}

TEST_F(HexJournals, OfRandomEditsBringBackEverything) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&](int end) { return std::uniform_int_distribution<int>(0, end - 1)(random); };
        ASSERT_TRUE(open(someBytes(700 + 13 * seed)));
        const QString digits = u"0123456789ABCDEF"_qs;
        const std::vector<std::function<void()>> edits{
            [&] { press(digits.mid(below(16), 1)); },
            [&] { press(digits.mid(below(15), 2)); },
            [&] { press(u"00"_qs); },
            [&] { pressKey(Qt::Key_Right); },
            [&] { pressKey(Qt::Key_Down); },
            [&] { pressKey(Qt::Key_PageDown); },
            [&] { pressKey(Qt::Key_PageUp); },
            [&] { hex().cmdUndo(); },
            [&] { hex().ReplaceBytes(u"AB CD "_qs, 1 + below(750)); },
            [&] { hex().fillBlock(Offset(below(700)), Offset(below(700)), static_cast<quint8>(below(256))); },
            [&] { hex().ReplaceAll(u"07 "_qs, u"08 09 "_qs, 0); },
        };
        for (int i = 0; i < 300; ++i)
            edits[static_cast<std::size_t>(below(static_cast<int>(edits.size())))]();
        hex().finishNibble();
        expectSame();
        m_document->forgetChanges();
        m_document.reset();
    }
}

TEST_F(HexJournals, GoOnAfterTheyWereBroughtBack) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    typeByte(u"22"_qs);
    ASSERT_EQ(bringBack(), Outcome::Shown);
    m_document->forgetChanges();
    // The second life is the first one of a third.
    std::swap(m_document, m_again);
    std::swap(m_journals, m_second);
    m_recovery = at(u"copy1"_qs);
    hex().cmdUndo();
    hex().cmdUndo();
    hex().cmdUndo();
    typeByte(u"44"_qs);
    hex().fillBlock(Offset(500), Offset(600), 1);
    expectSame();
    EXPECT_EQ(workingBytes(*m_document).first(3), QByteArray("\x44\x01\x02", 3));
}

TEST_F(HexJournals, EndWithASave) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    EXPECT_EQ(countAfterKill(), 1U);
    EXPECT_TRUE(m_document->SaveFile(m_document->filename));
    EXPECT_EQ(countAfterKill(), 0U);
    press(u"2"_qs);  // a byte of one digit
    EXPECT_TRUE(m_document->SaveFile(m_document->filename));
    EXPECT_EQ(countAfterKill(), 0U);
}

TEST_F(HexJournals, BeginAgainBehindASave) {
    ASSERT_TRUE(open(someBytes(1000)));
    for (const QString& digits : {u"11"_qs, u"22"_qs, u"33"_qs})
        typeByte(digits);
    EXPECT_TRUE(m_document->SaveFile(m_document->filename));
    // Undone are bytes of before the save.
    hex().cmdUndo();
    hex().cmdUndo();
    expectSameBytes();
    typeByte(u"44"_qs);
    hex().cmdUndo();
    hex().cmdUndo();
    hex().cmdUndo();
    expectSameBytes();
    EXPECT_EQ(workingBytes(*m_again), someBytes(1000));
}

TEST_F(HexJournals, HaveAnotherFileAsTheirBaseAfterASaveUnderItsName) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    EXPECT_TRUE(m_document->SaveFile(at(u"b.bin"_qs), -1, true));
    EXPECT_EQ(countAfterKill(), 0U);
    typeByte(u"22"_qs);
    expectSameBytes();
    EXPECT_EQ(m_again->filename, at(u"b.bin"_qs));
}

/// A plain save does not write what was replaced or filled, and says that it is saved.
TEST_F(HexJournals, GoOnWhenASaveHasNothingToWrite) {
    ASSERT_TRUE(open(someBytes(1000)));
    hex().fillBlock(Offset(100), Offset(200), 0xCC);
    EXPECT_TRUE(m_document->SaveFile(m_document->filename));
    EXPECT_EQ(readFile(at(u"a.bin"_qs)), someBytes(1000));
    expectSameBytes();
    EXPECT_TRUE(m_document->SaveFile(m_document->filename, -1, true));
    EXPECT_EQ(countAfterKill(), 0U);
}

TEST_F(HexJournals, GoOnWhenASaveFails) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    EXPECT_FALSE(m_document->SaveFile(at(u"no/such/folder/a.bin"_qs)));
    typeByte(u"22"_qs);
    expectSame();
}

TEST_F(HexJournals, EndWithAReload) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    m_document->ReloadFile();
    EXPECT_EQ(countAfterKill(), 0U);
}

TEST_F(HexJournals, StayWhenAReloadFails) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    const QByteArray bytes = workingBytes(*m_document);
    ASSERT_TRUE(m_journals->flush(Long));
    QFile::remove(at(u"a.bin"_qs));
    EXPECT_FALSE(m_document->OpenFile(m_document->filename, false, false, false));
    ASSERT_EQ(bringBack(), Outcome::Shown);
    EXPECT_EQ(workingBytes(*m_again), bytes);
}

TEST_F(HexJournals, EndWithASwitchThatGivesTheChangesUp) {
    ASSERT_TRUE(open("some text"));
    typeByte(u"41"_qs);
    answerSwitch(1);
    m_document->SwitchMode(true);
    EXPECT_TRUE(m_document->TextEdit());
    EXPECT_EQ(countAfterKill(), 0U);
}

/// The frame under test does not save at all, like one whose save has failed.
TEST_F(HexJournals, StayWhenTheSaveBeforeASwitchFails) {
    ASSERT_TRUE(open("some text"));
    typeByte(u"41"_qs);
    const QByteArray bytes = workingBytes(*m_document);
    const QSignalSpy notices(m_document.get(), &frmDocument::PassingNotice);
    answerSwitch(0);
    m_document->SwitchMode(true);
    EXPECT_TRUE(m_document->TextEdit());
    ASSERT_EQ(notices.count(), 1);
    EXPECT_EQ(notices.first().first().toString(), KeptNotice.arg(m_document->Caption()));
    ASSERT_EQ(bringBack(), Outcome::Shown);
    EXPECT_EQ(workingBytes(*m_again), bytes);
}

TEST_F(HexJournals, AreNotSpokenOfWhenASwitchKeepsOrGivesUpTheChanges) {
    ASSERT_TRUE(open("some text"));
    typeByte(u"41"_qs);
    const QSignalSpy notices(m_document.get(), &frmDocument::PassingNotice);
    QTimer::singleShot(0, m_document.get(), [] { QApplication::activeModalWidget()->close(); });
    m_document->SwitchMode(true);
    EXPECT_FALSE(m_document->TextEdit());
    EXPECT_EQ(countAfterKill(), 1U);
    answerSwitch(1);
    m_document->SwitchMode(true);
    EXPECT_TRUE(m_document->TextEdit());
    EXPECT_EQ(notices.count(), 0);
}

/// A text without a file waits in its view, and is still there on the way back.
TEST_F(HexJournals, OfATextWithoutAFileGoesOnAfterASwitch) {
    m_document = std::make_unique<frmDocument>(&m_host, m_given.all);
    m_document->show();
    const QSignalSpy notices(m_document.get(), &frmDocument::PassingNotice);
    QTest::keyClicks(m_document->GetEditor()->focusProxy(), u"one"_qs);
    for (const bool toText : {false, true}) {
        if (!toText)
            answerSwitch(0);
        m_document->SwitchMode(toText);
        EXPECT_EQ(m_document->TextEdit(), toText);
        EXPECT_EQ(countAfterKill(), 1U);
    }
    QTest::keyClicks(m_document->GetEditor()->focusProxy(), u" two"_qs);
    EXPECT_EQ(notices.count(), 0);
    const auto found = foundAfterKill();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front()->restore(), FoundJournal::Outcome::Restored);
    EXPECT_EQ(readFile(found.front()->textPath()), QByteArray("one two"));
}

TEST_F(HexJournals, OfATextStayToo) {
    ASSERT_TRUE(open("some text"));
    ASSERT_TRUE(m_document->OpenFile(at(u"a.bin"_qs), false, false, true));
    QTest::keyClicks(m_document->GetEditor()->focusProxy(), u"more of "_qs);
    const QSignalSpy notices(m_document.get(), &frmDocument::PassingNotice);
    answerSwitch(0);
    m_document->SwitchMode(false);
    EXPECT_FALSE(m_document->TextEdit());
    ASSERT_EQ(notices.count(), 1);
    EXPECT_EQ(notices.first().first().toString(), KeptNotice.arg(m_document->Caption()));
    const auto found = foundAfterKill();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front()->restore(), FoundJournal::Outcome::Restored);
    EXPECT_EQ(readFile(found.front()->textPath()), QByteArray("more of some text"));
}

TEST_F(HexJournals, StayWhenTheDocumentGoesWhileItIsChanged) {
    ASSERT_TRUE(open(someBytes(100)));
    typeByte(u"11"_qs);
    const QByteArray bytes = workingBytes(*m_document);
    close();
    ASSERT_EQ(bringBack(), Outcome::Shown);
    EXPECT_EQ(workingBytes(*m_again), bytes);
}

TEST_F(HexJournals, EndWithTheAnswerThatTheChangesAreNotWanted) {
    ASSERT_TRUE(open(someBytes(100)));
    typeByte(u"11"_qs);
    m_document->forgetChanges();
    close();
    EXPECT_EQ(countAfterKill(), 0U);
}

TEST_F(HexJournals, OfFillsAloneStayUntilTheDocumentIsClosed) {
    ASSERT_TRUE(open(someBytes(100)));
    hex().fillBlock(Offset(0), Offset(9), 0xCC);
    m_document.reset();  // as at the end of a session, without a close
    EXPECT_EQ(bringBack(), Outcome::Shown);
    QDir(m_recovery).removeRecursively();
    ASSERT_TRUE(open(someBytes(100)));
    hex().fillBlock(Offset(0), Offset(9), 0xCC);
    close();
    EXPECT_EQ(countAfterKill(), 0U);
}

TEST_F(HexJournals, WithTheBytesOfTheFileAreNotBroughtBack) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    hex().cmdUndo();
    EXPECT_EQ(bringBack(), Outcome::SameAsFile);
    EXPECT_FALSE(m_again->isChange);
    EXPECT_TRUE(m_again->filename.isEmpty());
    // A save that was cut short behind its last byte.
    typeByte(u"22"_qs);
    ASSERT_TRUE(m_journals->flush(Long));
    file(workingBytes(*m_document));
    EXPECT_EQ(bringBack(), Outcome::SameAsFile);
}

TEST_F(HexJournals, OfAFileThatIsAnotherNowAreWhole) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    ASSERT_TRUE(m_journals->flush(Long));
    file("another one");
    expectSame();
    EXPECT_TRUE(m_again->IsChangedOnDisk());
    QFile::remove(at(u"a.bin"_qs));
    expectSame();
}

TEST_F(HexJournals, OfAFileThatWasChangedBeforeTheFirstEditAreWholeToo) {
    ASSERT_TRUE(open(someBytes(1000)));
    file(someBytes(500));
    typeByte(u"11"_qs);
    ASSERT_TRUE(m_journals->flush(Long));  // finds that the file is another one
    typeByte(u"22"_qs);
    hex().cmdUndo();
    expectSameBytes();
    hex().cmdUndo();
    press(u"3"_qs);
    press(u"3"_qs);
    hex().fillBlock(Offset(500), Offset(600), 1);
    expectSameBytes();
}

/// Nothing is changed any more after the first edit.
TEST_F(HexJournals, OfAFileThatWasChangedBeforeAreWholeWithoutAnotherEdit) {
    ASSERT_TRUE(open(someBytes(1000)));
    file(someBytes(500));
    typeByte(u"11"_qs);
    ASSERT_TRUE(m_journals->flush(Long));
    EXPECT_TRUE(QTest::qWaitFor([this] { return bringBack() == Outcome::Shown; }, 60'000));
    EXPECT_EQ(workingBytes(*m_again), workingBytes(*m_document));
}

TEST_F(HexJournals, AreWholeWhenTheDocumentGoesAtOnce) {
    ASSERT_TRUE(open(someBytes(1000)));
    file(someBytes(500));
    typeByte(u"11"_qs);
    ASSERT_TRUE(m_journals->flush(Long));
    const QByteArray bytes = workingBytes(*m_document);
    m_document.reset();
    EXPECT_EQ(bringBack(), Outcome::Shown);
    EXPECT_EQ(workingBytes(*m_again), bytes);
}

/// As of a file which is too large to be copied where it cannot be cloned.
class HexJournalsWithoutCopy : public HexJournals {
 protected:
    HexJournalsWithoutCopy() {
        m_calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
        Journals::Limits limits = patient();
        limits.copied = 1;
        m_journals = std::make_unique<Journals>(m_recovery, m_calls, limits);
        m_given.all.journals = m_journals.get();
    }
    ~HexJournalsWithoutCopy() override {
        m_document.reset();
        m_journals.reset();
    }
    void changeFileAfterTheLastEdit() {
        ASSERT_TRUE(open(someBytes(1000)));
        typeByte(u"11"_qs);
        ASSERT_TRUE(m_journals->flush(Long));
        file(someBytes(500));
        m_bytes = workingBytes(*m_document);
    }
    void expectBytes() {
        ASSERT_EQ(bringBack(), Outcome::Shown);
        EXPECT_EQ(workingBytes(*m_again), m_bytes);
    }

    FailingFileSystem m_calls;
    QByteArray m_bytes;
};

TEST_F(HexJournalsWithoutCopy, AreOfNoUseWhenTheFileIsChangedAndNobodyNotices) {
    changeFileAfterTheLastEdit();
    EXPECT_NE(bringBack(), Outcome::Shown);
    EXPECT_EQ(m_restored, FoundJournal::Outcome::Lost);
}

TEST_F(HexJournalsWithoutCopy, AreWholeWhenTheChangeIsNoticed) {
    changeFileAfterTheLastEdit();
    m_document->noteFileChange();
    expectBytes();
}

TEST_F(HexJournalsWithoutCopy, AreWholeWhenTheProcessEnds) {
    changeFileAfterTheLastEdit();
    m_document->completeJournals();
    expectBytes();
}

TEST_F(HexJournalsWithoutCopy, AreWholeWhenTheDocumentIsDestroyed) {
    changeFileAfterTheLastEdit();
    m_document.reset();
    expectBytes();
}

TEST_F(HexJournals, LeaveADocumentAsItWasWhenTheyCannotBeBroughtBack) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    auto found = foundAfterKill();
    ASSERT_EQ(found.size(), 1U);
    ASSERT_EQ(found.front()->restore(), FoundJournal::Outcome::Restored);
    m_again = std::make_unique<frmDocument>(&m_host, m_secondGiven.all);
    ASSERT_TRUE(m_again->OpenFile(at(u"a.bin"_qs), false, false, true));
    m_secondGiven.hexCalls.fail(SystemCall::Open, 0, ENOSPC);
    EXPECT_EQ(m_again->bringBack(std::move(found.front())), Outcome::Failed);
    EXPECT_TRUE(m_again->TextEdit());
    EXPECT_FALSE(m_again->isChange);
    EXPECT_EQ(m_again->filename, at(u"a.bin"_qs));
    EXPECT_EQ(m_secondGiven.prompts.messages, QStringList());
}

TEST_F(HexJournals, AreNotKeptWithoutAPlaceForThem) {
    m_given.all.journals = nullptr;
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    EXPECT_TRUE(m_document->SaveFile(m_document->filename));
    typeByte(u"22"_qs);
    m_document.reset();
    EXPECT_FALSE(QDir(m_recovery).exists());
}

TEST_F(HexJournals, OfALargeFillOrManyReplacementsAreSmall) {
    ASSERT_TRUE(open(QByteArray(300'000, 'x')));
    hex().fillBlock(Offset(0), Offset(299'998), 0xCC);
    ASSERT_TRUE(m_journals->flush(Long));
    const auto journalSize = [this] {
        qint64 size = 0;
        for (const QFileInfo& info : QDir(m_recovery).entryInfoList({u"*.journal"_qs}))
            size += info.size();
        return size;
    };
    const qint64 before = journalSize();
    EXPECT_LT(before, 1000);
    const int replaced = hex().ReplaceAll(u"CC "_qs, u"DD EE "_qs, 0);
    EXPECT_GT(replaced, 250'000);
    ASSERT_TRUE(m_journals->flush(Long));
    EXPECT_LT(journalSize() - before, replaced * (20LL + 2));
    expectSameBytes();
}

namespace {

/// Saves and loads run the event loop after each block.
class HexJournalsInBlocks : public HexJournals {
 protected:
    HexJournalsInBlocks() : HexJournals(64) {}

    template <typename Action>
    void whileSaving(Action action) {
        QTimer::singleShot(0, m_document.get(), action);
    }
};

}  // namespace

TEST_F(HexJournalsInBlocks, HaveWhatWasChangedDuringASave) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    whileSaving([this] {
        typeByte(u"22"_qs);
        hex().fillBlock(Offset(700), Offset(710), 3);
        hex().cmdUndo();
        typeByte(u"33"_qs);
        press(u"4"_qs);
    });
    EXPECT_TRUE(m_document->SaveFile(m_document->filename));
    EXPECT_TRUE(m_document->isChange);
    ASSERT_EQ(bringBack(), Outcome::Shown);
    hex().finishNibble();
    EXPECT_EQ(workingBytes(*m_again), workingBytes(*m_document));
    EXPECT_EQ(workingBytes(*m_again).first(4), QByteArray("\x11\x33\x04\x03", 4));
}

TEST_F(HexJournalsInBlocks, OfChangesDuringASaveAreNeverGoneBeforeTheNextOneIsThere) {
    const auto names = [this] { return QDir(m_recovery).entryList({u"*.journal"_qs}, QDir::Files); };
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    ASSERT_TRUE(m_journals->flush(Long));
    const QStringList before = names();
    whileSaving([this] {
        typeByte(u"22"_qs);
        // Killed now, and
        const auto found = foundAfterKill();
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found.front()->restore(), FoundJournal::Outcome::Restored);
    });
    EXPECT_TRUE(m_document->SaveFile(m_document->filename));
    EXPECT_EQ(readFile(m_document->filename), '\x11' + someBytes(1000).mid(1));
    // when the save is over: without a flush.
    ASSERT_TRUE(QTest::qWaitFor([&] { return names().size() == 1 && names() != before; }, 60'000));
    ASSERT_EQ(bringBack(foundNow()), Outcome::Shown);
    EXPECT_EQ(workingBytes(*m_again), workingBytes(*m_document));
    EXPECT_EQ(workingBytes(*m_again).first(3), QByteArray("\x11\x22\x02", 3));
}

TEST_F(HexJournalsInBlocks, OfAFailedSaveHaveWhatWasChangedMeanwhile) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    ASSERT_TRUE(m_journals->flush(Long));
    m_given.hexCalls.fail(SystemCall::Flush, 0, EIO);
    whileSaving([this] { typeByte(u"22"_qs); });
    EXPECT_FALSE(m_document->SaveFile(m_document->filename));
    expectSame();
    EXPECT_EQ(workingBytes(*m_again).first(3), QByteArray("\x11\x22\x02", 3));
}

/// The first edit is on its way to the disk when the save changes the file that it starts from.
TEST_F(HexJournalsInBlocks, ThatLoseTheirBaseToAFailedSaveAreWhole) {
    ASSERT_TRUE(open(someBytes(1000)));
    typeByte(u"11"_qs);
    m_given.hexCalls.fail(SystemCall::Flush, 0, EIO);
    EXPECT_FALSE(m_document->SaveFile(m_document->filename));
    typeByte(u"22"_qs);
    ASSERT_TRUE(m_journals->flush(Long));
    EXPECT_TRUE(QTest::qWaitFor([this] { return bringBack() == Outcome::Shown; }, 60'000));
    EXPECT_EQ(workingBytes(*m_again), workingBytes(*m_document));
}

namespace {

/// With records of the saves, and what a start would find of them.
class HexJournalsAndRecords : public HexJournalsInBlocks {
 protected:
    void SetUp() override { WriteWitness::setOfProcess(&m_records); }
    void TearDown() override { WriteWitness::setOfProcess(nullptr); }

    SaveRecords m_records{m_folder.filePath(u"saves"_qs)};
};

}  // namespace

/// The record is made of the bytes before they are written.
TEST_F(HexJournalsAndRecords, ASaveThatIsKilledWhileSomebodyTypesIsCompleted) {
    const QByteArray first = someBytes(200'000);
    ASSERT_TRUE(open(first));
    hex().fillBlock(Offset(0), Offset(199'999), 0xAA);
    QTemporaryDir atTheKill;
    const QString copy = atTheKill.filePath(u"a.bin"_qs);
    int turns = 0;
    QTimer typing;
    typing.callOnTimeout([&] {
        hex().fillBlock(Offset(turns * 600), Offset(turns * 600 + 9), static_cast<quint8>(turns));
        ++turns;
        const QByteArray now = QFile::exists(copy) ? first : readFile(m_document->filename);
        if (now == first || now == QByteArray(200'000, '\xAA'))
            return;
        // The kill: the file is half-written.
        EXPECT_TRUE(QFile::copy(m_document->filename, copy));
        QDir(atTheKill.path()).mkdir(u"saves"_qs);
        const QDir records(m_folder.filePath(u"saves"_qs));
        for (const QString& name : records.entryList(QDir::Files | QDir::Hidden)) {
            EXPECT_TRUE(QFile::copy(records.filePath(name), atTheKill.filePath(u"saves/"_qs + name)));
        }
    });
    typing.start(0);
    ASSERT_TRUE(m_document->SaveFile(m_document->filename, -1, true));
    typing.stop();
    ASSERT_TRUE(QFile::exists(copy)) << turns;
    // The same inode gets the bytes that it had at the kill.
    QFile file(m_document->filename);
    ASSERT_TRUE(file.open(QFile::ReadWrite) && file.write(readFile(copy)) == 200'000);
    file.close();
    QFile::setPermissions(atTheKill.filePath(u"saves"_qs), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    SaveRecovery(atTheKill.filePath(u"saves"_qs)).run();
    EXPECT_EQ(readFile(m_document->filename), QByteArray(200'000, '\xAA'));
}
