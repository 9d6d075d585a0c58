// Disks that fail and journals that were cut off: the document is never disturbed, and what was written counts.

#include "recovery/journals/HexEntryVisitor.h"
#include "recovery/journals/JournalFixture.h"
#include "recovery/journals/PassedJournals.h"
#include "support/FailingFileSystem.h"

#include <semaphore>
#include <utility>

namespace {

using JournalFailures = JournalFixture;

/// Calls that a journal makes, and an error that each can have.
struct Failure {
    SystemCall call;
    int error;
};
constexpr Failure Failures[] = {
    {SystemCall::Open, ENOSPC},  {SystemCall::Open, EROFS},   {SystemCall::Fstat, EIO},     {SystemCall::Stat, EIO},
    {SystemCall::Write, ENOSPC}, {SystemCall::Write, EDQUOT}, {SystemCall::Write, EIO},     {SystemCall::ReadAt, EIO},
    {SystemCall::Flush, EIO},    {SystemCall::Flush, ENOSPC}, {SystemCall::Rename, ENOSPC}, {SystemCall::Lock, ENOLCK},
    {SystemCall::Truncate, EIO}, {SystemCall::Unlink, EIO},   {SystemCall::Close, EIO},     {SystemCall::Clone, EIO},
    {SystemCall::Write, EINTR},  {SystemCall::Flush, EINTR},  {SystemCall::ReadAt, EINTR},
};

TEST_F(JournalFailures, AnySingleFailureIsMadeGoodByTheNextBatch) {
    JournalLimits limits = patient();
    limits.compacted = 300;
    for (const Failure& failure : Failures) {
        for (int number = 1; number <= 40; ++number) {
            const QString path = file("one two three");
            FailingFileSystem calls;
            calls.skipFlushes();
            calls.fail(failure.call, number, failure.error);
            std::string expected = "one two three";
            {
                const auto journals = makeJournals(calls, limits);
                const auto journal = journals->begin(baseOf(path));
                for (int batch = 0; batch < 5; ++batch) {
                    const std::string text(100, static_cast<char>('a' + batch));
                    journal->insert(0, text);
                    expected.insert(0, text);
                    if (journal->needsWhole())
                        journal->setWhole({expected});
                    journals->flush(Long);
                }
                if (journal->needsWhole()) {
                    journal->setWhole({expected});
                    journals->flush(Long);
                }
            }
            EXPECT_TRUE(calls.allClosed());
            const auto journals = makeJournals();
            auto found = journals->takeAbandoned();
            ASSERT_FALSE(found.empty()) << int(failure.call) << ' ' << number;
            // A journal whose creation could not be reported stays beside the one that took its place.
            bool isFound = false;
            for (const auto& each : found) {
                if (each->restore() == Outcome::Restored)
                    isFound = isFound || bytesOf(each->textPath()).toStdString() == expected;
                EXPECT_TRUE(each->discard());
            }
            ASSERT_TRUE(isFound) << int(failure.call) << ' ' << number;
            if (number > calls.count(failure.call))
                break;
        }
    }
}

/// Makes the edits of bytes again.
class Overwriter : public HexEntryVisitor {
 public:
    explicit Overwriter(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    bool typed(qint64 /*page*/, int /*row*/, int /*col*/, quint8 /*byte*/) override { return false; }
    bool tookBack() override { return false; }
    bool overwrote(qint64 at, std::string_view bytes) override {
        m_bytes.replace(qsizetype(at), qsizetype(bytes.size()), bytes.data(), qsizetype(bytes.size()));
        return true;
    }
    bool filled(qint64 /*at*/, qint64 /*length*/, quint8 /*byte*/) override { return false; }
    const QByteArray& bytes() const { return m_bytes; }

 private:
    QByteArray m_bytes;
};

/// A hex document whose file was changed: its journal holds a copy of the bytes that it shows.
TEST_F(JournalFailures, AnySingleFailureOfAJournalOfWholeBytesIsMadeGood) {
    JournalLimits limits = patient();
    limits.afterLast = limits.whileEditing = limits.longestRetry = std::chrono::milliseconds(1);
    for (const Failure& failure : Failures) {
        for (int number = 1; number <= 30; ++number) {
            JournalBase base = baseOf(file("0123456789"), JournalBase::View::Hex);
            --base.state->modified;
            const QString shown = file("01X3456789", u"working copy"_qs);
            FailingFileSystem calls;
            calls.skipFlushes();
            calls.fail(failure.call, number, failure.error);
            QFile bytes(shown);
            ASSERT_TRUE(bytes.open(QFile::ReadWrite | QFile::Unbuffered));
            {
                const auto journals = makeJournals(calls, limits);
                const auto journal = journals->begin(base);
                journal->setWhole(bytes.handle());
                for (int at = 0; at < 4; ++at) {
                    ASSERT_TRUE(bytes.seek(at) && bytes.write("z") == 1);
                    journal->overwrite(at, "z");
                    journals->flush(Long);
                    if (journal->needsWhole())
                        journal->setWhole(bytes.handle());
                }
                EXPECT_TRUE(journals->flush(Long));
                EXPECT_FALSE(journal->needsWhole());
            }
            EXPECT_TRUE(calls.allClosed());
            const auto journals = makeJournals();
            bool isFound = false;
            for (const auto& each : journals->takeAbandoned()) {
                if (each->restore() == Outcome::Restored) {
                    Overwriter again(bytesOf(each->basePath()));
                    isFound = isFound || (each->visit(again) && again.bytes() == bytesOf(shown));
                }
                EXPECT_TRUE(each->discard());
            }
            ASSERT_TRUE(isFound) << int(failure.call) << ' ' << number;
            if (number > calls.count(failure.call))
                break;
        }
    }
}

TEST_F(JournalFailures, ADiskThatStaysFullIsTriedAgainAndNothingIsLost) {
    FailingFileSystem calls;
    const QString path = file("one");
    {
        const auto journals = makeJournals(calls);
        const auto journal = journals->begin(baseOf(path));
        journal->insert(0, "a");
        EXPECT_TRUE(journals->flush(Long));
        calls.fail(SystemCall::Write, 0, ENOSPC);
        for (int i = 0; i < 10; ++i) {
            journal->insert(0, "b");
            EXPECT_FALSE(journals->flush(Long));
        }
        EXPECT_FALSE(journal->needsWhole());
        calls.recover(SystemCall::Write, 0);
        EXPECT_TRUE(journals->flush(Long));
    }
    EXPECT_EQ(recovered(), "bbbbbbbbbbaone");
}

TEST_F(JournalFailures, ShortWritesAndReadsAreContinued) {
    FailingFileSystem calls;
    calls.shortenAll(7);
    calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
    const QString path = file("one two three four five six seven");
    {
        const auto journals = makeJournals(calls);
        journals->begin(baseOf(path))->insert(0, "zero and more ");
    }
    const auto [journals, found, outcome] = nextStart(calls);
    ASSERT_EQ(outcome, Outcome::Restored);
    EXPECT_EQ(bytesOf(found->textPath()), "zero and more one two three four five six seven");
}

TEST_F(JournalFailures, AFileSizeLimitIsKeptTo) {
    FailingFileSystem calls;
    calls.setSizeLimit(100);
    const auto journals = makeJournals(calls);
    const auto journal = journals->begin(JournalBase());
    journal->insert(0, std::string(1'000, 'x'));
    EXPECT_FALSE(journals->flush(Long));
    EXPECT_EQ(names(), QStringList());
}

TEST_F(JournalFailures, ATornEndCountsUpToItsLastWholeBatch) {
    std::vector<qint64> sizes;
    const QString path = file("base");
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path));
        for (int batch = 0; batch < 4; ++batch) {
            journal->insert(0, std::to_string(batch));
            EXPECT_TRUE(journals->flush(Long));
            sizes.push_back(QFileInfo(journalPath()).size());
        }
    }
    const QString name = journalPath();
    const QByteArray whole = bytesOf(name);
    const std::string expected[] = {"0base", "10base", "210base", "3210base"};
    for (qint64 length = sizes.front(); length <= whole.size(); ++length) {
        std::size_t batches = 0;
        while (batches + 1 < sizes.size() && sizes[batches + 1] <= length)
            ++batches;
        put(name, whole.left(length));
        EXPECT_EQ(recovered(), expected[batches]) << length;
        // What is there instead of the rest does not count either.
        put(name, whole.left(length) + QByteArray(whole.size() - length, '\0'));
        EXPECT_EQ(recovered(), expected[batches]) << length;
    }
}

TEST_F(JournalFailures, ATornEndIsWrittenOverByWhatFollows) {
    leaveTwoBatches(JournalBase());
    const QByteArray whole = bytesOf(journalPath());
    put(journalPath(), whole.left(whole.size() - 1));
    {
        const auto [journals, found, outcome] = nextStart();
        ASSERT_EQ(outcome, Outcome::Restored);
        EXPECT_EQ(bytesOf(found->textPath()), "one ");
        found->continueAs()->insert(4, "three");
    }
    EXPECT_EQ(recovered(), "one three");
}

TEST_F(JournalFailures, AnyFlippedBitIsNoticed) {
    const QString path = file("base");
    leaveTwoBatches(baseOf(path));
    const QString name = journalPath();
    const QByteArray whole = bytesOf(name);
    for (qsizetype at = 0; at < whole.size(); ++at) {
        QByteArray damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 4);
        put(name, damaged);
        const auto journals = makeJournals();
        PassedJournals passed;
        const auto found = journals->takeAbandoned(passed);
        EXPECT_EQ(passed.ofAnother, at == 6 ? 1 : 0) << at;
        if (found.empty()) {
            EXPECT_TRUE(passed.ofAnother > 0 || QFile::rename(name + u".aside"_qs, name)) << at;
            continue;
        }
        const Outcome outcome = found.front()->restore();
        const QByteArray text = outcome == Outcome::Restored ? bytesOf(found.front()->textPath()) : "base";
        EXPECT_TRUE(text == "base" || text == "one base" || text == "one two base") << at;
        EXPECT_TRUE(text != "one two base" || at < 8 + 16) << at;
    }
}

