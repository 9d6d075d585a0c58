#include "recovery/saves/RecordedWrite.h"

#include "platform/FileState.h"
#include "recovery/saves/BlockComparison.h"
#include "recovery/saves/OverwrittenBytes.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr qint64 CopySize = 1'048'576;
constexpr qint64 NanosecondsOfASecond = 1'000'000'000;
/// So long after its record a write may change the file for the last time. What has changed later, and may be
/// somebody's work, is taken for such.
constexpr quint64 LongestWrite = 20ULL * NanosecondsOfASecond;

SystemError lastError() {
    return SystemError::fromErrno(errno);
}

/// A file that is opened only when it is a regular one.
class OpenFile {
 public:
    OpenFile(FileSystemCalls& calls, const QByteArray& name, int mode) : m_calls(calls) {
        if (m_calls.stat(name.constData(), &m_status) != 0) {
            m_error = lastError();
            return;
        }
        if (!S_ISREG(m_status.st_mode)) {
            refuse();
            return;
        }
        m_handle = uninterrupted(
            [&] { return m_calls.open(name.constData(), mode | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); });
        if (m_handle < 0 || m_calls.fstat(m_handle, &m_status) != 0)
            m_error = lastError();
        else if (!S_ISREG(m_status.st_mode))
            refuse();
    }
    ~OpenFile() {
        if (m_handle >= 0)
            m_calls.close(m_handle);
    }
    Q_DISABLE_COPY_MOVE(OpenFile)

    const SystemError& error() const { return m_error; }
    bool isMissing() const { return m_error.number == ENOENT || m_error.number == ENOTDIR; }
    /// Whether there is a link or another kind of file.
    bool isAnotherKind() const { return m_isAnotherKind || m_error.number == ELOOP; }
    int handle() const { return m_handle; }
    quint64 size() const { return static_cast<quint64>(m_status.st_size); }
    /// The number of the device is not compared: it may be another one after the system was started anew. Without
    /// inodes that last, path, size and blocks say whether it is the same file.
    bool isThatOf(const RecordedFile& file) const {
        return m_status.st_ino == file.inode || !hasLastingInodes(m_calls.typeOfFileSystem(m_handle));
    }
    /// Long after the record was made, on the clock that is now.
    bool isWrittenLater(const RecordedFile& file) const {
        const qint64 time = m_status.st_mtim.tv_sec * NanosecondsOfASecond + m_status.st_mtim.tv_nsec;
        return time > 0 && static_cast<quint64>(time) > file.madeTime &&
               static_cast<quint64>(time) - file.madeTime > LongestWrite;
    }
    bool isWrittenSince(const RecordedFile& file) const {
        return m_status.st_mtim.tv_sec * NanosecondsOfASecond + m_status.st_mtim.tv_nsec != file.recordedTime;
    }

 private:
    void refuse() {
        m_isAnotherKind = true;
        m_error = SystemError::fromErrno(ESTALE);
    }

    FileSystemCalls& m_calls;
    int m_handle = -1;
    SystemError m_error;
    bool m_isAnotherKind = false;
    struct stat m_status {};
};

}  // namespace

RecordedWrite::RecordedWrite(FileSystemCalls& calls, int recordHandle, const RecordedFile& file)
    : m_calls(calls), m_record(recordHandle), m_file(file) {}

WriteState RecordedWrite::state() const {
    const OpenFile target(m_calls, m_file.path, O_RDONLY);
    if (target.isAnotherKind())
        return WriteState::Other;
    if (target.isMissing())
        return isFolderThere() ? WriteState::Other : WriteState::Away;
    if (target.error())
        return WriteState::Unknown;
    if (!hasSizeOfAWrite(target.size()))
        return WriteState::Other;
    BlockComparison comparison(m_calls, m_record, m_file, target.handle(), target.size());
    const WriteState state = comparison.compare();
    if (state == WriteState::Whole || state == WriteState::Other || state == WriteState::Unknown)
        return state;
    const bool isOfAnother = comparison.hasDoubtfulBytes() && target.isWrittenLater(m_file);
    const bool isTooLarge = state == WriteState::Torn && target.size() > MostOverwrittenBytes;
    if (!target.isThatOf(m_file) || isOfAnother || isTooLarge)
        return WriteState::Other;
    return state == WriteState::Old && !target.isWrittenSince(m_file) ? WriteState::Partial : state;
}

