#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/WriteWitness.h"
#include "recovery/saves/FileKey.h"
#include "recovery/saves/FileSettling.h"
#include "recovery/saves/FlushedFiles.h"
#include "recovery/saves/RecordStore.h"

#include <QString>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

/// Keeps the new bytes of every save in a record until they are on the disk in their file, so that a save that is
/// interrupted at any moment can be completed by SaveRecovery. Outlives the writers; used by several threads at once. A
/// write for which no record can be made goes on without one. A new file needs none: it gets its name when it is whole.
///
/// Writes that other threads begin while a record is being flushed share the next one: so the disk is waited for once
/// for many files. A record belongs to this process as long as it is locked (flock). The record of a write that failed
/// half-way stays until a later write of the same file has succeeded, or until the next start.
class SaveRecords : public WriteWitness {
 public:
    /// The limits of a record that several writes share.
    struct Limits {
        int files = 256;
        qint64 bytes = 64LL * 1024 * 1024;  ///< of new contents; a single file may have more
    };

    /// `folder`: where records are; it is created when the first one is made, accessible to this user only.
    explicit SaveRecords(QString folder = saveRecordFolder(), FileSystemCalls& calls = FileSystemCalls::system());
    SaveRecords(QString folder, FileSystemCalls& calls, Limits limits);
    ~SaveRecords() override;
    Q_DISABLE_COPY_MOVE(SaveRecords)

    static QString saveRecordFolder();

    std::unique_ptr<WatchedWrite> aboutToWrite(const PlannedWrite& write) override;
    void aboutToUse(const QByteArray& name) override { m_settling.settle(name); }
    FileSettling& settling() { return m_settling; }
    bool giveSpaceBack() override { return m_store.giveSpaceBack(); }

 private:
    class Shared;
    class Watched;
    struct Request;
    using Group = std::vector<Request*>;

    std::unique_ptr<WatchedWrite> watched(const PlannedWrite& write, std::shared_ptr<Shared> record);
    std::unique_ptr<WatchedWrite> joinGroup(const PlannedWrite& write);
    Group takeGroup();
    void serve(const Group& group);
    /// One record for all of them; null: there is none.
    std::shared_ptr<Shared> record(const std::vector<const PlannedWrite*>& writes);
    bool fill(OwnRecord& file, const std::vector<const PlannedWrite*>& writes);
    void keep(std::shared_ptr<OwnRecord> record, std::set<FileKey> files);
    void removeKept(FileKey file);

    struct Kept {
        std::shared_ptr<OwnRecord> record;
        std::set<FileKey> files;  ///< that are only partly written
    };

    FileSystemCalls& m_calls;
    const Limits m_limits;
    RecordStore m_store;
    FileSettling m_settling;
    FlushedFiles m_flushed;
    std::mutex m_mutex;
    std::condition_variable m_served;
    std::deque<Request*> m_waiting;
    bool m_isServing = false;  ///< a thread makes a record for others
    std::vector<Kept> m_kept;
};
