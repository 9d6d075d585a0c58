#include "workspace/files/FileOperations.h"

#include "platform/BlockCopy.h"
#include "platform/FileErrors.h"
#include "platform/FileReader.h"
#include "platform/Paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

namespace {

constexpr qint64 CopyBlock = 4 * 1024 * 1024;
constexpr mode_t WriteBits = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t ModeBits = 07777;

SystemError lastError() {
    return SystemError::fromErrno(errno);
}

QString folderOf(const QString& path) {
    return path.left(path.lastIndexOf(u'/') + 1);
}

/// For file systems that cannot refuse an existing name by themselves.
SystemError renameIfFree(const QByteArray& from, const QByteArray& to) {
    struct stat status {};
    if (::lstat(to.constData(), &status) == 0)
        return SystemError::fromErrno(EEXIST);
    return std::rename(from.constData(), to.constData()) == 0 ? SystemError() : lastError();
}

/// The file that is to be replaced by a copy.
SystemError unlessReplaceable(const QByteArray& name) {
    struct stat status {};
    if (::lstat(name.constData(), &status) != 0)
        return errno == ENOENT ? SystemError() : lastError();
    if (SystemError error = FileErrors::unlessRegular(status.st_mode))
        return error;
    return (status.st_mode & WriteBits) == 0 ? SystemError::fromErrno(EACCES) : SystemError();
}

/// A new file in the folder of the copy, deleted again unless it was put in place.
class CopyInMaking {
 public:
    explicit CopyInMaking(QByteArray name) : m_name(std::move(name)) {
        m_handle = ::mkostemp(m_name.data(), O_CLOEXEC);
    }
    ~CopyInMaking() {
        if (m_handle >= 0 && !m_isInPlace)
            ::unlink(m_name.constData());
        if (m_handle >= 0)
            ::close(m_handle);
    }
    Q_DISABLE_COPY_MOVE(CopyInMaking)

    int handle() const { return m_handle; }

    SystemError putInPlace(const QByteArray& name, mode_t mode) {
        const bool isDone = ::fchmod(m_handle, mode & ModeBits) == 0 && ::fsync(m_handle) == 0 &&
                            std::rename(m_name.constData(), name.constData()) == 0;
        m_isInPlace = isDone;
        return isDone ? SystemError() : lastError();
    }

 private:
    QByteArray m_name;
    int m_handle = -1;
    bool m_isInPlace = false;
};

}  // namespace

SystemError FileOperations::rename(const QString& path, const QString& newName) {
    const auto from = localName(path);
    const auto to = localName(folderOf(path) + newName);
    if (!from || !to || newName.contains(u'/'))
        return SystemError::fromErrno(EINVAL);
    if (::renameat2(AT_FDCWD, from->constData(), AT_FDCWD, to->constData(), RENAME_NOREPLACE) == 0)
        return {};
    return errno == EINVAL || errno == ENOSYS ? renameIfFree(*from, *to) : lastError();
}

QString FileOperations::duplicateOf(const QString& path) {
    return folderOf(path) + u"Copy - "_qs + FileNameOf(path);
}

SystemError FileOperations::duplicate(const QString& path, const std::atomic<bool>& cancelled) {
    const auto to = localName(duplicateOf(path));
    const auto inMaking = localName(folderOf(path) + u".copy-XXXXXX"_qs);
    if (!to || !inMaking)
        return SystemError::fromErrno(EINVAL);
    FileSystemCalls& calls = FileSystemCalls::system();
    FileReader source(calls);
    if (SystemError error = source.open(path))
        return error;
    struct stat status {};
    if (::fstat(source.handle(), &status) != 0)
        return lastError();
    if (SystemError error = unlessReplaceable(*to))
        return error;
    CopyInMaking copy(*inMaking);
    if (copy.handle() < 0)
        return lastError();
    const auto goOn = [&](int) { return !cancelled; };
    if (SystemError error = copyFile(calls, source.handle(), copy.handle(), status.st_size, CopyBlock, goOn))
        return error;
    return copy.putInPlace(*to, status.st_mode);
}

SystemError FileOperations::remove(const QString& path) {
    const auto name = localName(path);
    if (name && ::unlink(name->constData()) == 0)
        return {};
    return FileErrors::deleting(path, name ? lastError() : SystemError::fromErrno(ENOENT));
}
