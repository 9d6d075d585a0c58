#include "hex/bytes/WorkingCopy.h"
#include "platform/Folders.h"
#include "support/FailingFileSystem.h"
#include "support/NetworkLocks.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr qint64 Block = 16;

QByteArray nameOf(const QString& path) {
    return QFile::encodeName(path);
}

QByteArray bytesOf(const QString& path) {
    QFile in(path);
    return in.open(QFile::ReadOnly) ? in.readAll() : QByteArray("(no such file)");
}

bool stands(const QString& path) {
    return QFile::exists(path);
}

class WorkingCopies : public testing::Test {
 protected:
    void SetUp() override {
        QDir(temporaryFolder()).removeRecursively();
        makePrivateFolder(temporaryFolder());
        m_calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
    }

    QString file(const QByteArray& bytes, const QString& name = u"file"_qs) {
        QFile out(m_folder.filePath(name));
        EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write(bytes) == bytes.size());
        return out.fileName();
    }

    QString sparseFile(qint64 length) {
        QString path = file({});
        EXPECT_EQ(::truncate(nameOf(path).constData(), length), 0);
        return path;
    }

    std::unique_ptr<WorkingCopy> copy() {
        return std::make_unique<WorkingCopy>(m_calls, Block, [this] { return m_now; });
    }

    static QString at(const QString& name) { return temporaryFolder() + u'/' + name; }

    static QByteArray readAll(const WorkingCopy& copy) {
        QByteArray bytes(static_cast<qsizetype>(copy.length()), '?');
        EXPECT_EQ(copy.read(FilePosition(1), bytes.data(), bytes.size()), bytes.size());
        return bytes;
    }

    CopyProgress watching() {
        return [this](int percent) {
            m_percents.push_back(percent);
            return true;
        };
    }

    QTemporaryDir m_folder;
    FailingFileSystem m_calls;
    QTime m_now{14, 30, 5};
    std::vector<int> m_percents;
};

QByteArray someBytes(qsizetype length) {
    QByteArray bytes;
    for (qsizetype i = 0; i < length; ++i)
        bytes += static_cast<char>(i * 31 + 5);
    return bytes;
}

}  // namespace

