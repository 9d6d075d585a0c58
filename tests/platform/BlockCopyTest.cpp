#include "platform/BlockCopy.h"
#include "support/FailingFileSystem.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace {

constexpr qint64 Block = 10;

class BlockCopying : public testing::Test {
 protected:
    void SetUp() override {
        m_from = open(u"from"_qs);
        m_to = open(u"to"_qs);
        // Sharing must fail, because these tests are about the copied blocks.
        m_calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
    }
    void TearDown() override {
        ::close(m_from);
        ::close(m_to);
    }

    int open(const QString& name) const {
        return ::open(m_folder.filePath(name).toUtf8().constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    }

    void fill(qint64 length) {
        m_bytes.clear();
        for (qint64 i = 0; i < length; ++i)
            m_bytes += static_cast<char>(i * 7 + 1);
        ASSERT_EQ(::pwrite(m_from, m_bytes.constData(), static_cast<size_t>(length), 0), length);
    }

    QByteArray copied() const {
        QFile in(m_folder.filePath(u"to"_qs));
        return in.open(QFile::ReadOnly) ? in.readAll() : QByteArray("(unreadable)");
    }

    SystemError copy(qint64 length) {
        return copyFile(m_calls, m_from, m_to, length, Block, [this](int percent) {
            m_percents.push_back(percent);
            return static_cast<int>(m_percents.size()) != m_stopAt;
        });
    }

    QTemporaryDir m_folder;
    FailingFileSystem m_calls;
    int m_from = -1;
    int m_to = -1;
    QByteArray m_bytes;
    std::vector<int> m_percents;
    int m_stopAt = 0;
};

}  // namespace

TEST(PercentsOfACopy, CountFullBlocksAndEndWithAHundred) {
    EXPECT_EQ(percentDone(10, 35, 10), 33);
    EXPECT_EQ(percentDone(20, 35, 10), 66);
    EXPECT_EQ(percentDone(30, 35, 10), 100);
    EXPECT_EQ(percentDone(35, 35, 10), 100);
    EXPECT_EQ(percentDone(4, 4, 10), 100);
    EXPECT_EQ(percentDone(0, 0, 10), 100);
    EXPECT_EQ(percentDone(1'024'000, 2'147'483'647, 512'000), 0);
}

TEST_F(BlockCopying, TakesEveryByteOfFilesAroundABlock) {
    for (const qint64 length : {1, 9, 10, 11, 19, 20, 21, 99, 100, 101}) {
        fill(length);
        EXPECT_FALSE(copy(length));
        EXPECT_EQ(copied(), m_bytes);
        EXPECT_EQ(m_percents.back(), 100);
        ASSERT_EQ(::ftruncate(m_to, 0), 0);
    }
}

TEST_F(BlockCopying, TellsHowFarItIsAfterEachBlock) {
    fill(35);
    EXPECT_FALSE(copy(35));
    EXPECT_EQ(m_percents, (std::vector<int>{33, 66, 100, 100}));
}

TEST_F(BlockCopying, ReadsAndWritesWhereTheSystemDoesNotCopy) {
    for (const int error : {EXDEV, EINVAL, ENOSYS, EOPNOTSUPP, EPERM}) {
        FailingFileSystem calls;
        calls.fail(SystemCall::Clone, 0, EXDEV);
        calls.fail(SystemCall::CopyRange, 0, error);
        calls.shortenAll(3);
        fill(25);
        EXPECT_FALSE(copyFile(calls, m_from, m_to, 25, Block, [](int) { return true; }));
        EXPECT_EQ(copied(), m_bytes);
        EXPECT_EQ(calls.count(SystemCall::CopyRange), 1);
        ASSERT_EQ(::ftruncate(m_to, 0), 0);
    }
}

TEST_F(BlockCopying, GoesOnWithShortAndInterruptedCalls) {
    m_calls.shortenAll(3);
    m_calls.fail(SystemCall::CopyRange, 2, EINTR);
    m_calls.fail(SystemCall::Truncate, 1, EINTR);
    fill(35);
    EXPECT_FALSE(copy(35));
    EXPECT_EQ(copied(), m_bytes);
}

TEST_F(BlockCopying, AFailureInTheMiddleOfARangeIsTakenOverByReading) {
    m_calls.shorten(SystemCall::CopyRange, 1, 4);
    m_calls.fail(SystemCall::CopyRange, 2, EIO);
    fill(35);
    EXPECT_FALSE(copy(35));
    EXPECT_EQ(copied(), m_bytes);
}

