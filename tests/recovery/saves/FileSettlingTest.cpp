#include "recovery/saves/FileSettling.h"
#include "recovery/saves/RecordFormat.h"
#include "recovery/saves/SaveRecording.h"

#include <sys/file.h>
#include <sys/wait.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <thread>
#include <vector>

/// A file that another process has left half-written is completed before it is read or written here.

using namespace SaveTests;

namespace {

constexpr std::chrono::hours ForEver{1};

class Settling : public SaveRecording {
 protected:
    Settling() {
        m_settling.setReport([this](const Summary& summary) { m_reports.push_back(summary); });
    }

    /// A save of which the process was killed when it had written this.
    QString tornFile(const QByteArray& oldBytes, const QByteArray& newBytes, qsizetype written,
                     const QString& name = u"file"_qs) const {
        QString path = file(oldBytes, name);
        interruptedSave(path, newBytes);
        put(path, newBytes.left(written) + oldBytes.mid(written));
        return path;
    }
    void settle(const QString& path) { m_settling.settle(nameOf(path)); }
    int lockFirstRecord() const {
        const int handle = ::open(nameOf(firstRecord()).constData(), O_RDONLY | O_CLOEXEC);
        EXPECT_EQ(::flock(handle, LOCK_EX | LOCK_NB), 0);
        return handle;
    }

    const QByteArray m_oldBytes = noise(5'000, 1);
    const QByteArray m_newBytes = noise(5'000, 2);
    std::vector<Summary> m_reports;
    FileSettling m_settling{folder(), FileSystemCalls::system(), [](const QByteArray&) { return false; }};
};

}  // namespace

TEST_F(Settling, AHalfWrittenFileIsCompletedBeforeItIsRead) {
    const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
    settle(path);
    EXPECT_EQ(bytesOf(path), m_newBytes);
    EXPECT_TRUE(records().isEmpty());
    EXPECT_EQ(m_reports, std::vector<Summary>{(Summary{0, 1, 0, 0})});
    settle(path);
    EXPECT_EQ(m_reports.size(), 1U);
}

TEST_F(Settling, WithoutRecordsNothingIsMadeOrReported) {
    settle(file("text"));
    settle(at(u"no/such/file"_qs));
    EXPECT_FALSE(QDir(folder()).exists());
    EXPECT_TRUE(m_reports.empty());
}

TEST_F(Settling, TheRecordOfAnotherFileIsLeft) {
    const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
    settle(file("text", u"another"_qs));
    EXPECT_EQ(records().size(), 1);
    EXPECT_NE(bytesOf(path), m_newBytes);
}

TEST_F(Settling, AFileIsKnownByEachOfItsNames) {
    for (const bool isHardLink : {false, true}) {
        const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
        const QString other = at(isHardLink ? u"hard"_qs : u"soft"_qs);
        const auto link = isHardLink ? ::link : ::symlink;
        ASSERT_EQ(link(nameOf(path).constData(), nameOf(other).constData()), 0);
        settle(other);
        EXPECT_EQ(bytesOf(path), m_newBytes);
        EXPECT_TRUE(records().isEmpty());
    }
}

TEST_F(Settling, ALaterSaveIsNotOverwrittenByTheRecordOfAKilledOne) {
    const QByteArray later = "saved by another, and later";
    for (const qsizetype written : {0, 20, 24}) {
        const QString path = tornFile("the old contents, a line", "the new contents, a line", written);
        {
            SaveRecords records(folder());
            EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &records).write(path, piecesOf(later)).error);
        }
        EXPECT_EQ(recover(), Summary()) << written;
        EXPECT_EQ(bytesOf(path), later);
        for (const QString& name : records()) {
            EXPECT_NE(written, 24);  // neither the old nor the new bytes: they are kept
            EXPECT_TRUE(name.endsWith(u".save.aside"_qs));
            EXPECT_TRUE(QFile::remove(folder() + u'/' + name));
        }
    }
}

TEST_F(Settling, AFileThatSomebodyElseChangedIsReadAsItIs) {
    const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
    put(path, "somebody's");
    settle(path);
    EXPECT_EQ(bytesOf(path), "somebody's");
    EXPECT_EQ(m_reports, std::vector<Summary>{(Summary{0, 0, 1, 0})});
    ASSERT_EQ(records().size(), 1);
    EXPECT_TRUE(records().first().endsWith(u".save.aside"_qs));
}

TEST_F(Settling, AFileThatCannotBeWrittenNowIsTriedOnce) {
    const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
    FailingFileSystem failing;
    failing.fail(SystemCall::Truncate, 0, EIO);
    FileSettling settling(folder(), failing, [](const QByteArray&) { return false; });
    settling.setLongestWait(ForEver);
    settling.settle(nameOf(path));
    EXPECT_EQ(failing.count(SystemCall::Truncate), 1);
    EXPECT_EQ(records().size(), 1);
    EXPECT_TRUE(failing.allClosed());
}

TEST_F(Settling, AFailingCallIsNoReasonToStop) {
    for (const SystemCall call : {SystemCall::Open, SystemCall::Fstat, SystemCall::ReadAt, SystemCall::Lock}) {
        const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
        FailingFileSystem failing;
        failing.fail(call, 0, EIO);
        FileSettling settling(folder(), failing, [](const QByteArray&) { return false; });
        settling.setLongestWait(ForEver);
        settling.settle(nameOf(path));
        EXPECT_EQ(records().size(), 1);
        EXPECT_TRUE(failing.allClosed());
        settle(path);
        EXPECT_TRUE(records().isEmpty());
    }
}

