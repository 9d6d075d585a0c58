#include "platform/LocalSocket.h"

#include "platform/LocalAddress.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>

namespace {

constexpr timeval LongestSend{1, 0};

ucred otherSide(int handle) {
    ucred who{0, static_cast<uid_t>(-1), static_cast<gid_t>(-1)};
    socklen_t size = sizeof who;
    if (::getsockopt(handle, SOL_SOCKET, SO_PEERCRED, &who, &size) != 0)
        return {0, static_cast<uid_t>(-1), static_cast<gid_t>(-1)};
    return who;
}

}  // namespace

LocalSocket::~LocalSocket() {
    close();
}

LocalSocket& LocalSocket::operator=(LocalSocket&& other) noexcept {
    if (this != &other) {
        close();
        m_handle = std::exchange(other.m_handle, -1);
    }
    return *this;
}

void LocalSocket::close() {
    if (isOpen())
        ::close(std::exchange(m_handle, -1));
}

LocalSocket::Reached LocalSocket::connectTo(const QString& path) {
    close();
    const LocalAddress address(path);
    if (!address.isValid())
        return Reached::Nobody;
    m_handle = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (!isOpen())
        return Reached::Nobody;
    if (::connect(m_handle, address.get(), address.length()) == 0)
        return Reached::Yes;
    const bool busy = errno == EAGAIN;
    close();
    return busy ? Reached::Busy : Reached::Nobody;
}

bool LocalSocket::isOfThisUser() const {
    return otherSide(m_handle).uid == ::geteuid();
}

qint64 LocalSocket::process() const {
    return otherSide(m_handle).pid;
}

bool LocalSocket::read(QByteArray& bytes, qsizetype count) {
    const qsizetype before = bytes.size();
    bytes.resize(before + count);
    const ssize_t got = ::recv(m_handle, bytes.data() + before, static_cast<std::size_t>(count), MSG_DONTWAIT);
    const int failure = errno;
    bytes.resize(before + qMax<ssize_t>(got, 0));
    return got > 0 || (got < 0 && (failure == EAGAIN || failure == EINTR));
}

bool LocalSocket::sendAll(const QByteArray& bytes) {
    // Each of the few waits that this can take ends on its own.
    const int flags = ::fcntl(m_handle, F_GETFL);
    ::fcntl(m_handle, F_SETFL, flags & ~O_NONBLOCK);
    ::setsockopt(m_handle, SOL_SOCKET, SO_SNDTIMEO, &LongestSend, sizeof LongestSend);
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const ssize_t now =
            ::send(m_handle, bytes.constData() + sent, static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (now <= 0 && errno != EINTR)
            return false;
        sent += qMax<ssize_t>(now, 0);
    }
    return true;
}
