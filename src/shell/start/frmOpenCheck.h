#pragma once

#include <QMetaObject>
#include <QWidget>

#include <functional>

/// The hidden window by whose caption other instances find this one. Once hooked it also reports when the application
/// is activated. Owned by the frame, created when that is loaded and destroyed when it ends.
class frmOpenCheck : public QWidget {
    Q_OBJECT

 public:
    frmOpenCheck();
    ~frmOpenCheck() override;

    /// From now on `activated` is called whenever the application becomes the active one.
    void Hook(std::function<void()> activated);
    void Unhook();
    bool isHooked() const { return static_cast<bool>(m_connection); }

 private:
    QMetaObject::Connection m_connection;
};
