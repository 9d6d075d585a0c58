#include "platform/FileSystemCalls.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cstdio>
#include <limits>
#include <string>

FileSystemCalls& FileSystemCalls::system() {
    static FileSystemCalls calls;
    return calls;
}

int FileSystemCalls::open(const char* path, int flags, mode_t mode) {
    return ::open(path, flags, mode);
}

int FileSystemCalls::stat(const char* path, struct stat* status) {
    return ::stat(path, status);
}

int FileSystemCalls::fstat(int handle, struct stat* status) {
    return ::fstat(handle, status);
}

ssize_t FileSystemCalls::readlink(const char* path, char* buffer, size_t size) {
    return ::readlink(path, buffer, size);
}

ssize_t FileSystemCalls::read(int handle, void* buffer, size_t length) {
    return ::read(handle, buffer, length);
}

ssize_t FileSystemCalls::pread(int handle, void* buffer, size_t length, off_t offset) {
    return ::pread(handle, buffer, length, offset);
}

ssize_t FileSystemCalls::pwritev(int handle, const iovec* parts, int count, off_t offset) {
    return ::pwritev(handle, parts, count, offset);
}

off_t FileSystemCalls::lseek(int handle, off_t offset, int whence) {
    return ::lseek(handle, offset, whence);
}

int FileSystemCalls::cloneFile(int to, int from) {
    return ::ioctl(to, FICLONE, from);
}

ssize_t FileSystemCalls::copyRange(int from, off_t* fromOffset, int to, off_t* toOffset, size_t length) {
    return ::copy_file_range(from, fromOffset, to, toOffset, length, 0);
}

int FileSystemCalls::flock(int handle, int operation) {
    return ::flock(handle, operation);
}

int FileSystemCalls::fallocate(int handle, int mode, off_t offset, off_t length) {
    return ::fallocate(handle, mode, offset, length);
}

int FileSystemCalls::ftruncate(int handle, off_t length) {
    return ::ftruncate(handle, length);
}

int FileSystemCalls::fchmod(int handle, mode_t mode) {
    return ::fchmod(handle, mode);
}

int FileSystemCalls::futimens(int handle, const timespec* times) {
    return ::futimens(handle, times);
}

int FileSystemCalls::fsync(int handle) {
    return ::fsync(handle);
}

int FileSystemCalls::fdatasync(int handle) {
    return ::fdatasync(handle);
}

int FileSystemCalls::startFlush(int handle, off_t offset, off_t length) {
    return ::sync_file_range(handle, offset, length, SYNC_FILE_RANGE_WRITE);
}

int FileSystemCalls::close(int handle) {
    return ::close(handle);
}

int FileSystemCalls::unlink(const char* path) {
    return ::unlink(path);
}

int FileSystemCalls::rename(const char* from, const char* to) {
    return ::rename(from, to);
}

/// By its own name in the table of open files: without it, only root may do so.
int FileSystemCalls::nameFile(int handle, const char* path) {
    const std::string open = "/proc/self/fd/" + std::to_string(handle);
    return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, path, AT_SYMLINK_FOLLOW);
}

unsigned long FileSystemCalls::typeOfFileSystem(int handle) {
    struct statfs status {};
    return ::fstatfs(handle, &status) == 0 ? static_cast<unsigned long>(status.f_type) : 0;
}

quint64 FileSystemCalls::sizeLimit() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_FSIZE, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return std::numeric_limits<quint64>::max();
    return limit.rlim_cur;
}
