#pragma once

#include "recovery/saves/FileKey.h"
#include "recovery/saves/SaveRecord.h"
#include "recovery/saves/WriteState.h"

#include <optional>

/// Examines a file by its record and completes an interrupted write. Does not run the event loop. `recordHandle` stays
/// the caller's. Only regular files are opened.
class RecordedWrite {
 public:
    RecordedWrite(FileSystemCalls& calls, int recordHandle, const RecordedFile& file);

    /// The file that has the path now; nothing when there is none.
    std::optional<FileKey> target() const;
    WriteState state() const;
    /// Writes the new bytes into the file, whose state is Partial or Torn, cuts it to its final size and flushes it.
    /// The record is still needed after an error.
    SystemError complete() const;
    /// Flushes the file, whose state is Whole: its bytes may be in memory only. The record is still needed after an
    /// error.
    SystemError confirm() const;

 private:
    bool hasSizeOfAWrite(quint64 size) const;
    bool isFolderThere() const;
    SystemError writeInto(int target) const;
    SystemError flush(int target) const;
    void restoreMode(int target) const;
    SystemError writeRange(int target, const RecordedRange& range) const;

    FileSystemCalls& m_calls;
    int m_record;
    const RecordedFile& m_file;
};
