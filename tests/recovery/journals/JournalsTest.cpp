// What a journal keeps, and what becomes of it.

#include "recovery/journals/HexEntryVisitor.h"
#include "recovery/journals/JournalFixture.h"
#include "recovery/journals/PassedJournals.h"
#include "support/FailingFileSystem.h"

#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <functional>
#include <string>
#include <utility>

namespace {

using namespace std::chrono_literals;
using JournalKeeping = JournalFixture;

QByteArray nameOf(const QString& path) {
    return QFile::encodeName(path);
}

/// Applies the edits of a hex document, and writes them down.
class HexRecorder : public HexEntryVisitor {
 public:
    bool typed(qint64 page, int row, int col, quint8 byte) override {
        return note(u"type %1 %2 %3 %4"_qs.arg(page).arg(row).arg(col).arg(byte));
    }
    bool tookBack() override { return note(u"back"_qs); }
    bool overwrote(qint64 at, std::string_view bytes) override {
        return note(u"over %1 "_qs.arg(at) + QString::fromLatin1(bytes.data(), qsizetype(bytes.size())));
    }
    bool filled(qint64 at, qint64 length, quint8 byte) override {
        return note(u"fill %1 %2 %3"_qs.arg(at).arg(length).arg(byte));
    }

    QStringList entries;
    qsizetype limit = 1'000;

 private:
    bool note(const QString& entry) {
        entries.push_back(entry);
        return entries.size() < limit;
    }
};

TEST_F(JournalKeeping, EditsOfATextComeBack) {
    const QString path = file("one two three");
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path));
        journal->insert(4, "and ");
        journal->remove(0, 4);
        EXPECT_TRUE(journals->flush(Long));
    }
    EXPECT_EQ(recovered(), "and two three");
}

TEST_F(JournalKeeping, ATextWithoutAFileComesBack) {
    {
        const auto journals = makeJournals();
        JournalBase base;
        base.caption = u"Untitled1"_qs;
        const auto journal = journals->begin(base);
        journal->insert(0, "never saved");
    }
    const auto [journals, found, outcome] = nextStart();
    ASSERT_EQ(outcome, Outcome::Restored);
    EXPECT_EQ(bytesOf(found->textPath()), "never saved");
    EXPECT_EQ(found->base().caption, u"Untitled1"_qs);
    EXPECT_EQ(found->file(), File::None);
}

TEST_F(JournalKeeping, AllOfTheBaseComesBack) {
    const QString path = file("one\rtwo");
    JournalBase base = baseOf(path);
    base.format = {TextEncoding::Windows1252, false};
    base.lineEndMode = 2;
    base.language = u"C++"_qs;
    base.textLength = 7;
    leave(base, "\xc3\xa4", 7);
    const auto [journals, found, outcome] = nextStart();
    ASSERT_EQ(outcome, Outcome::Restored);
    EXPECT_EQ(bytesOf(found->textPath()), "one\rtwo\xc3\xa4");
    const JournalBase& back = found->base();
    EXPECT_EQ(back.path, path);
    EXPECT_EQ(back.caption, u"file"_qs);
    EXPECT_EQ(back.state, base.state);
    EXPECT_EQ(back.format, base.format);
    EXPECT_EQ(back.lineEndMode, 2);
    EXPECT_EQ(back.language, u"C++"_qs);
    EXPECT_EQ(back.textLength, 7);
    EXPECT_LE(qAbs(found->time().secsTo(QDateTime::currentDateTime())), 600);
}

TEST_F(JournalKeeping, WholeContentsTakeThePlaceOfBaseAndEdits) {
    const QString path = file("one two three");
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path));
        journal->insert(0, "lost");
        EXPECT_TRUE(journals->flush(Long));
        journal->insert(0, "lost, too");
        journal->setWhole({"all\rof it"});
        journal->insert(0, "and ");
    }
    put(path, "something else");
    EXPECT_EQ(recovered(), "and all\rof it");
}

TEST_F(JournalKeeping, ADiscardedJournalLeavesNothing) {
    const QString path = file("one two three");
    const auto journals = makeJournals();
    const auto journal = journals->begin(baseOf(path));
    journal->insert(4, "and ");
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(names().size(), 2);
    journal->discard();
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(names(), QStringList());
    journal->insert(0, "too late");
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(names(), QStringList());
}

