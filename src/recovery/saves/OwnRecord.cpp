#include "recovery/saves/OwnRecord.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <array>
#include <vector>

namespace {

constexpr std::size_t ZerosSize = 65'536;

std::vector<iovec> zeros(qint64 length) {
    static const std::array<char, ZerosSize> bytes{};
    std::vector<iovec> parts;
    for (auto left = static_cast<std::size_t>(length); left > 0; left -= parts.back().iov_len)
        parts.push_back({const_cast<char*>(bytes.data()), std::min(left, ZerosSize)});
    return parts;
}

}  // namespace

bool OwnRecord::lock() {
    struct stat status {};
    const bool isLocked = uninterrupted([&] { return m_calls.flock(m_handle, LOCK_EX); }) == 0 &&
                          m_calls.fstat(m_handle, &status) == 0 && status.st_nlink == 1;
    m_inode = status.st_ino;
    return isLocked;
}

bool OwnRecord::isThere() const {
    struct stat status {};
    return m_calls.stat(m_name.constData(), &status) == 0 && status.st_ino == m_inode;
}

void OwnRecord::setWritten(qint64 length, bool isFlushed) {
    m_written = std::max(m_written, length);
    m_size = std::max(m_size, length);
    if (isFlushed)
        m_flushedBlanks = m_blanks.load();
}

/// The beginning is overwritten first, and without it there is no record. Of a large file the rest is kept as space
/// without bytes, or cut off.
bool OwnRecord::blank(qint64 mostKept) {
    const qint64 overwritten = std::min(m_written, SmallSize);
    if (!writeZeros(overwritten))
        return false;
    ++m_blanks;
    const qint64 rest = m_written - overwritten;
    const auto empty = [&] {
        return m_calls.fallocate(m_handle, FALLOC_FL_ZERO_RANGE | FALLOC_FL_KEEP_SIZE, overwritten, rest);
    };
    const bool isTooLong = isLarge() && m_size > mostKept;
    if ((isTooLong || (rest > 0 && uninterrupted(empty) != 0)) && !cut(SmallSize))
        return false;
    m_written = 0;
    return true;
}

bool OwnRecord::writeZeros(qint64 length) const {
    for (qint64 at = 0; at < length;) {
        const std::vector<iovec> parts = zeros(length - at);
        const ssize_t count =
            uninterrupted([&] { return m_calls.pwritev(m_handle, parts.data(), static_cast<int>(parts.size()), at); });
        if (count <= 0)
            return false;
        at += count;
    }
    return true;
}

bool OwnRecord::cut(qint64 length) {
    const bool isCut = uninterrupted([&] { return m_calls.ftruncate(m_handle, length); }) == 0;
    if (isCut)
        m_size = length;
    return isCut;
}

bool OwnRecord::flush() {
    const unsigned blanks = m_blanks;
    if (blanks == m_flushedBlanks)
        return true;
    if (uninterrupted([&] { return m_calls.fdatasync(m_handle); }) != 0)
        return false;
    m_flushedBlanks = blanks;
    return true;
}

void OwnRecord::remove() const {
    if (m_calls.unlink(m_name.constData()) != 0 && m_calls.ftruncate(m_handle, 0) == 0)
        m_calls.fsync(m_handle);
}
