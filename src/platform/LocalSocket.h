#pragma once

#include <QByteArray>
#include <QString>

#include <utility>

/// One end of a connection through a local socket. Owns its handle, and closes it when it is destroyed; can be moved.
/// No function waits but sendAll(), for a second at most. Used by one thread.
class LocalSocket {
 public:
    enum class Reached {
        Yes,
        Busy,    ///< somebody listens, but more connections wait for him than the system holds
        Nobody,  ///< nobody listens there: no such name, or one that a process has left behind
    };

    LocalSocket() = default;
    explicit LocalSocket(int handle) : m_handle(handle) {}
    ~LocalSocket();
    LocalSocket(LocalSocket&& other) noexcept : m_handle(std::exchange(other.m_handle, -1)) {}
    LocalSocket& operator=(LocalSocket&& other) noexcept;
    LocalSocket(const LocalSocket&) = delete;
    LocalSocket& operator=(const LocalSocket&) = delete;

    bool isOpen() const { return m_handle >= 0; }
    int handle() const { return m_handle; }
    void close();

    /// Connects to who listens under this path.
    Reached connectTo(const QString& path);
    /// Whether the process at the other end is one of this user. The system answers, from the moment of the connection.
    bool isOfThisUser() const;
    /// The process at the other end.
    qint64 process() const;

    /// Appends at most `count` bytes to `bytes`. Returns false when no more will come: the other side has ended, or the
    /// connection has failed. What has not arrived yet is not waited for.
    bool read(QByteArray& bytes, qsizetype count);
    /// Returns whether all bytes are on their way; what the other side does with them is not known.
    bool sendAll(const QByteArray& bytes);

 private:
    int m_handle = -1;
};