TEST_F(JournalKeeping, NothingIsMadeBeforeTheFirstEdit) {
    const QString path = file("one");
    const auto journals = makeJournals();
    const auto journal = journals->begin(baseOf(path));
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_FALSE(QDir(folder()).exists());
    EXPECT_TRUE(journals->takeAbandoned().empty());
    EXPECT_FALSE(QDir(folder()).exists());
}

TEST_F(JournalKeeping, FolderAndFilesAreForTheirUserAlone) {
    const QString path = file("one");
    const auto journals = makeJournals();
    const auto journal = journals->begin(baseOf(path));
    journal->insert(0, "x");
    EXPECT_TRUE(journals->flush(Long));
    struct stat status {};
    ASSERT_EQ(::stat(nameOf(folder()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & ALLPERMS, 0700u);
    for (const QString& name : names()) {
        ASSERT_EQ(::stat(nameOf(folder() + u'/' + name).constData(), &status), 0);
        EXPECT_EQ(status.st_mode & ALLPERMS, 0600u) << name.toStdString();
    }
}

TEST_F(JournalKeeping, AnEditIsWrittenSoonAfterTheLastOne) {
    JournalLimits limits = patient();
    limits.afterLast = 20ms;
    const auto journals = makeJournals(FileSystemCalls::system(), limits);
    const auto journal = journals->begin(JournalBase());
    journal->insert(0, "soon");
    while (names(u"*.journal"_qs).isEmpty())
        QThread::msleep(5);
    SUCCEED();
}

TEST_F(JournalKeeping, EditsThatGoOnAreWrittenAllTheSame) {
    JournalLimits limits = patient();
    limits.whileEditing = 50ms;
    const auto journals = makeJournals(FileSystemCalls::system(), limits);
    const auto journal = journals->begin(JournalBase());
    while (names(u"*.journal"_qs).isEmpty()) {
        journal->insert(0, "on ");
        QThread::msleep(1);
    }
    SUCCEED();
}

TEST_F(JournalKeeping, WhatIsTheSameAsTheFileIsReportedSo) {
    const QString path = file("one two");
    leave(baseOf(path), " and", 3);
    // The save was done, and then the process was killed.
    put(path, "one and two");
    const auto [journals, found, outcome] = nextStart();
    ASSERT_EQ(outcome, Outcome::SameAsFile);
    EXPECT_TRUE(found->isSameAsFile());
    EXPECT_TRUE(found->discard());
    EXPECT_EQ(names(), QStringList());
}

TEST_F(JournalKeeping, EditsThatEndWhereTheyBeganAreTheSameAsTheFile) {
    const QString path = file("one two");
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path));
        journal->insert(3, "x");
        journal->remove(3, 1);
    }
    recovered(Outcome::SameAsFile);
}

TEST_F(JournalKeeping, AnEmptiedTextWithoutAFileIsNothing) {
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(JournalBase());
        journal->insert(0, "x");
        journal->remove(0, 1);
    }
    recovered(Outcome::SameAsFile);
}

TEST_F(JournalKeeping, TheStateOfTheFileIsReported) {
    const QString kept = file("one", u"kept"_qs);
    const QString touched = file("one", u"touched"_qs);
    const QString changed = file("one", u"changed"_qs);
    const QString missing = file("one", u"missing"_qs);
    {
        const auto journals = makeJournals();
        std::vector<std::unique_ptr<Journal>> all;
        for (const QString& path : {kept, touched, changed, missing}) {
            all.push_back(journals->begin(baseOf(path)));
            all.back()->insert(0, "x");
        }
        EXPECT_TRUE(journals->flush(Long));
    }
    EXPECT_TRUE(QFile::remove(touched));
    file("one", u"touched"_qs);
    put(changed, "two");
    EXPECT_TRUE(QFile::remove(missing));
    const auto journals = makeJournals();
    const auto found = journals->takeAbandoned();
    ASSERT_EQ(found.size(), 4u);
    const File expected[] = {File::AsItWas, File::AsItWas, File::Changed, File::Missing};
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i]->restore(), Outcome::Restored);
        EXPECT_EQ(found[i]->file(), expected[i]) << i;
        EXPECT_EQ(bytesOf(found[i]->textPath()), "xone");
    }
}

