#include "platform/LocalListener.h"

#include "platform/LocalAddress.h"
#include "platform/Paths.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace {

constexpr mode_t OwnerOnly = 0600;

}  // namespace

LocalListener::LocalListener(const QString& path) : m_path(path) {
    const QString beside = path + u'.' + QString::number(::getpid());
    const auto name = localName(path);
    const auto first = localName(beside);
    if (!name || !first)
        return;
    ::unlink(first->constData());
    if (!listenAt(beside))
        return;
    if (::rename(first->constData(), name->constData()) == 0) {
        m_identity = FileIdentity::of(path);
        return;
    }
    ::unlink(first->constData());
    m_socket.close();
}

LocalListener::~LocalListener() {
    if (m_identity && FileIdentity::of(m_path) == m_identity)
        ::unlink(localName(m_path)->constData());
}

/// The mode of the file is that of the socket when it gets its name.
bool LocalListener::listenAt(const QString& path) {
    const LocalAddress address(path);
    LocalSocket socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!address.isValid() || !socket.isOpen() || ::fchmod(socket.handle(), OwnerOnly) != 0 ||
        ::bind(socket.handle(), address.get(), address.length()) != 0)
        return false;
    if (::listen(socket.handle(), SOMAXCONN) != 0) {
        ::unlink(localName(path)->constData());
        return false;
    }
    m_socket = std::move(socket);
    return true;
}

LocalSocket LocalListener::accept(Failure& failure) {
    LocalSocket socket(::accept4(m_socket.handle(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    const bool noRoom = !socket.isOpen() && (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM);
    failure = noRoom ? Failure::NoRoom : Failure::None;
    return socket;
}
