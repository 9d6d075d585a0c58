#include "platform/LocalListener.h"
#include "shell/start/HandOverFixture.h"
#include "shell/start/HandOverSender.h"
#include "shell/start/HandOverServer.h"
#include "support/AnotherUser.h"

#include <QElapsedTimer>
#include <QFile>

#include <sys/stat.h>

#include <atomic>
#include <memory>
#include <thread>

using Answer = InstanceLock::Answer;

namespace {

/// A sender beside an instance that is played by this test.
class HandOverSenders : public HandOverFixture {
 protected:
    void SetUp() override { ASSERT_EQ(m_instance.tryToTake(), Answer::Taken); }
    void listen() {
        m_server = std::make_unique<HandOverServer>(socketPath());
        ASSERT_TRUE(m_server->isListening());
        note(*m_server);
    }
    /// The file that a killed instance has left behind.
    void leaveSocket() {
        LocalListener listener(socketPath());
        ASSERT_TRUE(listener.isListening());
        listener.keepFile();
    }
    /// Starts to send in another thread, as the event loop must run in this one.
    void begin(const QStringList& paths) {
        m_sending = std::thread([this, paths] { m_sent = m_sender.send(paths) ? Sent : NotSent; });
    }
    int end() {
        m_sending.join();
        return m_sent;
    }

    enum Outcome { Sending, Sent, NotSent };

    InstanceLock m_instance{lockPath()};
    std::unique_ptr<HandOverServer> m_server;
    InstanceLock m_lock{lockPath()};
    HandOverSender m_sender{m_lock, socketPath(), Quick};
    std::thread m_sending;
    std::atomic<int> m_sent = Sending;
};

}  // namespace

TEST_F(HandOverSenders, WithoutAnotherInstanceThisOneHasTheLock) {
    m_instance.release();
    EXPECT_FALSE(m_sender.previousInstanceRuns());
    EXPECT_TRUE(m_lock.isTaken());
}

TEST_F(HandOverSenders, TheLockOfAnotherIsAPreviousInstance) {
    EXPECT_TRUE(m_sender.previousInstanceRuns());
    EXPECT_FALSE(m_lock.isTaken());
}

TEST_F(HandOverSenders, ASocketThatWasLeftBehindIsNone) {
    m_instance.release();
    leaveSocket();
    EXPECT_FALSE(m_sender.previousInstanceRuns());
    EXPECT_TRUE(m_lock.isTaken());
}

TEST_F(HandOverSenders, WhoListensWithoutTheLockIsOneThatStaysApart) {
    m_instance.release();
    listen();
    EXPECT_TRUE(m_sender.previousInstanceRuns());
    EXPECT_FALSE(m_lock.isTaken());
    begin({u"/a"_qs});
    EXPECT_TRUE(arrive(1));
    EXPECT_EQ(end(), Sent);
}

TEST_F(HandOverSenders, ThePathsArriveInOrder) {
    listen();
    begin({u"/a b"_qs, u"/\u00fc"_qs, u"/c"_qs});
    EXPECT_TRUE(arrive(3));
    EXPECT_EQ(end(), Sent);
    EXPECT_EQ(m_received, QStringList({u"/a b"_qs, u"/\u00fc"_qs, u"/c"_qs}));
}

TEST_F(HandOverSenders, DoesNotWaitForAnAnswer) {
    const LocalListener silent(socketPath());
    ASSERT_TRUE(silent.isListening());
    EXPECT_TRUE(m_sender.send({u"/a"_qs}));
}

TEST_F(HandOverSenders, PausesBeforeItSends) {
    const LocalListener silent(socketPath());
    HandOverSender slow(m_lock, socketPath(), {std::chrono::milliseconds(1), std::chrono::milliseconds(200)});
    QElapsedTimer time;
    time.start();
    EXPECT_TRUE(slow.send({u"/a"_qs}));
    EXPECT_GE(time.elapsed(), 200);
}

TEST_F(HandOverSenders, TheUsualPaceIsToldOnce) {
    const HandOverSender::Pace usual;
    EXPECT_EQ(usual.poll, std::chrono::milliseconds(20));
    EXPECT_EQ(usual.pause, std::chrono::milliseconds(1000));
}

TEST_F(HandOverSenders, WaitsForAnInstanceThatIsStillStarting) {
    leaveSocket();
    begin({u"/a"_qs});
    QTest::qWait(50);
    EXPECT_EQ(m_sent, Sending);
    listen();
    EXPECT_TRUE(arrive(1));
    EXPECT_EQ(end(), Sent);
}

TEST_F(HandOverSenders, TakesThePlaceOfAnInstanceThatDiesWhileItWaits) {
    begin({u"/a"_qs});
    QTest::qWait(50);
    EXPECT_EQ(m_sent, Sending);
    m_instance.release();
    EXPECT_EQ(end(), NotSent);
    EXPECT_TRUE(m_lock.isTaken());
}

TEST_F(HandOverSenders, TakesThePlaceOfAnInstanceThatDiesInThePause) {
    listen();
    HandOverSender slow(m_lock, socketPath(), {std::chrono::milliseconds(1), std::chrono::milliseconds(300)});
    std::thread ending([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        m_instance.release();
    });
    QTimer::singleShot(0, qApp, [this] { m_server.reset(); });
    std::thread sending([&] { m_sent = slow.send({u"/a"_qs}) ? Sent : NotSent; });
    QTest::qWait(50);
    ending.join();
    sending.join();
    EXPECT_EQ(m_sent, NotSent);
    EXPECT_TRUE(m_lock.isTaken());
}

TEST_F(HandOverSenders, FindsTheInstanceThatFollowsOneThatDied) {
    begin({u"/a"_qs});
    QTest::qWait(20);
    leaveSocket();
    QTest::qWait(20);
    listen();
    EXPECT_TRUE(arrive(1));
    EXPECT_EQ(end(), Sent);
}

TEST_F(HandOverSenders, APathThatCannotBeSentIsOpenedHere) {
    listen();
    EXPECT_FALSE(m_sender.send({u"/a"_qs, QString(HandOverMessage::LongestPath + 1, u'x')}));
    EXPECT_FALSE(m_sender.send({u"/a"_qs + QChar(0xDCFF)}));
    QTest::qWait(20);
    EXPECT_TRUE(m_received.isEmpty());
}

TEST_F(HandOverSenders, WithoutALockOnlyASocketShowsAnInstance) {
    InstanceLock none(m_folder.filePath(u"none/lock"_qs));
    HandOverSender sender(none, socketPath(), Quick);
    EXPECT_FALSE(sender.previousInstanceRuns());
    EXPECT_FALSE(sender.send({u"/a"_qs}));
    listen();
    EXPECT_TRUE(sender.previousInstanceRuns());
    EXPECT_TRUE(sender.send({u"/a"_qs}));
    EXPECT_TRUE(arrive(1));
}

TEST_F(HandOverSenders, SendsNothingToAnotherUser) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can be another user too";
    m_instance.release();
    listen();
    ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0777), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(socketPath()).constData(), 0666), 0);
    EXPECT_TRUE(asSomebodyElse([this] {
        InstanceLock own(m_folder.filePath(u"own.lock"_qs));
        HandOverSender sender(own, socketPath(), Quick);
        return !sender.previousInstanceRuns() && !sender.send({u"/a"_qs});
    }));
    QTest::qWait(20);
    EXPECT_TRUE(m_received.isEmpty());
}
