#pragma once

#include <QtGlobal>

#include <cstddef>

/// The file of a journal. Numbers have the byte order of the machine, which a journal never leaves:
///
///     Magic
///     a frame of HeadTag: what the edits start from (JournalHead)
///     frames of EntriesTag: the edits of one batch each (JournalEntry)
///
/// A frame is a FrameHead and its payload. Its checksum is of both, and begins with the checksum of the frame before
/// it: so no frame counts that does not follow the one it was written behind. What follows the last valid frame is the
/// rest of an interrupted write and does not count.
///
/// Within a payload numbers are unsigned with seven bits a byte, the lowest first, and the top bit set in all but the
/// last.
namespace JournalFormat {

constexpr char Magic[8] = {'Q', 'M', 'J', 'R', 'N', 'L', '2', '\n'};
constexpr std::size_t VersionAt = 6;  ///< the other bytes of it are the same in all versions
constexpr quint32 HeadTag = 0x44'41'45'48;
constexpr quint32 EntriesTag = 0x53'54'4e'45;
constexpr quint64 FirstSeed = 0x51'4d'4a'31;
/// No journal that the program writes is larger.
constexpr qint64 LargestJournal = qint64(1) << 33;

struct FrameHead {
    quint32 tag;
    quint32 unused;
    quint64 length;  ///< of the payload in bytes
    qint64 time;     ///< of the last edit, in milliseconds since 1970
    quint64 checksum;
};
static_assert(sizeof(FrameHead) == 32);

}  // namespace JournalFormat
