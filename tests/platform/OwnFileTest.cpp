#include "platform/OwnFile.h"
#include "platform/Paths.h"
#include "support/FailingFileSystem.h"
#include "support/NetworkLocks.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class LockingOwnFiles : public testing::Test {
 public:
    ~LockingOwnFiles() override { release(); }

    QByteArray name(const QString& file = u"file"_qs) const {
        return localName(m_folder.filePath(file)).value_or(QByteArray());
    }
    void make(const QString& file = u"file"_qs) const {
        QFile out(m_folder.filePath(file));
        EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write("bytes") == 5);
    }
    OwnFileLock lock(FileSystemCalls& calls = FileSystemCalls::system()) {
        release();
        return lockOwnFile(calls, name(), m_handle);
    }
    void release() {
        if (m_handle >= 0)
            ::close(m_handle);
        m_handle = -1;
    }

 protected:
    QTemporaryDir m_folder;
    int m_handle = -1;
};

}  // namespace

TEST_F(LockingOwnFiles, NoTwoHaveOneAtTheSameTime) {
    make();
    ASSERT_EQ(lock(), OwnFileLock::Done);
    int second = 0;
    EXPECT_EQ(lockOwnFile(FileSystemCalls::system(), name(), second), OwnFileLock::InUse);
    EXPECT_EQ(second, -1);
    release();
    EXPECT_EQ(lock(), OwnFileLock::Done);
}

TEST_F(LockingOwnFiles, AnExclusiveLockOfANetworkFileSystemIsGot) {
    make();
    NetworkLocks calls;
    EXPECT_EQ(lock(calls), OwnFileLock::Done);
}

TEST_F(LockingOwnFiles, AFileThatMayOnlyBeReadIsLockedAllTheSame) {
    make();
    for (const int error : {EACCES, EROFS}) {
        FailingFileSystem calls;
        calls.fail(SystemCall::Open, 1, error);
        EXPECT_EQ(lock(calls), OwnFileLock::Done);
        EXPECT_EQ(calls.count(SystemCall::Open), 2);
    }
}

TEST_F(LockingOwnFiles, WhatIsNoOwnFileIsRefusedAndLeftUnopened) {
    EXPECT_EQ(lock(), OwnFileLock::Missing);
    make(u"other"_qs);
    FailingFileSystem calls;
    ASSERT_EQ(::mkfifo(name().constData(), 0600), 0);
    EXPECT_EQ(lock(calls), OwnFileLock::Refused);
    ASSERT_EQ(::unlink(name().constData()), 0);
    ASSERT_EQ(::mkdir(name().constData(), 0700), 0);
    EXPECT_EQ(lock(calls), OwnFileLock::Refused);
    EXPECT_EQ(calls.count(SystemCall::Open), 0);
    ASSERT_EQ(::rmdir(name().constData()), 0);
    ASSERT_EQ(::symlink("other", name().constData()), 0);
    EXPECT_EQ(lock(calls), OwnFileLock::Refused);
    ASSERT_EQ(::unlink(name().constData()), 0);
    ASSERT_EQ(::link(name(u"other"_qs).constData(), name().constData()), 0);
    EXPECT_EQ(lock(calls), OwnFileLock::Refused);
    EXPECT_TRUE(calls.allClosed());
}

TEST_F(LockingOwnFiles, AFileThatWasReplacedBeforeItWasLockedBelongsToSomebodyElse) {
    class Replaced : public FailingFileSystem {
     public:
        explicit Replaced(const LockingOwnFiles& test) : m_test(test) {}
        int flock(int handle, int operation) override {
            EXPECT_EQ(::unlink(m_test.name().constData()), 0);
            m_test.make();
            return FailingFileSystem::flock(handle, operation);
        }

     private:
        const LockingOwnFiles& m_test;
    };
    make();
    Replaced calls(*this);
    EXPECT_EQ(lock(calls), OwnFileLock::InUse);
    EXPECT_TRUE(calls.allClosed());
}

TEST_F(LockingOwnFiles, EachCallMayFail) {
    make();
    FailingFileSystem clean;
    ASSERT_EQ(lock(clean), OwnFileLock::Done);
    for (const SystemCall call : {SystemCall::Stat, SystemCall::Open, SystemCall::Lock, SystemCall::Fstat}) {
        for (int number = 1; number <= clean.count(call); ++number) {
            FailingFileSystem calls;
            calls.fail(call, number, EIO);
            EXPECT_NE(lock(calls), OwnFileLock::Done);
            EXPECT_EQ(m_handle, -1);
            EXPECT_TRUE(calls.allClosed());
        }
    }
}
