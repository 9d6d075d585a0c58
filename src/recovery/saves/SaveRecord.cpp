#include "recovery/saves/SaveRecord.h"

#include "recovery/saves/RecordFormat.h"

#include <sys/stat.h>
#include <xxhash.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <memory>
#include <utility>

using namespace RecordFormat;

namespace {

constexpr qint64 ReadSize = 1'048'576;

/// Reads the parts of a record one after the other. After a failure every further part fails.
class RecordInput {
 public:
    RecordInput(FileSystemCalls& calls, int handle, qint64 end) : m_calls(calls), m_handle(handle), m_end(end) {}

    bool has(quint64 length) const { return m_valid && length <= static_cast<quint64>(m_end - m_at); }
    qint64 at() const { return m_at; }
    const SystemError& error() const { return m_error; }

    bool read(char* buffer, qint64 length) {
        m_valid = has(static_cast<quint64>(length));
        if (m_valid)
            m_error = readExactly(m_calls, m_handle, buffer, length, m_at);
        m_valid = m_valid && !m_error;
        m_at += m_valid ? length : 0;
        return m_valid;
    }
    template <typename Plain>
    bool readPlain(Plain& value) {
        return read(reinterpret_cast<char*>(&value), sizeof value);
    }
    /// The same part is read again by the next call.
    template <typename Plain>
    bool peekPlain(Plain& value) {
        const qint64 before = m_at;
        const bool isRead = readPlain(value);
        m_at = before;
        return isRead;
    }
    bool skip(quint64 length) {
        m_valid = has(length);
        m_at += m_valid ? static_cast<qint64>(length) : 0;
        return m_valid;
    }

 private:
    FileSystemCalls& m_calls;
    int m_handle;
    qint64 m_at = 0;
    qint64 m_end;
    bool m_valid = true;
    SystemError m_error;
};

bool hasChecksum(FileSystemCalls& calls, int handle, qint64 length, SystemError& error) {
    const std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> hash(XXH3_createState(), &XXH3_freeState);
    XXH3_128bits_reset(hash.get());
    QByteArray buffer(std::min(ReadSize, length), Qt::Uninitialized);
    for (qint64 at = 0; at < length;) {
        const qint64 part = std::min<qint64>(buffer.size(), length - at);
        if ((error = readExactly(calls, handle, buffer.data(), part, at)))
            return false;
        XXH3_128bits_update(hash.get(), buffer.constData(), static_cast<std::size_t>(part));
        at += part;
    }
    XXH128_canonical_t is;
    XXH128_canonical_t should;
    XXH128_canonicalFromHash(&is, XXH3_128bits_digest(hash.get()));
    error = readExactly(calls, handle, reinterpret_cast<char*>(&should), sizeof should, length);
    return !error && std::memcmp(&is, &should, sizeof is) == 0;
}

/// As far as new bytes reach, each old block has a hash.
bool hasSaneHashes(const EntryHead& head) {
    return head.hashedSize == head.oldSize ||
           (head.hashedSize < head.oldSize && head.hashedSize >= head.newSize && head.hashedSize % BlockSize == 0);
}

bool isSane(const EntryHead& head) {
    return head.tag == EntryTag && head.oldSize <= LargestFile && head.newSize <= LargestFile && hasSaneHashes(head) &&
           head.pathLength > 0 && head.pathLength <= LongestPath;
}

/// Ranges ascend, do not overlap and lie within the new contents; each begins with a block.
bool readRanges(RecordInput& input, RecordedFile& file) {
    quint64 end = 0;
    for (;;) {
        RangeHead head;
        if (!input.readPlain(head))
            return false;
        if (head.offset == LastRange)
            return head.length == 0;
        if (head.offset < end || head.offset % BlockSize != 0 || head.length == 0 || head.offset > file.newSize ||
            head.length > file.newSize - head.offset)
            return false;
        end = head.offset + head.length;
        file.ranges.push_back({head.offset, head.length, input.at()});
        if (!input.skip(head.length))
            return false;
    }
}

bool readFile(RecordInput& input, RecordedFile& file) {
    EntryHead head;
    if (!input.readPlain(head) || !isSane(head) || !input.has(head.pathLength))
        return false;
    file.path.resize(static_cast<qsizetype>(head.pathLength));
    if (!input.read(file.path.data(), file.path.size()) || !file.path.startsWith('/') || file.path.contains('\0'))
        return false;
    file.device = head.device;
    file.inode = head.inode;
    file.oldSize = head.oldSize;
    file.newSize = head.newSize;
    file.hashedSize = head.hashedSize;
    file.oldTime = head.oldTime;
    file.recordedTime = head.recordedTime;
    file.mode = head.mode & ALLPERMS;
    file.cuts = (head.flags & Cuts) != 0;
    if (!readRanges(input, file))
        return false;
    file.hashes = input.at();
    return input.skip(blocksOf(file.hashedSize) * sizeof(quint32));
}

/// Where the record ends follows from its entries; only the checksum says then that all of them are true.
bool readFiles(RecordInput& input, std::vector<RecordedFile>& files) {
    quint32 tag = 0;
    while (input.peekPlain(tag) && tag == EntryTag) {
        RecordedFile file;
        if (!readFile(input, file))
            return false;
        files.push_back(std::move(file));
    }
    EndHead end{};
    return input.readPlain(end) && end.tag == EndTag && end.entries == files.size();
}

bool readHead(RecordInput& input, quint64& sequence) {
    FileHead head;
    if (!input.readPlain(head) || std::memcmp(head.magic, Magic, sizeof head.magic) != 0)
        return false;
    sequence = head.sequence;
    return true;
}

}  // namespace

