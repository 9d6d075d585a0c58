#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"
#include "platform/WriteWitness.h"
#include "recovery/saves/RecordOutput.h"

#include <memory>
#include <vector>

/// Writes the entries of a record: for each file to be written what it holds now, as hashes, and its new bytes. Of
/// contents that are all in memory every byte is recorded; of others only the blocks that differ from the old file.
/// Owned by the code that creates it; the handle of the record stays the caller's.
class SaveRecordWriter {
 public:
    SaveRecordWriter(FileSystemCalls& calls, int handle);
    ~SaveRecordWriter();
    Q_DISABLE_COPY_MOVE(SaveRecordWriter)

    /// Runs the event loop only if the source of the write does. After an error the record is of no use.
    SystemError add(const PlannedWrite& write);
    /// Ends the record and flushes it to the disk.
    SystemError finish();
    /// Waits until the files are on the disk as they were recorded: what of them was written by others, or by a save
    /// that failed, may be in memory only. Call it after finish(), when the disk has less left to do.
    SystemError flushOldFiles();

 private:
    class OldFile;
    class Comparison;

    void writeHead(const PlannedWrite& write);
    SystemError addAll(const PlannedWrite& write);
    SystemError addDifferences(const PlannedWrite& write, OldFile& old);

    FileSystemCalls& m_calls;
    int m_handle;
    RecordOutput m_output;
    quint32 m_entries = 0;
    std::vector<std::unique_ptr<OldFile>> m_oldFiles;
};
