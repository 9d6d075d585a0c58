#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/WriteWitness.h"

#include <QString>

#include <atomic>
#include <mutex>
#include <vector>

/// Keeps the new bytes of every save in a record of its own until they are on the disk in their file, so that a save
/// that is interrupted at any moment can be completed by SaveRecovery. Outlives the writers; used by several threads at
/// once. A write for which no record can be made goes on without one.
///
/// A record belongs to this process as long as it is locked (flock). The record of a write that failed half-way stays
/// until a later write of the same file has succeeded, or until the next start.
class SaveRecords : public WriteWitness {
 public:
    /// `folder`: where records are; it is created when the first one is made, accessible to this user only.
    explicit SaveRecords(QString folder = saveRecordFolder(), FileSystemCalls& calls = FileSystemCalls::system());
    ~SaveRecords() override;
    Q_DISABLE_COPY_MOVE(SaveRecords)

    static QString saveRecordFolder();

    std::unique_ptr<WatchedWrite> aboutToWrite(const PlannedWrite& write) override;

 private:
    class File;
    class Watched;

    /// The open, locked and still empty file of a new record; null: there is none.
    std::unique_ptr<File> makeFile();
    void keep(std::unique_ptr<File> record, quint64 device, quint64 inode);
    void removeKept(quint64 device, quint64 inode);

    struct Kept {
        quint64 device;
        quint64 inode;
        std::unique_ptr<File> record;
    };

    const QString m_folder;
    FileSystemCalls& m_calls;
    std::atomic<unsigned> m_number{0};
    std::mutex m_mutex;
    std::vector<Kept> m_kept;
};
