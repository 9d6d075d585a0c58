#pragma once

#include "platform/FileSystemCalls.h"
#include "recovery/saves/OwnRecord.h"

#include <QString>

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

/// The files in which the records of this process stand. To make and to remove a file takes longer than to write over
/// one, so that each is used again and again, and removed when the store is destroyed. There are as many as there were
/// records at the same time. Owned by SaveRecords; used by several threads at once.
class RecordStore {
 public:
    /// `folder`: it is created when the first file is made, accessible to this user only.
    RecordStore(QString folder, FileSystemCalls& calls) : m_folder(std::move(folder)), m_calls(calls) {}
    /// Files that were not given back stay on the disk.
    ~RecordStore();
    Q_DISABLE_COPY_MOVE(RecordStore)

    /// Higher than that of all earlier records of this process, and of those of others that it has seen, also when the
    /// clock was set back.
    static quint64 nextSequence();

    /// A file that holds no record; null: it cannot be made.
    std::shared_ptr<OwnRecord> take();
    /// The record in it is no longer needed.
    void giveBack(std::shared_ptr<OwnRecord> record);
    /// There is no complete record in it: perhaps for want of space, which it must not keep.
    void drop(const std::shared_ptr<OwnRecord>& record);
    /// Removes the files that are kept for later records. False: there were none.
    bool giveSpaceBack();
    /// To be called when a record is on the disk: waits until its name is there too, and earlier records are not.
    /// False: it cannot be relied on.
    bool makeLast(OwnRecord& record);
    /// Whether the file of this name is one of these.
    bool owns(const QByteArray& name);
    /// Waits until no record is on the disk that was given back, here or in another process.
    void flushRemovals(const OwnRecord* except = nullptr);

 private:
    std::shared_ptr<OwnRecord> takeFree();
    std::shared_ptr<OwnRecord> make();
    std::vector<std::shared_ptr<OwnRecord>> all();
    void flushFolderOnce();
    void flushThoseOfOthers(const std::vector<std::shared_ptr<OwnRecord>>& own);
    void noteSequence(int handle);

    const QString m_folder;
    FileSystemCalls& m_calls;
    std::atomic<unsigned> m_number{0};
    std::mutex m_mutex;
    std::vector<std::shared_ptr<OwnRecord>> m_all;
    std::vector<std::shared_ptr<OwnRecord>> m_free;
    std::mutex m_folderMutex;
    bool m_areFoldersFlushed = false;
    std::atomic<bool> m_hasRemoved{true};  ///< files were removed, perhaps not yet on the disk
};
