#include "platform/FileSystemCalls.h"
#include "platform/Paths.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/Journals.h"
#include "shell/FrameFixture.h"
#include "shell/recovery/DocumentRecovery.h"

#include <QDir>

#include <chrono>
#include <semaphore>

using namespace std::chrono_literals;

namespace {

/// A disk whose files in one folder do not answer until they are let.
class StuckFolder : public FileSystemCalls {
 public:
    explicit StuckFolder(const QString& folder) : m_folder(folder.toUtf8()) {}

    int stat(const char* path, struct stat* status) override {
        if (QByteArrayView(path).startsWith(m_folder)) {
            m_stuck.release();
            m_gate.acquire();
            m_gate.release();
        }
        return FileSystemCalls::stat(path, status);
    }
    void waitUntilStuck() { m_stuck.acquire(); }
    void letGo() { m_gate.release(); }

 private:
    QByteArray m_folder;
    std::counting_semaphore<> m_stuck{0};
    std::counting_semaphore<> m_gate{0};
};

/// Journals of an earlier process, brought back into the documents of a frame by a document that only shows the text.
class DocumentRecoveryTest : public FrameFixture {
 protected:
    static JournalBase baseOf(const QString& path) {
        JournalBase base;
        base.path = path;
        base.caption = path.isEmpty() ? u"Document7"_qs : path;
        if (!path.isEmpty())
            base.state = FileState::of(path);
        return base;
    }
    /// A journal in which this text was typed at the start of the file; an empty path: without a file.
    void leaveJournal(const QString& path, std::string_view typed) const {
        Journals journals(journalFolder());
        const std::unique_ptr<Journal> journal = journals.begin(baseOf(path));
        journal->insert(0, typed);
        ASSERT_TRUE(journals.flush(30s));
    }
    QString journalFolder() const { return m_folder.filePath(u"state/recovery"_qs); }
    QStringList left(const char* suffix = "journal") const {
        return QDir(journalFolder()).entryList({u"*."_qs + QLatin1String(suffix)});
    }

    /// The same for the next start, which has no copy of the file.
    void leaveJournalWithoutCopy(const QString& path, std::string_view typed) const {
        const QStringList before = left("base");
        leaveJournal(path, typed);
        for (const QString& base : left("base")) {
            if (!before.contains(base))
                QFile::remove(journalFolder() + u'/' + base);
        }
    }
    /// The texts of the documents, and the files which they are of.
    QStringList textsAndFiles() {
        QStringList all;
        for (const frmDocument* document : documents())
            all << document->GetEditor()->Text() + u'|' + FileNameOf(document->filename);
        return all;
    }

    void recover() {
        m_recovery = std::make_unique<DocumentRecovery>(
            m_journals.get(), house().children, house().active, house().opening, house().systemClose,
            [this](frmDocument& document, std::unique_ptr<FoundJournal> found, RecoveredAs as) {
                return bringBack(document, std::move(found), as);
            });
        QObject::connect(m_recovery.get(), &DocumentRecovery::noticed, m_recovery.get(),
                         [this](const QString& sentence) { m_sentences << sentence; });
        m_recovery->start();
    }
    void recoverAll() {
        recover();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !m_recovery->isAtWork(); }, 30'000));
    }
    RecoveryOutcome bringBack(frmDocument& document, std::unique_ptr<FoundJournal> found, RecoveredAs as) {
        if (m_refuses)
            return RecoveryOutcome::Failed;
        document.GetEditor()->setText(QString::fromUtf8(bytesOf(found->textPath())));
        document.filename = as == RecoveredAs::Version ? QString() : found->base().path;
        document.isNew = false;
        document.isChange = true;
        m_broughtBack.push_back(found->continueAs());
        return RecoveryOutcome::Shown;
    }

    StuckFolder m_disk{path(u"volume"_qs)};
    std::unique_ptr<Journals> m_journals = std::make_unique<Journals>(journalFolder());
    std::vector<std::unique_ptr<Journal>> m_broughtBack;
    std::unique_ptr<DocumentRecovery> m_recovery;
    QStringList m_sentences;
    bool m_refuses = false;
};

}  // namespace

TEST_F(DocumentRecoveryTest, WithoutJournalsNothingIsMade) {
    start();
    recover();
    EXPECT_FALSE(m_recovery->isAtWork());
    EXPECT_TRUE(documents().isEmpty() || documents().size() == 1);
    EXPECT_FALSE(QFileInfo::exists(journalFolder()));
}

