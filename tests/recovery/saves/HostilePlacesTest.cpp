#include "platform/Paths.h"
#include "platform/UserFileWriter.h"
#include "recovery/saves/SaveRecords.h"
#include "recovery/saves/SaveRecovery.h"
#include "support/AnotherUser.h"
#include "support/FailingFileSystem.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <optional>
#include <string_view>

/// Saves where there is no space, no right to write and no folder for their records: the person gets the told result,
/// and nothing is lost.

namespace {

constexpr const char* OldBytes = "old bytes of the file";
const QByteArray NewBytes = QByteArray("new bytes, ").repeated(2'000);

class SavingInHostilePlaces : public testing::Test {
 protected:
    QString at(const QString& name) const { return m_folder.filePath(name); }
    QString path() const { return at(u"file"_qs); }
    QString records() const { return at(u"state/saves"_qs); }
    static QByteArray nameOf(const QString& path) { return localName(path).value_or(QByteArray()); }

    static void put(const QString& path, const QByteArray& bytes) {
        QFile out(path);
        EXPECT_TRUE(out.open(QFile::ReadWrite | QFile::Truncate) && out.write(bytes) == bytes.size());
    }
    static QByteArray bytesOf(const QString& path) {
        QFile in(path);
        return in.open(QFile::ReadOnly) ? in.readAll() : QByteArray("cannot be read");
    }

    /// The error of the save; records are made by other calls than the file is written by.
    int save(FileSystemCalls& onFile, FileSystemCalls& onRecords, const QByteArray& bytes = NewBytes) const {
        SaveRecords witness(records(), onRecords);
        const std::string_view piece(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        return UserFileWriter(onFile, &witness).write(path(), BytePieces(&piece, 1)).error.number;
    }
    /// Saves in a process whose files may have so many bytes, and expects this error.
    void expectOfLimitedProcess(rlim_t bytes, int error) const {
        const auto isAsExpected = [&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{bytes, bytes};
            return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 &&
                   save(FileSystemCalls::system(), FileSystemCalls::system()) == error;
        };
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(isAsExpected() ? 0 : 1);
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    bool recover() const {
        const SaveRecovery::Summary summary = SaveRecovery(records()).run();
        return summary.left + summary.setAside == 0 && QDir(records()).isEmpty();
    }

    QTemporaryDir m_folder;
};

/// A folder with a file system of one megabyte, where this process may mount one.
class SmallDisk {
 public:
    explicit SmallDisk(const QString& folder) : m_name(localName(folder).value_or(QByteArray())) {
        QDir().mkpath(folder);
        m_isThere = ::mount("none", m_name.constData(), "tmpfs", MS_NOSUID | MS_NODEV, "size=1m,mode=700") == 0;
    }
    ~SmallDisk() {
        if (m_isThere)
            ::umount2(m_name.constData(), MNT_DETACH);
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)
    bool isThere() const { return m_isThere; }

 private:
    const QByteArray m_name;
    bool m_isThere = false;
};

}  // namespace

TEST_F(SavingInHostilePlaces, AFullDiskOrQuotaThatIsFoundWhenSpaceIsReservedLeavesTheOldFile) {
    for (const int error : {ENOSPC, EDQUOT, EROFS}) {
        put(path(), OldBytes);
        FailingFileSystem full;
        full.fail(SystemCall::Reserve, 0, error);
        EXPECT_EQ(save(full, FileSystemCalls::system()), error);
        EXPECT_EQ(bytesOf(path()), OldBytes);
        EXPECT_TRUE(recover());
        EXPECT_EQ(bytesOf(path()), OldBytes);
    }
}

TEST_F(SavingInHostilePlaces, AQuotaThatIsFoundByTheFirstWriteLeavesTheOldFile) {
    put(path(), OldBytes);
    FailingFileSystem full;
    full.fail(SystemCall::Reserve, 0, EOPNOTSUPP);
    full.fail(SystemCall::Write, 1, EDQUOT);
    EXPECT_EQ(save(full, FileSystemCalls::system()), EDQUOT);
    EXPECT_EQ(bytesOf(path()), OldBytes);
    EXPECT_TRUE(recover());
    EXPECT_EQ(bytesOf(path()), OldBytes);
}

TEST_F(SavingInHostilePlaces, AFileThatIsHalfWrittenWhenTheDiskIsFullIsCompletedWhenThereIsSpace) {
    for (const int error : {ENOSPC, EDQUOT}) {
        put(path(), OldBytes);
        FailingFileSystem full;
        full.fail(SystemCall::Reserve, 0, EOPNOTSUPP);
        full.shorten(SystemCall::Write, 1, 1'000);
        full.fail(SystemCall::Write, 2, error);
        EXPECT_EQ(save(full, FileSystemCalls::system()), error);
        FailingFileSystem stillFull;
        stillFull.fail(SystemCall::Write, 0, error);
        EXPECT_EQ(SaveRecovery(records(), stillFull).run().left, 1);
        EXPECT_TRUE(recover());
        EXPECT_EQ(bytesOf(path()), NewBytes);
    }
}

TEST_F(SavingInHostilePlaces, WithoutSpaceOrRightsForItsRecordAFileIsSavedAllTheSame) {
    for (const SystemCall call : {SystemCall::Open, SystemCall::Write, SystemCall::Flush}) {
        for (const int error : {ENOSPC, EDQUOT, EROFS, EACCES}) {
            put(path(), OldBytes);
            FailingFileSystem full;
            full.fail(call, 0, error);
            EXPECT_EQ(save(FileSystemCalls::system(), full), 0);
            EXPECT_EQ(bytesOf(path()), NewBytes);
            EXPECT_TRUE(recover());
            EXPECT_EQ(bytesOf(path()), NewBytes);
        }
    }
}

TEST_F(SavingInHostilePlaces, OnADiskThatIsReallyFullTheOldFileStaysAndOnAnotherTheRecordIsDoneWithout) {
    const SmallDisk disk(at(u"small"_qs));
    if (!disk.isThere())
        GTEST_SKIP() << "nothing can be mounted here";
    const QString onDisk = at(u"small/file"_qs);
    const QByteArray large(3'000'000, 'x');
    put(onDisk, OldBytes);
    SaveRecords elsewhere(records());
    const std::string_view piece(large.constData(), static_cast<std::size_t>(large.size()));
    const auto saveTo = [&](const QString& target, SaveRecords& witness) {
        return UserFileWriter(FileSystemCalls::system(), &witness).write(target, BytePieces(&piece, 1)).error.number;
    };
    EXPECT_EQ(saveTo(onDisk, elsewhere), ENOSPC);
    EXPECT_EQ(bytesOf(onDisk), OldBytes);
    SaveRecords onFullDisk(at(u"small/state/saves"_qs));
    put(path(), OldBytes);
    EXPECT_EQ(saveTo(path(), onFullDisk), 0);
    EXPECT_EQ(bytesOf(path()), large);
    // What the record had taken of the disk is free again.
    put(onDisk, QByteArray(700'000, 'y'));
    EXPECT_EQ(bytesOf(onDisk).size(), 700'000);
}

TEST_F(SavingInHostilePlaces, WhatIsKeptForLaterRecordsIsGivenBackToASaveThatNeedsTheSpace) {
    const SmallDisk disk(at(u"small"_qs));
    if (!disk.isThere())
        GTEST_SKIP() << "nothing can be mounted here";
    SaveRecords witness(at(u"small/state/saves"_qs));
    const auto saveTo = [&](const QString& target, qsizetype length) {
        const QByteArray bytes(length, 'x');
        const std::string_view piece(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        return UserFileWriter(FileSystemCalls::system(), &witness).write(target, BytePieces(&piece, 1)).error.number;
    };
    put(at(u"small/first"_qs), OldBytes);
    EXPECT_EQ(saveTo(at(u"small/first"_qs), 300'000), 0);
    ASSERT_EQ(QDir(at(u"small/state/saves"_qs)).entryList(QDir::Files).size(), 1);
    EXPECT_EQ(saveTo(at(u"small/second"_qs), 550'000), 0);
    EXPECT_EQ(bytesOf(at(u"small/second"_qs)).size(), 550'000);
    EXPECT_EQ(saveTo(at(u"small/third"_qs), 300'000), ENOSPC);
    EXPECT_FALSE(QFile::exists(at(u"small/third"_qs)));
}

TEST_F(SavingInHostilePlaces, ALimitOfTheSizeOfFilesIsToldBeforeTheFirstByte) {
    put(path(), OldBytes);
    expectOfLimitedProcess(5'000, EFBIG);
    EXPECT_EQ(bytesOf(path()), OldBytes);
    EXPECT_TRUE(recover());
}

TEST_F(SavingInHostilePlaces, ALimitThatTheFileKeepsAndItsRecordDoesNotIsNoReasonToFail) {
    put(path(), OldBytes);
    expectOfLimitedProcess(static_cast<rlim_t>(NewBytes.size()), 0);
    EXPECT_EQ(bytesOf(path()), NewBytes);
    EXPECT_TRUE(recover());
}

TEST_F(SavingInHostilePlaces, InAFolderThatMayNotBeWrittenAFileIsSavedAndANewOneIsRefused) {
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"closed"_qs));
    const QString inside = at(u"closed/file"_qs);
    put(inside, OldBytes);
    ASSERT_EQ(::chmod(nameOf(inside).constData(), 0666), 0);
    ASSERT_EQ(::chmod(nameOf(at(u"closed"_qs)).constData(), 0555), 0);
    // Another user must come to it.
    for (const char* above : {"", "/..", "/../.."}) {
        ASSERT_EQ(::chmod((nameOf(m_folder.path()) + above).constData(), *above == '\0' ? 0777 : 0711), 0);
    }
    const std::string_view piece(NewBytes.constData(), static_cast<std::size_t>(NewBytes.size()));
    const auto check = [&] {
        SaveRecords witness(records());
        const auto saveTo = [&](const QString& target) {
            return UserFileWriter(FileSystemCalls::system(), &witness)
                .write(target, BytePieces(&piece, 1))
                .error.number;
        };
        return saveTo(inside) == 0 && saveTo(at(u"closed/new"_qs)) == EACCES;
    };
    EXPECT_TRUE(asSomebodyElse(check));
    EXPECT_EQ(bytesOf(inside), NewBytes);
    ASSERT_EQ(::chmod(nameOf(at(u"closed"_qs)).constData(), 0700), 0);
}

TEST_F(SavingInHostilePlaces, WithoutAStateFolderOrWithThatOfAnotherUserNothingIsRecordedAndAllIsSaved) {
    put(path(), OldBytes);
    put(at(u"state"_qs), "a file");
    EXPECT_EQ(save(FileSystemCalls::system(), FileSystemCalls::system()), 0);
    EXPECT_EQ(bytesOf(path()), NewBytes);
    EXPECT_EQ(bytesOf(at(u"state"_qs)), "a file");
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a folder of another user";
    ASSERT_TRUE(QFile::remove(at(u"state"_qs)) && QDir().mkpath(records()));
    ASSERT_EQ(::chown(nameOf(records()).constData(), 65'534, 65'534), 0);
    put(records() + u"/1-1-1.save"_qs, "of another user");
    EXPECT_EQ(save(FileSystemCalls::system(), FileSystemCalls::system(), "newer"), 0);
    EXPECT_EQ(bytesOf(path()), "newer");
    SaveRecovery(records()).run();
    EXPECT_EQ(QDir(records()).entryList(QDir::Files), QStringList{u"1-1-1.save"_qs});
    EXPECT_EQ(bytesOf(records() + u"/1-1-1.save"_qs), "of another user");
}
