#include "LoggedCalls.h"

#include <fcntl.h>

#include <algorithm>
#include <vector>

namespace {

QByteArray withPiece(QByteArray bytes, off_t offset, const iovec* parts, int count, ssize_t length) {
    const qsizetype end = qsizetype(offset) + qsizetype(length);
    const qsizetype before = bytes.size();
    bytes.resize(std::max(end, before));
    std::fill(bytes.begin() + before, bytes.end(), '\0');
    char* to = bytes.data() + offset;
    for (int i = 0; i < count && length > 0; ++i) {
        const auto part = std::min(static_cast<ssize_t>(parts[i].iov_len), length);
        std::copy_n(static_cast<const char*>(parts[i].iov_base), part, to);
        to += part;
        length -= part;
    }
    return bytes;
}

}  // namespace

/// Folders that were made by other means appear when something is made in them.
void LoggedCalls::noteFolders(const QByteArray& path) {
    const QByteArray folder = path.left(path.lastIndexOf('/'));
    if (folder.size() <= m_root.size() || m_disk.fileOf(folder) == WeakDisk::Folder)
        return;
    noteFolders(folder);
    m_disk.setName(folder, WeakDisk::Folder);
}

int LoggedCalls::open(const char* path, int flags, mode_t mode) {
    const std::scoped_lock lock(m_mutex);
    const bool isRead =
        (flags & (O_ACCMODE | O_DIRECTORY)) == O_RDONLY && !QByteArray(path).startsWith(m_root + "/state");
    if (m_refusesRecords && (isRead || (flags & O_CREAT) != 0)) {
        errno = EMFILE;
        return -1;
    }
    const int handle = FileSystemCalls::open(path, flags, mode);
    if (handle < 0)
        return handle;
    if ((flags & O_TMPFILE) == O_TMPFILE) {
        m_files[handle] = m_disk.addFile({});
        return handle;
    }
    if ((flags & O_DIRECTORY) != 0) {
        const QByteArray name(path);
        m_folders[handle] = name.endsWith('/') ? name.chopped(1) : name;
        return handle;
    }
    WeakDisk::FileId file = m_disk.fileOf(path);
    if (file < 0 && (flags & O_CREAT) != 0) {
        noteFolders(path);
        file = m_disk.addFile({});
        m_disk.setName(path, file);
    }
    m_files[handle] = file;
    return handle;
}

int LoggedCalls::stat(const char* path, struct stat* status) {
    const std::scoped_lock lock(m_mutex);
    const int result = FileSystemCalls::stat(path, status);
    if (result == 0)
        noteTime(m_disk.fileOf(path), *status);
    return result;
}

int LoggedCalls::fstat(int handle, struct stat* status) {
    const std::scoped_lock lock(m_mutex);
    const int result = FileSystemCalls::fstat(handle, status);
    if (result == 0)
        noteTime(fileOf(handle), *status);
    return result;
}

WeakDisk::FileId LoggedCalls::fileOf(int handle) const {
    const auto found = m_files.find(handle);
    return found == m_files.end() ? WeakDisk::NoFile : found->second;
}

void LoggedCalls::noteTime(WeakDisk::FileId file, struct stat& status) const {
    if (file >= 0)
        status.st_mtim = systemTime(m_disk.timeOf(file));
}

ssize_t LoggedCalls::pwritev(int handle, const iovec* parts, int count, off_t offset) {
    const std::scoped_lock lock(m_mutex);
    ++m_writes;
    if (m_failAt > 0 && m_writes > m_failAt) {
        errno = EIO;
        return -1;
    }
    const bool isPart = m_failAt > 0 && m_writes == m_failAt;
    const iovec part{parts[0].iov_base, parts[0].iov_len / 2};
    const iovec* written = isPart ? &part : parts;
    const ssize_t length = FileSystemCalls::pwritev(handle, written, isPart ? 1 : count, offset);
    const WeakDisk::FileId file = m_files[handle];
    if (length > 0 && file >= 0)
        m_disk.setFile(file, withPiece(m_disk.bytes(file), offset, written, count, length));
    return length;
}

/// What changes bytes does so by writing zeros, which is possible everywhere. The rest changes the time of the file.
int LoggedCalls::fallocate(int handle, int mode, off_t offset, off_t length) {
    if ((mode & FALLOC_FL_ZERO_RANGE) == 0) {
        const std::scoped_lock lock(m_mutex);
        const int result = FileSystemCalls::fallocate(handle, mode, offset, length);
        if (const WeakDisk::FileId file = fileOf(handle); result == 0 && file >= 0)
            m_disk.touch(file);
        return result;
    }
    std::vector<char> zeros(static_cast<std::size_t>(length));
    const iovec part{zeros.data(), zeros.size()};
    return pwritev(handle, &part, 1, offset) == length ? 0 : -1;
}

int LoggedCalls::ftruncate(int handle, off_t length) {
    const std::scoped_lock lock(m_mutex);
    const int result = FileSystemCalls::ftruncate(handle, length);
    const WeakDisk::FileId file = m_files[handle];
    if (result == 0 && file >= 0) {
        QByteArray bytes = m_disk.bytes(file);
        const qsizetype before = bytes.size();
        bytes.resize(length);
        std::fill(bytes.begin() + std::min(before, bytes.size()), bytes.end(), '\0');
        m_disk.setFile(file, bytes);
    }
    return result;
}

int LoggedCalls::futimens(int handle, const timespec* times) {
    const std::scoped_lock lock(m_mutex);
    const int result = FileSystemCalls::futimens(handle, times);
    if (const WeakDisk::FileId file = fileOf(handle); result == 0 && file >= 0)
        m_disk.setTime(file, times[1].tv_sec - FirstSecond);
    return result;
}

int LoggedCalls::flush(int handle, bool withTime) {
    const std::scoped_lock lock(m_mutex);
    const int result = FileSystemCalls::fsync(handle);
    if (const auto folder = m_folders.find(handle); result == 0 && folder != m_folders.end())
        m_disk.flushFolder(folder->second);
    const WeakDisk::FileId file = fileOf(handle);
    if (result == 0 && file >= 0 && withTime)
        m_disk.flushFile(file);
    else if (result == 0 && file >= 0)
        m_disk.flushBytes(file);
    return result;
}

int LoggedCalls::fsync(int handle) {
    return flush(handle, true);
}

int LoggedCalls::fdatasync(int handle) {
    return flush(handle, false);
}

int LoggedCalls::close(int handle) {
    const std::scoped_lock lock(m_mutex);
    m_files.erase(handle);
    m_folders.erase(handle);
    return FileSystemCalls::close(handle);
}

int LoggedCalls::unlink(const char* path) {
    const std::scoped_lock lock(m_mutex);
    const int result = FileSystemCalls::unlink(path);
    if (result == 0)
        m_disk.setName(path, WeakDisk::NoFile);
    return result;
}

int LoggedCalls::rename(const char* from, const char* to) {
    const std::scoped_lock lock(m_mutex);
    const int result = FileSystemCalls::rename(from, to);
    if (result == 0) {
        m_disk.setName(to, m_disk.fileOf(from));
        m_disk.setName(from, WeakDisk::NoFile);
    }
    return result;
}

int LoggedCalls::nameFile(int handle, const char* path) {
    const std::scoped_lock lock(m_mutex);
    const int result = FileSystemCalls::nameFile(handle, path);
    if (result == 0) {
        noteFolders(path);
        m_disk.setName(path, fileOf(handle));
    }
    return result;
}
