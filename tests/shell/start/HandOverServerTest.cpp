#include "shell/start/HandOverFixture.h"
#include "shell/start/HandOverServer.h"
#include "support/AnotherUser.h"

#include <QElapsedTimer>
#include <QFile>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

namespace {

/// The server, and what its senders see of it.
class HandOverServers : public HandOverFixture {
 protected:
    void serve(HandOverServer::Limits limits = {}) {
        m_server = std::make_unique<HandOverServer>(socketPath(), limits);
        ASSERT_TRUE(m_server->isListening());
        note(*m_server);
    }
    bool hold(std::size_t count) {
        return QTest::qWaitFor([&] { return m_server->senders() == count; }, 60'000);
    }
    /// The server has closed its side.
    bool isDropped(LocalSocket& socket) {
        QByteArray none;
        return QTest::qWaitFor([&] { return !socket.read(none, 1); }, 60'000);
    }

    std::unique_ptr<HandOverServer> m_server;
};

QByteArray messageOf(const char* path) {
    return HandOverMessage::of(QString::fromUtf8(path));
}

}  // namespace

TEST_F(HandOverServers, APathArrives) {
    serve();
    sendPath(u"/a b/\u00fc"_qs);
    ASSERT_TRUE(arrive(1));
    EXPECT_EQ(m_received, QStringList(u"/a b/\u00fc"_qs));
}

TEST_F(HandOverServers, PathsArriveInTheOrderInWhichTheyWereSent) {
    serve();
    QStringList sent;
    for (int i = 0; i < 300; ++i) {
        sent << u"/%1"_qs.arg(i);
        sendPath(sent.last());
    }
    ASSERT_TRUE(arrive(300));
    EXPECT_EQ(m_received, sent);
}

TEST_F(HandOverServers, NobodyIsSentAReply) {
    serve();
    LocalSocket socket = send(messageOf("/a"));
    ASSERT_TRUE(arrive(1));
    QByteArray reply;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !socket.read(reply, 10); }, 60'000));
    EXPECT_TRUE(reply.isEmpty());
}

TEST_F(HandOverServers, ASenderMayTakeItsTimeForEachByte) {
    serve();
    LocalSocket socket = connected();
    for (const char byte : messageOf("/slow")) {
        EXPECT_TRUE(socket.sendAll(QByteArray(1, byte)));
        QTest::qWait(1);
    }
    ASSERT_TRUE(arrive(1));
    EXPECT_EQ(m_received, QStringList(u"/slow"_qs));
}

TEST_F(HandOverServers, AProcessThatSendsSeveralHasThemInItsOrder) {
    serve();
    LocalSocket first = connected();
    ASSERT_TRUE(hold(1));
    EXPECT_TRUE(first.sendAll(messageOf("/1")));
    sendPath(u"/2"_qs);
    ASSERT_TRUE(arrive(2));
    EXPECT_EQ(m_received, QStringList({u"/1"_qs, u"/2"_qs}));
}

TEST_F(HandOverServers, WhatFollowsTheMessageIsNotRead) {
    serve();
    send(messageOf("/a") + messageOf("/b") + QByteArray(10'000, 'x'));
    ASSERT_TRUE(arrive(1));
    EXPECT_EQ(m_received, QStringList(u"/a"_qs));
    m_received.clear();
    expectOnlyTheNextArrives();
}

TEST_F(HandOverServers, WhatIsNoMessageIsDropped) {
    serve();
    const QByteArray good = messageOf("/a");
    const QByteArray bad[] = {QByteArray("GET / HTTP/1.1\r\n\r\n"),
                              good.sliced(1),
                              QByteArray(8, '\0'),
                              QByteArray(100'000, '\xFF'),
                              QByteArray(good).replace(0, 1, "\4"),
                              QByteArray(good).replace(4, 4, QByteArray("\xFF\xFF\xFF\x7F", 4)),
                              QByteArray(good).replace('a', '\xFF'),
                              QByteArray(good).replace('a', '\0')};
    for (const QByteArray& bytes : bad) {
        LocalSocket socket = connected();
        socket.sendAll(bytes);
        EXPECT_TRUE(isDropped(socket)) << bytes.left(20).toHex().toStdString();
    }
    EXPECT_TRUE(m_received.isEmpty());
    expectOnlyTheNextArrives();
}

TEST_F(HandOverServers, ASenderThatEndsInTheMiddleIsDropped) {
    serve();
    const QByteArray good = messageOf("/a");
    for (const qsizetype size : {0, 1, 7, 8, 9, 10})
        send(good.first(size));
    EXPECT_TRUE(hold(0));
    EXPECT_TRUE(m_received.isEmpty());
    expectOnlyTheNextArrives();
}

TEST_F(HandOverServers, ASenderThatNeverSendsIsDroppedInTheEnd) {
    serve({256, 50ms, 1000ms});
    LocalSocket silent = connected();
    LocalSocket half = send(messageOf("/a").first(9));
    ASSERT_TRUE(hold(2));
    EXPECT_TRUE(isDropped(silent));
    EXPECT_TRUE(isDropped(half));
    EXPECT_EQ(m_server->senders(), 0U);
    EXPECT_TRUE(m_received.isEmpty());
}

TEST_F(HandOverServers, ASenderThatNeverEndsIsDroppedAtItsHeader) {
    serve();
    LocalSocket socket = connected();
    std::thread endless([&socket] {
        while (socket.sendAll(QByteArray(65'536, 'x'))) {
        }
    });
    while (m_server->senders() > 0 || !QTest::qWaitFor([&] { return m_server->senders() == 0; }, 10)) {
    }
    expectOnlyTheNextArrives();
    endless.join();
}

TEST_F(HandOverServers, TheEventLoopRunsWhileSendersAreHeld) {
    serve();
    std::vector<LocalSocket> held;
    held.reserve(100);
    for (int i = 0; i < 100; ++i)
        held.push_back(send(messageOf("/a").first(i % 11)));
    ASSERT_TRUE(hold(100));
    expectOnlyTheNextArrives();
    EXPECT_EQ(m_server->senders(), 100U);
}

TEST_F(HandOverServers, OthersWaitWhileTooManyAreHeldAndThenTakeTheirPlace) {
    serve({3, 60s, 20ms});
    std::vector<LocalSocket> held;
    held.reserve(10);
    for (int i = 0; i < 10; ++i)
        held.push_back(connected());
    sendPath(u"/a"_qs);
    std::size_t most = 0;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            most = std::max(most, m_server->senders());
            return m_received.size() == 1;
        },
        60'000));
    EXPECT_EQ(most, 3U);
    EXPECT_EQ(m_received, QStringList(u"/a"_qs));
}

TEST_F(HandOverServers, AThousandSendersLoseNothing) {
    serve();
    constexpr int Processes = 10;
    constexpr int Each = 100;
    std::vector<pid_t> children;
    for (int process = 0; process < Processes; ++process) {
        const pid_t child = ::fork();
        if (child == 0) {
            std::vector<LocalSocket> sockets(Each);
            bool good = true;
            for (LocalSocket& socket : sockets)
                good = socket.connectTo(socketPath()) == LocalSocket::Reached::Yes && good;
            int number = 0;
            for (LocalSocket& socket : sockets)
                good = socket.sendAll(HandOverMessage::of(u"/%1/%2"_qs.arg(process).arg(number++))) && good;
            ::_exit(good ? 0 : 1);
        }
        children.push_back(child);
    }
    EXPECT_TRUE(arrive(Processes * Each));
    for (const pid_t child : children) {
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    QStringList expected;
    for (int process = 0; process < Processes; ++process) {
        for (int i = 0; i < Each; ++i)
            expected << u"/%1/%2"_qs.arg(process).arg(i);
    }
    m_received.sort();
    expected.sort();
    EXPECT_EQ(m_received, expected);
}

TEST_F(HandOverServers, AThousandSendersThatEndBeforeTheServerLooksLoseNothing) {
    serve();
    QStringList sent;
    for (int i = 0; i < 1000; ++i) {
        sent << u"/%1"_qs.arg(i);
        sendPath(sent.last());
    }
    EXPECT_TRUE(m_received.isEmpty());
    ASSERT_TRUE(arrive(1000));
    EXPECT_EQ(m_received, sent);
}

TEST_F(HandOverServers, AnotherUserIsRefused) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can be another user too";
    serve();
    ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(socketPath()).constData(), 0666), 0);
    EXPECT_TRUE(asSomebodyElse([this] {
        LocalSocket socket;
        return socket.connectTo(socketPath()) == LocalSocket::Reached::Yes && socket.sendAll(messageOf("/a"));
    }));
    expectOnlyTheNextArrives();
}

TEST_F(HandOverServers, WithoutFreeFileHandlesSendersWaitUntilThereAreSome) {
    serve();
    sendPath(u"/a"_qs);
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const int next = ::dup(0);
    ::close(next);
    const rlimit none{static_cast<rlim_t>(next), before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    QTest::qWait(300);
    EXPECT_TRUE(m_received.isEmpty());
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    ASSERT_TRUE(arrive(1));
    EXPECT_EQ(m_received, QStringList(u"/a"_qs));
}

TEST_F(HandOverServers, WhereThereCanBeNoSocketThereIsNoServer) {
    const HandOverServer server(m_folder.filePath(u"none/socket"_qs));
    EXPECT_FALSE(server.isListening());
}