TEST_F(JournalKeeping, AFileThatWasChangedBeforeTheFirstEditAsksForTheWhole) {
    const QString path = file("one");
    const JournalBase base = baseOf(path);
    put(path, "other bytes");
    {
        const auto journals = makeJournals();
        std::atomic<int> notices = 0;
        const auto journal = journals->begin(base);
        journal->setWholeNeeded([&] { ++notices; });
        EXPECT_FALSE(journal->needsWhole());
        journal->insert(0, "x");
        EXPECT_TRUE(journals->flush(Long));
        EXPECT_TRUE(journal->needsWhole());
        EXPECT_EQ(notices, 1);
        journal->setWhole({"xone"});
        EXPECT_FALSE(journal->needsWhole());
        journal->insert(1, "y");
    }
    EXPECT_EQ(recovered(), "xyone");
}

TEST_F(JournalKeeping, AFileThatIsTooLargeToCopyIsWatchedInstead) {
    const QString path = file("one two three");
    JournalLimits limits = patient();
    limits.copied = 4;
    FailingFileSystem calls;
    calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
    const auto journals = makeJournals(calls, limits);
    const auto journal = journals->begin(baseOf(path));
    journal->insert(0, "x");
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_FALSE(journal->needsWhole());
    put(path, "other bytes");
    journal->insert(0, "x");
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_TRUE(journal->needsWhole());
}

TEST_F(JournalKeeping, WithoutACopyTheFileItselfIsTheBaseAsLongAsItIsAsItWas) {
    const QString path = file("one two three");
    JournalLimits limits = patient();
    limits.copied = 4;
    FailingFileSystem calls;
    calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
    {
        const auto journals = makeJournals(calls, limits);
        journals->begin(baseOf(path))->insert(0, "x");
        EXPECT_TRUE(journals->flush(Long));
    }
    EXPECT_EQ(recovered(), "xone two three");
    put(path, "one two threE");
    recovered(Outcome::Lost);
    EXPECT_EQ(names(u"*.journal"_qs).size(), 1) << "nothing is removed unseen";
}

TEST_F(JournalKeeping, AJournalThatWasRemovedByHandAsksForTheWhole) {
    const QString path = file("one");
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path));
        journal->insert(0, "a");
        EXPECT_TRUE(journals->flush(Long));
        EXPECT_TRUE(QDir(folder()).removeRecursively());
        journal->insert(0, "b");
        EXPECT_FALSE(journals->flush(Long));
        EXPECT_TRUE(journal->needsWhole());
        journal->setWhole({"baone"});
        journal->insert(0, "c");
        EXPECT_TRUE(journals->flush(Long));
    }
    EXPECT_EQ(recovered(), "cbaone");
}

TEST_F(JournalKeeping, AJournalOfALivingProcessIsPassedOver) {
    const auto journals = makeJournals();
    const auto journal = journals->begin(JournalBase());
    journal->insert(0, "mine");
    EXPECT_TRUE(journals->flush(Long));
    const auto others = makeJournals();
    EXPECT_TRUE(others->takeAbandoned().empty());
    EXPECT_EQ(names().size(), 1);
}

TEST_F(JournalKeeping, TwoProcessesNeverTakeTheSameOne) {
    {
        const auto journals = makeJournals();
        journals->begin(JournalBase())->insert(0, "one");
        journals->begin(JournalBase())->insert(0, "two");
    }
    const auto first = makeJournals();
    const auto second = makeJournals();
    const auto taken = first->takeAbandoned();
    EXPECT_EQ(taken.size(), 2u);
    EXPECT_TRUE(second->takeAbandoned().empty());
}

TEST_F(JournalKeeping, AKilledProcessLeavesWhatItHasWritten) {
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const auto journals = makeJournals();
        const auto journal = journals->begin(JournalBase());
        journal->insert(0, "written");
        const bool isWritten = journals->flush(Long);
        journal->insert(0, "not yet ");
        const ssize_t count = ::write(ready[1], isWritten ? "y" : "n", 1);
        ::pause();
        ::_exit(count == 1 ? 0 : 1);
    }
    char answer = 0;
    ASSERT_EQ(::read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    EXPECT_TRUE(makeJournals()->takeAbandoned().empty()) << "it lives";
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ::close(ready[0]);
    ::close(ready[1]);
    EXPECT_EQ(recovered(), "written");
}

