#include "platform/Paths.h"
#include "platform/UserFileWriter.h"
#include "support/FailingFileSystem.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <functional>
#include <string>
#include <vector>

namespace {

const QByteArray OldBytes = "the old bytes of the file";
const std::array<std::string_view, 4> NewPieces{"new ", "", "bytes, in pieces, and more of them", "!"};
const QByteArray NewBytes = "new bytes, in pieces, and more of them!";
const std::array<std::string_view, 2> ShortPieces{"sho", "rt"};

constexpr SystemCall AllCalls[] = {
    SystemCall::Open,    SystemCall::Stat,     SystemCall::Fstat,   SystemCall::Readlink, SystemCall::Write,
    SystemCall::Reserve, SystemCall::Truncate, SystemCall::SetMode, SystemCall::SetTimes, SystemCall::Flush,
    SystemCall::Close,   SystemCall::Unlink,   SystemCall::NameFile};
constexpr int Errors[] = {EIO, ENOSPC, EDQUOT, EACCES, EPERM, EROFS, EFBIG, ENOENT, ESTALE, ETXTBSY, ENOMEM};

QString reasonOf(int number) {
    return SystemError::fromErrno(number).description;
}

/// Supplies the new bytes in parts, and fails instead of supplying part number `failAt`, from 0.
class PartSource : public ByteSource {
 public:
    qint64 length() const override { return NewBytes.size() + promised; }
    SystemError next(BytePieces& pieces) override {
        if (given++ == failAt)
            return SystemError::fromErrno(EIO);
        m_part = NewBytes.mid(m_at, partSize).toStdString();
        m_at += partSize;
        m_piece = m_part;
        pieces = BytePieces(&m_piece, 1);
        return {};
    }
    bool rewind(Reading /*next*/) override {
        if (rewinds)
            m_at = 0;
        return rewinds;
    }

    bool rewinds = false;
    qsizetype partSize = 7;
    int failAt = -1;
    qint64 promised = 0;  ///< how many more bytes length() reports than exist
    int given = 0;

 private:
    qsizetype m_at = 0;
    std::string m_part;
    std::string_view m_piece;
};

class UserFileWriting : public testing::Test {
 protected:
    QString at(const QString& name) const { return m_folder.filePath(name); }
    QByteArray name(const QString& path) const { return localName(path).value_or(QByteArray()); }

    QString oldFile(const QString& fileName = u"file"_qs) {
        QFile out(at(fileName));
        EXPECT_TRUE(out.open(QFile::WriteOnly | QFile::Truncate) && out.write(OldBytes) == OldBytes.size());
        out.close();
        const timespec times[] = {{1'000'000, 5}, {2'000'000, 7}};
        EXPECT_EQ(::utimensat(AT_FDCWD, name(out.fileName()).constData(), times, 0), 0);
        return out.fileName();
    }

    static QByteArray bytesOf(const QString& path) {
        QFile in(path);
        return in.open(QFile::ReadOnly) ? in.readAll() : QByteArray("(no such file)");
    }

    struct stat statusOf(const QString& path) const {
        struct stat status {};
        EXPECT_EQ(::lstat(name(path).constData(), &status), 0) << path.toStdString();
        return status;
    }

    /// Changes owner and group, which only root may do.
    void giveAway(const QString& path) const {
        const bool given = ::chown(name(path).constData(), 4242, 4243) == 0;
        EXPECT_EQ(given, ::geteuid() == 0);
    }

    void expectOldFileWhole(const QString& path, const struct stat& before) const {
        EXPECT_EQ(bytesOf(path), OldBytes);
        const struct stat now = statusOf(path);
        EXPECT_EQ(now.st_ino, before.st_ino);
        EXPECT_EQ(now.st_mode, before.st_mode);
        EXPECT_EQ(now.st_nlink, before.st_nlink);
        EXPECT_EQ(now.st_uid, before.st_uid);
    }

    WriteResult expectRefused(const QString& path, int number, const QString& reason) {
        FailingFileSystem calls;
        WriteResult result = UserFileWriter(calls).write(path, NewPieces);
        EXPECT_EQ(result.error.number, number);
        EXPECT_TRUE(result.error.description.contains(reason)) << result.error.description.toStdString();
        EXPECT_TRUE(result.error.description.contains(path)) << result.error.description.toStdString();
        EXPECT_FALSE(result.touched);
        EXPECT_TRUE(calls.allClosed());
        return result;
    }

    QTemporaryDir m_folder;
};

/// Clears the set-user and set-group bits when a file is written, as the system does, but for root too.
class StrippingFileSystem : public FailingFileSystem {
 public:
    ssize_t pwritev(int handle, const iovec* parts, int count, off_t offset) override {
        ::fchmod(handle, 0755);
        return FailingFileSystem::pwritev(handle, parts, count, offset);
    }
};

/// Records its calls, and the contents of the file at that time.
class Witness : public WriteWitness {
 public:
    void aboutToUse(const QByteArray& file) override {
        if (settles)
            settles(file);
    }
    std::unique_ptr<WatchedWrite> aboutToWrite(const PlannedWrite& write) override {
        name = write.name;
        length = write.length;
        cuts = write.cuts;
        for (const std::string_view piece : write.pieces)
            bytes += QByteArray(piece.data(), static_cast<qsizetype>(piece.size()));
        if (readsSource)
            readAll(write.source);
        QFile in(QString::fromUtf8(write.name));
        EXPECT_TRUE(in.open(QFile::ReadOnly));
        seen = in.readAll();
        if (meanwhile)
            meanwhile();
        return std::make_unique<Watched>(*this);
    }

