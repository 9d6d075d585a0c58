#include "recovery/saves/OwnRecord.h"
#include "recovery/saves/RecordFormat.h"
#include "recovery/saves/SaveRecording.h"

#include <QThread>

#include <sys/file.h>

#include <atomic>
#include <functional>
#include <set>
#include <string>
#include <thread>
#include <vector>

using namespace SaveTests;

TEST_F(SaveRecording, ARecordStandsWhileTheFileIsWrittenAndIsGoneAfterwards) {
    class Look : public FailingFileSystem {
     public:
        explicit Look(std::function<void()> look) : m_look(std::move(look)) {}
        ssize_t pwritev(int handle, const iovec* parts, int count, off_t offset) override {
            m_look();
            return FailingFileSystem::pwritev(handle, parts, count, offset);
        }

     private:
        std::function<void()> m_look;
    };
    const QString path = file(noise(5'000, 1));
    const QByteArray newBytes = noise(7'000, 2);
    SaveRecords records(folder());
    int looks = 0;
    Look calls([&] {
        ++looks;
        ASSERT_EQ(this->records().size(), 1);
        struct stat status {};
        ASSERT_EQ(::lstat(nameOf(firstRecord()).constData(), &status), 0);
        EXPECT_EQ(status.st_mode & ALLPERMS, 0600U);
        EXPECT_TRUE(bytesOf(firstRecord()).contains(newBytes));
        const int handle = ::open(nameOf(firstRecord()).constData(), O_RDONLY | O_CLOEXEC);
        EXPECT_NE(::flock(handle, LOCK_EX | LOCK_NB), 0);
        ::close(handle);
    });
    ASSERT_FALSE(UserFileWriter(calls, &records).write(path, piecesOf(newBytes)).error);
    EXPECT_EQ(looks, 1);
    EXPECT_TRUE(this->records().isEmpty());
    struct stat status {};
    ASSERT_EQ(::lstat(nameOf(folder()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & ALLPERMS, 0700U);
}

TEST_F(SaveRecording, AnInterruptedSaveIsCompletedWhateverBlocksWereWritten) {
    struct Sizes {
        int before;
        int after;
    };
    std::mt19937 random(7);
    for (const auto& [before, after] : std::vector<Sizes>{{0, 1},
                                                          {0, 3'000},
                                                          {1, 0},
                                                          {700, 700},
                                                          {511, 513},
                                                          {512, 512},
                                                          {5'000, 9'000},
                                                          {9'000, 5'000},
                                                          {200'000, 100'001}}) {
        const QByteArray oldBytes = noise(before, 1);
        const QByteArray newBytes = noise(after, 2);
        for (int round = 0; round < 10; ++round) {
            const QString path = file(oldBytes);
            interruptedSave(path, newBytes);
            ASSERT_EQ(records().size(), 1);
            const int sizes[] = {before, after, std::min(before, after) + std::abs(after - before) / 2};
            QByteArray torn = oldBytes;
            torn.resize(after > before ? sizes[random() % 3] : before);
            for (int at = before; at < torn.size(); ++at)
                torn[at] = '\0';
            for (int at = 0; at < torn.size(); at += 512) {
                const int length = std::min({512, static_cast<int>(torn.size()) - at, after - at});
                if (length > 0 && random() % 2 == 0)
                    torn.replace(at, length, newBytes.mid(at, length));
            }
            if (torn != oldBytes)
                put(path, torn);
            const Summary summary = recover();
            EXPECT_EQ(summary.setAside + summary.left, 0) << before << " to " << after << ", round " << round;
            EXPECT_EQ(bytesOf(path), newBytes);
            EXPECT_TRUE(records().isEmpty());
        }
    }
}

TEST_F(SaveRecording, AFileThatHasItsNewBytesIsNotTouched) {
    const QString path = file("old");
    interruptedSave(path, "and new");
    put(path, "and new");
    struct stat before {};
    ::stat(nameOf(path).constData(), &before);
    EXPECT_EQ(recover(), (Summary{1, 0, 0, 0}));
    struct stat after {};
    ::stat(nameOf(path).constData(), &after);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
    EXPECT_TRUE(records().isEmpty());
}

TEST_F(SaveRecording, AFileThatSomebodyElseChangedIsNotTouchedAndTheRecordIsSetAside) {
    const QByteArray oldBytes = noise(3'000, 1);
    const QByteArray newBytes = noise(3'000, 2);
    const QByteArray others = noise(3'000, 3);
    const QString path = file(oldBytes);
    interruptedSave(path, newBytes);
    put(path, others);
    EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
    EXPECT_EQ(bytesOf(path), others);
    ASSERT_EQ(records().size(), 1);
    EXPECT_TRUE(records().first().endsWith(u".save.aside"_qs));
    EXPECT_TRUE(bytesOf(firstRecord()).contains(newBytes));
    EXPECT_EQ(recover(), Summary());
}

TEST_F(SaveRecording, AnotherFileOfTheSameNameIsNotTouched) {
    const QByteArray oldBytes = noise(3'000, 1);
    const QString path = file(oldBytes);
    interruptedSave(path, noise(3'000, 2));
    ASSERT_TRUE(QFile::rename(path, at(u"elsewhere"_qs)));
    file(oldBytes);
    EXPECT_EQ(recover().setAside, 1);
    EXPECT_EQ(bytesOf(path), oldBytes);
    EXPECT_EQ(bytesOf(at(u"elsewhere"_qs)), oldBytes);
}

TEST_F(SaveRecording, AMissingFileIsNotMadeAgain) {
    const QString path = file("old");
    interruptedSave(path, "new");
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(recover().setAside, 1);
    EXPECT_FALSE(fileExists(path));
}

TEST_F(SaveRecording, ALinkOrFifoInThePlaceOfTheFileIsNotOpened) {
    const QString path = file("old");
    interruptedSave(path, "new");
    ASSERT_TRUE(QFile::rename(path, at(u"elsewhere"_qs)));
    ASSERT_EQ(::symlink("elsewhere", nameOf(path).constData()), 0);
    EXPECT_EQ(recover().setAside, 1);
    EXPECT_EQ(bytesOf(at(u"elsewhere"_qs)), "old");
    const QString second = file("old", u"second"_qs);
    interruptedSave(second, "new");
    ASSERT_TRUE(QFile::remove(second));
    ASSERT_EQ(::mkfifo(nameOf(second).constData(), 0600), 0);
    EXPECT_EQ(recover().setAside, 1);
}

TEST_F(SaveRecording, OneMixedBlockIsAnInterruptedWriteAndTwoAreNot) {
    const QByteArray oldBytes = noise(5'120, 1);
    const QByteArray newBytes = noise(5'120, 2);
    QByteArray torn = newBytes.left(1'500) + oldBytes.mid(1'500);
    const QString path = file(oldBytes);
    interruptedSave(path, newBytes);
    put(path, torn);
    EXPECT_EQ(recover().completed, 1);
    EXPECT_EQ(bytesOf(path), newBytes);

    put(path, oldBytes);
    interruptedSave(path, newBytes);
    torn.replace(3'000, 100, noise(100, 3));
    put(path, torn);
    EXPECT_EQ(recover().setAside, 1);
    EXPECT_EQ(bytesOf(path), torn);
}

TEST_F(SaveRecording, ADamagedRecordIsRemovedAndTheFileIsLeft) {
    const QByteArray oldBytes = noise(3'000, 1);
    const QString path = file(oldBytes);
    interruptedSave(path, noise(3'000, 2));
    const QByteArray record = bytesOfFirstRecord();
    const QString name = firstRecord();
    std::mt19937 random(11);
    for (int round = 0; round < 400; ++round) {
        QByteArray damaged = record;
        const auto at = static_cast<qsizetype>(random() % static_cast<unsigned>(record.size()));
        damaged[at] = static_cast<char>(damaged[at] + 1 + random() % 255);
        if (round % 2 == 0)
            damaged.truncate(at);
        put(name, damaged);
        // With another beginning it is none of this version's records.
        const QByteArray magic(RecordFormat::Magic, sizeof RecordFormat::Magic);
        const QByteArray beginning = damaged.left(magic.size());
        const bool isOurs = std::equal(beginning.begin(), beginning.end(), magic.begin(),
                                       [](char is, char should) { return is == '\0' || is == should; });
        EXPECT_EQ(recover(), isOurs ? (Summary{1, 0, 0, 0}) : (Summary{0, 0, 1, 0}));
        EXPECT_EQ(bytesOf(path), oldBytes);
        EXPECT_EQ(records().isEmpty(), isOurs);
        QFile::remove(name + u".aside"_qs);
    }
}

TEST_F(SaveRecording, TheRecordOfALivingProcessIsLeftAlone) {
    const QString path = file("old");
    SaveRecords records(folder());
    FailingFileSystem calls;
    calls.fail(SystemCall::Truncate, 1, EIO);
    EXPECT_TRUE(UserFileWriter(calls, &records).write(path, piecesOf("new and longer")).error);
    ASSERT_EQ(this->records().size(), 1);
    EXPECT_EQ(recover(), Summary());
    EXPECT_EQ(this->records().size(), 1);
}

TEST_F(SaveRecording, TheRecordOfAFailedWriteIsGoneAfterALaterOneOfThatFile) {
    const QString path = file("old");
    SaveRecords records(folder());
    FailingFileSystem calls;
    calls.fail(SystemCall::Truncate, 1, EIO);
    EXPECT_TRUE(UserFileWriter(calls, &records).write(path, piecesOf("new and longer")).error);
    EXPECT_FALSE(UserFileWriter(calls, &records).write(file("x", u"another"_qs), piecesOf("y")).error);
    EXPECT_EQ(this->records().size(), 1);
    EXPECT_FALSE(UserFileWriter(calls, &records).write(path, piecesOf("newer")).error);
    EXPECT_TRUE(this->records().isEmpty());
    EXPECT_EQ(bytesOf(path), "newer");
}

TEST_F(SaveRecording, AWriteThatFailedBeforeItsFirstByteLeavesNoRecord) {
    const QString path = file("old");
    SaveRecords records(folder());
    FailingFileSystem calls;
    calls.fail(SystemCall::Write, 1, ENOSPC);
    EXPECT_TRUE(UserFileWriter(calls, &records).write(path, piecesOf("new")).error);
    EXPECT_TRUE(this->records().isEmpty());
}

TEST_F(SaveRecording, ASaveNeverFailsForWantOfARecord) {
    for (const SystemCall call : {SystemCall::Open, SystemCall::Fstat, SystemCall::Lock, SystemCall::Write,
                                  SystemCall::Flush, SystemCall::ReadAt}) {
        for (int number = 0; number <= 3; ++number) {
            const QString path = file("old bytes");
            FailingFileSystem failing;
            failing.fail(call, number, EIO);
            {
                SaveRecords records(folder(), failing);
                EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &records).write(path, piecesOf("new")).error);
                EXPECT_EQ(bytesOf(path), "new");
                EXPECT_TRUE(this->records().isEmpty());
            }
            EXPECT_TRUE(failing.allClosed());
        }
    }
    SaveRecords nowhere(at(u"file/saves"_qs));
    EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &nowhere).write(at(u"file"_qs), piecesOf("newer")).error);
    EXPECT_EQ(bytesOf(at(u"file"_qs)), "newer");
}

TEST_F(SaveRecording, AFolderThatIsALinkIsNotUsed) {
    ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"state"_qs) && QDir(m_folder.path()).mkpath(u"elsewhere"_qs));
    ASSERT_EQ(::symlink("../elsewhere", nameOf(folder()).constData()), 0);
    const QString path = file("old");
    interruptedSave(path, "new");
    EXPECT_TRUE(QDir(at(u"elsewhere"_qs)).isEmpty());
    EXPECT_EQ(recover(), Summary());
}

TEST_F(SaveRecording, OfAFileThatIsNotInMemoryOnlyTheBlocksThatDifferAreRecorded) {
    QByteArray oldBytes = noise(300'000, 1);
    QByteArray newBytes = oldBytes;
    newBytes[10] = static_cast<char>(newBytes[10] + 1);
    newBytes[200'000] = static_cast<char>(newBytes[200'000] + 1);
    newBytes[299'999] = static_cast<char>(newBytes[299'999] + 1);
    const QString path = file(oldBytes);
    Parts source(newBytes);
    interruptedSave(path, source, UserFileWriter::Tail::Keep);
    ASSERT_EQ(records().size(), 1);
    EXPECT_LT(bytesOfFirstRecord().size(), 8'000);
    QByteArray torn = oldBytes;
    torn[200'000] = newBytes[200'000];
    put(path, torn);
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
    EXPECT_EQ(bytesOf(path), newBytes);
}

TEST_F(SaveRecording, ASourceOfAnotherLengthThanTheFileIsCompletedToo) {
    for (const auto& [before, after] :
         std::vector<std::pair<int, int>>{{3'000, 8'000}, {8'000, 3'000}, {0, 700}, {700, 1'024}}) {
        for (const UserFileWriter::Tail tail : {UserFileWriter::Tail::Keep, UserFileWriter::Tail::Cut}) {
            const QByteArray oldBytes = noise(before, 1);
            const QByteArray newBytes = oldBytes.left(600) + noise(std::max(0, after - 600), 2);
            const QString path = file(oldBytes);
            Parts source(newBytes.left(after));
            interruptedSave(path, source, tail);
            EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
            const QByteArray kept = tail == UserFileWriter::Tail::Keep ? oldBytes.mid(after) : QByteArray();
            EXPECT_EQ(bytesOf(path), newBytes.left(after) + kept);
        }
    }
}

TEST_F(SaveRecording, ASourceThatCannotBeReadTwiceIsSavedWithoutARecord) {
    Parts source(noise(3'000, 2));
    source.canRewind = false;
    const QString path = file("old");
    SaveRecords records(folder());
    EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &records).write(path, source).error);
    EXPECT_EQ(bytesOf(path), noise(3'000, 2));
    EXPECT_TRUE(this->records().isEmpty());
}

TEST_F(SaveRecording, OfTwoRecordsOfAFileTheNewerOneCounts) {
    const QByteArray first = noise(2'000, 1);
    const QByteArray second = noise(2'500, 2);
    const QByteArray third = noise(1'500, 3);
    const QString path = file(first);
    interruptedSave(path, second);
    put(path, second);
    interruptedSave(path, third);
    ASSERT_EQ(records().size(), 2);
    expectNewerCounts(path, second, third);
    EXPECT_TRUE(records().isEmpty());
}

TEST_F(SaveRecording, AFileThatCannotBeWrittenNowIsCompletedAtALaterStart) {
    const QString path = file("old bytes");
    interruptedSave(path, "new");
    for (const SystemCall call : {SystemCall::Write, SystemCall::Truncate, SystemCall::Flush}) {
        FailingFileSystem failing;
        failing.fail(call, 0, EROFS);
        EXPECT_EQ(SaveRecovery(folder(), failing).run(), (Summary{0, 0, 0, 1}));
        EXPECT_EQ(records().size(), 1);
    }
    EXPECT_EQ(recover().left, 0);
    EXPECT_EQ(bytesOf(path), "new");
}

TEST_F(SaveRecording, HardLinksAndModeStay) {
    const QString path = file("old");
    ASSERT_EQ(::link(nameOf(path).constData(), nameOf(at(u"second"_qs)).constData()), 0);
    ASSERT_EQ(::chmod(nameOf(path).constData(), 0640), 0);
    interruptedSave(path, "new bytes");
    EXPECT_EQ(recover().completed, 1);
    struct stat status {};
    ASSERT_EQ(::stat(nameOf(path).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & ALLPERMS, 0640U);
    EXPECT_EQ(bytesOf(at(u"second"_qs)), "new bytes");
}

TEST_F(SaveRecording, AFileBehindALinkIsCompletedThere) {
    file("old", u"target"_qs);
    ASSERT_EQ(::symlink("target", nameOf(at(u"link"_qs)).constData()), 0);
    interruptedSave(at(u"link"_qs), "new");
    ASSERT_TRUE(QFile::remove(at(u"link"_qs)));
    EXPECT_EQ(recover().completed, 1);
    EXPECT_EQ(bytesOf(at(u"target"_qs)), "new");
}

TEST_F(SaveRecording, AStartWithoutRecordsMakesNoFolder) {
    EXPECT_EQ(recover(), Summary());
    EXPECT_FALSE(QDir(folder()).exists());
}

TEST_F(SaveRecording, WritesOfSeveralThreadsShareRecordsAndLeaveNone) {
    constexpr int Threads = 8;
    constexpr int FilesEach = 12;
    class Counting : public FileSystemCalls {
     public:
        int open(const char* path, int flags, mode_t mode) override {
            made += (flags & O_CREAT) != 0 ? 1 : 0;
            return FileSystemCalls::open(path, flags, mode);
        }
        int fdatasync(int handle) override {
            QThread::msleep(2);
            return FileSystemCalls::fdatasync(handle);
        }
        std::atomic<int> made = 0;
    };
    Counting counting;
    SaveRecords records(folder(), counting);
    for (int i = 0; i < Threads * FilesEach; ++i)
        file(noise(1'000, 1), QString::number(i));
    std::vector<std::thread> threads;
    threads.reserve(Threads);
    for (int thread = 0; thread < Threads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < FilesEach; ++i) {
                const QByteArray bytes = noise(1'500, static_cast<unsigned>(i));
                const std::string_view piece(bytes.constData(), static_cast<std::size_t>(bytes.size()));
                const QString path = at(QString::number(thread * FilesEach + i));
                EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &records).write(path, {&piece, 1}).error);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (int i = 0; i < Threads * FilesEach; ++i) {
        const QByteArray expected = noise(1'500, static_cast<unsigned>(i % FilesEach));
        EXPECT_EQ(bytesOf(at(QString::number(i))), expected);
    }
    EXPECT_LT(counting.made, Threads * FilesEach);
    EXPECT_TRUE(this->records().isEmpty());
}

TEST_F(SaveRecording, ARecordOfSeveralFilesCompletesEach) {
    const QString first = file(noise(2'000, 1), u"first"_qs);
    const QString second = file(noise(2'000, 2), u"second"_qs);
    const QString third = file(noise(2'000, 3), u"third"_qs);
    const QByteArray newBytes = noise(3'000, 4);
    recordGroup({first, second, third}, newBytes);
    ASSERT_EQ(records().size(), 1);
    put(second, newBytes);
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
    EXPECT_EQ(bytesOf(first) + bytesOf(second) + bytesOf(third), newBytes + newBytes + newBytes);
}

TEST_F(SaveRecording, OfSeveralFilesTheChangedOneIsLeftAndTheOthersAreCompleted) {
    const QString first = file(noise(2'000, 1), u"first"_qs);
    const QString second = file(noise(2'000, 2), u"second"_qs);
    const QByteArray newBytes = noise(3'000, 4);
    recordGroup({first, second}, newBytes);
    put(first, "somebody else's");
    EXPECT_EQ(recover(), (Summary{0, 0, 1, 0}));
    EXPECT_EQ(bytesOf(first), "somebody else's");
    EXPECT_EQ(bytesOf(second), newBytes);
}

TEST_F(SaveRecording, TheRecordOfAFileThatFailedStaysWhenAnotherOneIsWritten) {
    const QString path = file("old");
    SaveRecords records(folder());
    const QByteArray newBytes = "newer and longer";
    const std::string_view piece(newBytes.constData(), static_cast<std::size_t>(newBytes.size()));
    FailingFileSystem calls;
    calls.fail(SystemCall::Truncate, 0, EIO);
    EXPECT_TRUE(UserFileWriter(calls, &records).write(file("old", u"a"_qs), {&piece, 1}).error);
    EXPECT_TRUE(UserFileWriter(calls, &records).write(file("old", u"b"_qs), {&piece, 1}).error);
    EXPECT_EQ(this->records().size(), 2);
    EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &records).write(at(u"a"_qs), {&piece, 1}).error);
    EXPECT_EQ(this->records().size(), 1);
}

TEST_F(SaveRecording, ARecordOrAFileThatCannotBeReadNowIsCompletedAtALaterStart) {
    const QByteArray oldBytes = noise(200'000, 1);
    const QByteArray newBytes = noise(210'000, 2);
    const QString path = file(oldBytes);
    interruptedSave(path, newBytes);
    put(path, newBytes.left(1'024) + oldBytes.mid(1'024));
    FailingFileSystem clean;
    clean.fail(SystemCall::Write, 0, EROFS);
    ASSERT_EQ(SaveRecovery(folder(), clean).run().left, 1);
    for (const SystemCall call : {SystemCall::ReadAt, SystemCall::Stat, SystemCall::Fstat, SystemCall::Open}) {
        for (int number = 1; number <= clean.count(call); ++number) {
            FailingFileSystem failing;
            failing.fail(SystemCall::Write, 0, EROFS);
            failing.fail(call, number, EIO);
            const Summary summary = SaveRecovery(folder(), failing).run();
            EXPECT_EQ(summary.removed + summary.completed + summary.setAside, 0) << number;
            EXPECT_EQ(records().size(), 1);
            EXPECT_TRUE(failing.allClosed());
        }
    }
    EXPECT_EQ(recover(), (Summary{0, 1, 0, 0}));
    EXPECT_EQ(bytesOf(path), newBytes);
}

TEST_F(SaveRecording, ARecordIsNotRemovedBeforeItsFileIsOnTheDisk) {
    const QString path = file("old");
    interruptedSave(path, "new");
    put(path, "new");
    FailingFileSystem failing;
    failing.fail(SystemCall::Flush, 0, EIO);
    EXPECT_EQ(SaveRecovery(folder(), failing).run(), (Summary{0, 0, 0, 1}));
    EXPECT_EQ(records().size(), 1);
    EXPECT_EQ(recover(), (Summary{1, 0, 0, 0}));
}

TEST_F(SaveRecording, ARecordThatCannotBeRemovedIsNoneOfALaterSave) {
    const QByteArray oldBytes = noise(3'000, 1);
    const QString path = file(oldBytes);
    const QByteArray newBytes = noise(3'000, 2);
    FailingFileSystem failing;
    failing.fail(SystemCall::Unlink, 0, EACCES);
    {
        SaveRecords records(folder(), failing);
        EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &records).write(path, piecesOf(newBytes)).error);
    }
    put(path, oldBytes);
    EXPECT_EQ(recover(), (Summary{1, 0, 0, 0}));
    EXPECT_EQ(bytesOf(path), oldBytes);
}

TEST_F(SaveRecording, ALaterSaveWithoutARecordRemovesTheOneOfAFailedSaveToo) {
    const QString path = file("old");
    FailingFileSystem onRecords;
    SaveRecords records(folder(), onRecords);
    FailingFileSystem calls;
    calls.fail(SystemCall::Truncate, 1, EIO);
    EXPECT_TRUE(UserFileWriter(calls, &records).write(path, piecesOf("new and longer")).error);
    ASSERT_EQ(this->records().size(), 1);
    onRecords.fail(SystemCall::Write, 0, ENOSPC);
    EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &records).write(path, piecesOf("old")).error);
    EXPECT_TRUE(this->records().isEmpty());
    EXPECT_EQ(bytesOf(path), "old");
}

TEST_F(SaveRecording, TheOldFileAndTheFoldersAreFlushedBeforeTheFirstByte) {
    class Flushes : public FailingFileSystem {
     public:
        int fsync(int handle) override {
            note(handle);
            return FailingFileSystem::fsync(handle);
        }
        int fdatasync(int handle) override {
            note(handle);
            return FailingFileSystem::fdatasync(handle);
        }
        std::set<ino_t> flushed;

     private:
        void note(int handle) {
            struct stat status {};
            EXPECT_EQ(::fstat(handle, &status), 0);
            flushed.insert(status.st_ino);
        }
    };
    class Before : public FailingFileSystem {
     public:
        explicit Before(std::function<void()> look) : m_look(std::move(look)) {}
        ssize_t pwritev(int handle, const iovec* parts, int count, off_t offset) override {
            m_look();
            return FailingFileSystem::pwritev(handle, parts, count, offset);
        }

     private:
        std::function<void()> m_look;
    };
    const QString path = file("old");
    Flushes onRecords;
    SaveRecords records(folder(), onRecords);
    int looks = 0;
    Before calls([&] {
        ++looks;
        for (const QString& name : {path, firstRecord(), folder(), at(u"state"_qs), m_folder.path()}) {
            struct stat status {};
            ASSERT_EQ(::stat(nameOf(name).constData(), &status), 0);
            EXPECT_TRUE(onRecords.flushed.contains(status.st_ino)) << qPrintable(name);
        }
    });
    EXPECT_FALSE(UserFileWriter(calls, &records).write(path, piecesOf("new")).error);
    EXPECT_EQ(looks, 1);
}

TEST_F(SaveRecording, AFileThatWasCutBeforeItsBytesReachedTheDiskIsCompleted) {
    for (const int after : {0, 100, 512, 1'300}) {
        const QByteArray oldBytes = noise(3'000, 1);
        const QByteArray newBytes = noise(after, 2);
        const QString path = file(oldBytes);
        interruptedSave(path, newBytes);
        put(path, oldBytes.left(after));
        EXPECT_EQ(recover().setAside, 0) << after;
        EXPECT_EQ(bytesOf(path), newBytes);
        put(path, oldBytes);
        interruptedSave(path, newBytes);
        put(path, oldBytes.left(after) + QByteArray(3'000 - after, '\0'));
        EXPECT_EQ(recover(), (Summary{0, 1, 0, 0})) << after;
        EXPECT_EQ(bytesOf(path), newBytes);
    }
}

TEST_F(SaveRecording, BitsOfTheModeThatAWriteClearsAreSetAgain) {
    const QString path = file("old");
    ASSERT_EQ(::chmod(nameOf(path).constData(), 04755), 0);
    for (const QByteArray& now : {QByteArray("old"), QByteArray("and new")}) {
        interruptedSave(path, "and new");
        if (now != "old")
            put(path, now);
        ASSERT_EQ(::chmod(nameOf(path).constData(), 0755), 0);
        EXPECT_EQ(recover().left, 0);
        struct stat status {};
        ASSERT_EQ(::stat(nameOf(path).constData(), &status), 0);
        EXPECT_EQ(status.st_mode & ALLPERMS, 04755U);
        EXPECT_EQ(bytesOf(path), "and new");
        put(path, "old");
        ASSERT_EQ(::chmod(nameOf(path).constData(), 04755), 0);
    }
}

TEST_F(SaveRecording, OneFileIsWrittenOverBySaveAfterSaveAndHoldsNothingInBetween) {
    const QString path = file(noise(5'000, 1));
    FailingFileSystem calls;
    {
        SaveRecords records(folder(), calls);
        for (const qsizetype length : {9'000, 200'000, 100, 3'000'000, 700}) {
            const QByteArray newBytes = noise(length, 2);
            EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &records).write(path, piecesOf(newBytes)).error);
            const QStringList names = QDir(folder()).entryList(QDir::Files);
            ASSERT_EQ(names.size(), 1);
            EXPECT_TRUE(isZero(bytesOf(folder() + u'/' + names.first()))) << length;
        }
        EXPECT_EQ(calls.count(SystemCall::Lock), 1);
    }
    EXPECT_TRUE(QDir(folder()).isEmpty());
}

TEST_F(SaveRecording, ARecordStandsAlsoAfterSomebodyHasRemovedTheFolder) {
    const QString path = file("old");
    SaveRecords records(folder());
    EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &records).write(path, piecesOf("new")).error);
    ASSERT_TRUE(QDir(folder()).removeRecursively());
    LeftBehind witness(records);
    FailingFileSystem calls;
    calls.fail(SystemCall::Write, 1, EIO);
    EXPECT_TRUE(UserFileWriter(calls, &witness).write(path, piecesOf("newer")).error);
    EXPECT_EQ(this->records().size(), 1);
}

TEST_F(SaveRecording, TheNewerRecordIsKnownByItsNumberAndNotByItsName) {
    const QByteArray oldBytes = noise(4'000, 1);
    const QByteArray first = noise(4'000, 2);
    const QByteArray second = noise(4'000, 3);
    const QString path = file(oldBytes);
    recordGroup({path}, first, u"9-9-9.save"_qs, 1);
    put(path, first);
    recordGroup({path}, second, u"1-1-1.save"_qs, 2);
    expectNewerCounts(path, first, second);
}

TEST_F(SaveRecording, AFileThatNobodyWroteSinceTheLastSaveIsNotFlushedAgainAndOthersAre) {
    const QString path = file("old");
    FailingFileSystem calls;
    SaveRecords records(folder(), calls);
    const auto flushesOfASave = [&](const QByteArray& newBytes) {
        const int before = calls.count(SystemCall::Flush);
        EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &records).write(path, piecesOf(newBytes)).error);
        return calls.count(SystemCall::Flush) - before;
    };
    EXPECT_GT(flushesOfASave("new"), 2);
    EXPECT_EQ(flushesOfASave("newer"), 1);
    EXPECT_EQ(flushesOfASave("newest"), 1);
    put(path, "somebody's");
    EXPECT_EQ(flushesOfASave("own"), 2);
    ASSERT_TRUE(QFile::remove(path));
    file("another");
    EXPECT_EQ(flushesOfASave("own"), 2);
}

TEST_F(SaveRecording, TheSpaceOfARecordIsKeptUpToALimitAndItsBytesAreNot) {
    struct Case {
        qint64 written;
        qint64 mostKept;
        int reserveError;
        qint64 sizeAfter;
    };
    constexpr qint64 MiB = 1024LL * 1024;
    for (const Case& one : {Case{5'000, MiB, 0, 5'000}, Case{5'000, 0, 0, 5'000}, Case{3 * MiB, 8 * MiB, 0, 3 * MiB},
                            Case{3 * MiB, 2 * MiB, 0, MiB}, Case{3 * MiB, 8 * MiB, EOPNOTSUPP, MiB}}) {
        const QString path = file(noise(one.written, 1));
        FailingFileSystem calls;
        if (one.reserveError != 0)
            calls.fail(SystemCall::Reserve, 0, one.reserveError);
        OwnRecord record(calls, nameOf(path), ::open(nameOf(path).constData(), O_RDWR | O_CLOEXEC));
        ASSERT_TRUE(record.lock());
        record.setWritten(one.written, true);
        ASSERT_TRUE(record.blank(one.mostKept));
        EXPECT_TRUE(isZero(bytesOf(path)));
        // A file system that cannot empty a part of a file has it cut off.
        EXPECT_TRUE(record.size() == one.sizeAfter || (one.written > MiB && record.size() == MiB));
        EXPECT_EQ(bytesOf(path).size(), record.size());
    }
}

TEST_F(SaveRecording, ARecordThatCannotBeMadeInvalidIsRemoved) {
    const QString path = file("old");
    FailingFileSystem onRecords;
    SaveRecords records(folder(), onRecords);
    for (const int failing : {2, 3, 4}) {
        onRecords.fail(SystemCall::Write, onRecords.count(SystemCall::Write) + failing, EIO);
        for (const char* newBytes : {"new", "newer", "newest"}) {
            const WriteResult result =
                UserFileWriter(FileSystemCalls::system(), &records).write(path, piecesOf(newBytes));
            EXPECT_FALSE(result.error);
        }
        EXPECT_TRUE(this->records().isEmpty());
        EXPECT_LE(QDir(folder()).entryList(QDir::Files).size(), 1);
    }
}

TEST_F(SaveRecording, ARecordIsNewerThanAnAbandonedOneFromBeforeTheClockWasSetBack) {
    constexpr quint64 InTheFuture = quint64(1) << 62;
    const QByteArray oldBytes = noise(4'000, 1);
    const QByteArray first = noise(4'000, 2);
    const QByteArray second = noise(4'000, 3);
    const QString path = file(oldBytes);
    recordGroup({path}, first, u"1-1-1.save"_qs, InTheFuture);
    put(path, first);
    interruptedSave(path, second);
    ASSERT_EQ(records().size(), 2);
    expectNewerCounts(path, first, second);
}

TEST_F(SaveRecording, ANewFileNeedsNoRecordAndGetsItsNameWhenEarlierOnesAreGoneFromTheDisk) {
    FailingFileSystem onRecords;
    class Named : public FailingFileSystem {
     public:
        explicit Named(FailingFileSystem& onRecords) : m_onRecords(onRecords) {}
        int nameFile(int handle, const char* path) override {
            flushes = m_onRecords.count(SystemCall::Flush);
            return FailingFileSystem::nameFile(handle, path);
        }
        int flushes = -1;

     private:
        FailingFileSystem& m_onRecords;
    };
    const QString path = file("old");
    SaveRecords records(folder(), onRecords);
    EXPECT_FALSE(UserFileWriter(FileSystemCalls::system(), &records).write(path, piecesOf("new")).error);
    ASSERT_TRUE(QFile::remove(path));
    const int before = onRecords.count(SystemCall::Flush);
    const int writes = onRecords.count(SystemCall::Write);
    Named calls(onRecords);
    EXPECT_FALSE(UserFileWriter(calls, &records).write(path, piecesOf("newer")).error);
    EXPECT_EQ(calls.flushes, before + 1);
    EXPECT_EQ(onRecords.count(SystemCall::Write), writes);
    EXPECT_EQ(bytesOf(path), "newer");
}
