#include "platform/BlockCopy.h"

#include <QByteArray>

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

/// Bytes of one copy_file_range() call. It is longer than the blocks after which progress is reported: that was
/// measured to be a quarter faster.
constexpr qint64 RunLength = 4'194'304;
/// Bytes of one read and write; so few that they stay in the cache of the processor.
constexpr qint64 PieceLength = 65'536;

/// Copies the blocks of a file in order from one handle to the other. Offsets and lengths are bytes. It owns neither
/// handle.
class BlockCopier {
 public:
    BlockCopier(FileSystemCalls& calls, int from, int to, qint64 end)
        : m_calls(calls), m_from(from), m_to(to), m_end(end) {}

    /// Returns how many bytes were copied: fewer than `length` at the end of the file, or when the copy failed, and
    /// then `error` is set.
    qint64 copy(qint64 at, qint64 length, SystemError& error) {
        if (isHole(at, length))
            return length;
        const qint64 ranged = copyRanges(at, length);
        return ranged + copyThroughMemory(at + ranged, length - ranged, error);
    }

 private:
    bool isHole(qint64 at, qint64 length) {
        if (m_nextData <= at)
            m_nextData = findData(at);
        return m_nextData >= at + length;
    }

    qint64 findData(qint64 at) {
        const off_t found = m_calls.lseek(m_from, at, SEEK_DATA);
        if (found >= 0)
            return found;
        if (errno != ENXIO)  // the file system does not report holes: treat all as data
            return at;
        const off_t end = m_calls.lseek(m_from, 0, SEEK_END);
        return std::max<qint64>(end, at);
    }

    /// Returns how many bytes of this block the system has copied. It may already have copied bytes after the block.
    qint64 copyRanges(qint64 at, qint64 length) {
        m_rangesTo = std::max(m_rangesTo, at);
        while (m_copiesRanges && m_rangesTo < at + length) {
            off_t from = m_rangesTo;
            off_t to = m_rangesTo;
            const auto run = static_cast<size_t>(runFrom(from, at + length));
            const ssize_t count = uninterrupted([&] { return m_calls.copyRange(m_from, &from, m_to, &to, run); });
            if (count <= 0)
                m_copiesRanges = false;
            else
                m_rangesTo += count;
        }
        return std::clamp<qint64>(m_rangesTo - at, 0, length);
    }

    /// The run ends at or after the end of the block, and not inside the next hole: copy_file_range() would fill the
    /// hole.
    qint64 runFrom(qint64 at, qint64 endOfBlock) {
        const off_t hole = m_calls.lseek(m_from, at, SEEK_HOLE);
        const qint64 end = std::min({at + RunLength, m_end, static_cast<qint64>(hole)});
        return std::max(end, endOfBlock) - at;
    }

    qint64 copyThroughMemory(qint64 at, qint64 length, SystemError& error) {
        qint64 done = 0;
        if (length > 0)
            m_buffer.resize(std::min(PieceLength, std::max<qsizetype>(m_buffer.size(), length)));
        while (done < length) {
            const auto piece = static_cast<size_t>(std::min<qint64>(m_buffer.size(), length - done));
            const ssize_t count =
                uninterrupted([&] { return m_calls.pread(m_from, m_buffer.data(), piece, at + done); });
            if (count < 0)
                error = SystemError::fromErrno(errno);
            if (count <= 0 || !write(at + done, count, error))
                return done;
            done += count;
        }
        return done;
    }

    bool write(qint64 at, qint64 length, SystemError& error) {
        qint64 done = 0;
        while (done < length) {
            const iovec part{m_buffer.data() + done, static_cast<size_t>(length - done)};
            const ssize_t count = uninterrupted([&] { return m_calls.pwritev(m_to, &part, 1, at + done); });
            if (count <= 0) {
                error = SystemError::fromErrno(count == 0 ? EIO : errno);
                return false;
            }
            done += count;
        }
        return true;
    }

    FileSystemCalls& m_calls;
    int m_from;
    int m_to;
    qint64 m_end;                ///< bytes at and after this offset are not copied
    qint64 m_rangesTo = 0;       ///< end of what copy_file_range() has copied
    bool m_copiesRanges = true;  ///< until copy_file_range() fails
    qint64 m_nextData = 0;       ///< end of the known hole
    QByteArray m_buffer;
};

}  // namespace

int percentDone(qint64 done, qint64 length, qint64 blockSize) {
    const qint64 blocks = length / blockSize;
    if (done >= length || blocks == 0)
        return 100;
    return static_cast<int>(done / blockSize * 100 / blocks);
}

SystemError copyFile(FileSystemCalls& calls, int from, int to, qint64 length, qint64 blockSize,
                     const CopyProgress& progress) {
    if (calls.cloneFile(to, from) == 0)
        return progress(100) ? SystemError() : SystemError::fromErrno(ECANCELED);
    BlockCopier copier(calls, from, to, length);
    SystemError error;
    qint64 done = 0;
    while (done < length) {
        const qint64 block = std::min(blockSize, length - done);
        const qint64 count = copier.copy(done, block, error);
        if (error)
            return error;
        done += count;
        if (!progress(count < block ? 100 : percentDone(done, length, blockSize)))
            return SystemError::fromErrno(ECANCELED);
        if (count < block)
            break;
    }
    // A hole at the end of the file was not written, so the length is set here.
    return uninterrupted([&] { return calls.ftruncate(to, done); }) == 0 ? SystemError()
                                                                         : SystemError::fromErrno(errno);
}