TEST_F(DocumentRecoveryTest, WhatCannotBeReadIsSaidAndKept) {
    for (int i = 0; i < 3; ++i)
        leaveJournal(fileOf("old\n"), "new ");
    const QStringList journals = left("journal");
    ASSERT_EQ(journals.size(), 3);
    fileOf("QMJRNL9\nof another version", u"state/recovery/"_qs + journals.at(0));
    fileOf("none at all", u"state/recovery/"_qs + journals.at(1));
    start();
    recoverAll();
    EXPECT_EQ(documents().size(), 1);
    EXPECT_EQ(m_sentences, QStringList({u"There are unsaved changes of another version of Quillmark. They are kept."_qs,
                                        u"There are damaged unsaved changes; quillmark-recover has them."_qs}));
    EXPECT_TRUE(left("journal").contains(journals.at(0)));
    EXPECT_EQ(left("journal.aside"), QStringList({journals.at(1) + u".aside"_qs}));
}

TEST_F(DocumentRecoveryTest, AChangedFileComesBackInATabOfItsOwn) {
    const QString file = fileOf("old\n");
    const QString other = fileOf("other\n", u"b.txt"_qs);
    leaveJournal(file, "new ");
    start();
    open(other);
    recoverAll();
    ASSERT_EQ(documents().size(), 2);
    EXPECT_EQ(active()->filename, other);
    const frmDocument* back = documents().at(1);
    EXPECT_EQ(back->filename, file);
    EXPECT_TRUE(back->isChange);
    EXPECT_EQ(back->GetEditor()->Text(), u"new old\n"_qs);
    EXPECT_EQ(tabs(), QStringList({u"b.txt"_qs, u"a.txt"_qs}));
    EXPECT_EQ(bytesOf(file), "old\n");
    EXPECT_EQ(left().size(), 1);
    EXPECT_TRUE(m_prompts.questions.isEmpty());
    EXPECT_TRUE(m_sentences.isEmpty());
    EXPECT_EQ(house().recentFiles.paths().value(0), file);
}

TEST_F(DocumentRecoveryTest, AnOpenUnchangedDocumentOfTheFileTakesItsTextOver) {
    const QString file = fileOf("old\n");
    leaveJournal(file, "new ");
    start();
    open(file);
    ASSERT_EQ(documents().size(), 1);
    recoverAll();
    ASSERT_EQ(documents().size(), 1);
    EXPECT_EQ(text(), u"new old\n"_qs);
    EXPECT_TRUE(active()->isChange);
}

TEST_F(DocumentRecoveryTest, AnOpenDocumentThatIsChangedKeepsItsText) {
    const QString file = fileOf("old\n");
    leaveJournal(file, "new ");
    start();
    open(file);
    type(u"typed "_qs);
    recoverAll();
    EXPECT_EQ(textsAndFiles(), QStringList({u"typed old\n|a.txt"_qs, u"new old\n|"_qs}));
    EXPECT_EQ(active(), documents().at(0));
}

TEST_F(DocumentRecoveryTest, TheUntouchedDocumentOfTheStartIsUsed) {
    leaveJournal({}, "typed");
    set("StartNewDocument", "1");
    start();
    ASSERT_EQ(documents().size(), 1);
    recoverAll();
    ASSERT_EQ(documents().size(), 1);
    EXPECT_EQ(text(), u"typed"_qs);
}

TEST_F(DocumentRecoveryTest, SeveralComeBackInTheOrderOfTheirBeginning) {
    leaveJournal(fileOf("old\n"), "1 ");
    leaveJournal({}, "2 ");
    leaveJournal(fileOf("other\n", u"b.txt"_qs), "3 ");
    start();
    recoverAll();
    EXPECT_EQ(textsAndFiles(), QStringList({u"1 old\n|a.txt"_qs, u"2 |"_qs, u"3 other\n|b.txt"_qs}));
    EXPECT_EQ(active(), documents().at(0));
    EXPECT_EQ(left().size(), 3);
}

TEST_F(DocumentRecoveryTest, OfThreeOfOneFileTheLastIsItsDocument) {
    const QString file = fileOf("old\n");
    leaveJournal(file, "1 ");
    leaveJournal({}, "untitled");
    leaveJournal(file, "2 ");
    leaveJournal(fileOf("other\n", u"b.txt"_qs), "other ");
    leaveJournal(file, "3 ");
    start();
    recoverAll();
    EXPECT_EQ(textsAndFiles(), QStringList({u"untitled|"_qs, u"other other\n|b.txt"_qs, u"3 old\n|a.txt"_qs,
                                            u"2 old\n|"_qs, u"1 old\n|"_qs}));
    EXPECT_EQ(tabs().at(2), u"a.txt"_qs);
    EXPECT_EQ(left().size(), 5);
    EXPECT_EQ(house().recentFiles.paths().size(), 2);
}