TEST_F(JournalKeeping, ALinkInThePlaceOfTheFolderIsNotFollowed) {
    QDir().mkpath(at(u"elsewhere"_qs));
    QDir().mkpath(at(u"state"_qs));
    ASSERT_TRUE(QFile::link(at(u"elsewhere"_qs), folder()));
    const auto journals = makeJournals();
    const auto journal = journals->begin(JournalBase());
    journal->insert(0, "x");
    EXPECT_FALSE(journals->flush(Long));
    EXPECT_TRUE(QDir(at(u"elsewhere"_qs)).isEmpty());
    EXPECT_TRUE(journals->takeAbandoned().empty());
}

TEST_F(JournalKeeping, AFolderThatComesBackTakesEverythingThatWaits) {
    put(at(u"state"_qs), "in the way");
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(JournalBase());
        journal->insert(0, "a");
        EXPECT_FALSE(journals->flush(Long));
        journal->insert(1, "b");
        EXPECT_FALSE(journals->flush(Long));
        EXPECT_TRUE(QFile::remove(at(u"state"_qs)));
        journal->insert(2, "c");
        EXPECT_TRUE(journals->flush(Long));
    }
    EXPECT_EQ(recovered(), "abc");
}

TEST_F(JournalKeeping, LinksAndHardLinksAreNotTaken) {
    leave(JournalBase(), "x");
    const QString name = names().value(0);
    ASSERT_EQ(::rename(nameOf(journalPath()).constData(), nameOf(at(u"real"_qs)).constData()), 0);
    ASSERT_EQ(::link(nameOf(at(u"real"_qs)).constData(), nameOf(folder() + u'/' + name).constData()), 0);
    ASSERT_TRUE(QFile::link(at(u"real"_qs), folder() + u"/1-1-1.journal"_qs));
    EXPECT_TRUE(makeJournals()->takeAbandoned().empty());
    EXPECT_EQ(names().size(), 2);
}

TEST_F(JournalKeeping, ADamagedHeadIsSetAsideAndNeverRemoved) {
    leave(JournalBase(), "x");
    QByteArray bytes = bytesOf(journalPath());
    bytes[12] = static_cast<char>(bytes[12] + 1);
    put(journalPath(), bytes);
    PassedJournals passed;
    EXPECT_TRUE(makeJournals()->takeAbandoned(passed).empty());
    EXPECT_EQ(passed.damaged, 1);
    ASSERT_EQ(names().size(), 1);
    EXPECT_TRUE(names().front().endsWith(u".journal.aside"_qs));
    EXPECT_EQ(bytesOf(folder() + u'/' + names().front()), bytes);
}

/// That version has its base too.
TEST_F(JournalKeeping, AJournalOfAnotherVersionStaysForIt) {
    leave(baseOf(file("one")), "x");
    QByteArray bytes = bytesOf(journalPath());
    ASSERT_EQ(bytes.left(8), "QMJRNL2\n");
    bytes[6] = '9';
    put(journalPath(), bytes);
    const QStringList before = names();
    PassedJournals passed;
    EXPECT_TRUE(makeJournals()->takeAbandoned(passed).empty());
    EXPECT_EQ(passed.ofAnother, 1);
    EXPECT_EQ(passed.damaged, 0);
    EXPECT_EQ(names(), before);
    EXPECT_EQ(bytesOf(journalPath()), bytes);
}