SystemError readExactly(FileSystemCalls& calls, int handle, char* buffer, qint64 length, qint64 offset) {
    while (length > 0) {
        const ssize_t count =
            uninterrupted([&] { return calls.pread(handle, buffer, static_cast<std::size_t>(length), offset); });
        if (count <= 0)
            return SystemError::fromErrno(count < 0 ? errno : ENODATA);
        buffer += count;
        length -= count;
        offset += count;
    }
    return {};
}

/// A record that ends early has only just become shorter: whoever shortens it means it to be damaged.
std::optional<SaveRecord> SaveRecord::read(FileSystemCalls& calls, int handle, SystemError& error) {
    std::optional<SaveRecord> record = readAll(calls, handle, error);
    if (error.number == ENODATA)
        error = {};
    return record;
}

/// Of a record that was just being filled with zeros, any part of the beginning may be there. What is shorter than the
/// beginning has zeros for the rest.
SaveRecord::Kind SaveRecord::kindOf(FileSystemCalls& calls, int handle) {
    char magic[sizeof Magic] = {};
    const SystemError error = readExactly(calls, handle, magic, sizeof magic, 0);
    if (error && error.number != ENODATA)
        return Kind::Unknown;
    if (std::all_of(std::begin(magic), std::end(magic), [](char byte) { return byte == '\0'; }))
        return Kind::Blank;
    const auto fits = [](char is, char should) { return is == '\0' || is == should; };
    return std::equal(std::begin(magic), std::end(magic), std::begin(Magic), fits) ? Kind::Damaged : Kind::OfAnother;
}

std::vector<RecordedFile> SaveRecord::filesAsTheyStand(FileSystemCalls& calls, int handle) {
    struct stat status {};
    if (calls.fstat(handle, &status) != 0)
        return {};
    RecordInput input(calls, handle, status.st_size);
    SaveRecord record;
    if (readHead(input, record.m_sequence))
        readFiles(input, record.m_files);
    return std::move(record.m_files);
}

std::optional<SaveRecord> SaveRecord::readAll(FileSystemCalls& calls, int handle, SystemError& error) {
    struct stat status {};
    if (calls.fstat(handle, &status) != 0) {
        error = SystemError::fromErrno(errno);
        return {};
    }
    if (status.st_size < ChecksumSize)
        return {};
    RecordInput input(calls, handle, status.st_size - ChecksumSize);
    SaveRecord record;
    const bool isRead = readHead(input, record.m_sequence) && readFiles(input, record.m_files);
    error = input.error();
    if (!isRead || !hasChecksum(calls, handle, input.at(), error))
        return {};
    for (RecordedFile& file : record.m_files)
        file.madeTime = record.m_sequence;
    return record;
}
