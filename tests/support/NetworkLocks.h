#pragma once

#include "platform/FileSystemCalls.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

/// The real file system with the locks of a network one: an exclusive lock needs a file that was opened for writing.
class NetworkLocks : public FileSystemCalls {
 public:
    int flock(int handle, int operation) override {
        const bool isWritable = (::fcntl(handle, F_GETFL) & O_ACCMODE) != O_RDONLY;
        if (isWritable || (operation & LOCK_EX) == 0)
            return FileSystemCalls::flock(handle, operation);
        errno = EBADF;
        return -1;
    }
};
