#include "platform/LocalAddress.h"

#include "platform/Paths.h"

#include <QByteArray>

#include <fcntl.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>

LocalAddress::LocalAddress(const QString& path) {
    const auto name = localName(path);
    if (!name)
        return;
    m_address.sun_family = AF_UNIX;
    setName(*name);
    const qsizetype slash = name->lastIndexOf('/');
    if (isValid() || slash <= 0)
        return;
    m_folder = ::open(name->first(slash).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (m_folder >= 0)
        setName("/proc/self/fd/" + QByteArray::number(m_folder) + name->sliced(slash));
}

LocalAddress::~LocalAddress() {
    if (m_folder >= 0)
        ::close(m_folder);
}

void LocalAddress::setName(const QByteArray& name) {
    const auto size = static_cast<std::size_t>(name.size());
    if (size >= sizeof m_address.sun_path)
        return;
    std::memcpy(m_address.sun_path, name.constData(), size + 1);
    m_length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + size + 1);
}
