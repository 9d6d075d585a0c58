#pragma once

#include <QObject>
#include <QString>

#include <memory>

class BackgroundWork;
class HandOverServer;
class InstanceLock;

/// The place where this instance can be found by later starts: a lock, and a local socket. Of several instances one has
/// both, the first; when its process ends, one of the others, which wait for the lock, takes its place. An instance
/// that stays apart ("-d") has no lock, and a socket only if no other instance has the lock when it starts; the next
/// instance that takes paths replaces it. Owned by the hidden form.
class HandOverEndpoint : public QObject {
    Q_OBJECT

 public:
    enum class Kind {
        Takes,      ///< the paths that arrive
        StaysApart  ///< what arrives is lost
    };

    /// The path of the socket, and that of the lock, in this folder.
    static QString socketIn(const QString& folder);
    static QString lockIn(const QString& folder);

    /// `lock` is one of a file named by lockIn(); the socket is made beside it. Listens at once, or, while another
    /// instance has the lock, as soon as that has ended. If no socket can be made, the lock is released: later starts
    /// then find no instance and open their files themselves.
    HandOverEndpoint(InstanceLock& lock, Kind kind);
    ~HandOverEndpoint() override;

    bool isListening() const { return m_server != nullptr; }

 Q_SIGNALS:
    void received(const QString& path);

 private:
    void listen();
    void listenUnlessTaken();
    void waitForLock();

    InstanceLock& m_lock;
    QString m_socket;
    Kind m_kind;
    std::unique_ptr<HandOverServer> m_server;
    std::shared_ptr<InstanceLock> m_next;  ///< the lock as soon as the work has it
    std::unique_ptr<BackgroundWork> m_waiting;
};
