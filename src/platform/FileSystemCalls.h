#pragma once

#include <QtGlobal>

#include <sys/stat.h>
#include <sys/types.h>
#include <sys/uio.h>

#include <cerrno>
#include <ctime>

/// The system calls that the readers and writers of files use, one function for each: results and errno are the
/// system's. Tests derive from it to make single calls fail.
class FileSystemCalls {
 public:
    virtual ~FileSystemCalls() = default;

    /// The calls of the real system. The object has no state and exists until the program ends.
    static FileSystemCalls& system();

    virtual int open(const char* path, int flags, mode_t mode = 0);
    virtual int stat(const char* path, struct stat* status);
    virtual int fstat(int handle, struct stat* status);
    virtual ssize_t readlink(const char* path, char* buffer, size_t size);
    virtual ssize_t read(int handle, void* buffer, size_t length);
    virtual ssize_t pread(int handle, void* buffer, size_t length, off_t offset);
    virtual ssize_t pwritev(int handle, const iovec* parts, int count, off_t offset);
    virtual off_t lseek(int handle, off_t offset, int whence);
    /// Makes `to` share all bytes of `from`, if the file system supports it (FICLONE).
    virtual int cloneFile(int to, int from);
    virtual ssize_t copyRange(int from, off_t* fromOffset, int to, off_t* toOffset, size_t length);
    virtual int flock(int handle, int operation);
    virtual int fallocate(int handle, int mode, off_t offset, off_t length);
    virtual int ftruncate(int handle, off_t length);
    virtual int fchmod(int handle, mode_t mode);
    virtual int futimens(int handle, const timespec* times);
    virtual int fsync(int handle);
    /// As fsync(), but the times of the file may not be on the disk yet.
    virtual int fdatasync(int handle);
    /// Lets the disk begin with these bytes, and waits for nothing. Nothing is certain of them before a flush.
    virtual int startFlush(int handle, off_t offset, off_t length);
    virtual int close(int handle);
    virtual int unlink(const char* path);
    virtual int rename(const char* from, const char* to);
    /// Gives an open file that has no name yet (O_TMPFILE) this one. EEXIST when it is taken.
    virtual int nameFile(int handle, const char* path);

    /// The number by which the system knows the kind of file system of an open file; 0: it does not say.
    virtual unsigned long typeOfFileSystem(int handle);

    /// The maximum length in bytes of a file that this process may write. A write beyond it would end the process by a
    /// signal.
    virtual quint64 sizeLimit();

 protected:
    FileSystemCalls() = default;
    Q_DISABLE_COPY_MOVE(FileSystemCalls)
};

/// Repeats a call as long as a signal interrupts it (EINTR), and returns its result.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}
