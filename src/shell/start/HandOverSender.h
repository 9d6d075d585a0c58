#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <utility>

class InstanceLock;

/// Passes paths to a running instance, in a process that ends afterwards. Needs no application object and no display;
/// its functions sleep while they wait. Whether there is an instance to wait for is decided by the lock, which each
/// instance that takes paths has or waits for: a socket without it is one that somebody left behind.
class HandOverSender {
 public:
    struct Pace {
        std::chrono::milliseconds poll{20};
        /// Gives an instance that has only just started the time to listen to what it receives.
        std::chrono::milliseconds pause{1000};
    };

    /// `endpoint` is the path of the socket.
    HandOverSender(InstanceLock& lock, QString endpoint) : HandOverSender(lock, std::move(endpoint), Pace()) {}
    HandOverSender(InstanceLock& lock, QString endpoint, Pace pace);

    /// Whether another process of this program is alive that takes paths or, apart from the others, loses them. If
    /// there is none, this process has the lock afterwards and is the one.
    bool previousInstanceRuns();

    /// Waits for the endpoint as long as an instance is alive, pauses, and sends one message for each path in order. No
    /// reply is awaited. Returns false, with the lock if it is available, when no instance is left or a path cannot be
    /// sent: this process should go on itself.
    bool send(const QStringList& paths);

 private:
    bool isEndpointThere();
    bool isAlone();
    bool sendOne(const QByteArray& message);
    bool sendEach(const QList<QByteArray>& messages);

    InstanceLock& m_lock;
    QString m_endpoint;
    Pace m_pace;
};
