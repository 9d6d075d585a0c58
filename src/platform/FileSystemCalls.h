#pragma once

#include <QtGlobal>

#include <sys/stat.h>
#include <sys/types.h>
#include <sys/uio.h>

#include <cerrno>
#include <ctime>

/// The calls by which readers and writers of files reach the system, one to one: results and errno are the system's.
/// Tests derive from it to let one of them fail.
class FileSystemCalls {
 public:
    virtual ~FileSystemCalls() = default;

    /// The system itself; has no state and lives for ever.
    static FileSystemCalls& system();

    virtual int open(const char* path, int flags, mode_t mode = 0);
    virtual int stat(const char* path, struct stat* status);
    virtual int fstat(int handle, struct stat* status);
    virtual ssize_t readlink(const char* path, char* buffer, size_t size);
    virtual ssize_t read(int handle, void* buffer, size_t length);
    virtual ssize_t pread(int handle, void* buffer, size_t length, off_t offset);
    virtual ssize_t pwritev(int handle, const iovec* parts, int count, off_t offset);
    virtual off_t lseek(int handle, off_t offset, int whence);
    /// Lets `to` share all bytes of `from`, where the file system can.
    virtual int cloneFile(int to, int from);
    virtual ssize_t copyRange(int from, off_t* fromOffset, int to, off_t* toOffset, size_t length);
    virtual int flock(int handle, int operation);
    virtual int fallocate(int handle, int mode, off_t offset, off_t length);
    virtual int ftruncate(int handle, off_t length);
    virtual int fchmod(int handle, mode_t mode);
    virtual int futimens(int handle, const timespec* times);
    virtual int fsync(int handle);
    virtual int close(int handle);
    virtual int unlink(const char* path);

    /// The longest file that this process may write, in bytes. Going beyond would end it by a signal.
    virtual quint64 sizeLimit();

 protected:
    FileSystemCalls() = default;
    Q_DISABLE_COPY_MOVE(FileSystemCalls)
};

/// Repeats a call for as long as a signal interrupts it.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}
