#pragma once

#include <QMetaObject>
#include <QWidget>

#include <functional>

/// The hidden window by whose caption other instances know this one. Once hooked it also reports when the application
/// comes to the front. Owned by the frame, made when that is loaded and destroyed when it ends.
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
