#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"
#include "platform/WriteWitness.h"
#include "recovery/saves/FlushedFiles.h"
#include "recovery/saves/RecordOutput.h"

#include <memory>
#include <vector>

/// Writes the entries of a record: for each file to be written what it holds now, as hashes, and its new bytes. Of
/// contents that are all in memory every byte is recorded; of others only the blocks that differ from the old file.
/// Owned by the code that creates it; the handle of the record stays the caller's.
class SaveRecordWriter {
 public:
    /// `size`: what the file has already; a longer record makes room for those to come. `sequence`: higher than that
    /// of earlier records.
    SaveRecordWriter(FileSystemCalls& calls, int handle, qint64 size = 0, quint64 sequence = 1);
    ~SaveRecordWriter();
    Q_DISABLE_COPY_MOVE(SaveRecordWriter)

    /// Runs the event loop only if the source of the write does. After an error the record is of no use.
    SystemError add(const PlannedWrite& write);
    /// The bytes of the file that were written so far.
    qint64 written() const { return m_output.written(); }
    /// Ends the record and flushes it to the disk.
    SystemError finish();
    /// Waits until the files are on the disk as they were recorded: what of them was written by others, or by a save
    /// that failed, may be in memory only. Call it after finish(), when the disk has less left to do. Those of which it
    /// is known that they are on the disk are passed over.
    SystemError flushOldFiles(const FlushedFiles& flushed);

 private:
    class OldFile;
    class Comparison;

    void writeHead(const PlannedWrite& write, const OldFile& old);
    SystemError addAll(const PlannedWrite& write, OldFile& old);
    SystemError addDifferences(const PlannedWrite& write, OldFile& old);

    FileSystemCalls& m_calls;
    int m_handle;
    qint64 m_size;
    RecordOutput m_output;
    quint32 m_entries = 0;
    std::vector<std::unique_ptr<OldFile>> m_oldFiles;
};
