#include "hex/bytes/WorkingCopyFile.h"

#include "platform/Paths.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr mode_t Private = 0600;

/// Locks a new file. False: a sweep of another process took it for abandoned, and removed or locked it.
bool takeLock(FileSystemCalls& calls, int handle) {
    const auto lock = [&] { return calls.flock(handle, LOCK_EX | LOCK_NB); };
    if (uninterrupted(lock) != 0)
        return errno != EWOULDBLOCK;  // a file system without locks: no sweep works there either
    struct stat status {};
    return calls.fstat(handle, &status) == 0 && status.st_nlink > 0;
}

}  // namespace

std::shared_ptr<WorkingCopyFile> WorkingCopyFile::make(FileSystemCalls& calls, const QString& path,
                                                       SystemError& error) {
    const QByteArray name = localName(path).value_or(QByteArray());
    const int handle = uninterrupted([&] {
        return calls.open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC, Private);
    });
    if (handle < 0) {
        error = SystemError::fromErrno(errno);
        return nullptr;
    }
    if (!takeLock(calls, handle)) {
        calls.close(handle);
        error = SystemError::fromErrno(EEXIST);
        return nullptr;
    }
    error = {};
    return std::make_shared<WorkingCopyFile>(calls, name, handle);
}

/// The name is removed first: the lock is held until then, so that no sweep finds the file.
WorkingCopyFile::~WorkingCopyFile() {
    m_calls.unlink(m_name.constData());
    m_calls.close(m_handle);
}

SystemError WorkingCopyFile::measure() {
    struct stat status {};
    if (m_calls.fstat(m_handle, &status) != 0)
        return SystemError::fromErrno(errno);
    m_length = status.st_size;
    return {};
}

qint64 WorkingCopyFile::read(qint64 at, char* buffer, qint64 count) const {
    qint64 done = 0;
    while (done < count) {
        const ssize_t got = uninterrupted(
            [&] { return m_calls.pread(m_handle, buffer + done, static_cast<size_t>(count - done), at + done); });
        if (got < 0)
            return -1;
        if (got == 0)
            break;
        done += got;
    }
    return done;
}

qint64 WorkingCopyFile::readForSave(qint64 at, char* buffer, qint64 count) const {
    const qint64 got = read(at, buffer, count);
    if (m_before && got > 0)
        m_before->putInto(at, buffer, got);
    return got;
}

SystemError WorkingCopyFile::write(qint64 at, std::string_view bytes) {
    if (m_before) {
        const auto readNow = [this](qint64 from, char* buffer, qint64 count) { return read(from, buffer, count); };
        if (SystemError error = m_before->keep(at, static_cast<qint64>(bytes.size()), readNow))
            return error;
    }
    while (!bytes.empty()) {
        const iovec part{const_cast<char*>(bytes.data()), bytes.size()};
        const ssize_t count = uninterrupted([&] { return m_calls.pwritev(m_handle, &part, 1, at); });
        if (count <= 0)
            return SystemError::fromErrno(count == 0 ? EIO : errno);
        bytes.remove_prefix(static_cast<std::size_t>(count));
        at += count;
    }
    return {};
}