/// What does not fit may be what differed from the file.
TEST_F(JournalKeeping, AJournalWhoseEntriesDoNotFitIsNotTakenForSaved) {
    const QString path = file("one");
    leave(baseOf(path), "x", 1'000);
    EXPECT_EQ(nextStart().outcome, Outcome::Lost);
}

TEST_F(JournalKeeping, TheBaseOfAContinuedJournalIsStoredWithoutAnEdit) {
    const QString path = file("one");
    {
        FailingFileSystem calls;
        calls.fail(SystemCall::Stat, 0, EIO);
        const auto journals = makeJournals(calls);
        journals->begin(baseOf(path))->insert(0, "x");
        EXPECT_TRUE(journals->flush(Long));
        ASSERT_TRUE(names(u"*.base"_qs).isEmpty());
    }
    {
        const auto [journals, found, outcome] = nextStart();
        ASSERT_EQ(outcome, Outcome::Restored);
        const auto journal = found->continueAs();
        while (names(u"*.base"_qs).isEmpty())
            QThread::msleep(5);
        EXPECT_TRUE(journals->flush(Long));
    }
    put(path, "another");
    EXPECT_EQ(recovered(), "xone");
}

TEST_F(JournalKeeping, LeftoversOfNoJournalAreRemoved) {
    const auto journals = makeJournals();
    const auto journal = journals->begin(baseOf(file("one")));
    journal->insert(0, "x");
    EXPECT_TRUE(journals->flush(Long));
    const QStringList living = names();
    for (const char* name : {"1-1-1.0.base", "1-1-1.text", "1-1-1.journal.new"})
        put(folder() + u'/' + QLatin1String(name), "left");
    EXPECT_TRUE(makeJournals()->takeAbandoned().empty());
    EXPECT_EQ(names(), living);
}

TEST_F(JournalKeeping, OneThatIsSetAsideKeepsItsBaseAndIsNotTakenAgain) {
    leave(baseOf(file("one")), "x");
    {
        const auto [journals, found, outcome] = nextStart();
        ASSERT_EQ(outcome, Outcome::Restored);
        EXPECT_TRUE(found->setAside());
    }
    EXPECT_TRUE(makeJournals()->takeAbandoned().empty());
    EXPECT_EQ(names(u"*.aside"_qs).size(), 1);
    EXPECT_EQ(names(u"*.base"_qs).size(), 1);
    EXPECT_EQ(names().size(), 2) << "the text is removed with the object";
}

TEST_F(JournalKeeping, ADocumentThatIsOnlyLookedAtStays) {
    leave(baseOf(file("one")), "x");
    QDateTime first;
    for (int start = 0; start < 3; ++start) {
        QThread::msleep(3);
        const auto [journals, found, outcome] = nextStart();
        ASSERT_EQ(outcome, Outcome::Restored);
        EXPECT_EQ(bytesOf(found->textPath()), "xone");
        first = start == 0 ? found->time() : first;
        EXPECT_EQ(found->time(), first) << "of the last edit, and not of the last start";
        const auto journal = found->continueAs();
    }
}

TEST_F(JournalKeeping, CompactionKeepsTheTextAndDropsTheBase) {
    JournalLimits limits = patient();
    limits.compacted = 2'000;
    const QString path = file("one two three");
    std::string expected = "one two three";
    {
        const auto journals = makeJournals(FileSystemCalls::system(), limits);
        const auto journal = journals->begin(baseOf(path));
        for (int i = 0; i < 400; ++i) {
            journal->insert(2, std::string(20, 'x'));
            journal->remove(2, 20);
            journal->insert(0, "y");
            expected.insert(0, "y");
            EXPECT_TRUE(journals->flush(Long));
            EXPECT_LE(bytesOf(journalPath()).size(), 6'000);
        }
        EXPECT_EQ(names().size(), 1);
    }
    put(path, "something else");
    EXPECT_EQ(recovered(), expected);
}

TEST_F(JournalKeeping, EditsOfBytesComeBackInTheirOrder) {
    const QString path = file("0123456789");
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path, JournalBase::View::Hex));
        journal->type(1, 0, 3, 0xff);
        journal->takeBack();
        journal->overwrite(4, "abc");
        journal->fill(0, 10, 7);
        EXPECT_TRUE(journals->flush(Long));
        journal->overwrite(9, "z");
    }
    const auto [journals, found, outcome] = nextStart();
    ASSERT_EQ(outcome, Outcome::Restored);
    EXPECT_EQ(bytesOf(found->basePath()), "0123456789");
    EXPECT_TRUE(found->isBaseUnchanged());
    HexRecorder recorder;
    EXPECT_TRUE(found->visit(recorder));
    EXPECT_EQ(recorder.entries,
              QStringList({u"type 1 0 3 255"_qs, u"back"_qs, u"over 4 abc"_qs, u"fill 0 10 7"_qs, u"over 9 z"_qs}));
    HexRecorder impatient;
    impatient.limit = 2;
    EXPECT_FALSE(found->visit(impatient));
    EXPECT_EQ(impatient.entries.size(), 2);
    // It is continued behind them.
    const auto journal = found->continueAs();
    journal->takeBack();
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_FALSE(journal->needsWhole());
}