TEST_F(BlockCopying, TellsOfAFailedReadOrWrite) {
    for (const SystemCall call : {SystemCall::ReadAt, SystemCall::Write}) {
        for (const int number : {1, 2, 4}) {
            FailingFileSystem calls;
            calls.fail(SystemCall::Clone, 0, EXDEV);
            calls.fail(SystemCall::CopyRange, 0, EXDEV);
            calls.fail(call, number, ENOSPC);
            fill(35);
            EXPECT_EQ(copyFile(calls, m_from, m_to, 35, Block, [](int) { return true; }).number, ENOSPC);
        }
    }
    m_calls.fail(SystemCall::Truncate, 1, EIO);
    EXPECT_EQ(copy(35).number, EIO);
}

TEST_F(BlockCopying, AFileThatShrankEndsEarly) {
    fill(15);
    EXPECT_FALSE(copy(100));
    EXPECT_EQ(copied(), m_bytes);
    EXPECT_EQ(m_percents.back(), 100);
}

TEST_F(BlockCopying, AFileThatGrewIsTakenAsFarAsItWas) {
    fill(35);
    EXPECT_FALSE(copy(25));
    EXPECT_EQ(copied(), m_bytes.left(25));
}

TEST_F(BlockCopying, EndsWhenNobodyWatchesAnyMore) {
    m_stopAt = 2;
    fill(35);
    EXPECT_EQ(copy(35).number, ECANCELED);
    EXPECT_EQ(m_percents.size(), 2U);
}

TEST_F(BlockCopying, TakesBlocksShorterAndLongerThanItsPieces) {
    for (const qint64 block : {1'000, 65'536, 100'000, 5'000'000}) {
        for (const bool copiesRanges : {true, false}) {
            FailingFileSystem calls;
            calls.fail(SystemCall::Clone, 0, EXDEV);
            if (!copiesRanges)
                calls.fail(SystemCall::CopyRange, 0, EXDEV);
            fill(230'001);
            std::vector<int> percents;
            EXPECT_FALSE(copyFile(calls, m_from, m_to, 230'001, block, [&](int percent) {
                percents.push_back(percent);
                return true;
            }));
            EXPECT_EQ(copied(), m_bytes) << block;
            EXPECT_EQ(static_cast<qint64>(percents.size()), (230'001 + block - 1) / block);
            ASSERT_EQ(::ftruncate(m_to, 0), 0);
        }
    }
}

TEST_F(BlockCopying, HolesStayHoles) {
    const qint64 length = 3'000'000'000;
    ASSERT_EQ(::pwrite(m_from, "in the middle", 13, 1'500'000'000), 13);
    ASSERT_EQ(::ftruncate(m_from, length), 0);
    ASSERT_FALSE(copyFile(m_calls, m_from, m_to, length, 512'000, [](int) { return true; }));
    struct stat status {};
    ASSERT_EQ(::fstat(m_to, &status), 0);
    EXPECT_EQ(status.st_size, length);
    EXPECT_LT(status.st_blocks, 10'000);
    char bytes[13];
    ASSERT_EQ(::pread(m_to, bytes, 13, 1'500'000'000), 13);
    EXPECT_EQ(QByteArray(bytes, 13), "in the middle");
}

TEST_F(BlockCopying, AFileSystemThatDoesNotTellHolesIsCopiedWhole) {
    m_calls.fail(SystemCall::Seek, 0, EINVAL);
    fill(35);
    EXPECT_FALSE(copy(35));
    EXPECT_EQ(copied(), m_bytes);
}

TEST_F(BlockCopying, SharedBytesAreDoneAtOnce) {
    /// Simulates a file system that can share bytes: it copies them instead.
    class Sharing : public FileSystemCalls {
     public:
        int cloneFile(int to, int from) override {
            char bytes[100];
            const ssize_t count = ::pread(from, bytes, sizeof bytes, 0);
            return ::pwrite(to, bytes, static_cast<size_t>(count), 0) == count ? 0 : -1;
        }
        ssize_t copyRange(int, off_t*, int, off_t*, size_t) override {
            ADD_FAILURE() << "copied although shared";
            return -1;
        }
    } calls;
    fill(35);
    int told = 0;
    EXPECT_FALSE(copyFile(calls, m_from, m_to, 35, Block, [&](int percent) { return (told += percent) > 0; }));
    EXPECT_EQ(told, 100);
    EXPECT_EQ(copied(), m_bytes);
    EXPECT_EQ(copyFile(calls, m_from, m_to, 35, Block, [](int) { return false; }).number, ECANCELED);
}