TEST_F(Settling, AProcessThatStillWritesTheFileIsNotWaitedForForEver) {
    const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
    const int lock = lockFirstRecord();
    m_settling.setLongestWait(std::chrono::milliseconds(30));
    settle(path);
    EXPECT_EQ(records().size(), 1);
    EXPECT_NE(bytesOf(path), m_newBytes);
    // Other files are not waited for.
    m_settling.setLongestWait(ForEver);
    settle(file("text", u"another"_qs));
    ::close(lock);
    settle(path);
    EXPECT_EQ(bytesOf(path), m_newBytes);
}

TEST_F(Settling, AProcessThatCompletesTheFileIsWaitedFor) {
    const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
    m_settling.setLongestWait(ForEver);
    const int lock = lockFirstRecord();
    const QString record = firstRecord();
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        put(path, m_newBytes);
        QFile::remove(record);
        ::close(lock);
    });
    settle(path);
    EXPECT_EQ(bytesOf(path), m_newBytes);
    EXPECT_TRUE(m_reports.empty());
    other.join();
}

TEST_F(Settling, AProcessThatIsKilledMeanwhileIsCompleted) {
    const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
    m_settling.setLongestWait(ForEver);
    const int lock = lockFirstRecord();
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        ::close(lock);
    });
    settle(path);
    EXPECT_EQ(bytesOf(path), m_newBytes);
    EXPECT_EQ(m_reports.size(), 1U);
    other.join();
}

TEST_F(Settling, OwnRecordsAreNotWaitedFor) {
    const QString path = file("old");
    SaveRecords own(folder());
    own.settling().setLongestWait(ForEver);
    FailingFileSystem calls;
    calls.fail(SystemCall::Truncate, 1, EIO);
    EXPECT_TRUE(UserFileWriter(calls, &own).write(path, piecesOf("new and longer")).error);
    ASSERT_EQ(records().size(), 1);
    own.aboutToUse(nameOf(path));
    EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &own).write(path, piecesOf("newer")).error);
    EXPECT_EQ(bytesOf(path), "newer");
}

TEST_F(Settling, SeveralThreadsFindTheFileCompleted) {
    const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
    std::atomic<int> reports = 0;
    m_settling.setReport([&](const Summary& summary) { reports += summary.completed; });
    m_settling.setLongestWait(ForEver);
    constexpr int Threads = 8;
    std::vector<std::thread> threads;
    threads.reserve(Threads);
    for (int i = 0; i < Threads; ++i) {
        threads.emplace_back([&] {
            m_settling.settle(nameOf(path));
            EXPECT_EQ(bytesOf(path), m_newBytes);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(reports, 1);
    EXPECT_TRUE(records().isEmpty());
}

TEST_F(Settling, ARecordThatIsBeingWrittenIsNotTrusted) {
    const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
    const QByteArray torn = bytesOf(path);
    const QByteArray record = bytesOfFirstRecord();
    const QString name = firstRecord();
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        QByteArray damaged = record;
        const auto at = static_cast<qsizetype>(random() % static_cast<unsigned>(record.size()));
        damaged[at] = static_cast<char>(damaged[at] + 1 + random() % 255);
        if (round % 2 == 0)
            damaged.truncate(at);
        put(name, damaged);
        settle(path);
        EXPECT_EQ(bytesOf(path), torn);
        for (const QString& left : QDir(folder()).entryList(QDir::Files)) {
            EXPECT_TRUE(QFile::remove(folder() + u'/' + left));
        }
    }
}

TEST_F(Settling, ARecordOfAnotherVersionIsLeftToTheNextStart) {
    const QString path = tornFile(m_oldBytes, m_newBytes, 1'024);
    QByteArray bytes = bytesOf(firstRecord());
    bytes.replace(0, 8, "QMSAVE9\n");
    put(firstRecord(), bytes);
    settle(path);
    EXPECT_EQ(records().size(), 1);
    EXPECT_TRUE(records().first().endsWith(u".save"_qs));
}

/// The whole story: one process lives, another one is killed in the middle of a save.
TEST_F(Settling, WhatAKilledProcessLeftIsCompletedInOneThatLivesOn) {
    class Killed : public FileSystemCalls {
     public:
        ssize_t pwritev(int handle, const iovec* parts, int /*count*/, off_t offset) override {
            const iovec part{parts->iov_base, 1'024};
            const ssize_t written = FileSystemCalls::pwritev(handle, &part, 1, offset);
            ::raise(SIGKILL);
            return written;
        }
    };
    const QString path = file(m_oldBytes);
    SaveRecords alive(folder());
    EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &alive).write(file("x", u"a"_qs), piecesOf("y")).error);
    const pid_t child = ::fork();
    if (child == 0) {
        SaveRecords records(folder());
        Killed calls;
        UserFileWriter(calls, &records).write(path, piecesOf(m_newBytes));
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(bytesOf(path), m_newBytes.left(1'024) + m_oldBytes.mid(1'024));
    int completed = 0;
    alive.settling().setReport([&](const Summary& summary) { completed += summary.completed; });
    WriteWitness::setOfProcess(&alive);
    WriteWitness::settleFile(path);
    WriteWitness::setOfProcess(nullptr);
    EXPECT_EQ(bytesOf(path), m_newBytes);
    EXPECT_EQ(completed, 1);
    EXPECT_TRUE(records().isEmpty());
}
