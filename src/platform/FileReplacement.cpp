#include "platform/FileReplacement.h"

#include "platform/FileErrors.h"
#include "platform/OwnFile.h"
#include "platform/Paths.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <memory>

namespace {

constexpr mode_t NewFileMode = 0666;
constexpr mode_t AnyWriteBit = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr int OpenFlags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
constexpr int NamesToTry = 20;

SystemError lastError() {
    return SystemError::fromErrno(errno);
}

/// The new file before it has its name. Locked, so that others know that it is not abandoned. Removed by the destructor
/// if it has not got its name.
class Replacement {
 public:
    Replacement(FileSystemCalls& calls, const QByteArray& target) : m_calls(calls), m_target(target) {}
    ~Replacement() {
        if (m_handle >= 0 && !m_isInPlace)
            m_calls.unlink(m_name.constData());
        close();
    }
    Q_DISABLE_COPY_MOVE(Replacement)

    SystemError open() {
        static std::atomic<unsigned> number{0};
        for (int i = 0; i < NamesToTry; ++i) {
            m_name = m_target + '.' + QByteArray::number(::getpid()) + '-' + QByteArray::number(++number) +
                     ReplacementSuffix;
            m_handle = uninterrupted([&] { return m_calls.open(m_name.constData(), OpenFlags, NewFileMode); });
            if (m_handle >= 0 && isOwn())
                return {};
            if (m_handle < 0 && errno != EEXIST)
                return lastError();
            close();
        }
        return SystemError::fromErrno(EEXIST);
    }

    SystemError write(const QByteArray& bytes) const {
        for (qsizetype at = 0; at < bytes.size();) {
            const iovec part{const_cast<char*>(bytes.constData()) + at, static_cast<std::size_t>(bytes.size() - at)};
            const ssize_t count = uninterrupted([&] { return m_calls.pwritev(m_handle, &part, 1, at); });
            if (count <= 0)
                return count < 0 ? lastError() : SystemError::fromErrno(EIO);
            at += count;
        }
        return {};
    }
    SystemError setMode(mode_t mode) const {
        return m_calls.fchmod(m_handle, mode & ALLPERMS) == 0 ? SystemError() : lastError();
    }
    SystemError flush() const {
        return uninterrupted([&] { return m_calls.fsync(m_handle); }) == 0 ? SystemError() : lastError();
    }
    SystemError takePlace() {
        m_isInPlace = m_calls.rename(m_name.constData(), m_target.constData()) == 0;
        return m_isInPlace ? SystemError() : lastError();
    }

 private:
    /// False: another process has taken it for an abandoned one before it was locked, and removes it. A file system
    /// without locks has nobody who could.
    bool isOwn() const {
        if (m_calls.flock(m_handle, LOCK_EX | LOCK_NB) != 0)
            return errno != EWOULDBLOCK;
        struct stat status {};
        return m_calls.fstat(m_handle, &status) != 0 || status.st_nlink == 1;
    }
    void close() {
        if (m_handle >= 0)
            m_calls.close(m_handle);
        m_handle = -1;
    }

    FileSystemCalls& m_calls;
    const QByteArray m_target;
    QByteArray m_name;
    int m_handle = -1;
    bool m_isInPlace = false;
};

/// Removes a new file that a killed process has left.
void removeIfAbandoned(FileSystemCalls& calls, const QByteArray& name) {
    int handle = -1;
    if (lockOwnFile(calls, name, handle) != OwnFileLock::Done)
        return;
    calls.unlink(name.constData());
    calls.close(handle);
}

void removeAbandoned(FileSystemCalls& calls, const QByteArray& target) {
    const QByteArray folder = target.left(target.lastIndexOf('/') + 1);
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.constData()), &::closedir);
    while (entries != nullptr) {
        const dirent* entry = ::readdir(entries.get());
        if (entry == nullptr)
            return;
        const QByteArray name = folder + entry->d_name;
        if (name.startsWith(target + '.') && name.endsWith(ReplacementSuffix))
            removeIfAbandoned(calls, name);
    }
}

/// The file that a link leads to; the name itself when there is no such file.
QByteArray resolved(const QByteArray& name) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(name.constData(), nullptr), &std::free);
    return real == nullptr ? name : QByteArray(real.get());
}

/// Whether the file that is there may be written.
SystemError refusal(FileSystemCalls& calls, const QByteArray& name, const struct stat& status) {
    if (SystemError cause = FileErrors::unlessRegular(status.st_mode))
        return cause;
    if ((status.st_mode & AnyWriteBit) == 0)
        return SystemError::fromErrno(EACCES);
    const int handle =
        uninterrupted([&] { return calls.open(name.constData(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); });
    if (handle < 0)
        return lastError();
    calls.close(handle);
    return {};
}

}  // namespace

SystemError replaceFile(const QString& path, const QByteArray& bytes, FileSystemCalls& calls) {
    const auto name = localName(path);
    if (!name)
        return SystemError::fromErrno(ENOENT);
    const QByteArray target = resolved(*name);
    struct stat before {};
    const bool isThere = calls.stat(target.constData(), &before) == 0;
    if (!isThere && errno != ENOENT)
        return lastError();
    if (SystemError error = isThere ? refusal(calls, target, before) : SystemError())
        return error;
    Replacement replacement(calls, target);
    SystemError error = replacement.open();
    if (!error && isThere)
        error = replacement.setMode(before.st_mode);
    if (!error)
        error = replacement.write(bytes);
    if (!error)
        error = replacement.flush();
    if (!error)
        error = replacement.takePlace();
    removeAbandoned(calls, target);
    return error;
}
