#include "platform/OwnFile.h"

#include "platform/Paths.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

constexpr int Flags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

/// For writing too, because some network file systems lock no file that was opened for reading alone.
int openToLock(FileSystemCalls& calls, const QByteArray& name) {
    const int handle = uninterrupted([&] { return calls.open(name.constData(), O_RDWR | Flags); });
    if (handle >= 0 || (errno != EROFS && errno != EACCES))
        return handle;
    return uninterrupted([&] { return calls.open(name.constData(), O_RDONLY | Flags); });
}

/// The name may lead to another file by now: the owner replaced or removed this one before it was locked.
bool isNamed(FileSystemCalls& calls, const QByteArray& name, int handle) {
    struct stat named {};
    struct stat opened {};
    return calls.fstat(handle, &opened) == 0 && calls.stat(name.constData(), &named) == 0 &&
           named.st_ino == opened.st_ino && named.st_dev == opened.st_dev;
}

OwnFileLock lock(FileSystemCalls& calls, const QByteArray& name, int handle) {
    if (uninterrupted([&] { return calls.flock(handle, LOCK_EX | LOCK_NB); }) != 0)
        return errno == EWOULDBLOCK ? OwnFileLock::InUse : OwnFileLock::Refused;
    if (!isNamed(calls, name, handle))
        return OwnFileLock::InUse;
    return isOwnFile(calls, handle) ? OwnFileLock::Done : OwnFileLock::Refused;
}

}  // namespace

bool isOwnFile(FileSystemCalls& calls, int handle) {
    struct stat status {};
    return calls.fstat(handle, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
           status.st_nlink == 1;
}

/// To open a file of another kind may already have an effect.
OwnFileLock lockOwnFile(FileSystemCalls& calls, const QByteArray& name, int& handle) {
    handle = -1;
    struct stat status {};
    if (calls.stat(name.constData(), &status) != 0)
        return errno == ENOENT ? OwnFileLock::Missing : OwnFileLock::Refused;
    if (!S_ISREG(status.st_mode))
        return OwnFileLock::Refused;
    const int opened = openToLock(calls, name);
    if (opened < 0)
        return errno == ENOENT ? OwnFileLock::Missing : OwnFileLock::Refused;
    const OwnFileLock result = lock(calls, name, opened);
    if (result == OwnFileLock::Done)
        handle = opened;
    else
        calls.close(opened);
    return result;
}

bool isOwnFolder(const QString& path) {
    struct stat status {};
    const auto name = localName(path);
    return name && ::lstat(name->constData(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
}
