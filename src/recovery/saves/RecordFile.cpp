#include "recovery/saves/RecordFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

RecordFile::~RecordFile() {
    if (m_handle >= 0)
        m_calls.close(m_handle);
}

/// For writing too, because some network file systems lock no file that was opened for reading alone.
RecordFile::Opening RecordFile::open() {
    constexpr int Flags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    m_handle = m_calls.open(m_name.constData(), O_RDWR | Flags);
    if (m_handle < 0 && (errno == EROFS || errno == EACCES))
        m_handle = m_calls.open(m_name.constData(), O_RDONLY | Flags);
    if (m_handle < 0)
        return errno == ENOENT ? Opening::Missing : Opening::Refused;
    if (m_calls.flock(m_handle, LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? Opening::InUse : Opening::Refused;
    struct stat status {};
    const bool isOwn = m_calls.fstat(m_handle, &status) == 0 && S_ISREG(status.st_mode) &&
                       status.st_uid == ::geteuid() && status.st_nlink == 1;
    return isOwn ? Opening::Done : Opening::Refused;
}

bool RecordFile::remove() const {
    if (m_calls.unlink(m_name.constData()) == 0)
        return true;
    const int handle = m_calls.open(m_name.constData(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (handle < 0)
        return false;
    const bool isUseless = m_calls.ftruncate(handle, 0) == 0;
    m_calls.close(handle);
    return isUseless;
}
