#include "recovery/saves/RecordedWrite.h"

#include "recovery/saves/BlockComparison.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr qint64 CopySize = 1'048'576;

SystemError lastError() {
    return SystemError::fromErrno(errno);
}

/// A file that is opened only when it is a regular one.
class OpenFile {
 public:
    OpenFile(FileSystemCalls& calls, const QByteArray& name, int mode) : m_calls(calls) {
        if (m_calls.stat(name.constData(), &m_status) != 0 || !S_ISREG(m_status.st_mode))
            return;
        m_handle = uninterrupted(
            [&] { return m_calls.open(name.constData(), mode | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); });
        m_isOpen = m_handle >= 0 && m_calls.fstat(m_handle, &m_status) == 0 && S_ISREG(m_status.st_mode);
    }
    ~OpenFile() {
        if (m_handle >= 0)
            m_calls.close(m_handle);
    }
    Q_DISABLE_COPY_MOVE(OpenFile)

    bool isOpen() const { return m_isOpen; }
    int handle() const { return m_handle; }
    quint64 size() const { return static_cast<quint64>(m_status.st_size); }
    /// The number of the device is not compared: it may be another one after the system was started anew.
    bool isThatOf(const RecordedFile& file) const { return m_status.st_ino == file.inode; }

 private:
    FileSystemCalls& m_calls;
    int m_handle = -1;
    bool m_isOpen = false;
    struct stat m_status {};
};

}  // namespace

RecordedWrite::RecordedWrite(FileSystemCalls& calls, int recordHandle, const RecordedFile& file)
    : m_calls(calls), m_record(recordHandle), m_file(file) {}

WriteState RecordedWrite::state() const {
    const OpenFile target(m_calls, m_file.path, O_RDONLY);
    if (!target.isOpen() || !hasSizeOfAWrite(target.size()))
        return WriteState::Other;
    const WriteState state = BlockComparison(m_calls, m_record, m_file, target.handle(), target.size()).compare();
    return state == WriteState::Partial && !target.isThatOf(m_file) ? WriteState::Other : state;
}

/// A file that grows has any size in between for a while.
bool RecordedWrite::hasSizeOfAWrite(quint64 size) const {
    const auto [least, most] = std::minmax({m_file.oldSize, m_file.finalSize()});
    return size >= least && size <= most;
}

SystemError RecordedWrite::complete() const {
    const OpenFile target(m_calls, m_file.path, O_WRONLY);
    if (!target.isOpen())
        return lastError();
    return target.isThatOf(m_file) ? writeInto(target.handle()) : SystemError::fromErrno(ESTALE);
}

SystemError RecordedWrite::writeInto(int target) const {
    for (const RecordedRange& range : m_file.ranges) {
        if (SystemError error = writeRange(target, range))
            return error;
    }
    const auto size = static_cast<off_t>(m_file.newSize);
    if (m_file.cuts && uninterrupted([&] { return m_calls.ftruncate(target, size); }) != 0)
        return lastError();
    return uninterrupted([&] { return m_calls.fsync(target); }) == 0 ? SystemError() : lastError();
}

SystemError RecordedWrite::writeRange(int target, const RecordedRange& range) const {
    const auto length = static_cast<qint64>(range.length);
    QByteArray buffer(std::min(CopySize, length), Qt::Uninitialized);
    for (qint64 at = 0; at < length;) {
        const qint64 part = std::min<qint64>(buffer.size(), length - at);
        if (!readExactly(m_calls, m_record, buffer.data(), part, range.inRecord + at))
            return SystemError::fromErrno(EIO);
        const iovec bytes{buffer.data(), static_cast<std::size_t>(part)};
        const auto offset = static_cast<off_t>(range.offset) + at;
        const ssize_t count = uninterrupted([&] { return m_calls.pwritev(target, &bytes, 1, offset); });
        if (count <= 0)
            return count < 0 ? lastError() : SystemError::fromErrno(EIO);
        at += count;
    }
    return {};
}
