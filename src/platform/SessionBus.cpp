#include "platform/SessionBus.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>

namespace {

enum class Answer { NotThere, Silent, Alive };

class Socket {
 public:
    Socket() : m_handle(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
    ~Socket() {
        if (m_handle >= 0)
            close(m_handle);
    }
    Q_DISABLE_COPY_MOVE(Socket)

    int handle() const { return m_handle; }

 private:
    int m_handle;
};

QByteArray userBus() {
    return qgetenv("XDG_RUNTIME_DIR") + "/bus";
}

/// The name of the socket, of an abstract one with a zero in front; nothing: the address is of another kind.
std::optional<QByteArray> socketName(const QByteArray& address) {
    if (!address.startsWith("unix:"))
        return std::nullopt;
    const QList<QByteArray> parts = address.mid(static_cast<qsizetype>(strlen("unix:"))).split(',');
    for (const QByteArray& part : parts) {
        const qsizetype equals = part.indexOf('=');
        const QByteArray key = part.left(equals);
        const QByteArray value = QByteArray::fromPercentEncoding(part.mid(equals + 1));
        if (key == "path")
            return value;
        if (key == "abstract")
            return '\0' + value;
        if (key == "runtime")
            return userBus();
    }
    return std::nullopt;
}

/// Begins as every client does: a zero, and the offer to be known by the number of the user.
QByteArray greeting() {
    QByteArray text("\0AUTH EXTERNAL ", 15);
    return text + QByteArray::number(getuid()).toHex() + "\r\n";
}

/// A refusal is an answer too.
Answer ask(const QByteArray& name, std::chrono::milliseconds limit) {
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    if (name.isEmpty() || static_cast<std::size_t>(name.size()) >= sizeof place.sun_path)
        return Answer::NotThere;
    std::copy(name.begin(), name.end(), place.sun_path);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()) +
                                               (name.startsWith('\0') ? 0 : 1));
    const Socket bus;
    if (connect(bus.handle(), reinterpret_cast<const sockaddr*>(&place), length) != 0)
        return errno == EAGAIN ? Answer::Silent : Answer::NotThere;  // it has been taking no connections for long
    const QByteArray text = greeting();
    if (send(bus.handle(), text.constData(), static_cast<std::size_t>(text.size()), MSG_NOSIGNAL) != text.size())
        return Answer::NotThere;
    pollfd waiting{bus.handle(), POLLIN, 0};
    char first = 0;
    const bool answered =
        poll(&waiting, 1, static_cast<int>(limit.count())) == 1 && recv(bus.handle(), &first, 1, 0) == 1;
    return answered ? Answer::Alive : Answer::Silent;
}

}  // namespace

/// The addresses are tried in their order, as the libraries do.
bool sessionBusAnswers(std::chrono::milliseconds limit) {
    const QByteArray set = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QList<QByteArray> addresses = (set.isEmpty() ? QByteArray("unix:runtime=yes") : set).split(';');
    for (const QByteArray& address : addresses) {
        const std::optional<QByteArray> name = socketName(address);
        if (!name)
            return true;
        if (const Answer answer = ask(*name, limit); answer != Answer::NotThere)
            return answer == Answer::Alive;
    }
    return false;
}