/// A file that grows has any size in between for a while; one that is cut, is cut once.
bool RecordedWrite::hasSizeOfAWrite(quint64 size) const {
    const quint64 after = m_file.finalSize();
    return size == m_file.oldSize || size == after || (size > m_file.oldSize && size < after);
}

/// An empty folder is there, too, while no file system is mounted on it.
bool RecordedWrite::isFolderThere() const {
    const QByteArray folder = m_file.path.left(m_file.path.lastIndexOf('/') + 1);
    struct stat status {};
    return uninterrupted([&] { return m_calls.stat(folder.constData(), &status); }) == 0 &&
           status.st_dev == m_file.device;
}

std::optional<FileKey> RecordedWrite::target() const {
    struct stat status {};
    if (uninterrupted([&] { return m_calls.stat(m_file.path.constData(), &status); }) != 0)
        return {};
    return keyOf(status);
}

SystemError RecordedWrite::confirm() const {
    const OpenFile target(m_calls, m_file.path, O_RDONLY);
    if (target.error())
        return target.error();
    if (target.isThatOf(m_file))
        restoreMode(target.handle());
    return flush(target.handle());
}

SystemError RecordedWrite::complete() const {
    const OpenFile target(m_calls, m_file.path, O_WRONLY);
    if (target.error())
        return target.error();
    if (!target.isThatOf(m_file))
        return SystemError::fromErrno(ESTALE);
    // What the record says of the old blocks must be true of those on the disk as long as the record is needed.
    SystemError error = flush(target.handle());
    return error ? error : writeInto(target.handle());
}

SystemError RecordedWrite::writeInto(int target) const {
    for (const RecordedRange& range : m_file.ranges) {
        if (SystemError error = writeRange(target, range))
            return error;
    }
    const auto size = static_cast<off_t>(m_file.newSize);
    if (m_file.cuts && uninterrupted([&] { return m_calls.ftruncate(target, size); }) != 0)
        return lastError();
    restoreMode(target);
    return flush(target);
}

/// A file system that cannot flush has nothing to wait for.
SystemError RecordedWrite::flush(int target) const {
    const bool isFlushed = uninterrupted([&] { return m_calls.fsync(target); }) == 0;
    return isFlushed || errno == EINVAL || errno == EROFS ? SystemError() : lastError();
}

/// Sets the set-user and set-group bits that the system cleared when the file was written. A mode that differs
/// otherwise was changed by somebody.
void RecordedWrite::restoreMode(int target) const {
    constexpr mode_t Cleared = S_ISUID | S_ISGID;
    struct stat now {};
    if ((m_file.mode & Cleared) == 0 || m_calls.fstat(target, &now) != 0)
        return;
    if ((now.st_mode & Cleared) == 0 && (now.st_mode & ALLPERMS) == (m_file.mode & ~Cleared))
        m_calls.fchmod(target, m_file.mode);
}

SystemError RecordedWrite::writeRange(int target, const RecordedRange& range) const {
    const auto length = static_cast<qint64>(range.length);
    QByteArray buffer(std::min(CopySize, length), Qt::Uninitialized);
    for (qint64 at = 0; at < length;) {
        const qint64 part = std::min<qint64>(buffer.size(), length - at);
        if (SystemError error = readExactly(m_calls, m_record, buffer.data(), part, range.inRecord + at))
            return error;
        const iovec bytes{buffer.data(), static_cast<std::size_t>(part)};
        const auto offset = static_cast<off_t>(range.offset) + at;
        const ssize_t count = uninterrupted([&] { return m_calls.pwritev(target, &bytes, 1, offset); });
        if (count <= 0)
            return count < 0 ? lastError() : SystemError::fromErrno(EIO);
        at += count;
    }
    return {};
}