    void readAll(ByteSource& source) {
        canRewind = source.rewind(ByteSource::Reading::ToExamine);
        while (canRewind && bytes.size() < source.length()) {
            BytePieces pieces;
            ASSERT_FALSE(source.next(pieces));
            for (const std::string_view piece : pieces)
                bytes += QByteArray(piece.data(), static_cast<qsizetype>(piece.size()));
        }
        canRewind = source.rewind(ByteSource::Reading::ToWrite);
    }

    std::function<void(const QByteArray& name)> settles;
    std::function<void()> meanwhile;
    bool readsSource = false;
    bool canRewind = false;
    QByteArray name;
    qint64 length = -1;
    bool cuts = false;
    QByteArray bytes;
    QByteArray seen;
    int ends = 0;
    bool whole = false;
    bool touched = false;

 private:
    class Watched : public WatchedWrite {
     public:
        explicit Watched(Witness& witness) : m_witness(witness) {}
        void ended(bool isWhole, bool isTouched) override {
            ++m_witness.ends;
            m_witness.whole = isWhole;
            m_witness.touched = isTouched;
        }

     private:
        Witness& m_witness;
    };
};

}  // namespace

TEST_F(UserFileWriting, ReplacesTheBytesWithLongerAndShorterOnes) {
    const QString path = oldFile();
    WriteResult result = UserFileWriter().write(path, NewPieces);
    EXPECT_FALSE(result.error);
    EXPECT_TRUE(result.touched);
    EXPECT_EQ(bytesOf(path), NewBytes);
    result = UserFileWriter().write(path, ShortPieces);
    EXPECT_FALSE(result.error);
    EXPECT_EQ(bytesOf(path), "short");
}

TEST_F(UserFileWriting, MakesANewFileInTheWorkingFolder) {
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(at(u"."_qs)));
    const SystemError error = UserFileWriter().write(u"new"_qs, NewPieces).error;
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_FALSE(error);
    EXPECT_EQ(bytesOf(at(u"new"_qs)), NewBytes);
}

TEST_F(UserFileWriting, WritesNothingAtAllIntoAnEmptyFile) {
    const QString path = oldFile();
    EXPECT_FALSE(UserFileWriter().write(path, {}).error);
    EXPECT_EQ(bytesOf(path), "");
    EXPECT_FALSE(UserFileWriter().write(at(u"new"_qs), {}).error);
    EXPECT_EQ(bytesOf(at(u"new"_qs)), "");
}

TEST_F(UserFileWriting, KeepsInodeHardLinksModeOwnerAndAttributes) {
    const QString path = oldFile();
    ASSERT_EQ(::link(name(path).constData(), name(at(u"second"_qs)).constData()), 0);
    ASSERT_EQ(::chmod(name(path).constData(), 0642), 0);
    giveAway(path);
    const bool attributes = ::setxattr(name(path).constData(), "user.note", "kept", 4, 0) == 0;
    const struct stat before = statusOf(path);

    ASSERT_FALSE(UserFileWriter().write(path, NewPieces).error);

    const struct stat after = statusOf(path);
    EXPECT_EQ(bytesOf(at(u"second"_qs)), NewBytes);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_nlink, 2U);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    if (!attributes)
        GTEST_SKIP() << "this file system has no extended attributes";
    char value[4];
    ASSERT_EQ(::getxattr(name(path).constData(), "user.note", value, sizeof value), 4);
    EXPECT_EQ(QByteArray(value, 4), "kept");
}

TEST_F(UserFileWriting, KeepsTheBitsThatTheSystemTakesFromAWrittenFile) {
    const QString path = oldFile();
    giveAway(path);
    ASSERT_EQ(::chmod(name(path).constData(), 06755), 0);
    const mode_t before = statusOf(path).st_mode;
    StrippingFileSystem calls;
    ASSERT_FALSE(UserFileWriter(calls).write(path, NewPieces).error);
    EXPECT_EQ(calls.count(SystemCall::SetMode), 1);
    EXPECT_EQ(statusOf(path).st_mode, before);
}

TEST_F(UserFileWriting, AModeThatCannotBeRestoredIsNoReasonToFail) {
    StrippingFileSystem calls;
    calls.fail(SystemCall::SetMode, 1, EPERM);
    EXPECT_FALSE(UserFileWriter(calls).write(oldFile(), NewPieces).error);
    EXPECT_EQ(calls.count(SystemCall::SetMode), 1);
}

TEST_F(UserFileWriting, ALinkStaysAndItsTargetIsWritten) {
    const QString path = oldFile();
    const QString link = at(u"link"_qs);
    ASSERT_EQ(::symlink("file", name(link).constData()), 0);
    ASSERT_FALSE(UserFileWriter().write(link, NewPieces).error);
    EXPECT_EQ(bytesOf(path), NewBytes);
    EXPECT_TRUE(S_ISLNK(statusOf(link).st_mode));
}