TEST_F(JournalKeeping, EntriesPastTheEndOfTheBytesDoNotCount) {
    const QString path = file("0123456789");
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path, JournalBase::View::Hex));
        journal->overwrite(4, "abc");
        journal->overwrite(9, "too long");
        journal->fill(0, 1, 7);
    }
    const auto [journals, found, outcome] = nextStart();
    ASSERT_EQ(outcome, Outcome::Restored);
    HexRecorder recorder;
    EXPECT_TRUE(found->visit(recorder));
    EXPECT_EQ(recorder.entries, QStringList({u"over 4 abc"_qs}));
    const auto journal = found->continueAs();
    EXPECT_TRUE(journal->needsWhole()) << "what follows would stand behind an entry that does not fit";
}

TEST_F(JournalKeeping, WholeBytesTakeThePlaceOfBaseAndEdits) {
    const QString path = file("0123456789");
    const JournalBase base = baseOf(path, JournalBase::View::Hex);
    put(path, "changed by somebody");
    const QString copy = file("01X3456789", u"working copy"_qs);
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(base);
        journal->overwrite(2, "X");
        EXPECT_TRUE(journals->flush(Long));
        ASSERT_TRUE(journal->needsWhole());
        const int handle = ::open(nameOf(copy).constData(), O_RDONLY | O_CLOEXEC);
        journal->setWhole(handle);
        ::close(handle);
        EXPECT_FALSE(journal->needsWhole());
        EXPECT_TRUE(journals->flush(Long));
        journal->overwrite(3, "Y");
    }
    const auto [journals, found, outcome] = nextStart();
    ASSERT_EQ(outcome, Outcome::Restored);
    EXPECT_EQ(found->file(), File::Changed);
    EXPECT_EQ(bytesOf(found->basePath()), "01X3456789");
    HexRecorder recorder;
    EXPECT_TRUE(found->visit(recorder));
    EXPECT_EQ(recorder.entries, QStringList({u"over 3 Y"_qs}));
}

TEST_F(JournalKeeping, AFillOfManyBytesTakesFew) {
    const QString path = file("0123456789");
    const auto journals = makeJournals();
    const auto journal = journals->begin(baseOf(path, JournalBase::View::Hex));
    journal->type(1, 0, 0, 1);
    EXPECT_TRUE(journals->flush(Long));
    const qint64 before = QFileInfo(journalPath()).size();
    journal->fill(0, 1'000'000'000, 7);
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_LE(QFileInfo(journalPath()).size() - before, 60);
}

TEST_F(JournalKeeping, AMillionReplacementsTakeLittleMoreThanTheirBytes) {
    const QString path = file("0123456789");
    const auto journals = makeJournals();
    const auto journal = journals->begin(baseOf(path, JournalBase::View::Hex));
    for (int i = 0; i < 1'000'000; ++i)
        journal->overwrite(2'000 * qint64(i), "abcd");
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_LE(QFileInfo(journalPath()).size(), 1'000'000 * 12);
}

TEST_F(JournalKeeping, LargeBasesAndLargeEditsComeBack) {
    const QByteArray large = QByteArray("line of a large file\n").repeated(500'000);
    const QString path = file(large);
    std::string expected = large.toStdString();
    const std::string pasted(3'000'000, 'p');
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path));
        for (const qint64 at : {5'000'000, 0, 13'000'000}) {
            journal->insert(at, pasted);
            journal->insert(at, "x");
            expected.insert(static_cast<std::size_t>(at), "x" + pasted);
        }
        EXPECT_TRUE(journals->flush(Long));
    }
    put(path, "changed");
    EXPECT_TRUE(recovered() == expected);
}

/// Adds an edit while the bytes of a document are copied.
class Interloper : public FileSystemCalls {
 public:
    int cloneFile(int to, int from) override {
        if (duringCopy)
            std::exchange(duringCopy, nullptr)();
        return FileSystemCalls::cloneFile(to, from);
    }
    std::function<void()> duringCopy;
};