TEST_F(WorkingCopies, LieInThePrivateFolderUnderTheTimeAndAreClosedToOthers) {
    auto first = copy();
    EXPECT_TRUE(first->name().isEmpty());
    ASSERT_FALSE(first->load(file("some bytes"), watching()));
    EXPECT_EQ(first->name(), at(u"~hextemp143005.tmp"_qs));
    struct stat status {};
    ASSERT_EQ(::lstat(nameOf(first->name()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode, static_cast<mode_t>(S_IFREG | 0600));
    ASSERT_EQ(::lstat(nameOf(temporaryFolder()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode, static_cast<mode_t>(S_IFDIR | 0700));
    EXPECT_EQ(bytesOf(first->name()), "some bytes");
}

TEST_F(WorkingCopies, TakeTheNextSecondsNameWhenOneIsTaken) {
    m_now = QTime(23, 59, 59);
    auto first = copy();
    auto second = copy();
    auto third = copy();
    for (WorkingCopy* each : {first.get(), second.get(), third.get()}) {
        ASSERT_FALSE(each->load(file("some bytes"), watching()));
    }
    EXPECT_EQ(first->name(), at(u"~hextemp235959.tmp"_qs));
    EXPECT_EQ(second->name(), at(u"~hextemp000000.tmp"_qs));
    EXPECT_EQ(third->name(), at(u"~hextemp000001.tmp"_qs));
}

TEST_F(WorkingCopies, NeverFollowALinkThatTookTheirName) {
    const QString victim = file("precious", u"victim"_qs);
    ASSERT_EQ(::symlink(nameOf(victim).constData(), nameOf(at(u"~hextemp143005.tmp"_qs)).constData()), 0);
    auto hex = copy();
    ASSERT_FALSE(hex->load(file("some bytes"), watching()));
    EXPECT_EQ(hex->name(), at(u"~hextemp143006.tmp"_qs));
    EXPECT_EQ(bytesOf(victim), "precious");
}

TEST_F(WorkingCopies, GoWithTheirView) {
    auto hex = copy();
    ASSERT_FALSE(hex->load(file("some bytes"), watching()));
    const QString name = hex->name();
    EXPECT_TRUE(stands(name));
    hex.reset();
    EXPECT_FALSE(stands(name));
    EXPECT_TRUE(m_calls.allClosed());
}

TEST_F(WorkingCopies, AreMadeAfreshUnderTheirNameByAReload) {
    auto hex = copy();
    ASSERT_FALSE(hex->load(file("the first file"), watching()));
    struct stat before {};
    const int old = ::open(nameOf(hex->name()).constData(), O_RDONLY | O_CLOEXEC);
    m_now = QTime(15, 0);
    ASSERT_FALSE(hex->load(file("another", u"other"_qs), watching()));
    EXPECT_EQ(hex->name(), at(u"~hextemp143005.tmp"_qs));
    EXPECT_EQ(readAll(*hex), "another");
    ASSERT_EQ(::fstat(old, &before), 0);
    EXPECT_EQ(before.st_nlink, 0U);
    ::close(old);
}

TEST_F(WorkingCopies, TakeFilesOfAllSizesAroundABlockInBlocks) {
    for (const qsizetype length : {1, 15, 16, 17, 31, 32, 33, 319, 320, 321, 335, 336, 640}) {
        const QByteArray bytes = someBytes(length);
        auto hex = copy();
        m_percents.clear();
        ASSERT_FALSE(hex->load(file(bytes), watching()));
        EXPECT_EQ(hex->length(), length);
        EXPECT_EQ(readAll(*hex), bytes);
        EXPECT_EQ(m_percents.back(), 100);
        EXPECT_EQ(static_cast<qint64>(m_percents.size()), (length + Block - 1) / Block);
    }
}

TEST_F(WorkingCopies, OfAnEmptyFileAreNotMade) {
    auto hex = copy();
    EXPECT_EQ(hex->load(file({}), watching()).number, ENODATA);
    EXPECT_FALSE(hex->isOpen());
    EXPECT_TRUE(m_percents.empty());
}

TEST_F(WorkingCopies, TakeFilesUpToTheLastPosition) {
    WorkingCopy hex(m_calls);
    const QString path = sparseFile(WorkingCopy::MostBytes);
    ASSERT_FALSE(hex.load(path, watching()));
    EXPECT_EQ(hex.length(), 2'147'483'647);
    EXPECT_FALSE(hex.write(FilePosition(2'147'483'647), "zz"));
    char bytes[16];
    EXPECT_EQ(hex.read(FilePosition(2'147'483'646), bytes, 16), 2);
    EXPECT_EQ(QByteArray(bytes, 2), QByteArray("\0z", 2));
    EXPECT_EQ(m_percents.size(), 4195U);
}

TEST_F(WorkingCopies, OfLongerFilesAreRefusedAndTheOldOneStays) {
    auto hex = copy();
    ASSERT_FALSE(hex->load(file("some bytes", u"short"_qs), watching()));
    const SystemError error = hex->load(sparseFile(WorkingCopy::MostBytes + 1), watching());
    EXPECT_EQ(error.number, EFBIG);
    EXPECT_EQ(error.description, SystemError::fromErrno(EFBIG).description);
    EXPECT_EQ(readAll(*hex), "some bytes");
}

TEST_F(WorkingCopies, OfAFileThatGrewBeyondTheLimitAreNotKept) {
    /// Shares the bytes of a file that has grown since it was looked at.
    class Growing : public FileSystemCalls {
     public:
        int cloneFile(int to, int) override { return ::ftruncate(to, WorkingCopy::MostBytes + 1); }
    } calls;
    WorkingCopy hex(calls, Block);
    EXPECT_EQ(hex.load(file("some bytes"), watching()).number, EFBIG);
    EXPECT_FALSE(hex.isOpen());
    EXPECT_TRUE(QDir(temporaryFolder()).isEmpty(QDir::Files));
}

TEST_F(WorkingCopies, OfWhatIsNoFileAreRefusedUnopened) {
    ASSERT_EQ(::mkfifo(nameOf(m_folder.filePath(u"pipe"_qs)).constData(), 0600), 0);
    auto hex = copy();
    EXPECT_EQ(hex->load(m_folder.filePath(u"pipe"_qs), watching()).number, EINVAL);
    EXPECT_EQ(hex->load(u"/dev/zero"_qs, watching()).number, EINVAL);
    EXPECT_EQ(hex->load(m_folder.path(), watching()).number, EISDIR);
    EXPECT_EQ(hex->load(m_folder.filePath(u"none"_qs), watching()).number, ENOENT);
    EXPECT_EQ(m_calls.count(SystemCall::Open), 0);
}

TEST_F(WorkingCopies, AreReadInRangesThatEndWithTheFile) {
    auto hex = copy();
    ASSERT_FALSE(hex->load(file("0123456789"), watching()));
    char bytes[16];
    EXPECT_EQ(hex->read(FilePosition(1), bytes, 3), 3);
    EXPECT_EQ(QByteArray(bytes, 3), "012");
    EXPECT_EQ(hex->read(FilePosition(9), bytes, 16), 2);
    EXPECT_EQ(hex->read(FilePosition(10), bytes, 16), 1);
    EXPECT_EQ(hex->read(FilePosition(11), bytes, 16), 0);
    EXPECT_EQ(hex->read(FilePosition(337), bytes, 16), 0);
}

TEST_F(WorkingCopies, AreOverwrittenButNeverGrow) {
    auto hex = copy();
    const QString path = file("0123456789");
    ASSERT_FALSE(hex->load(path, watching()));
    EXPECT_FALSE(hex->write(FilePosition(3), "xx"));
    EXPECT_FALSE(hex->write(FilePosition(10), "yyy"));
    EXPECT_FALSE(hex->write(FilePosition(11), "zzz"));
    EXPECT_EQ(readAll(*hex), "01xx45678y");
    EXPECT_EQ(bytesOf(hex->name()), "01xx45678y");
    EXPECT_EQ(bytesOf(path), "0123456789");
}

TEST_F(WorkingCopies, WithoutAFileGiveAndTakeNothing) {
    auto hex = copy();
    char byte = 0;
    EXPECT_EQ(hex->length(), 0);
    EXPECT_EQ(hex->read(FilePosition(1), &byte, 1), -1);
    EXPECT_EQ(hex->write(FilePosition(1), "x").number, EBADF);
    EXPECT_EQ(hex->save(m_folder.filePath(u"new"_qs), watching()).number, EBADF);
    EXPECT_FALSE(stands(m_folder.filePath(u"new"_qs)));
}

TEST_F(WorkingCopies, AFailedReadOrWriteIsTold) {
    auto hex = copy();
    ASSERT_FALSE(hex->load(file("0123456789"), watching()));
    m_calls.fail(SystemCall::ReadAt, 0, EIO);
    m_calls.fail(SystemCall::Write, 0, ENOSPC);
    char byte = 0;
    EXPECT_EQ(hex->read(FilePosition(1), &byte, 1), -1);
    EXPECT_EQ(hex->write(FilePosition(1), "x").number, ENOSPC);
}

TEST_F(WorkingCopies, ThatCannotBeMadeLeaveNothingBehind) {
    const std::pair<SystemCall, int> occasions[] = {{SystemCall::Open, 2},     {SystemCall::Fstat, 3},
                                                    {SystemCall::ReadAt, 2},   {SystemCall::Write, 1},
                                                    {SystemCall::Truncate, 1}, {SystemCall::Read, 0}};
    for (const auto& [call, number] : occasions) {
        FailingFileSystem calls;
        calls.fail(SystemCall::Clone, 0, EXDEV);
        calls.fail(SystemCall::CopyRange, 0, EXDEV);
        calls.fail(call, number, ENOSPC);
        WorkingCopy hex(calls, Block, [this] { return m_now; });
        const bool harmless = call == SystemCall::Read;
        EXPECT_EQ(hex.load(file(someBytes(40)), watching()).number, harmless ? 0 : ENOSPC);
        EXPECT_EQ(hex.isOpen(), harmless);
        EXPECT_EQ(QDir(temporaryFolder()).isEmpty(QDir::Files), !harmless);
    }
}

TEST_F(WorkingCopies, StandItThatTheirViewGoesDuringALoad) {
    auto hex = copy();
    const SystemError error = hex->load(file(someBytes(40)), [&](int) {
        hex.reset();
        return false;
    });
    EXPECT_EQ(error.number, ECANCELED);
    EXPECT_TRUE(QDir(temporaryFolder()).isEmpty(QDir::Files));
    EXPECT_TRUE(m_calls.allClosed());
}

TEST_F(WorkingCopies, OfKilledProcessesAreSweptAwayAndThoseInUseAreNot) {
    auto hex = copy();
    ASSERT_FALSE(hex->load(file("in use"), watching()));
    const QStringList abandoned{at(u"~hextemp010203.tmp"_qs), at(u"~hextemp143006.tmp"_qs)};
    for (const QString& name : abandoned) {
        QFile out(name);
        ASSERT_TRUE(out.open(QFile::WriteOnly));
    }
    QFile other(at(u"other"_qs));
    ASSERT_TRUE(other.open(QFile::WriteOnly));
    ASSERT_EQ(::mkfifo(nameOf(at(u"~hextemp000000.tmp"_qs)).constData(), 0600), 0);
    ASSERT_EQ(::symlink("other", nameOf(at(u"~hextemp111111.tmp"_qs)).constData()), 0);
    WorkingCopy::removeAbandoned();
    EXPECT_TRUE(stands(hex->name()));
    EXPECT_EQ(readAll(*hex), "in use");
    for (const QString& name : abandoned) {
        EXPECT_FALSE(stands(name));
    }
    EXPECT_TRUE(stands(other.fileName()));
    EXPECT_TRUE(stands(at(u"~hextemp000000.tmp"_qs)));
}

TEST_F(WorkingCopies, OfKilledProcessesAreSweptAwayFromANetworkFileSystemToo) {
    NetworkLocks calls;
    auto hex = std::make_unique<WorkingCopy>(calls, Block, [this] { return m_now; });
    ASSERT_FALSE(hex->load(file("in use"), watching()));
    QFile out(at(u"~hextemp010203.tmp"_qs));
    ASSERT_TRUE(out.open(QFile::WriteOnly));
    WorkingCopy::removeAbandoned(calls);
    EXPECT_FALSE(stands(out.fileName()));
    EXPECT_TRUE(stands(hex->name()));
}

TEST_F(WorkingCopies, ASweepWithoutAFolderMakesNone) {
    QDir(temporaryFolder()).removeRecursively();
    WorkingCopy::removeAbandoned();
    EXPECT_FALSE(stands(temporaryFolder()));
}

TEST_F(WorkingCopies, SweptAwayBeforeTheyWereLockedAreMadeAgain) {
    /// The first lock comes too late: the sweep of another process has removed the file.
    class Swept : public FileSystemCalls {
     public:
        int open(const char* path, int flags, mode_t mode) override {
            m_last = path;
            return FileSystemCalls::open(path, flags, mode);
        }
        int flock(int handle, int operation) override {
            if (++m_locks == 1)
                ::unlink(m_last.constData());
            return FileSystemCalls::flock(handle, operation);
        }

     private:
        QByteArray m_last;
        int m_locks = 0;
    } calls;
    WorkingCopy hex(calls, Block, [this] { return m_now; });
    ASSERT_FALSE(hex.load(file("some bytes"), watching()));
    EXPECT_EQ(hex.name(), at(u"~hextemp143006.tmp"_qs));
    EXPECT_EQ(bytesOf(hex.name()), "some bytes");
}

TEST_F(WorkingCopies, HeldByASweepAtTheirBeginningTakeAnotherName) {
    m_calls.fail(SystemCall::Lock, 1, EWOULDBLOCK);
    auto hex = copy();
    ASSERT_FALSE(hex->load(file("some bytes"), watching()));
    EXPECT_EQ(hex->name(), at(u"~hextemp143006.tmp"_qs));
}

TEST_F(WorkingCopies, LiveOnAFileSystemWithoutLocks) {
    m_calls.fail(SystemCall::Lock, 0, ENOLCK);
    auto hex = copy();
    ASSERT_FALSE(hex->load(file("some bytes"), watching()));
    EXPECT_EQ(readAll(*hex), "some bytes");
}

TEST_F(WorkingCopies, AreSavedInBlocksOverTheStartOfTheTarget) {
    const QByteArray bytes = someBytes(40);
    const QString path = file(bytes);
    auto hex = copy();
    ASSERT_FALSE(hex->load(path, watching()));
    ASSERT_FALSE(hex->write(FilePosition(20), "edited"));
    m_percents.clear();
    struct stat before {};
    struct stat after {};
    ASSERT_EQ(::stat(nameOf(path).constData(), &before), 0);
    EXPECT_FALSE(hex->save(path, watching()));
    ASSERT_EQ(::stat(nameOf(path).constData(), &after), 0);
    EXPECT_EQ(bytesOf(path), bytes.left(19) + "edited" + bytes.mid(25));
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(m_percents, (std::vector<int>{50, 100, 100}));
    EXPECT_FALSE(hex->save(m_folder.filePath(u"new"_qs), watching()));
    EXPECT_EQ(bytesOf(m_folder.filePath(u"new"_qs)), bytesOf(path));
}

TEST_F(WorkingCopies, OfBlocksLargerThanTheirPiecesTellAfterEachBlock) {
    QByteArray bytes;
    for (int i = 0; i < 450'001; ++i)
        bytes += static_cast<char>(i % 251);
    WorkingCopy copy(m_calls, 200'000);
    ASSERT_FALSE(copy.load(file(bytes), watching()));
    m_percents.clear();
    const QString target = m_folder.filePath(u"target"_qs);
    ASSERT_FALSE(copy.save(target, watching()));
    EXPECT_EQ(m_percents, (std::vector<int>{50, 100, 100}));
    EXPECT_EQ(bytesOf(target), bytes);
}

TEST_F(WorkingCopies, SavedToANewNameThatIsRefusedAtFirstTellTheSameOnceMore) {
    auto hex = copy();
    ASSERT_FALSE(hex->load(file(someBytes(40)), watching()));
    m_percents.clear();
    m_calls.fail(SystemCall::NameFile, 0, EPERM);
    const QString target = m_folder.filePath(u"target"_qs);
    ASSERT_FALSE(hex->save(target, watching()));
    EXPECT_EQ(m_percents, (std::vector<int>{50, 100, 50, 100, 100}));
    EXPECT_EQ(bytesOf(target), someBytes(40));
}

TEST_F(WorkingCopies, SavedToALongerFileLeaveItsTail) {
    auto hex = copy();
    ASSERT_FALSE(hex->load(file("short"), watching()));
    const QString longer = file("a longer file", u"longer"_qs);
    EXPECT_FALSE(hex->save(longer, watching()));
    EXPECT_EQ(bytesOf(longer), "shortger file");
}

TEST_F(WorkingCopies, ThatCannotBeReadBeforeTheFirstByteLeaveTheTargetWhole) {
    const QString path = file(someBytes(40));
    auto hex = copy();
    ASSERT_FALSE(hex->load(path, watching()));
    ASSERT_FALSE(hex->write(FilePosition(1), "edited"));
    FailingFileSystem& calls = m_calls;
    calls.fail(SystemCall::ReadAt, calls.count(SystemCall::ReadAt) + 1, EIO);
    const SystemError error = hex->save(path, watching());
    EXPECT_EQ(error.number, EIO);
    EXPECT_EQ(error.description, SystemError::fromErrno(EIO).description);
    EXPECT_EQ(bytesOf(path), someBytes(40));
    calls.fail(SystemCall::ReadAt, calls.count(SystemCall::ReadAt) + 2, EIO);
    EXPECT_EQ(hex->save(path, watching()).number, EIO);
    EXPECT_EQ(bytesOf(path).left(6), "edited");
}

TEST_F(WorkingCopies, ATargetWithoutWriteBitsIsRefused) {
    const QString path = file("some bytes");
    auto hex = copy();
    ASSERT_FALSE(hex->load(path, watching()));
    ASSERT_EQ(::chmod(nameOf(path).constData(), 0444), 0);
    EXPECT_EQ(hex->save(path, watching()).number, EACCES);
    EXPECT_EQ(bytesOf(path), "some bytes");
}

TEST_F(WorkingCopies, SaveTheirBytesToTheEndWhenTheViewGoesMeanwhile) {
    const QByteArray bytes = someBytes(40);
    auto hex = copy();
    ASSERT_FALSE(hex->load(file(bytes), watching()));
    const QString target = m_folder.filePath(u"new"_qs);
    const SystemError error = hex->save(target, [&](int) {
        hex.reset();
        return false;
    });
    EXPECT_EQ(error.number, ECANCELED);
    EXPECT_EQ(bytesOf(target), bytes);
    EXPECT_TRUE(QDir(temporaryFolder()).isEmpty(QDir::Files));
}
