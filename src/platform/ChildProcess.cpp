#include "platform/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <system_error>
#include <thread>

namespace {

using Length = std::uint32_t;

constexpr int ChildSocket = 3;  ///< behind standard input, output and error

bool sendAll(int socket, const char* bytes, std::size_t length) {
    while (length > 0) {
        const ssize_t sent = ::send(socket, bytes, length, MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR)
            return false;
        if (sent > 0) {
            bytes += sent;
            length -= static_cast<std::size_t>(sent);
        }
    }
    return true;
}

bool sendMessage(int socket, std::string_view message) {
    if (message.size() > ChildProcess::MostBytes)
        return false;
    const auto length = static_cast<Length>(message.size());
    std::array<char, sizeof(length)> head{};
    std::memcpy(head.data(), &length, sizeof(length));
    return sendAll(socket, head.data(), head.size()) && sendAll(socket, message.data(), message.size());
}

bool receiveAll(int socket, char* bytes, std::size_t length) {
    while (length > 0) {
        const ssize_t received = ::recv(socket, bytes, length, 0);
        if (received == 0 || (received < 0 && errno != EINTR))
            return false;
        if (received > 0) {
            bytes += received;
            length -= static_cast<std::size_t>(received);
        }
    }
    return true;
}

// In the child

/// What this process has mapped now, and so much more.
void limitMemory() {
    unsigned long pages = 0;
    std::FILE* file = std::fopen("/proc/self/statm", "re");
    if (file == nullptr)
        return;
    const bool isRead = std::fscanf(file, "%lu", &pages) == 1;  // NOLINT(cert-err34-c): the system's own figure
    std::fclose(file);
    if (!isRead)
        return;
    const rlim_t most = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + ChildProcess::MostMemory;
    const rlimit limit{most, most};
    setrlimit(RLIMIT_AS, &limit);
}

/// Gives up all that belongs to the program: its files, its locks, its display, its signals.
void leaveTheProgram(int socket) {
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTERM, SIGINT, SIGHUP, SIGCHLD, SIGPIPE})
        std::signal(signal, SIG_DFL);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nothing = open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, standard);
    if (socket != ChildSocket)
        dup2(socket, ChildSocket);
    close_range(ChildSocket + 1, ~0U, 0);
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    limitMemory();
}

[[noreturn]] void runChild(int socket, const ChildProcess::Work& work) {
    leaveTheProgram(socket);
    ParentLink link(ChildSocket);
    try {
        work(link);
    } catch (const std::exception&) {
        _exit(EXIT_FAILURE);
    }
    _exit(EXIT_SUCCESS);
}

}  // namespace

std::optional<std::string> ParentLink::receive() {
    std::array<char, sizeof(Length)> head{};
    Length length = 0;
    if (!receiveAll(m_socket, head.data(), head.size()))
        return std::nullopt;
    std::memcpy(&length, head.data(), sizeof(length));
    if (length > ChildProcess::MostBytes)
        return std::nullopt;
    std::string message(length, '\0');
    if (!receiveAll(m_socket, message.data(), message.size()))
        return std::nullopt;
    return message;
}

bool ParentLink::send(std::string_view message) {
    return sendMessage(m_socket, message);
}

ChildProcess::ChildProcess(const Work& work) {
    std::array<int, 2> sockets{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0) {
        m_error = SystemError::fromErrno(errno);
        return;
    }
    m_process = fork();
    if (m_process == 0)
        runChild(sockets[1], work);
    if (m_process < 0)
        m_error = SystemError::fromErrno(errno);
    close(sockets[1]);
    m_socket = sockets[0];
}

ChildProcess::~ChildProcess() {
    if (m_socket >= 0)
        close(m_socket);
    if (m_process <= 0)
        return;
    kill(m_process, SIGKILL);
    const auto take = [process = m_process] { waitpid(process, nullptr, 0); };
    try {
        // A process that waits for a disk ends only when that has answered.
        std::thread(take).detach();
    } catch (const std::system_error&) {  // no more threads
        take();
    }
}

bool ChildProcess::send(QByteArrayView message) {
    return sendMessage(m_socket, {message.data(), static_cast<std::size_t>(message.size())});
}

/// False: it is not there whole.
bool ChildProcess::takeMessage(QByteArray& message) {
    Length length = 0;
    if (m_received.size() < static_cast<qsizetype>(sizeof(length)))
        return false;
    std::memcpy(&length, m_received.constData(), sizeof(length));
    const qsizetype whole = static_cast<qsizetype>(sizeof(length)) + static_cast<qsizetype>(length);
    if (m_received.size() < whole)
        return false;
    message = m_received.mid(sizeof(length), length);
    m_received.remove(0, whole);
    return true;
}

ChildProcess::Answer ChildProcess::receive(QByteArray& message, std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!takeMessage(message)) {
        // What a child sends without end is not collected.
        if (m_socket < 0 || static_cast<std::size_t>(m_received.size()) > MostBytes + sizeof(Length))
            return Answer::Ended;
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        pollfd watched{m_socket, POLLIN, 0};
        const int ready = poll(&watched, 1, std::max(0, static_cast<int>(left.count())));
        if (ready == 0)
            return Answer::Pending;
        std::array<char, 16384> part{};
        const ssize_t length = ready < 0 ? -1 : recv(m_socket, part.data(), part.size(), MSG_DONTWAIT);
        if (length > 0)
            m_received.append(part.data(), length);
        else if (length == 0 || (errno != EINTR && errno != EAGAIN))
            return Answer::Ended;
    }
    return Answer::Received;
}
