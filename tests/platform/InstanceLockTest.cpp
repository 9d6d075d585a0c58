#include "platform/InstanceLock.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <thread>

using Answer = InstanceLock::Answer;

namespace {

/// A process that has the lock from here until it is killed.
class Holder {
 public:
    explicit Holder(const QString& file) {
        std::array<int, 2> ready{};
        EXPECT_EQ(::pipe(ready.data()), 0);
        m_process = ::fork();
        if (m_process == 0) {
            InstanceLock lock(file);
            const char taken = lock.tryToTake() == Answer::Taken ? 'y' : 'n';
            if (::write(ready[1], &taken, 1) == 1)
                ::pause();
            ::_exit(0);
        }
        char taken = 'n';
        EXPECT_EQ(::read(ready[0], &taken, 1), 1);
        EXPECT_EQ(taken, 'y');
        ::close(ready[0]);
        ::close(ready[1]);
    }
    ~Holder() { kill(); }
    Q_DISABLE_COPY_MOVE(Holder)

    void kill() {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

 private:
    pid_t m_process = 0;
};

class InstanceLocks : public testing::Test {
 protected:
    QTemporaryDir m_folder;
    QString m_file = m_folder.filePath(u"lock"_qs);
};

}  // namespace

TEST_F(InstanceLocks, OneAtATimeHasTheLock) {
    InstanceLock one(m_file);
    InstanceLock other(m_file);
    EXPECT_EQ(one.tryToTake(), Answer::Taken);
    EXPECT_EQ(one.tryToTake(), Answer::Taken);
    EXPECT_EQ(other.tryToTake(), Answer::HeldByAnother);
    EXPECT_TRUE(one.isTaken());
    EXPECT_FALSE(other.isTaken());
    one.release();
    EXPECT_EQ(other.tryToTake(), Answer::Taken);
}

TEST_F(InstanceLocks, ItEndsWithItsObject) {
    {
        InstanceLock one(m_file);
        EXPECT_EQ(one.tryToTake(), Answer::Taken);
    }
    EXPECT_EQ(InstanceLock(m_file).tryToTake(), Answer::Taken);
}

TEST_F(InstanceLocks, ItDiesWithAKilledProcess) {
    Holder holder(m_file);
    InstanceLock lock(m_file);
    EXPECT_EQ(lock.tryToTake(), Answer::HeldByAnother);
    holder.kill();
    EXPECT_TRUE(QFile::exists(m_file));
    EXPECT_EQ(lock.tryToTake(), Answer::Taken);
}

TEST_F(InstanceLocks, AProgramThatTheHolderStartsDoesNotInheritIt) {
    InstanceLock lock(m_file);
    ASSERT_EQ(lock.tryToTake(), Answer::Taken);
    const pid_t child = ::fork();
    if (child == 0) {
        ::execlp("sleep", "sleep", "60", nullptr);
        ::_exit(1);
    }
    const QString command = u"/proc/%1/comm"_qs.arg(child);
    QByteArray name;
    while (name != "sleep\n") {
        QFile file(command);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        name = file.readAll();
    }
    lock.release();
    EXPECT_EQ(InstanceLock(m_file).tryToTake(), Answer::Taken);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

TEST_F(InstanceLocks, WaitingEndsWhenTheHolderIsKilled) {
    Holder holder(m_file);
    InstanceLock lock(m_file);
    bool taken = false;
    std::thread waiting([&] { taken = lock.waitToTake(); });
    holder.kill();
    waiting.join();
    EXPECT_TRUE(taken);
    EXPECT_TRUE(lock.isTaken());
}

TEST_F(InstanceLocks, ALockIsTakenOverFromAnotherObject) {
    InstanceLock one(m_file);
    InstanceLock other(m_file);
    ASSERT_EQ(one.tryToTake(), Answer::Taken);
    other.takeFrom(one);
    EXPECT_FALSE(one.isTaken());
    EXPECT_TRUE(other.isTaken());
    EXPECT_EQ(one.tryToTake(), Answer::HeldByAnother);
}

TEST_F(InstanceLocks, TheFileIsForItsOwnerAlone) {
    const mode_t before = ::umask(0);
    InstanceLock lock(m_file);
    EXPECT_EQ(lock.tryToTake(), Answer::Taken);
    ::umask(before);
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(m_file).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & ALLPERMS, 0600U);
}

TEST_F(InstanceLocks, WhatIsNoPlainFileIsNotAvailableAndNotWaitedFor) {
    const QByteArray name = QFile::encodeName(m_file);
    for (const QString& file : {m_folder.filePath(u"none/lock"_qs), m_folder.path(), QString()}) {
        EXPECT_EQ(InstanceLock(file).tryToTake(), Answer::Unavailable) << file.toStdString();
        EXPECT_FALSE(InstanceLock(file).waitToTake());
    }
    ASSERT_EQ(::mkfifo(name.constData(), 0600), 0);
    EXPECT_EQ(InstanceLock(m_file).tryToTake(), Answer::Unavailable);
    ASSERT_TRUE(QFile::remove(m_file));
    ASSERT_EQ(::symlink("/etc/passwd", name.constData()), 0);
    EXPECT_EQ(InstanceLock(m_file).tryToTake(), Answer::Unavailable);
}

TEST_F(InstanceLocks, AFileOfAnotherUserIsNotAvailable) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    constexpr uid_t Nobody = 65534;
    const QByteArray name = QFile::encodeName(m_file);
    ASSERT_EQ(InstanceLock(m_file).tryToTake(), Answer::Taken);
    ASSERT_EQ(::chown(name.constData(), Nobody, Nobody), 0);
    EXPECT_EQ(InstanceLock(m_file).tryToTake(), Answer::Unavailable);
}
