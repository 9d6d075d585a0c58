#pragma once

#include "shell/start/HandOverEndpoint.h"

#include <QMetaObject>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>

class InstanceLock;

/// The hidden window of this instance by whose caption other instances find it: its endpoint bears the same name. Once
/// hooked it passes on the paths that arrive there, which are lost before, and reports when the application is
/// activated. Owned by the frame, created when that is loaded and destroyed when it ends.
class frmOpenCheck : public QWidget {
    Q_OBJECT

 public:
    /// Opens the endpoint beside the lock; without a lock there is none.
    frmOpenCheck(InstanceLock* lock, HandOverEndpoint::Kind kind);
    ~frmOpenCheck() override;

    /// From now on `activated` is called whenever the application becomes the active one, and `arrived` with each path.
    void Hook(std::function<void()> activated, std::function<void(const QString& path)> arrived);
    void Unhook();
    bool isHooked() const { return static_cast<bool>(m_activation); }
    /// No path arrives any more; later starts wait until this process has ended.
    void closeEndpoint() { m_endpoint.reset(); }

 private:
    std::unique_ptr<HandOverEndpoint> m_endpoint;
    std::function<void(const QString& path)> m_arrived;
    QMetaObject::Connection m_activation;
};
