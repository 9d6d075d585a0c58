#include "platform/FileHead.h"

#include "platform/Paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

bool isRegular(int handle) {
    struct stat status {};
    return ::fstat(handle, &status) == 0 && S_ISREG(status.st_mode);
}

QByteArray readHead(int handle, qsizetype size) {
    QByteArray bytes(size, '\0');
    qsizetype filled = 0;
    while (filled < size) {
        const ssize_t count = ::read(handle, bytes.data() + filled, static_cast<size_t>(size - filled));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        filled += count;
    }
    return bytes.first(filled);
}

}  // namespace

QByteArray fileHead(const QString& path, qsizetype size) {
    const std::optional<QByteArray> name = localName(path);
    if (!name || !isNormalFile(path))
        return {};
    const int handle = ::open(name->constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (handle < 0)
        return {};
    // Check the type again: the path may name another file now.
    QByteArray bytes = isRegular(handle) ? readHead(handle, size) : QByteArray();
    ::close(handle);
    return bytes;
}
