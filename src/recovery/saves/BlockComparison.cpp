#include "recovery/saves/BlockComparison.h"

#include "recovery/saves/RecordFormat.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

using namespace RecordFormat;

namespace {

constexpr qint64 WindowSize = 65'536;
static_assert(WindowSize % BlockSize == 0);
/// One call of the system that was interrupted in the middle of a block.
constexpr int MixedBlocksOfAWriter = 1;

bool isZero(const char* bytes, qint64 length) {
    return std::all_of(bytes, bytes + length, [](char byte) { return byte == '\0'; });
}

quint64 endOf(const RecordedRange& range) {
    return range.offset + range.length;
}

}  // namespace

BlockComparison::BlockComparison(FileSystemCalls& calls, int record, const RecordedFile& file, int target,
                                 quint64 targetSize)
    : m_calls(calls),
      m_record(record),
      m_file(file),
      m_target(target),
      m_size(targetSize),
      m_bytes(WindowSize, Qt::Uninitialized),
      m_newBytes(WindowSize, Qt::Uninitialized),
      m_hashes(WindowSize / BlockSize * static_cast<qsizetype>(sizeof(quint32)), Qt::Uninitialized) {}

WriteState BlockComparison::compare() {
    const quint64 end = std::min(m_size, std::max(m_file.hashedSize, m_file.newSize));
    for (quint64 offset = 0; offset < end; offset += WindowSize) {
        const qint64 length = static_cast<qint64>(std::min<quint64>(WindowSize, end - offset));
        if (const SystemError error = readWindow(offset, length))
            return error.number == ENODATA ? WriteState::Other : WriteState::Unknown;
        for (qint64 at = 0; at < length; at += BlockSize) {
            if (!count(blockAt(offset, at, length)))
                return WriteState::Other;
        }
    }
    if (m_allNew && m_mixed == 0 && m_size == m_file.finalSize())
        return WriteState::Whole;
    if (m_allOld && m_size == m_file.oldSize)
        return WriteState::Old;
    return m_hasTornBlock ? WriteState::Torn : WriteState::Partial;
}

SystemError BlockComparison::readWindow(quint64 offset, qint64 length) {
    SystemError error = readExactly(m_calls, m_target, m_bytes.data(), length, static_cast<qint64>(offset));
    if (!error)
        error = readHashes(offset, length);
    return error ? error : readNewBytes(offset, length);
}

SystemError BlockComparison::readHashes(quint64 offset, qint64 length) {
    if (offset >= m_file.hashedSize)
        return {};
    const quint64 oldLength = std::min(static_cast<quint64>(length), m_file.hashedSize - offset);
    const auto hashSize = static_cast<qint64>(sizeof(quint32));
    return readExactly(m_calls, m_record, m_hashes.data(), static_cast<qint64>(blocksOf(oldLength)) * hashSize,
                       m_file.hashes + static_cast<qint64>(offset / BlockSize) * hashSize);
}

SystemError BlockComparison::readNewBytes(quint64 offset, qint64 length) {
    const std::vector<RecordedRange>& ranges = m_file.ranges;
    while (m_firstRange < ranges.size() && endOf(ranges[m_firstRange]) <= offset)
        ++m_firstRange;
    m_range = m_firstRange;
    const quint64 end = offset + static_cast<quint64>(length);
    for (std::size_t i = m_firstRange; i < ranges.size() && ranges[i].offset < end; ++i) {
        const quint64 from = std::max(ranges[i].offset, offset);
        const quint64 to = std::min(endOf(ranges[i]), end);
        SystemError error =
            readExactly(m_calls, m_record, m_newBytes.data() + (from - offset), static_cast<qint64>(to - from),
                        ranges[i].inRecord + static_cast<qint64>(from - ranges[i].offset));
        if (error)
            return error;
    }
    return {};
}

BlockComparison::Block BlockComparison::blockAt(quint64 offset, qint64 inWindow, qint64 windowLength) {
    const std::vector<RecordedRange>& ranges = m_file.ranges;
    const quint64 at = offset + static_cast<quint64>(inWindow);
    while (m_range < ranges.size() && endOf(ranges[m_range]) <= at)
        ++m_range;
    const bool isInRange = m_range < ranges.size() && ranges[m_range].offset <= at;
    const quint64 newLength = isInRange ? std::min<quint64>(BlockSize, endOf(ranges[m_range]) - at) : 0;
    quint32 hash = 0;
    if (at < m_file.hashedSize)
        std::memcpy(&hash, m_hashes.constData() + inWindow / BlockSize * static_cast<qint64>(sizeof hash), sizeof hash);
    return {at,
            m_bytes.constData() + inWindow,
            std::min(BlockSize, windowLength - inWindow),
            m_newBytes.constData() + inWindow,
            static_cast<qint64>(newLength),
            hash};
}