/// Nobody knows whether they are in the copy.
TEST_F(JournalKeeping, EditsOfBytesThatAreBeingCopiedAreRepeatedOnTheCopy) {
    const QString path = file("0123456789");
    const JournalBase base = baseOf(path, JournalBase::View::Hex);
    const QString copy = file("0123456789", u"working copy"_qs);
    {
        Interloper calls;
        const auto journals = makeJournals(calls);
        const auto journal = journals->begin(base);
        const int handle = ::open(nameOf(copy).constData(), O_RDWR | O_CLOEXEC);
        journal->type(1, 0, 1, 'L');  // is in the bytes, which replace it
        journal->setWhole(handle);
        calls.duringCopy = [&] {
            EXPECT_EQ(::pwrite(handle, "M", 1, 2), 1);
            journal->type(1, 0, 2, 'M');
        };
        EXPECT_TRUE(journals->flush(Long));
        journal->type(1, 0, 3, 'N');
        EXPECT_TRUE(journals->flush(Long));
        ::close(handle);
    }
    const auto journals = makeJournals();
    const auto found = only(journals->takeAbandoned());
    ASSERT_NE(found, nullptr);
    ASSERT_EQ(found->restore(), Outcome::Restored);
    const QByteArray bytes = bytesOf(found->basePath());
    EXPECT_TRUE(bytes == "0123456789" || bytes == "01M3456789") << bytes.toStdString();
    HexRecorder recorder;
    EXPECT_TRUE(found->visit(recorder));
    EXPECT_EQ(recorder.entries, QStringList({u"over 2 M"_qs, u"type 1 0 3 78"_qs}));
}

TEST_F(JournalKeeping, NamesAscendInTheOrderInWhichJournalsWereMade) {
    {
        const auto journals = makeJournals();
        std::vector<std::unique_ptr<Journal>> all;
        for (int i = 0; i < 12; ++i) {
            all.push_back(journals->begin(JournalBase()));
            all.back()->insert(0, std::to_string(i));
            EXPECT_TRUE(journals->flush(Long));
        }
    }
    const auto journals = makeJournals();
    const auto found = journals->takeAbandoned();
    ASSERT_EQ(found.size(), 12u);
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i]->restore(), Outcome::Restored);
        EXPECT_EQ(bytesOf(found[i]->textPath()), QByteArray::number(int(i)));
    }
}

TEST_F(JournalKeeping, FoldersAndFilesOfAnotherUserAreLeftAlone) {
    constexpr uid_t Nobody = 65534;
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give files away";
    leave(JournalBase(), "x");
    ASSERT_EQ(::chown(nameOf(journalPath()).constData(), Nobody, Nobody), 0);
    EXPECT_TRUE(makeJournals()->takeAbandoned().empty());
    ASSERT_EQ(::chown(nameOf(journalPath()).constData(), 0, 0), 0);
    ASSERT_EQ(::chown(nameOf(folder()).constData(), Nobody, Nobody), 0);
    const auto journals = makeJournals();
    EXPECT_TRUE(journals->takeAbandoned().empty());
    const auto journal = journals->begin(JournalBase());
    journal->insert(0, "y");
    EXPECT_FALSE(journals->flush(Long));
    EXPECT_EQ(names().size(), 1);
}

TEST_F(JournalKeeping, ABatchThatIsReleasedOnAFullDiskIsTriedUntilTheEnd) {
    put(at(u"state"_qs), "in the way");
    const auto journals = makeJournals();
    journals->begin(JournalBase())->insert(0, "closed");
    EXPECT_FALSE(journals->flush(Long));
    EXPECT_TRUE(QFile::remove(at(u"state"_qs)));
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(recovered(), "closed");
}

TEST_F(JournalKeeping, AJournalMayOutliveTheThreadThatWritesIt) {
    auto journals = makeJournals();
    const auto journal = journals->begin(JournalBase());
    journal->insert(0, "in time");
    journals.reset();
    journal->insert(0, "too late ");
    EXPECT_EQ(recovered(), "in time");
}

TEST_F(JournalKeeping, LargeTextsAreComparedWithTheirFile) {
    const QByteArray large = QByteArray("line of a large file\n").repeated(500'000);
    const QString path = file(large);
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path));
        for (qint64 at = 0; at < 10'000'000; at += 1'000) {
            journal->insert(at, "x");
            journal->remove(at, 1);
        }
        EXPECT_TRUE(journals->flush(Long));
    }
    recovered(Outcome::SameAsFile);
    put(path, large.chopped(1) + 'x');
    EXPECT_EQ(recovered(), large.toStdString());
}

}  // namespace
