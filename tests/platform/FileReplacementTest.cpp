#include "platform/FileReplacement.h"
#include "platform/Paths.h"
#include "support/FailingFileSystem.h"
#include "support/NetworkLocks.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <vector>

namespace {

class ReplacingAFile : public testing::Test {
 protected:
    QString path() const { return m_folder.filePath(u"list"_qs); }
    /// A name that another process could have given to its new file.
    QString besideIt() const { return path() + u".1-1"_qs + QLatin1String(ReplacementSuffix); }
    QStringList names() const {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System);
    }

    static QByteArray nameOf(const QString& path) { return localName(path).value_or(QByteArray()); }
    static void put(const QString& path, const QByteArray& bytes) {
        QFile out(path);
        EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write(bytes) == bytes.size());
    }
    static QByteArray bytesOf(const QString& path) {
        QFile in(path);
        return in.open(QFile::ReadOnly) ? in.readAll() : QByteArray("cannot be read");
    }
    static mode_t modeOf(const QString& path) {
        struct stat status {};
        return ::stat(nameOf(path).constData(), &status) == 0 ? status.st_mode & ALLPERMS : 0;
    }

    QTemporaryDir m_folder;
};

}  // namespace

TEST_F(ReplacingAFile, MakesAFileOrReplacesItAndKeepsItsMode) {
    EXPECT_FALSE(replaceFile(path(), "first"));
    EXPECT_EQ(bytesOf(path()), "first");
    ASSERT_EQ(::chmod(nameOf(path()).constData(), 0640), 0);
    EXPECT_FALSE(replaceFile(path(), "2"));
    EXPECT_EQ(bytesOf(path()), "2");
    EXPECT_EQ(modeOf(path()), 0640U);
    EXPECT_FALSE(replaceFile(path(), {}));
    EXPECT_EQ(bytesOf(path()), "");
    EXPECT_EQ(names(), QStringList{u"list"_qs});
}

TEST_F(ReplacingAFile, WhateverCallFailsTheFileIsTheOldOrTheNewOneAndNothingIsLeft) {
    for (const bool isThere : {true, false}) {
        FailingFileSystem undisturbed;
        put(path(), "old");
        ASSERT_FALSE(replaceFile(path(), "new and longer", undisturbed));
        for (const SystemCall call :
             {SystemCall::Open, SystemCall::Stat, SystemCall::Fstat, SystemCall::Lock, SystemCall::Truncate,
              SystemCall::SetMode, SystemCall::Write, SystemCall::Flush, SystemCall::Rename}) {
            for (int number = 1; number <= undisturbed.count(call); ++number) {
                if (!isThere)
                    QFile::remove(path());
                else
                    put(path(), "old");
                FailingFileSystem failing;
                failing.fail(call, number, EIO);
                const SystemError error = replaceFile(path(), "new and longer", failing);
                const QByteArray before = isThere ? "old" : "cannot be read";
                EXPECT_EQ(bytesOf(path()), error ? before : "new and longer");
                EXPECT_TRUE(failing.allClosed());
                EXPECT_FALSE(replaceFile(path(), "next"));
                EXPECT_EQ(names(), QStringList{u"list"_qs});
            }
        }
    }
}

TEST_F(ReplacingAFile, WritesOnWhenOnlyAPartIsWritten) {
    FailingFileSystem slow;
    slow.shortenAll(3);
    EXPECT_FALSE(replaceFile(path(), "in parts of three", slow));
    EXPECT_EQ(bytesOf(path()), "in parts of three");
    FailingFileSystem full;
    full.shorten(SystemCall::Write, 1, 3);
    full.fail(SystemCall::Write, 2, ENOSPC);
    EXPECT_EQ(replaceFile(path(), "other", full).number, ENOSPC);
    EXPECT_EQ(bytesOf(path()), "in parts of three");
}