TEST_F(DocumentRecoveryTest, OfSeveralOfOneFileTheOneEditedLastIsItsDocument) {
    const QString file = fileOf("old\n");
    {
        Journals one(journalFolder());
        Journals two(journalFolder());
        const auto first = one.begin(baseOf(file));
        first->insert(0, "1 ");
        ASSERT_TRUE(one.flush(30s));
        two.begin(baseOf(file))->insert(0, "2 ");
        ASSERT_TRUE(two.flush(30s));
        QTest::qWait(5);
        first->insert(0, "later ");
    }
    start();
    recoverAll();
    EXPECT_EQ(textsAndFiles(), QStringList({u"later 1 old\n|a.txt"_qs, u"2 old\n|"_qs}));
}

TEST_F(DocumentRecoveryTest, OfSeveralOfOneFileTheOneThatWasSavedIsRemoved) {
    const QString file = fileOf("old\n");
    leaveJournal(file, "1 ");
    leaveJournal(file, "2 ");
    fileOf("2 old\n");
    start();
    recoverAll();
    EXPECT_EQ(textsAndFiles(), QStringList(u"1 old\n|a.txt"_qs));
    EXPECT_EQ(left().size(), 1);
}

TEST_F(DocumentRecoveryTest, OfSeveralOfOneFileOneIsItsDocumentWhenTheOthersAreLost) {
    const QString file = fileOf("old\n");
    leaveJournalWithoutCopy(file, "1 ");
    leaveJournal(file, "2 ");
    leaveJournalWithoutCopy(file, "3 ");
    fileOf("text of today\n");
    start();
    recoverAll();
    EXPECT_EQ(textsAndFiles(), QStringList(u"2 old\n|a.txt"_qs));
    EXPECT_EQ(left().size(), 1);
    EXPECT_EQ(left("aside").size(), 2);
    EXPECT_EQ(m_sentences.size(), 2);
}

TEST_F(DocumentRecoveryTest, WhatTheFileHoldsAlreadyIsRemovedInSilence) {
    const QString file = fileOf("old\n");
    leaveJournal(file, "new ");
    fileOf("new old\n");
    start();
    const qsizetype before = documents().size();
    recoverAll();
    EXPECT_EQ(documents().size(), before);
    EXPECT_TRUE(left().isEmpty());
    EXPECT_TRUE(m_sentences.isEmpty());
}

TEST_F(DocumentRecoveryTest, AFileChangedMeanwhileDoesNotHarmTheRecoveredText) {
    const QString file = fileOf("old\n");
    leaveJournal(file, "new ");
    fileOf("somebody else's\n");
    start();
    recoverAll();
    EXPECT_EQ(text(), u"new old\n"_qs);
    EXPECT_EQ(bytesOf(file), "somebody else's\n");
}

