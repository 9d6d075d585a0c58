#include "shell/start/HandOverSender.h"

#include "platform/InstanceLock.h"
#include "platform/LocalSocket.h"
#include "shell/start/HandOverMessage.h"

#include <algorithm>
#include <thread>

HandOverSender::HandOverSender(InstanceLock& lock, QString endpoint, Pace pace)
    : m_lock(lock), m_endpoint(std::move(endpoint)), m_pace(pace) {}

bool HandOverSender::previousInstanceRuns() {
    if (m_lock.tryToTake() == InstanceLock::Answer::HeldByAnother)
        return true;
    if (!isEndpointThere())
        return false;
    m_lock.release();  // of an instance that stays apart, which leaves the lock to others
    return true;
}

bool HandOverSender::send(const QStringList& paths) {
    QList<QByteArray> messages;
    for (const QString& path : paths)
        messages.append(HandOverMessage::of(path));
    if (messages.contains(QByteArray())) {
        m_lock.tryToTake();
        return false;
    }
    while (true) {
        while (!isEndpointThere()) {
            if (isAlone())
                return false;
            std::this_thread::sleep_for(m_pace.poll);
        }
        std::this_thread::sleep_for(m_pace.pause);
        if (sendEach(messages))
            return true;
    }
}

/// An instance that ends has removed its endpoint, and keeps the lock until its process is gone.
bool HandOverSender::isAlone() {
    return m_lock.tryToTake() != InstanceLock::Answer::HeldByAnother;
}

bool HandOverSender::isEndpointThere() {
    LocalSocket socket;
    switch (socket.connectTo(m_endpoint)) {
        case LocalSocket::Reached::Yes:
            return socket.isOfThisUser();
        case LocalSocket::Reached::Busy:
            return true;
        case LocalSocket::Reached::Nobody:
            break;
    }
    return false;
}

bool HandOverSender::sendEach(const QList<QByteArray>& messages) {
    return std::ranges::all_of(messages, [this](const QByteArray& message) { return sendOne(message); });
}

bool HandOverSender::sendOne(const QByteArray& message) {
    LocalSocket socket;
    LocalSocket::Reached reached = socket.connectTo(m_endpoint);
    while (reached == LocalSocket::Reached::Busy) {
        std::this_thread::sleep_for(m_pace.poll);
        reached = socket.connectTo(m_endpoint);
    }
    return reached == LocalSocket::Reached::Yes && socket.isOfThisUser() && socket.sendAll(message);
}