TEST_F(ReplacingAFile, RemovesWhatAKillHasLeftAndNothingElse) {
    put(path(), "old");
    put(besideIt(), "half of something");
    const QString ofAnotherFile = m_folder.filePath(u"lists.1-1"_qs) + QLatin1String(ReplacementSuffix);
    put(ofAnotherFile, "half of it");
    const QString inWork = path() + u".1-2"_qs + QLatin1String(ReplacementSuffix);
    put(inWork, "of a living process");
    const int handle = ::open(nameOf(inWork).constData(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(handle, LOCK_EX | LOCK_NB), 0);
    EXPECT_FALSE(replaceFile(path(), "new"));
    EXPECT_EQ(bytesOf(path()), "new");
    EXPECT_FALSE(QFile::exists(besideIt()));
    EXPECT_TRUE(QFile::exists(ofAnotherFile) && QFile::exists(inWork));
    ::close(handle);
    EXPECT_FALSE(replaceFile(path(), "newer"));
    EXPECT_FALSE(QFile::exists(inWork));
}

TEST_F(ReplacingAFile, RemovesWhatAKillHasLeftOnANetworkFileSystemToo) {
    put(path(), "old");
    put(besideIt(), "half of something");
    NetworkLocks calls;
    EXPECT_FALSE(replaceFile(path(), "new", calls));
    EXPECT_FALSE(QFile::exists(besideIt()));
}

TEST_F(ReplacingAFile, FollowsALink) {
    put(m_folder.filePath(u"target"_qs), "old");
    ASSERT_EQ(::symlink("target", nameOf(path()).constData()), 0);
    EXPECT_FALSE(replaceFile(path(), "new"));
    EXPECT_EQ(bytesOf(m_folder.filePath(u"target"_qs)), "new");
    EXPECT_EQ(names(), (QStringList{u"list"_qs, u"target"_qs}));
}

TEST_F(ReplacingAFile, RefusesWhatIsNoFileOrMayNotBeWritten) {
    put(path(), "old");
    ASSERT_EQ(::chmod(nameOf(path()).constData(), 0444), 0);
    EXPECT_EQ(replaceFile(path(), "new").number, EACCES);
    EXPECT_EQ(bytesOf(path()), "old");
    ASSERT_TRUE(QFile::remove(path()));
    ASSERT_EQ(::mkfifo(nameOf(path()).constData(), 0600), 0);
    EXPECT_TRUE(replaceFile(path(), "new"));
    ASSERT_TRUE(QFile::remove(path()));
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"list"_qs));
    EXPECT_EQ(replaceFile(path(), "new").number, EISDIR);
    EXPECT_EQ(replaceFile(path() + u"/none/x"_qs, "new").number, ENOENT);
}

TEST_F(ReplacingAFile, LinksAndOtherKindsOfFilesBesideItAreNeitherFollowedNorRemoved) {
    put(path(), "old");
    put(m_folder.filePath(u"other"_qs), "other's");
    ASSERT_EQ(::symlink("other", nameOf(besideIt()).constData()), 0);
    EXPECT_FALSE(replaceFile(path(), "new"));
    ASSERT_TRUE(QFile::remove(besideIt()));
    ASSERT_EQ(::link(nameOf(m_folder.filePath(u"other"_qs)).constData(), nameOf(besideIt()).constData()), 0);
    EXPECT_FALSE(replaceFile(path(), "newer"));
    ASSERT_TRUE(QFile::remove(besideIt()));
    ASSERT_EQ(::mkfifo(nameOf(besideIt()).constData(), 0600), 0);
    EXPECT_FALSE(replaceFile(path(), "newest"));
    ASSERT_TRUE(QFile::remove(besideIt()));
    EXPECT_EQ(bytesOf(m_folder.filePath(u"other"_qs)), "other's");
}

TEST_F(ReplacingAFile, ManyAtOnceLeaveTheFileOfOneOfThemWholeAtEachMoment) {
    constexpr int Writers = 8;
    constexpr int Rounds = 40;
    const auto bytes = [](int writer, int round) { return QByteArray(100 + 997 * writer + round, char('a' + writer)); };
    put(path(), bytes(0, 0));
    std::vector<std::thread> threads;
    threads.reserve(Writers);
    for (int writer = 0; writer < Writers; ++writer) {
        threads.emplace_back([&, writer] {
            for (int round = 0; round < Rounds; ++round) {
                EXPECT_FALSE(replaceFile(path(), bytes(writer, round)));
                const QByteArray now = bytesOf(path());
                EXPECT_EQ(now.count(now.at(0)), now.size());
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(names(), QStringList{u"list"_qs});
}
