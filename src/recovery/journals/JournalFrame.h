#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"
#include "recovery/journals/JournalFormat.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

/// Where a journal ends, and with which checksum: the next frame is written there. A plain value.
struct JournalEnd {
    qint64 offset = 0;  ///< bytes
    quint64 checksum = JournalFormat::FirstSeed;
};

/// A payload in memory, with the time of its edits in milliseconds since 1970.
struct JournalFrame {
    quint32 tag = 0;
    qint64 time = 0;
    std::unique_ptr<char[]> bytes;
    qint64 length = 0;

    std::string_view payload() const { return {bytes.get(), static_cast<std::size_t>(length)}; }
};

/// Writes the parts as one frame at the end, which moves behind it. After an error the end has not moved, and what was
/// written there does not count. Nothing is flushed; the handle stays the caller's.
SystemError writeFrame(FileSystemCalls& calls, int handle, JournalEnd& end, quint32 tag, qint64 time,
                       std::span<const std::string> parts);

/// Reads the frame at the end, which moves behind it. False: there is no valid one, or, with `error`, it could not be
/// read. `size` is that of the file; nothing is reserved for more than is there.
bool readFrame(FileSystemCalls& calls, int handle, qint64 size, JournalEnd& end, JournalFrame& frame,
               SystemError& error);

SystemError writeExactly(FileSystemCalls& calls, int handle, std::string_view bytes, qint64 offset);