TEST_F(DocumentRecoveryTest, AFileThatIsGoneDoesNotHarmTheRecoveredText) {
    const QString file = fileOf("old\n");
    leaveJournal(file, "new ");
    QFile::remove(file);
    start();
    recoverAll();
    EXPECT_EQ(text(), u"new old\n"_qs);
    EXPECT_EQ(active()->filename, file);
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(DocumentRecoveryTest, WithoutItsBaseAJournalIsSetAside) {
    const QString file = fileOf("old\n");
    leaveJournal(file, "new ");
    for (const QString& base : left("base"))
        QFile::remove(journalFolder() + u'/' + base);
    fileOf("somebody else's\n");
    start();
    const qsizetype before = documents().size();
    recoverAll();
    EXPECT_EQ(documents().size(), before);
    EXPECT_TRUE(left().isEmpty());
    EXPECT_EQ(m_sentences, QStringList(u"The unsaved changes of 'a.txt' can't be brought back without its file; "
                                       "quillmark-recover has them."_qs));
}

TEST_F(DocumentRecoveryTest, WithoutACopyAGoneFileSetsAJournalAside) {
    const QString file = fileOf("old\n");
    leaveJournalWithoutCopy(file, "new ");
    QFile::remove(file);
    start();
    recoverAll();
    EXPECT_TRUE(left().isEmpty());
    EXPECT_EQ(left("aside").size(), 1);
    EXPECT_EQ(m_sentences.size(), 1);
}

TEST_F(DocumentRecoveryTest, AFileThatCannotBeReachedNowIsAwaited) {
    ASSERT_TRUE(QDir().mkpath(path(u"volume"_qs)));
    const QString file = fileOf("old\n", u"volume/a.txt"_qs);
    leaveJournalWithoutCopy(file, "new ");
    ASSERT_TRUE(QDir().rename(path(u"volume"_qs), path(u"elsewhere"_qs)));
    start();
    const qsizetype before = documents().size();
    recoverAll();
    EXPECT_EQ(documents().size(), before);
    EXPECT_EQ(left().size(), 1);
    EXPECT_EQ(m_sentences, QStringList(u"The unsaved changes of 'a.txt' can't be brought back, because its file can't "
                                       "be reached now. They are kept."_qs));
    ASSERT_TRUE(QDir().rename(path(u"elsewhere"_qs), path(u"volume"_qs)));
    recoverAll();
    EXPECT_EQ(textsAndFiles(), QStringList(u"new old\n|a.txt"_qs));
}

TEST_F(DocumentRecoveryTest, ADiskThatDoesNotAnswerHoldsUpNoOtherDocument) {
    ASSERT_TRUE(QDir().mkpath(path(u"volume"_qs)));
    leaveJournalWithoutCopy(fileOf("old\n", u"volume/a.txt"_qs), "new ");
    leaveJournal({}, "typed");
    m_journals = std::make_unique<Journals>(journalFolder(), m_disk);
    start();
    recover();
    EXPECT_TRUE(QTest::qWaitFor([this] { return textsAndFiles() == QStringList(u"typed|"_qs); }, 30'000));
    EXPECT_TRUE(m_recovery->isAtWork());
    EXPECT_EQ(m_sentences, QStringList(u"The unsaved changes of 'a.txt' come back when its disk answers."_qs));
    m_disk.letGo();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_recovery->isAtWork(); }, 30'000));
    EXPECT_EQ(textsAndFiles(), QStringList({u"typed|"_qs, u"new old\n|a.txt"_qs}));
}

TEST_F(DocumentRecoveryTest, ADiskThatDoesNotAnswerKeepsNobodyFromTheEnd) {
    ASSERT_TRUE(QDir().mkpath(path(u"volume"_qs)));
    leaveJournalWithoutCopy(fileOf("old\n", u"volume/a.txt"_qs), "new ");
    m_journals = std::make_unique<Journals>(journalFolder(), m_disk);
    start();
    recover();
    m_disk.waitUntilStuck();
    m_recovery->stop();
    EXPECT_FALSE(m_recovery->isAtWork());
    m_recovery.reset();
    EXPECT_TRUE(m_journals->takeAbandoned().empty());
    m_disk.letGo();
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_journals->takeAbandoned().size() == 1U; }, 30'000));
}

TEST_F(DocumentRecoveryTest, WhatADocumentCannotShowStaysForTheNextStart) {
    leaveJournal(fileOf("old\n"), "new ");
    start();
    const qsizetype before = documents().size();
    m_refuses = true;
    recoverAll();
    QCoreApplication::processEvents();
    EXPECT_EQ(documents().size(), before);
    EXPECT_EQ(left().size(), 1);
    EXPECT_EQ(m_sentences,
              QStringList(u"The unsaved changes of 'a.txt' could not be brought back now. They are kept."_qs));
    EXPECT_EQ(m_journals->takeAbandoned().size(), 1U);
}

TEST_F(DocumentRecoveryTest, AnotherInstanceDoesNotTakeThem) {
    leaveJournal(fileOf("old\n"), "new ");
    start();
    recoverAll();
    Journals another(journalFolder());
    EXPECT_TRUE(another.takeAbandoned().empty());
    m_broughtBack.clear();
    ASSERT_TRUE(m_journals->flush(30s));
    EXPECT_EQ(another.takeAbandoned().size(), 1U);
}

TEST_F(DocumentRecoveryTest, WaitsWhileSomethingElseIsUnderWay) {
    leaveJournal(fileOf("old\n"), "new ");
    start();
    const qsizetype before = documents().size();
    house().systemClose.enable(false);
    house().opening.hold();
    recover();
    QTest::qWait(300);
    EXPECT_EQ(documents().size(), before);
    house().systemClose.enable(true);
    QTest::qWait(100);
    EXPECT_EQ(documents().size(), before);
    house().opening.release();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_recovery->isAtWork(); }, 30'000));
    EXPECT_EQ(text(), u"new old\n"_qs);
}

TEST_F(DocumentRecoveryTest, StoppedItLeavesTheRest) {
    leaveJournal(fileOf("old\n"), "new ");
    leaveJournal({}, "typed");
    start();
    const qsizetype before = documents().size();
    house().opening.hold();
    recover();
    QTest::qWait(100);
    m_recovery->stop();
    house().opening.release();
    QTest::qWait(100);
    EXPECT_EQ(documents().size(), before);
    m_recovery.reset();
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_journals->takeAbandoned().size() == 2U; }, 30'000));
}