/// The bytes after the new ones are not looked at: they are cut off at the end of the write, or stay as they were.
bool BlockComparison::isNew(const Block& block) const {
    const qint64 length = std::min(block.length, block.newLength);
    return block.newLength > 0 && std::memcmp(block.bytes, block.newBytes, static_cast<std::size_t>(length)) == 0;
}

/// A block after the end of the old file was never written: the system shows zeros.
bool BlockComparison::isOld(const Block& block) const {
    if (block.offset >= m_file.oldSize)
        return isZero(block.bytes, block.length);
    const qint64 oldLength = oldLengthOf(block);
    return block.length >= oldLength && blockHash(block.bytes, oldLength) == block.oldHash &&
           isZero(block.bytes + oldLength, block.length - oldLength);
}

/// What is after the new end was cut off, or the system shows zeros there. If the cut is within this block and its new
/// bytes did not reach the disk, the hash of the old block says nothing of what is left of it.
bool BlockComparison::isCutOff(const Block& block) const {
    const quint64 end = block.offset + static_cast<quint64>(block.length);
    const bool isLast = end == m_size && m_size == m_file.newSize;
    if (!m_file.cuts || m_file.newSize >= m_file.oldSize || (end <= m_file.newSize && !isLast))
        return false;
    const auto kept = static_cast<qint64>(std::max(m_file.newSize, block.offset) - block.offset);
    return isZero(block.bytes + kept, block.length - kept);
}

/// A write goes from the first byte of a block to its last, and into each block that it is to change. What it has not
/// reached behind the end of the old file are zeros.
bool BlockComparison::isMixed(const Block& block) const {
    if (block.newLength == 0 || block.bytes[0] != block.newBytes[0])
        return false;
    const bool changes = block.offset >= m_file.oldSize || blockHash(block.newBytes, block.newLength) != block.oldHash;
    const qint64 zeros = std::max(beginningOf(block), oldLengthOf(block));
    return changes && (zeros >= block.length || isZero(block.bytes + zeros, block.length - zeros));
}

/// Nothing of the old bytes is left.
bool BlockComparison::isMixedForCertain(const Block& block) const {
    return beginningOf(block) >= oldLengthOf(block);
}

/// Behind the last of the new bytes, before they are cut off.
bool BlockComparison::hasDoubtfulEnd(const Block& block) const {
    const qint64 length = std::min(block.length, oldLengthOf(block));
    return m_file.cuts && block.newLength > 0 && block.newLength < length && !isOld(block) && !isCutOff(block);
}

/// How many of its bytes, from the first, are new ones.
qint64 BlockComparison::beginningOf(const Block& block) {
    const qint64 length = std::min(block.length, block.newLength);
    return std::mismatch(block.bytes, block.bytes + length, block.newBytes).first - block.bytes;
}

qint64 BlockComparison::oldLengthOf(const Block& block) const {
    if (block.offset >= m_file.oldSize)
        return 0;
    return static_cast<qint64>(std::min<quint64>(BlockSize, m_file.oldSize - block.offset));
}

bool BlockComparison::count(const Block& block) {
    const bool isBlockOld = isOld(block);
    m_allOld = m_allOld && isBlockOld;
    if (isNew(block)) {
        m_hasDoubtfulBytes = m_hasDoubtfulBytes || hasDoubtfulEnd(block);
        return true;
    }
    if (block.newLength > 0)
        m_allNew = false;
    if (isBlockOld)
        return true;
    const bool isBlockCutOff = isCutOff(block);
    if (!isBlockCutOff && (!isMixed(block) || ++m_mixed > MixedBlocksOfAWriter))
        return false;
    m_hasTornBlock = m_hasTornBlock || (isBlockCutOff ? block.newLength > 0 : !isMixedForCertain(block));
    m_hasDoubtfulBytes = m_hasDoubtfulBytes || m_hasTornBlock;
    return true;
}
