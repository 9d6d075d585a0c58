#pragma once

#include "platform/LocalListener.h"

#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>

#include <chrono>
#include <cstddef>
#include <memory>
#include <vector>

/// Receives the messages of senders at a local socket. Whatever a sender does, the event loop never waits: of each one
/// only what has arrived is read, no more senders are accepted than the limit, the others wait in the system's queue,
/// and a sender that has not sent its message in time is dropped. So is one of another user, and whatever is not a
/// message. Nobody is sent a reply. Owned by the endpoint; used in the thread of the event loop.
class HandOverServer : public QObject {
    Q_OBJECT

 public:
    struct Limits {
        std::size_t senders = 256;
        std::chrono::milliseconds patience{5000};
        /// For the oldest senders while others wait.
        std::chrono::milliseconds patienceWhenFull{1000};
    };

    explicit HandOverServer(const QString& path) : HandOverServer(path, Limits()) {}
    HandOverServer(const QString& path, Limits limits);
    ~HandOverServer() override;

    /// False when there could be no socket at this path.
    bool isListening() const { return m_listener.isListening(); }
    /// How many senders have been accepted and have not sent their message yet.
    std::size_t senders() const { return m_senders.size(); }
    /// The file of the socket stays when this object is destroyed.
    void keepFile() { m_listener.keepFile(); }

 Q_SIGNALS:
    /// In the order in which the messages have arrived; those of one process in the order in which it sent them. Must
    /// not destroy this object.
    void received(const QString& path);

 private:
    class Sender;

    void acceptWaiting();
    void take(std::unique_ptr<Sender> sender);
    void readFrom(Sender& sender);
    void dropOverdue();
    void followLoad();
    bool isFull() const { return m_senders.size() >= m_limits.senders; }
    std::chrono::milliseconds patience() const { return isFull() ? m_limits.patienceWhenFull : m_limits.patience; }

    LocalListener m_listener;
    Limits m_limits;
    QSocketNotifier m_arrivals;
    QTimer m_overdue;
    QTimer m_retry;                                  ///< runs while the process may have no more open files
    std::vector<std::unique_ptr<Sender>> m_senders;  ///< in the order of their arrival
};
