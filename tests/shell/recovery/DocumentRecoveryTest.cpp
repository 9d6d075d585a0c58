#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/Journals.h"
#include "shell/FrameFixture.h"
#include "shell/recovery/DocumentRecovery.h"

#include <QDir>

#include <chrono>

using namespace std::chrono_literals;

namespace {

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

    void recover() {
        m_recovery = std::make_unique<DocumentRecovery>(
            &m_journals, house().children, house().active, house().opening, house().systemClose,
            [this](frmDocument& document, std::unique_ptr<FoundJournal> found) {
                return bringBack(document, std::move(found));
            });
        QObject::connect(m_recovery.get(), &DocumentRecovery::noticed, m_recovery.get(),
                         [this](const QString& sentence) { m_sentences << sentence; });
        m_recovery->start();
    }
    void recoverAll() {
        recover();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !m_recovery->isAtWork(); }, 30'000));
    }
    RecoveryOutcome bringBack(frmDocument& document, std::unique_ptr<FoundJournal> found) {
        if (m_refuses)
            return RecoveryOutcome::Failed;
        document.GetEditor()->setText(QString::fromUtf8(bytesOf(found->textPath())));
        document.filename = found->base().path;
        document.isNew = false;
        document.isChange = true;
        if (document.filename.isEmpty())
            document.setCaption(found->base().caption);
        m_broughtBack.push_back(found->continueAs());
        return RecoveryOutcome::Shown;
    }

    Journals m_journals{journalFolder()};
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
    ASSERT_EQ(documents().size(), 2);
    EXPECT_EQ(documents().at(0)->GetEditor()->Text(), u"typed old\n"_qs);
    EXPECT_EQ(documents().at(1)->GetEditor()->Text(), u"new old\n"_qs);
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
    EXPECT_EQ(active()->Caption(), u"Document7"_qs);
}

TEST_F(DocumentRecoveryTest, SeveralComeBackInTheOrderOfTheirBeginning) {
    const QString file = fileOf("old\n");
    leaveJournal(file, "1 ");
    leaveJournal({}, "2 ");
    leaveJournal(file, "3 ");
    start();
    recoverAll();
    QStringList texts;
    for (const frmDocument* document : documents())
        texts << document->GetEditor()->Text();
    EXPECT_EQ(texts, QStringList({u"1 old\n"_qs, u"2 "_qs, u"3 old\n"_qs}));
    EXPECT_EQ(active(), documents().at(0));
    EXPECT_EQ(left().size(), 3);
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
    EXPECT_EQ(m_journals.takeAbandoned().size(), 1U);
}

TEST_F(DocumentRecoveryTest, AnotherInstanceDoesNotTakeThem) {
    leaveJournal(fileOf("old\n"), "new ");
    start();
    recoverAll();
    Journals another(journalFolder());
    EXPECT_TRUE(another.takeAbandoned().empty());
    m_broughtBack.clear();
    ASSERT_TRUE(m_journals.flush(30s));
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
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_journals.takeAbandoned().size() == 2U; }, 30'000));
}
