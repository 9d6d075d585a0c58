#pragma once

#include "recovery/saves/SaveRecord.h"
#include "recovery/saves/WriteState.h"

/// Examines a file by its record and completes an interrupted write. Does not run the event loop. `recordHandle` stays
/// the caller's. Only regular files are opened.
class RecordedWrite {
 public:
    RecordedWrite(FileSystemCalls& calls, int recordHandle, const RecordedFile& file);

    WriteState state() const;
    /// Writes the new bytes into the file, whose state is Partial, cuts it to its final size and flushes it. The record
    /// is still needed after an error.
    SystemError complete() const;

 private:
    bool hasSizeOfAWrite(quint64 size) const;
    SystemError writeInto(int target) const;
    SystemError writeRange(int target, const RecordedRange& range) const;

    FileSystemCalls& m_calls;
    int m_record;
    const RecordedFile& m_file;
};
