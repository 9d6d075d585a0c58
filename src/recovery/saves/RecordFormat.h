#pragma once

#include <QtGlobal>

/// The file of a record of saves. Numbers have the byte order of the machine, which a record never
/// leaves. It has any number of entries, one for each file that is written:
///
///     FileHead
///     for each entry: EntryHead, the path (EntryHead::pathLength bytes)
///                     for each range of new bytes: RangeHead, the bytes; at the end a RangeHead of LastRange
///                     for each block of the hashed beginning of the old file: 32 bits of its hash
///     EndHead, the checksum of all bytes before it
///     anything: the file is written over again, and may have been longer
///
/// A file that holds no record begins with zeros.
///
/// Blocks are counted from the beginning of the file; the last one may be shorter.
namespace RecordFormat {

constexpr char Magic[8] = {'Q', 'M', 'S', 'A', 'V', 'E', '3', '\n'};
constexpr quint32 EntryTag = 0x59'52'54'4e;
constexpr quint32 EndTag = 0x44'4e'45'2e;
constexpr qint64 BlockSize = 512;
constexpr quint64 LastRange = ~quint64(0);
/// More than any system accepts.
constexpr quint32 LongestPath = 65'536;
constexpr quint64 LargestFile = quint64(1) << 62;

struct FileHead {
    char magic[sizeof Magic];
    quint64 sequence;  ///< later records have higher ones
};
static_assert(sizeof(FileHead) == 16);

enum EntryFlag : quint32 { Cuts = 1 };

struct EntryHead {
    quint32 tag;
    quint32 flags;
    quint64 device;
    quint64 inode;
    quint64 oldSize;      ///< bytes
    quint64 newSize;      ///< bytes
    quint64 hashedSize;   ///< bytes of the old file, in whole blocks or all of them
    qint64 oldTime;       ///< of the last change, in nanoseconds
    qint64 recordedTime;  ///< the same when it was recorded: the space for the new bytes was reserved
    quint32 pathLength;
    quint32 mode;  ///< of the old file
};
static_assert(sizeof(EntryHead) == 72);

struct RangeHead {
    quint64 offset;
    quint64 length;
};
static_assert(sizeof(RangeHead) == 16);

struct EndHead {
    quint32 tag;
    quint32 entries;
};
static_assert(sizeof(EndHead) == 8);
constexpr qint64 ChecksumSize = 16;

/// The number of blocks of a file of this size.
constexpr quint64 blocksOf(quint64 size) {
    return (size + BlockSize - 1) / BlockSize;
}

/// What is hashed of a file that is cut off, behind the new bytes. Somebody else's changes farther behind are not
/// noticed; they would be cut off with the rest.
constexpr quint64 LongestHashedTail = 16ULL * 1024 * 1024;

/// So much of an old file is hashed: all of it, but for the end of a much longer one.
constexpr quint64 hashedSizeOf(quint64 oldSize, quint64 newSize) {
    const quint64 end = blocksOf(newSize) * BlockSize + LongestHashedTail;
    return oldSize < end ? oldSize : end;
}

/// The hash of one block; `length` is at most BlockSize.
quint32 blockHash(const char* bytes, qint64 length);

}  // namespace RecordFormat
