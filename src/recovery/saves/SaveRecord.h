#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <QByteArray>

#include <sys/types.h>

#include <optional>
#include <vector>

/// New bytes of a file, which stand in the record. Lengths and offsets are bytes.
struct RecordedRange {
    quint64 offset = 0;  ///< in the file
    quint64 length = 0;
    qint64 inRecord = 0;  ///< offset of the bytes in the record
};

/// What a record says of one file that was about to be written.
struct RecordedFile {
    QByteArray path;  ///< local name, links resolved
    quint64 device = 0;
    quint64 inode = 0;
    quint64 oldSize = 0;
    quint64 newSize = 0;
    quint64 hashedSize = 0;             ///< what of the old file has hashes
    qint64 oldTime = 0;                 ///< of the last change before the write, in nanoseconds
    qint64 recordedTime = 0;            ///< the same when the record was made, right before the first byte
    mode_t mode = 0;                    ///< before the write, with the bits that a write may clear
    quint64 madeTime = 0;               ///< of the record, on the clock of this machine, in nanoseconds
    bool cuts = false;                  ///< old bytes after the new ones are cut off
    std::vector<RecordedRange> ranges;  ///< ascending, without overlaps
    qint64 hashes = 0;                  ///< offset in the record of the hashes of the old blocks

    /// The size of the file after the write.
    quint64 finalSize() const { return cuts ? newSize : qMax(oldSize, newSize); }
    /// Whether the record holds the new contents as a whole.
    bool isWhole() const { return newSize == 0 || (ranges.size() == 1 && ranges.front().length == newSize); }
};

/// A record that is open for reading. Nothing of it is trusted: it is either read whole and consistent, with its
/// checksum, or not at all. A plain value; the handle stays the caller's, and the record is not changed while it is
/// read.
class SaveRecord {
 public:
    /// Nothing when it is damaged or not complete; `error` is set when it could not be read now.
    static std::optional<SaveRecord> read(FileSystemCalls& calls, int handle, SystemError& error);

    /// What a file is that holds no record.
    enum class Kind {
        Blank,      ///< it is only kept for a record to come
        Damaged,    ///< it begins as a record does
        OfAnother,  ///< it is a record of another version, or something else
        Unknown     ///< it cannot be read now
    };
    static Kind kindOf(FileSystemCalls& calls, int handle);
    /// The files that the record speaks of, as far as it is written, and whether that is true or not: no checksum is
    /// compared.
    static std::vector<RecordedFile> filesAsTheyStand(FileSystemCalls& calls, int handle);

    const std::vector<RecordedFile>& files() const { return m_files; }
    /// Later records have higher ones.
    quint64 sequence() const { return m_sequence; }

 private:
    static std::optional<SaveRecord> readAll(FileSystemCalls& calls, int handle, SystemError& error);

    std::vector<RecordedFile> m_files;
    quint64 m_sequence = 0;
};

/// Reads exactly so many bytes. ENODATA: they are not there.
SystemError readExactly(FileSystemCalls& calls, int handle, char* buffer, qint64 length, qint64 offset);