TEST_F(UserFileWriting, ALinkToNothingGetsItsTarget) {
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"sub"_qs));
    ASSERT_EQ(::symlink("sub/second", name(at(u"first"_qs)).constData()), 0);
    const QByteArray target = name(at(u"made"_qs));
    ASSERT_EQ(::symlink(target.constData(), name(at(u"sub/second"_qs)).constData()), 0);
    ASSERT_FALSE(UserFileWriter().write(at(u"first"_qs), NewPieces).error);
    EXPECT_EQ(bytesOf(at(u"made"_qs)), NewBytes);
    EXPECT_TRUE(S_ISLNK(statusOf(at(u"first"_qs)).st_mode));
    EXPECT_TRUE(S_ISLNK(statusOf(at(u"sub/second"_qs)).st_mode));
}

TEST_F(UserFileWriting, AFailedWriteThroughALinkToNothingLeavesTheLinkAlone) {
    ASSERT_EQ(::symlink("made", name(at(u"link"_qs)).constData()), 0);
    FailingFileSystem calls;
    calls.fail(SystemCall::Reserve, 1, ENOSPC);
    EXPECT_EQ(UserFileWriter(calls).write(at(u"link"_qs), NewPieces).error.number, ENOSPC);
    EXPECT_TRUE(S_ISLNK(statusOf(at(u"link"_qs)).st_mode));
    EXPECT_FALSE(fileExists(at(u"made"_qs)));
}

TEST_F(UserFileWriting, LinksInACircleAreTold) {
    ASSERT_EQ(::symlink("b", name(at(u"a"_qs)).constData()), 0);
    ASSERT_EQ(::symlink("a", name(at(u"b"_qs)).constData()), 0);
    expectRefused(at(u"a"_qs), ELOOP, reasonOf(ELOOP));
}

TEST_F(UserFileWriting, ANewFileHasTheModeThatTheUserWantsForNewFiles) {
    const mode_t before = ::umask(027);
    const WriteResult result = UserFileWriter().write(at(u"new"_qs), NewPieces);
    ::umask(before);
    EXPECT_FALSE(result.error);
    EXPECT_EQ(statusOf(at(u"new"_qs)).st_mode & ALLPERMS, 0640U);
    EXPECT_EQ(bytesOf(at(u"new"_qs)), NewBytes);
}

TEST_F(UserFileWriting, AFileWithoutAnyWriteBitIsRefusedToRootAsWell) {
    const QString path = oldFile();
    ASSERT_EQ(::chmod(name(path).constData(), 0555), 0);
    const struct stat before = statusOf(path);
    expectRefused(path, EACCES, reasonOf(EACCES));
    expectOldFileWhole(path, before);
    EXPECT_EQ(statusOf(path).st_mtim.tv_sec, before.st_mtim.tv_sec);
}

TEST_F(UserFileWriting, WhatIsNoRegularFileIsRefusedWithoutWaiting) {
    ASSERT_EQ(::mkfifo(name(at(u"pipe"_qs)).constData(), 0600), 0);
    expectRefused(at(u"pipe"_qs), EINVAL, u"not a regular file"_qs);
    expectRefused(u"/dev/full"_qs, EINVAL, u"not a regular file"_qs);
    expectRefused(m_folder.path(), EISDIR, reasonOf(EISDIR));
}

