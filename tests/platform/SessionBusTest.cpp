#include "platform/SessionBus.h"

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <thread>

namespace {

constexpr std::chrono::milliseconds Short(200);
constexpr std::chrono::seconds Long(20);

class SessionBus : public testing::Test {
 protected:
    SessionBus() { qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path())); }
    ~SessionBus() override {
        if (m_handle >= 0)
            close(m_handle);
    }

    QByteArray path(const char* name = "bus") const {
        return QFile::encodeName(m_folder.filePath(QLatin1String(name)));
    }

    /// A socket that takes connections. `name` with a zero in front: an abstract one.
    void listenAt(const QByteArray& name) {
        sockaddr_un place{};
        place.sun_family = AF_UNIX;
        std::copy(name.begin(), name.end(), place.sun_path);
        m_handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<size_t>(name.size()));
        ASSERT_EQ(bind(m_handle, reinterpret_cast<const sockaddr*>(&place), length), 0);
        ASSERT_EQ(listen(m_handle, 1), 0);
    }

    /// The next one who connects gets this answer.
    std::thread answerOnce(const QByteArray& text) const {
        return std::thread([this, text] {
            const int client = accept(m_handle, nullptr, nullptr);
            EXPECT_EQ(send(client, text.constData(), static_cast<size_t>(text.size()), MSG_NOSIGNAL), text.size());
            char last = 0;
            while (recv(client, &last, 1, 0) == 1) {
            }
            close(client);
        });
    }

    static bool answers(const QByteArray& address, std::chrono::milliseconds limit = Long) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        return sessionBusAnswers(limit);
    }

    QTemporaryDir m_folder;
    int m_handle = -1;
};

}  // namespace

TEST_F(SessionBus, ARealOneAnswers) {
    QProcess daemon;
    daemon.start(u"dbus-daemon"_qs, {u"--session"_qs, u"--nofork"_qs, u"--print-address"_qs});
    ASSERT_TRUE(daemon.waitForReadyRead());
    EXPECT_TRUE(answers(daemon.readLine().trimmed()));
    daemon.kill();
    daemon.waitForFinished();
}

TEST_F(SessionBus, OneThatIsNotThereDoesNotAnswer) {
    EXPECT_FALSE(answers("unix:path=/no/such/bus"));
    EXPECT_FALSE(answers("unix:path=/" + QByteArray(500, 'x')));
    EXPECT_FALSE(answers("unix:path="));
    EXPECT_FALSE(answers(""));
}

TEST_F(SessionBus, OneThatSaysNothingDoesNotAnswer) {
    listenAt(path());
    EXPECT_FALSE(answers("unix:path=" + path(), Short));
}

TEST_F(SessionBus, OneThatTakesNoMoreConnectionsDoesNotAnswer) {
    listenAt(path());
    for (int i = 0; i < 4; ++i) {
        EXPECT_FALSE(answers("unix:path=" + path(), Short));
    }
}

TEST_F(SessionBus, ARefusalIsAnAnswer) {
    listenAt(path("a bus"));
    std::thread server = answerOnce("REJECTED EXTERNAL\r\n");
    EXPECT_TRUE(answers("unix:path=" + path("a bus").replace(' ', "%20") + ",guid=0123"));
    server.join();
}

TEST_F(SessionBus, AnAbstractSocketIsOneToo) {
    const QByteArray name = "quillmark-test-" + QByteArray::number(getpid());
    listenAt('\0' + name);
    std::thread server = answerOnce("OK\r\n");
    EXPECT_TRUE(answers("unix:abstract=" + name));
    server.join();
}

TEST_F(SessionBus, WithoutAnAddressItIsThatOfTheUser) {
    listenAt(path());
    std::thread server = answerOnce("OK\r\n");
    EXPECT_TRUE(answers(""));
    server.join();
}

TEST_F(SessionBus, TheFirstThatIsThereCounts) {
    listenAt(path());
    std::thread server = answerOnce("OK\r\n");
    EXPECT_TRUE(answers("unix:path=/no/such/bus;unix:path=" + path()));
    server.join();
    EXPECT_FALSE(answers("unix:path=" + path() + ";tcp:host=localhost", Short));
}

TEST_F(SessionBus, AnotherKindOfAddressIsNotTried) {
    EXPECT_TRUE(answers("tcp:host=localhost,port=1"));
    EXPECT_TRUE(answers("nonsense"));
}
