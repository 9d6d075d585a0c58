#pragma once

#include <QString>

#include <sys/socket.h>
#include <sys/un.h>

/// The address of a local socket by its path. An address holds 107 bytes; a longer path is named through a handle to
/// its folder, so the object must live as long as the address is used.
class LocalAddress {
 public:
    explicit LocalAddress(const QString& path);
    ~LocalAddress();
    Q_DISABLE_COPY_MOVE(LocalAddress)

    /// False when the path cannot be an address.
    bool isValid() const { return m_length > 0; }
    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&m_address); }
    socklen_t length() const { return m_length; }

 private:
    void setName(const QByteArray& name);

    sockaddr_un m_address{};
    socklen_t m_length = 0;
    int m_folder = -1;
};
