#pragma once

#include "platform/FileIdentity.h"
#include "platform/LocalSocket.h"

#include <QString>

#include <optional>

/// A local socket that others connect to by its path. The socket's file has mode 0600. What had the path before, such
/// as the file that a killed process left, is replaced in one step, in which no connection is refused. When the object
/// is destroyed, its file is removed, unless another one has replaced it meanwhile. No function waits.
class LocalListener {
 public:
    enum class Failure {
        None,   ///< or no connection waits
        NoRoom  ///< the process may have no more open files now
    };

    explicit LocalListener(const QString& path);
    ~LocalListener();
    Q_DISABLE_COPY_MOVE(LocalListener)

    /// False when the socket could not be made.
    bool isListening() const { return m_socket.isOpen(); }
    int handle() const { return m_socket.handle(); }
    /// The connection that has waited longest; not open when none waits.
    LocalSocket accept(Failure& failure);
    /// Leaves the file to who may replace it in this moment.
    void keepFile() { m_identity.reset(); }

 private:
    bool listenAt(const QString& path);

    QString m_path;
    LocalSocket m_socket;
    std::optional<FileIdentity> m_identity;
};
