#pragma once

#include "platform/InstanceLock.h"
#include "platform/LocalSocket.h"
#include "shell/start/HandOverEndpoint.h"
#include "shell/start/HandOverMessage.h"
#include "shell/start/HandOverSender.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <chrono>

/// A folder of the session, and senders that do not wait long.
class HandOverFixture : public testing::Test {
 protected:
    static constexpr HandOverSender::Pace Quick{std::chrono::milliseconds(1), std::chrono::milliseconds(5)};

    QString socketPath() const { return HandOverEndpoint::socketIn(m_folder.path()); }
    QString lockPath() const { return HandOverEndpoint::lockIn(m_folder.path()); }

    /// A connection through which these bytes were sent.
    LocalSocket send(const QByteArray& bytes) {
        LocalSocket socket = connected();
        EXPECT_TRUE(socket.sendAll(bytes));
        return socket;
    }
    LocalSocket connected() {
        LocalSocket socket;
        EXPECT_EQ(socket.connectTo(socketPath()), LocalSocket::Reached::Yes);
        return socket;
    }
    void sendPath(const QString& path) { send(HandOverMessage::of(path)); }

    /// Runs the event loop until so many paths have arrived.
    bool arrive(qsizetype count) {
        return QTest::qWaitFor([&] { return m_received.size() >= count; }, 60'000);
    }
    /// A path that is sent now arrives, and nothing else does.
    void expectOnlyTheNextArrives() {
        sendPath(u"/next"_qs);
        ASSERT_TRUE(arrive(1));
        EXPECT_EQ(m_received, QStringList(u"/next"_qs));
        m_received.clear();
    }
    template <typename Source>
    void note(Source& source) {
        QObject::connect(&source, &Source::received, &source, [this](const QString& path) { m_received << path; });
    }

    QTemporaryDir m_folder{u"/var/tmp/quillmark-XXXXXX"_qs};  // other users reach it once it is opened to them
    QStringList m_received;
};
