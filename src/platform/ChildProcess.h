#pragma once

#include "platform/SystemError.h"

#include <QByteArray>
#include <QByteArrayView>

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// The end of the connection that the child process holds. Messages arrive whole and in order. Does not use the event
/// loop.
class ParentLink {
 public:
    explicit ParentLink(int socket) : m_socket(socket) {}

    /// Waits for the next message. Nothing: the parent has closed the connection, and the work is to return.
    std::optional<std::string> receive();
    bool send(std::string_view message);

 private:
    int m_socket;
};

/// Work in a process of its own, for a library that may crash, use up the memory or never return on damaged input: the
/// program survives that and may end the work at any time. Owned by the code that creates it; the destructor ends the
/// process without waiting for it. Does not run the event loop.
///
/// The process is a copy of this one as it is at that moment, with one thread and without its open files. So the work
/// must use plain values alone: no widget, no event loop, no lock that another thread could hold.
class ChildProcess {
 public:
    using Work = std::function<void(ParentLink& link)>;
    enum class Answer { Pending, Received, Ended };

    /// Longer messages are refused on both sides.
    static constexpr std::size_t MostBytes = 1024 * 1024;
    /// How much more memory than this process the child may use.
    static constexpr std::size_t MostMemory = 1024UL * 1024 * 1024;

    /// Starts the work at once; see error().
    explicit ChildProcess(const Work& work);
    ~ChildProcess();
    Q_DISABLE_COPY_MOVE(ChildProcess)

    /// Why the process could not be started.
    const SystemError& error() const { return m_error; }

    /// False: the process has ended. The child should be waiting for a message; one that is at work does not read it,
    /// and the call then waits when the message is longer than what the system holds.
    bool send(QByteArrayView message);
    /// Waits for the next message, at most for this time.
    Answer receive(QByteArray& message, std::chrono::milliseconds limit);

 private:
    bool takeMessage(QByteArray& message);

    pid_t m_process = -1;
    int m_socket = -1;
    QByteArray m_received;
    SystemError m_error;
};