TEST_F(UserFileWriting, NamesThatCannotBeAreRefused) {
    expectRefused(QString(), ENOENT, reasonOf(ENOENT));
    expectRefused(at(u"x"_qs) + QChar(0xDC00), ENOENT, reasonOf(ENOENT));
    expectRefused(at(u"vanished/file"_qs), ENOENT, reasonOf(ENOENT));
    expectRefused(oldFile() + u"/x"_qs, ENOTDIR, reasonOf(ENOTDIR));
    expectRefused(at(QString(100'000, u'x')), ENAMETOOLONG, reasonOf(ENAMETOOLONG));
}

TEST_F(UserFileWriting, OldBytesBehindTheNewOnesStayWhenAskedTo) {
    const QString path = oldFile();
    ASSERT_FALSE(UserFileWriter().write(path, ShortPieces, UserFileWriter::Tail::Keep).error);
    EXPECT_EQ(bytesOf(path), "short" + OldBytes.mid(5));
}

TEST_F(UserFileWriting, SpaceIsReservedBeforeAnyByteChangesAndTheFileIsCutAfterwards) {
    const QString path = oldFile();
    FailingFileSystem calls;
    ASSERT_FALSE(UserFileWriter(calls).write(path, NewPieces).error);
    const std::vector<SystemCall> expected{SystemCall::Stat,    SystemCall::Open,  SystemCall::Fstat,
                                           SystemCall::Reserve, SystemCall::Write, SystemCall::Truncate,
                                           SystemCall::Fstat,   SystemCall::Flush, SystemCall::Close};
    EXPECT_EQ(calls.calls(), expected);
}

TEST_F(UserFileWriting, AFileSystemThatCannotReserveIsWrittenAllTheSame) {
    for (const int error : {EOPNOTSUPP, ENOSYS, EINVAL}) {
        const QString path = oldFile();
        FailingFileSystem calls;
        calls.fail(SystemCall::Reserve, 0, error);
        EXPECT_FALSE(UserFileWriter(calls).write(path, NewPieces).error);
        EXPECT_EQ(bytesOf(path), NewBytes);
    }
}

TEST_F(UserFileWriting, AFileSystemThatCannotFlushIsWrittenAllTheSame) {
    for (const int error : {EOPNOTSUPP, ENOSYS, EINVAL}) {
        const QString path = oldFile();
        FailingFileSystem calls;
        calls.fail(SystemCall::Flush, 0, error);
        EXPECT_FALSE(UserFileWriter(calls).write(path, NewPieces).error);
        EXPECT_EQ(bytesOf(path), NewBytes);
    }
}

TEST_F(UserFileWriting, InterruptedCallsAreRepeated) {
    for (const SystemCall call : {SystemCall::Stat, SystemCall::Open, SystemCall::Reserve, SystemCall::Write,
                                  SystemCall::Truncate, SystemCall::Flush, SystemCall::Close}) {
        const QString path = oldFile();
        FailingFileSystem calls;
        calls.fail(call, 1, EINTR);
        calls.fail(call, 2, EINTR);
        EXPECT_FALSE(UserFileWriter(calls).write(path, NewPieces).error);
        EXPECT_EQ(bytesOf(path), NewBytes);
    }
}

TEST_F(UserFileWriting, ShortWritesAreGoneOnWithAtEveryByte) {
    for (std::size_t bytes = 1; bytes <= static_cast<std::size_t>(NewBytes.size()); ++bytes) {
        const QString path = oldFile();
        FailingFileSystem calls;
        calls.shorten(SystemCall::Write, 1, bytes);
        EXPECT_FALSE(UserFileWriter(calls).write(path, NewPieces).error);
        EXPECT_EQ(bytesOf(path), NewBytes);
        FailingFileSystem slow;
        slow.shortenAll(bytes);
        EXPECT_FALSE(UserFileWriter(slow).write(oldFile(), NewPieces).error);
        EXPECT_EQ(bytesOf(path), NewBytes);
    }
}

TEST_F(UserFileWriting, AWriteThatTakesNothingIsAnError) {
    const QString path = oldFile();
    FailingFileSystem calls;
    calls.shorten(SystemCall::Write, 1, 0);
    const WriteResult result = UserFileWriter(calls).write(path, NewPieces);
    EXPECT_EQ(result.error.number, EIO);
    EXPECT_FALSE(result.touched);
    EXPECT_EQ(bytesOf(path), OldBytes);
}

TEST_F(UserFileWriting, AFailureOfAnyCallIsToldAndAnUntouchedFileIsWhole) {
    FailingFileSystem clean;
    ASSERT_FALSE(UserFileWriter(clean).write(oldFile(), NewPieces).error);
    for (const SystemCall call : AllCalls) {
        for (int number = 1; number <= clean.count(call); ++number) {
            for (const int error : Errors) {
                SCOPED_TRACE(testing::Message()
                             << "call " << static_cast<int>(call) << " number " << number << " error " << error);
                const QString path = oldFile();
                const struct stat before = statusOf(path);
                FailingFileSystem calls;
                calls.fail(call, number, error);
                const WriteResult result = UserFileWriter(calls).write(path, NewPieces);
                EXPECT_TRUE(calls.allClosed());
                // A failure to read the mode after the write is ignored; a file that is deleted between two checks is
                // created.
                const bool harmless = (call == SystemCall::Fstat && number == 2);
                const bool restarts = error == ENOENT && call == SystemCall::Open;
                if (harmless || restarts) {
                    EXPECT_FALSE(result.error);
                    EXPECT_EQ(bytesOf(path), NewBytes);
                    continue;
                }
                if (error == ENOENT && call == SystemCall::Stat) {
                    // The writer tries to create the file, until the system reports that it exists.
                    EXPECT_FALSE(result.error);
                    EXPECT_EQ(bytesOf(path), NewBytes);
                    continue;
                }
                EXPECT_EQ(result.error.number, error);
                EXPECT_TRUE(result.error.description.contains(reasonOf(error)));
                EXPECT_TRUE(result.error.description.contains(path));
                EXPECT_EQ(statusOf(path).st_ino, before.st_ino);
                if (result.touched) {
                    EXPECT_EQ(bytesOf(path), NewBytes);  // only a call after the last byte failed
                } else {
                    expectOldFileWhole(path, before);
                }
            }
        }
    }
}

TEST_F(UserFileWriting, AFailureOfAnyCallTakesAFreshFileAwayAgain) {
    const QString path = at(u"fresh"_qs);
    FailingFileSystem clean;
    ASSERT_FALSE(UserFileWriter(clean).write(path, NewPieces).error);
    for (const SystemCall call : AllCalls) {
        for (int number = 1; number <= clean.count(call); ++number) {
            for (const int error : Errors) {
                SCOPED_TRACE(testing::Message()
                             << "call " << static_cast<int>(call) << " number " << number << " error " << error);
                QFile::remove(path);
                FailingFileSystem calls;
                calls.fail(call, number, error);
                const WriteResult result = UserFileWriter(calls).write(path, NewPieces);
                EXPECT_TRUE(calls.allClosed());
                // Where no file without a name can be made, or be given one, the file is created under its name.
                const bool created = call == SystemCall::NameFile || (call == SystemCall::Open && number == 1);
                // The name is not flushed in a folder that may be written and not be read.
                const bool unreadable = call == SystemCall::Open && number == 2 && error == EACCES;
                const bool missing = (call == SystemCall::Stat || call == SystemCall::Readlink) && error == ENOENT;
                const bool harmless = (call == SystemCall::Fstat && number == 2) || missing || unreadable || created;
                EXPECT_EQ(result.error.number, harmless ? 0 : error);
                EXPECT_EQ(result.touched, harmless);
                EXPECT_EQ(fileExists(path), harmless);
            }
        }
    }
}

TEST_F(UserFileWriting, AFreshFileThatCannotBeTakenAwayCountsAsTouched) {
    for (const bool hasUnnamed : {true, false}) {
        FailingFileSystem calls;
        if (!hasUnnamed)
            calls.fail(SystemCall::Open, 1, EOPNOTSUPP);
        calls.fail(SystemCall::Flush, 2, EIO);
        calls.fail(SystemCall::Unlink, 1, EACCES);
        const WriteResult result = UserFileWriter(calls).write(at(u"fresh"_qs), NewPieces);
        EXPECT_EQ(result.error.number, EIO);
        EXPECT_TRUE(result.touched);
        ASSERT_TRUE(QFile::remove(at(u"fresh"_qs)));
    }
}

/// Looks at the folder before each call that changes the new file.
class NameWatch : public FailingFileSystem {
 public:
    explicit NameWatch(QString path) : m_path(std::move(path)) {}
    ssize_t pwritev(int handle, const iovec* parts, int count, off_t offset) override {
        see();
        return FailingFileSystem::pwritev(handle, parts, count, offset);
    }
    int fsync(int handle) override {
        see();
        return FailingFileSystem::fsync(handle);
    }
    int nameFile(int handle, const char* path) override {
        see();
        flushesBeforeName = count(SystemCall::Flush);
        return FailingFileSystem::nameFile(handle, path);
    }

    /// The lengths under which the file was seen; -1: it was not there.
    std::vector<qint64> seen;
    int flushesBeforeName = -1;

 private:
    void see() {
        const QFileInfo info(m_path);
        seen.push_back(info.exists() ? info.size() : -1);
    }

    const QString m_path;
};

TEST_F(UserFileWriting, ANewFileHasNoNameBeforeItIsWholeAndOnTheDisk) {
    const QString path = at(u"fresh"_qs);
    PartSource source;
    source.rewinds = true;
    for (const bool isSource : {false, true}) {
        NameWatch calls(path);
        UserFileWriter writer(calls);
        const WriteResult result = isSource ? writer.write(path, source) : writer.write(path, NewPieces);
        ASSERT_FALSE(result.error);
        EXPECT_TRUE(result.touched);
        EXPECT_EQ(bytesOf(path), NewBytes);
        EXPECT_EQ(calls.count(SystemCall::NameFile), 1);
        EXPECT_EQ(calls.flushesBeforeName, 1);
        for (const qint64 length : calls.seen) {
            EXPECT_TRUE(length == -1 || length == NewBytes.size()) << length;
        }
        EXPECT_EQ(statusOf(path).st_nlink, 1U);
        ASSERT_TRUE(QFile::remove(path));
    }
}

TEST_F(UserFileWriting, AFailedWriteOfANewFileNeverShowsIt) {
    const QString path = at(u"fresh"_qs);
    for (const SystemCall call : {SystemCall::Reserve, SystemCall::Write, SystemCall::Truncate}) {
        NameWatch calls(path);
        calls.fail(call, 1, ENOSPC);
        calls.fail(SystemCall::Unlink, 0, EACCES);
        const WriteResult result = UserFileWriter(calls).write(path, NewPieces);
        EXPECT_EQ(result.error.number, ENOSPC);
        EXPECT_FALSE(result.touched);
        for (const qint64 length : calls.seen) {
            EXPECT_EQ(length, -1);
        }
        EXPECT_FALSE(fileExists(path));
    }
}

TEST_F(UserFileWriting, WhereFilesWithoutANameAreRefusedANewOneIsCreatedUnderItsName) {
    const QString path = at(u"fresh"_qs);
    for (const int error : {EOPNOTSUPP, EISDIR, EINVAL, ENOENT, EPERM}) {
        for (const SystemCall call : {SystemCall::Open, SystemCall::NameFile}) {
            FailingFileSystem calls;
            calls.fail(call, 1, error);
            EXPECT_FALSE(UserFileWriter(calls).write(path, NewPieces).error);
            EXPECT_EQ(bytesOf(path), NewBytes);
            EXPECT_TRUE(calls.allClosed());
            ASSERT_TRUE(QFile::remove(path));
        }
    }
}

TEST_F(UserFileWriting, ASourceThatCannotBeReadTwiceIsWrittenUnderItsNameAtOnce) {
    const QString path = at(u"fresh"_qs);
    PartSource source;
    FailingFileSystem calls;
    EXPECT_FALSE(UserFileWriter(calls).write(path, source).error);
    EXPECT_EQ(bytesOf(path), NewBytes);
    EXPECT_EQ(calls.count(SystemCall::NameFile), 0);
}

TEST_F(UserFileWriting, ANameThatIsTakenMeanwhileIsWrittenInPlace) {
    class Taken : public FailingFileSystem {
     public:
        int nameFile(int handle, const char* path) override {
            QFile other(QString::fromUtf8(path));
            EXPECT_TRUE(other.open(QFile::WriteOnly) && other.write(OldBytes) == OldBytes.size());
            other.close();
            EXPECT_EQ(::chmod(path, 0642), 0);
            return FailingFileSystem::nameFile(handle, path);
        }
    };
    const QString path = at(u"fresh"_qs);
    PartSource source;
    source.rewinds = true;
    for (const bool isSource : {false, true}) {
        Taken calls;
        UserFileWriter writer(calls);
        EXPECT_FALSE((isSource ? writer.write(path, source) : writer.write(path, ShortPieces)).error);
        EXPECT_EQ(bytesOf(path), isSource ? NewBytes : "short");
        EXPECT_EQ(statusOf(path).st_mode & ALLPERMS, 0642U);
        EXPECT_TRUE(calls.allClosed());
        ASSERT_TRUE(QFile::remove(path));
    }
}

TEST_F(UserFileWriting, ATargetOfALinkToNothingHasNoNameBeforeItIsWholeEither) {
    ASSERT_EQ(::symlink("made", name(at(u"link"_qs)).constData()), 0);
    NameWatch calls(at(u"made"_qs));
    ASSERT_FALSE(UserFileWriter(calls).write(at(u"link"_qs), NewPieces).error);
    EXPECT_EQ(calls.count(SystemCall::NameFile), 1);
    for (const qint64 length : calls.seen) {
        EXPECT_TRUE(length == -1 || length == NewBytes.size()) << length;
    }
    EXPECT_EQ(bytesOf(at(u"made"_qs)), NewBytes);
    EXPECT_TRUE(S_ISLNK(statusOf(at(u"link"_qs)).st_mode));
}

TEST_F(UserFileWriting, AFailureInTheMiddleSaysThatTheFileWasTouched) {
    const QString path = oldFile();
    FailingFileSystem calls;
    calls.shorten(SystemCall::Write, 1, 6);
    calls.fail(SystemCall::Write, 2, ENOSPC);
    const WriteResult result = UserFileWriter(calls).write(path, NewPieces);
    EXPECT_EQ(result.error.number, ENOSPC);
    EXPECT_TRUE(result.touched);
    EXPECT_EQ(bytesOf(path), NewBytes.left(6) + OldBytes.mid(6));
}

TEST_F(UserFileWriting, CuttingAnOldFileToNothingTouchesIt) {
    const QString path = oldFile();
    FailingFileSystem calls;
    calls.fail(SystemCall::Flush, 1, EIO);
    EXPECT_TRUE(UserFileWriter(calls).write(path, {}).touched);
    FailingFileSystem earlier;
    earlier.fail(SystemCall::Truncate, 1, EIO);
    const WriteResult result = UserFileWriter(earlier).write(oldFile(), {});
    EXPECT_FALSE(result.touched);
    EXPECT_EQ(bytesOf(path), OldBytes);
}

TEST_F(UserFileWriting, AFullDiskGivesReservedSpaceBackAndKeepsTheTimes) {
    const QString path = oldFile();
    const struct stat before = statusOf(path);
    const std::string large(1'000'000, 'x');
    const std::array<std::string_view, 1> pieces{large};
    FailingFileSystem calls;
    calls.fail(SystemCall::Write, 1, ENOSPC);
    const WriteResult result = UserFileWriter(calls).write(path, pieces);
    EXPECT_EQ(result.error.number, ENOSPC);
    EXPECT_FALSE(result.touched);
    const struct stat now = statusOf(path);
    EXPECT_EQ(now.st_blocks, before.st_blocks);
    EXPECT_EQ(now.st_mtim.tv_sec, before.st_mtim.tv_sec);
    EXPECT_EQ(now.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(bytesOf(path), OldBytes);
}

TEST_F(UserFileWriting, AFailureOnTheWayBackDoesNotHideTheFirst) {
    const QString path = oldFile();
    for (const SystemCall later : {SystemCall::Truncate, SystemCall::SetTimes, SystemCall::Close}) {
        FailingFileSystem calls;
        calls.fail(SystemCall::Reserve, 1, ENOSPC);
        calls.fail(later, 1, EIO);
        const WriteResult result = UserFileWriter(calls).write(path, NewPieces);
        EXPECT_EQ(calls.count(later), 1);
        EXPECT_EQ(result.error.number, ENOSPC);
        EXPECT_FALSE(result.touched);
        EXPECT_EQ(bytesOf(path), OldBytes);
    }
}

TEST_F(UserFileWriting, AFileThatGrewMeanwhileIsNotCutWhenTheWriteFails) {
    const QString path = oldFile();
    Witness witness;
    witness.meanwhile = [&] { ASSERT_EQ(::truncate(name(path).constData(), OldBytes.size() + 3), 0); };
    FailingFileSystem calls;
    calls.fail(SystemCall::Write, 1, EIO);
    EXPECT_TRUE(UserFileWriter(calls, &witness).write(path, NewPieces).error);
    EXPECT_EQ(statusOf(path).st_size, OldBytes.size() + 3);
}

TEST_F(UserFileWriting, ALinkThatCannotBeFollowedIsTold) {
    ASSERT_EQ(::symlink("made", name(at(u"link"_qs)).constData()), 0);
    FailingFileSystem calls;
    calls.fail(SystemCall::Readlink, 1, EACCES);
    EXPECT_EQ(UserFileWriter(calls).write(at(u"link"_qs), NewPieces).error.number, EACCES);
    EXPECT_FALSE(fileExists(at(u"made"_qs)));
}

TEST_F(UserFileWriting, MoreBytesThanThisProcessMayWriteAreRefusedBeforeTheFirst) {
    const QString path = oldFile();
    FailingFileSystem calls;
    calls.setSizeLimit(static_cast<quint64>(NewBytes.size()) - 1);
    const WriteResult result = UserFileWriter(calls).write(path, NewPieces);
    EXPECT_EQ(result.error.number, EFBIG);
    EXPECT_FALSE(result.touched);
    EXPECT_EQ(bytesOf(path), OldBytes);
    calls.setSizeLimit(static_cast<quint64>(NewBytes.size()));
    EXPECT_FALSE(UserFileWriter(calls).write(path, NewPieces).error);
}

TEST_F(UserFileWriting, TheLimitIsTheSystems) {
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{4096, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_EQ(FileSystemCalls::system().sizeLimit(), 4096U);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    const quint64 all = before.rlim_cur == RLIM_INFINITY ? UINT64_MAX : before.rlim_cur;
    EXPECT_EQ(FileSystemCalls::system().sizeLimit(), all);
}

TEST_F(UserFileWriting, WritesOfManyPiecesMeetWherePagesDo) {
    class Ends : public FailingFileSystem {
     public:
        ssize_t pwritev(int handle, const iovec* parts, int count, off_t offset) override {
            const ssize_t written = FailingFileSystem::pwritev(handle, parts, count, offset);
            ends.push_back(offset + written);
            return written;
        }
        std::vector<off_t> ends;
    };
    const std::string part(13, 'x');
    const std::vector<std::string_view> pieces(5000, part);
    Ends calls;
    ASSERT_FALSE(UserFileWriter(calls).write(at(u"file"_qs), pieces).error);
    EXPECT_EQ(bytesOf(at(u"file"_qs)), QByteArray(5000 * 13, 'x'));
    ASSERT_GE(calls.ends.size(), 5U);
    EXPECT_EQ(calls.ends.back(), 5000 * 13);
    calls.ends.pop_back();
    EXPECT_TRUE(std::all_of(calls.ends.begin(), calls.ends.end(), [](off_t end) { return end % 4096 == 0; }));
}

TEST_F(UserFileWriting, ManySmallPiecesAreWrittenTogether) {
    std::vector<std::string> parts;
    QByteArray expected;
    for (int i = 0; i < 5000; ++i) {
        parts.emplace_back(static_cast<std::size_t>(i % 5), static_cast<char>('a' + i % 26));
        expected += parts.back().c_str();
    }
    const std::vector<std::string_view> pieces(parts.begin(), parts.end());
    FailingFileSystem calls;
    ASSERT_FALSE(UserFileWriter(calls).write(at(u"file"_qs), pieces).error);
    EXPECT_EQ(bytesOf(at(u"file"_qs)), expected);
    EXPECT_LE(calls.count(SystemCall::Write), 5);
}

TEST_F(UserFileWriting, TheWitnessSeesTheOldFileAndIsNotifiedOfTheNewOne) {
    const QString path = oldFile();
    Witness witness;
    ASSERT_FALSE(UserFileWriter(FileSystemCalls::system(), &witness).write(path, NewPieces).error);
    EXPECT_EQ(witness.name, name(path));
    EXPECT_EQ(witness.length, NewBytes.size());
    EXPECT_TRUE(witness.cuts);
    EXPECT_EQ(witness.bytes, NewBytes);
    EXPECT_EQ(witness.seen, OldBytes);
    EXPECT_EQ(witness.ends, 1);
    EXPECT_TRUE(witness.whole);
    EXPECT_TRUE(witness.touched);
}

TEST_F(UserFileWriting, TheWitnessCanReadASourceThatCanBeRewound) {
    const QString path = oldFile();
    PartSource source;
    source.rewinds = true;
    Witness witness;
    witness.readsSource = true;
    ASSERT_FALSE(UserFileWriter(FileSystemCalls::system(), &witness).write(path, source).error);
    EXPECT_TRUE(witness.canRewind);
    EXPECT_EQ(witness.bytes, NewBytes);
    EXPECT_EQ(bytesOf(path), NewBytes);
}

TEST_F(UserFileWriting, TheWitnessIsNotifiedOfAWriteThatFailed) {
    for (const SystemCall call : {SystemCall::Write, SystemCall::Truncate, SystemCall::Flush, SystemCall::Close}) {
        Witness witness;
        FailingFileSystem calls;
        calls.fail(call, 1, EIO);
        EXPECT_TRUE(UserFileWriter(calls, &witness).write(oldFile(), NewPieces).error);
        EXPECT_EQ(witness.ends, 1);
        EXPECT_FALSE(witness.whole);
        EXPECT_EQ(witness.touched, call != SystemCall::Write);
    }
}

TEST_F(UserFileWriting, AWriteThatIsRefusedIsNotWitnessed) {
    const QString path = oldFile();
    FailingFileSystem calls;
    calls.fail(SystemCall::Reserve, 1, ENOSPC);
    Witness witness;
    EXPECT_TRUE(UserFileWriter(calls, &witness).write(path, NewPieces).error);
    EXPECT_EQ(witness.ends, 0);
    EXPECT_TRUE(witness.name.isEmpty());
}

TEST_F(UserFileWriting, TheWitnessOfTheProcessSeesWhoeverWrites) {
    Witness witness;
    WriteWitness::setOfProcess(&witness);
    EXPECT_FALSE(UserFileWriter().write(oldFile(), NewPieces).error);
    WriteWitness::setOfProcess(nullptr);
    EXPECT_EQ(witness.ends, 1);
}

TEST_F(UserFileWriting, BytesFromASourceAreWrittenPartByPart) {
    for (const qsizetype size : {1, 7, 39, 100}) {
        for (const UserFileWriter::Tail tail : {UserFileWriter::Tail::Cut, UserFileWriter::Tail::Keep}) {
            const QString path = oldFile();
            PartSource source;
            source.partSize = size;
            FailingFileSystem calls;
            calls.shorten(SystemCall::Write, 1, 3);
            const WriteResult result = UserFileWriter(calls).write(path, source, tail);
            EXPECT_FALSE(result.error);
            EXPECT_TRUE(result.touched);
            EXPECT_EQ(bytesOf(path), NewBytes);
        }
    }
}

TEST_F(UserFileWriting, ASourceKeepsTheTailOfALongerFileOrCutsIt) {
    const QByteArray longer = NewBytes + "and a tail";
    for (const UserFileWriter::Tail tail : {UserFileWriter::Tail::Cut, UserFileWriter::Tail::Keep}) {
        QFile out(at(u"file"_qs));
        ASSERT_TRUE(out.open(QFile::WriteOnly) && out.write(QByteArray(longer.size(), 'x')) == longer.size());
        out.close();
        PartSource source;
        EXPECT_FALSE(UserFileWriter().write(out.fileName(), source, tail).error);
        const bool keeps = tail == UserFileWriter::Tail::Keep;
        EXPECT_EQ(bytesOf(out.fileName()), keeps ? NewBytes + QByteArray(10, 'x') : NewBytes);
    }
}

TEST_F(UserFileWriting, ASourceThatFailsAtOnceLeavesTheOldFileWhole) {
    const QString path = oldFile();
    const struct stat before = statusOf(path);
    PartSource source;
    source.failAt = 0;
    const WriteResult result = UserFileWriter().write(path, source);
    EXPECT_EQ(result.error.number, EIO);
    EXPECT_FALSE(result.touched);
    expectOldFileWhole(path, before);
}

TEST_F(UserFileWriting, ASourceThatFailsLaterHasTouchedTheFile) {
    const QString path = oldFile();
    PartSource source;
    source.failAt = 2;
    const WriteResult result = UserFileWriter().write(path, source);
    EXPECT_EQ(result.error.number, EIO);
    EXPECT_TRUE(result.touched);
    EXPECT_EQ(bytesOf(path), NewBytes.left(14) + OldBytes.mid(14));
    PartSource fresh;
    fresh.failAt = 1;
    EXPECT_FALSE(UserFileWriter().write(at(u"fresh"_qs), fresh).touched);
    EXPECT_FALSE(fileExists(at(u"fresh"_qs)));
}

TEST_F(UserFileWriting, ASourceThatHasLessThanItSaidIsAnError) {
    PartSource source;
    source.promised = 1;
    EXPECT_EQ(UserFileWriter().write(oldFile(), source).error.number, EIO);
}

TEST_F(UserFileWriting, NoByteOfASourceIsTakenWhenThereIsNoSpace) {
    const QString path = oldFile();
    FailingFileSystem calls;
    calls.fail(SystemCall::Reserve, 1, ENOSPC);
    PartSource source;
    EXPECT_EQ(UserFileWriter(calls).write(path, source).error.number, ENOSPC);
    EXPECT_EQ(source.given, 0);
    EXPECT_EQ(bytesOf(path), OldBytes);
}

TEST_F(UserFileWriting, WhatTheWitnessCompletesFirstIsTheFileThatIsWritten) {
    const QString path = oldFile();
    const QByteArray completed = QByteArray(OldBytes) + ", completed";
    FailingFileSystem calls;
    Witness witness;
    int times = 0;
    witness.settles = [&](const QByteArray& name) {
        ++times;
        EXPECT_EQ(name, QFile::encodeName(path));
        EXPECT_TRUE(calls.calls().empty());
        QFile out(path);
        EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write(completed) == completed.size());
    };
    EXPECT_FALSE(UserFileWriter(calls, &witness).write(path, NewPieces).error);
    EXPECT_EQ(times, 1);
    EXPECT_EQ(witness.seen, completed);
    EXPECT_EQ(bytesOf(path), NewBytes);
}