TEST_F(JournalFailures, ADamagedCopyIsNotUsed) {
    const QString path = file("one two");
    leave(baseOf(path), "x");
    put(folder() + u'/' + names(u"*.base"_qs).value(0), "ONE two");
    EXPECT_EQ(recovered(), "xone two") << "the file is as it was";
    put(path, "something else");
    recovered(Outcome::Lost);
}

TEST_F(JournalFailures, AWrongLengthOfTheTextIsNoticed) {
    JournalBase base = baseOf(file("one two"));
    base.textLength = 6;
    leave(base, "x");
    recovered(Outcome::Lost);
}

TEST_F(JournalFailures, WhatCannotBeReadNowIsLeftForTheNextStart) {
    leave(baseOf(file("one")), "x");
    for (const SystemCall call : {SystemCall::ReadAt, SystemCall::Write}) {
        FailingFileSystem calls;
        const auto journals = makeJournals(calls);
        const auto found = only(journals->takeAbandoned());
        ASSERT_NE(found, nullptr);
        calls.fail(call, 0, EIO);
        EXPECT_EQ(found->restore(), Outcome::Failed);
    }
    EXPECT_EQ(recovered(), "xone");
}

/// A disk that does not answer until it is let.
class StuckDisk : public FileSystemCalls {
 public:
    int fsync(int handle) override {
        m_stuck.release();
        m_gate.acquire();
        m_gate.release();
        return FileSystemCalls::fsync(handle);
    }
    void waitUntilStuck() { m_stuck.acquire(); }
    void letGo() { m_gate.release(); }

 private:
    std::counting_semaphore<> m_stuck{0};
    std::counting_semaphore<> m_gate{0};
};

TEST_F(JournalFailures, ADiskThatDoesNotAnswerHoldsUpNoKey) {
    StuckDisk disk;
    JournalLimits limits = patient();
    limits.afterLast = std::chrono::milliseconds(1);
    {
        const auto journals = makeJournals(disk, limits);
        const auto journal = journals->begin(JournalBase());
        journal->insert(0, "k");
        disk.waitUntilStuck();
        for (int i = 1; i < 10'000; ++i)
            journal->insert(i, "k");
        const auto another = journals->begin(JournalBase());
        another->insert(0, "x");
        another->discard();
        disk.letGo();
    }
    EXPECT_EQ(recovered(), std::string(10'000, 'k'));
}

}  // namespace
