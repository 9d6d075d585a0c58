#include "platform/FolderLock.h"

#include <QDeadlineTimer>
#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace {
constexpr qint64 PatienceMs = 5000;
constexpr useconds_t PauseUs = 300;
}  // namespace

FolderLock::FolderLock(const QString& folder)
    : m_handle(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (m_handle < 0)
        return;
    // Polls instead of blocking: a suspended process must not suspend this one.
    const QDeadlineTimer deadline(PatienceMs);
    while (::flock(m_handle, LOCK_EX | LOCK_NB) != 0) {
        const bool held = errno == EWOULDBLOCK || errno == EINTR;
        if (!held || deadline.hasExpired())
            return;
        ::usleep(PauseUs);
    }
}

FolderLock::~FolderLock() {
    if (m_handle >= 0)
        ::close(m_handle);
}
