#include "platform/InstanceLock.h"

#include "platform/Paths.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace {

constexpr mode_t OwnerOnly = 0600;

int lockWhole(int handle, int operation) {
    int result = 0;
    do
        result = ::flock(handle, operation);
    while (result != 0 && errno == EINTR);
    return result;
}

bool isOwnFile(int handle) {
    struct stat status {};
    return ::fstat(handle, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
}

}  // namespace

InstanceLock::InstanceLock(QString file) : m_file(std::move(file)) {}

InstanceLock::~InstanceLock() {
    release();
}

/// Only a plain file of this user counts: another user's lock says nothing of this user's programs.
int InstanceLock::openFile() const {
    const auto name = localName(m_file);
    if (!name)
        return -1;
    const int handle = ::open(name->constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, OwnerOnly);
    if (handle < 0 || isOwnFile(handle))
        return handle;
    ::close(handle);
    return -1;
}

InstanceLock::Answer InstanceLock::tryToTake() {
    if (isTaken())
        return Answer::Taken;
    const int handle = openFile();
    if (handle < 0)
        return Answer::Unavailable;
    if (lockWhole(handle, LOCK_EX | LOCK_NB) == 0) {
        m_handle = handle;
        return Answer::Taken;
    }
    const bool held = errno == EWOULDBLOCK;
    ::close(handle);
    return held ? Answer::HeldByAnother : Answer::Unavailable;
}

bool InstanceLock::waitToTake() {
    if (isTaken())
        return true;
    const int handle = openFile();
    if (handle < 0)
        return false;
    if (lockWhole(handle, LOCK_EX) == 0) {
        m_handle = handle;
        return true;
    }
    ::close(handle);
    return false;
}

void InstanceLock::takeFrom(InstanceLock& other) {
    release();
    m_handle = std::exchange(other.m_handle, -1);
}

void InstanceLock::release() {
    if (isTaken())
        ::close(std::exchange(m_handle, -1));
}
