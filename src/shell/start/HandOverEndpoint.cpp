#include "shell/start/HandOverEndpoint.h"

#include "platform/BackgroundWork.h"
#include "platform/InstanceLock.h"
#include "platform/LocalSocket.h"
#include "shell/start/HandOverServer.h"

#include <atomic>
#include <thread>

namespace {

const QString name = u"QuillmarkOpen"_qs;

QString folderOf(const QString& path) {
    return path.left(path.lastIndexOf(u'/'));
}

}  // namespace

QString HandOverEndpoint::socketIn(const QString& folder) {
    return folder + u'/' + name;
}

QString HandOverEndpoint::lockIn(const QString& folder) {
    return socketIn(folder) + u".lock"_qs;
}

HandOverEndpoint::HandOverEndpoint(InstanceLock& lock, Kind kind)
    : m_lock(lock), m_socket(socketIn(folderOf(lock.file()))), m_kind(kind) {
    switch (m_lock.tryToTake()) {
        case InstanceLock::Answer::Taken:
            listen();
            break;
        case InstanceLock::Answer::HeldByAnother:
            if (m_kind == Kind::Takes)
                waitForLock();
            break;
        case InstanceLock::Answer::Unavailable:
            listenUnlessTaken();
            break;
    }
    if (m_kind == Kind::StaysApart)
        m_lock.release();
}

/// Without the lock an instance that stays apart can't know whether the file is its own for as long as it takes to
/// remove it.
HandOverEndpoint::~HandOverEndpoint() {
    if (m_server && m_kind == Kind::StaysApart && m_lock.tryToTake() != InstanceLock::Answer::Taken)
        m_server->keepFile();
    m_server.reset();
    if (m_kind == Kind::StaysApart)
        m_lock.release();
}

/// Without a socket the lock would keep later starts waiting.
void HandOverEndpoint::listen() {
    m_server = std::make_unique<HandOverServer>(m_socket);
    if (m_server->isListening()) {
        connect(m_server.get(), &HandOverServer::received, this, &HandOverEndpoint::received);
        return;
    }
    m_server.reset();
    m_lock.release();
}

/// Where there are no locks the socket alone shows who is there.
void HandOverEndpoint::listenUnlessTaken() {
    if (LocalSocket().connectTo(m_socket) == LocalSocket::Reached::Nobody)
        listen();
}

/// Without a thread of its own the work would keep this one waiting.
void HandOverEndpoint::waitForLock() {
    m_next = std::make_shared<InstanceLock>(m_lock.file());
    const auto wait = [next = m_next, here = std::this_thread::get_id()](const std::atomic<bool>& cancelled) {
        if (std::this_thread::get_id() != here && next->waitToTake() && cancelled)
            next->release();
    };
    m_waiting = std::make_unique<BackgroundWork>(wait);
    connect(m_waiting.get(), &BackgroundWork::finished, this, [this] {
        if (!m_next->isTaken())
            return;
        m_lock.takeFrom(*m_next);
        listen();
    });
}
