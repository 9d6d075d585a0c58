#include "recovery/saves/SaveRecords.h"

#include "platform/Folders.h"
#include "recovery/saves/SaveRecordWriter.h"

#include <algorithm>
#include <new>
#include <utility>

/// A record and the writes that are not ended yet.
class SaveRecords::Shared {
 public:
    Shared(SaveRecords& records, std::shared_ptr<OwnRecord> file) : m_records(records), m_file(std::move(file)) {}
    /// When the last of its writes has ended.
    ~Shared() {
        if (m_partial.empty())
            m_records.m_store.giveBack(std::move(m_file));
        else
            m_records.keep(std::move(m_file), std::move(m_partial));
    }
    Q_DISABLE_COPY_MOVE(Shared)

    void setPartial(FileKey file) {
        const std::scoped_lock lock(m_mutex);
        m_partial.insert(file);
    }

 private:
    SaveRecords& m_records;
    std::shared_ptr<OwnRecord> m_file;
    std::mutex m_mutex;
    std::set<FileKey> m_partial;
};

/// One write and its record; null: it has none.
class SaveRecords::Watched : public WatchedWrite {
 public:
    Watched(SaveRecords& records, std::shared_ptr<Shared> record, const struct stat& target)
        : m_records(records), m_record(std::move(record)), m_file(keyOf(target)) {
        m_records.m_flushed.remove(m_file);
    }

    void aboutToFlush(const struct stat& now) override { m_written = now; }

    /// A file that is partly written needs its record. One that was not touched is whole as it was, and its owner has
    /// been told that the write failed.
    void ended(bool whole, bool touched) override {
        if (!whole && touched && m_record != nullptr)
            m_record->setPartial(m_file);
        if (!whole)
            return;
        if (keyOf(m_written) == m_file)
            m_records.m_flushed.add(m_written);
        m_records.removeKept(m_file);
    }

 private:
    SaveRecords& m_records;
    std::shared_ptr<Shared> m_record;
    FileKey m_file;
    struct stat m_written {};
};

/// A thread that waits for the record of its write.
struct SaveRecords::Request {
    const PlannedWrite& write;
    bool isServed = false;
    std::shared_ptr<Shared> record = nullptr;
};

SaveRecords::SaveRecords(QString folder, FileSystemCalls& calls) : SaveRecords(std::move(folder), calls, Limits()) {}

SaveRecords::SaveRecords(QString folder, FileSystemCalls& calls, Limits limits)
    : m_calls(calls),
      m_limits(limits),
      m_store(folder, calls),
      m_settling(std::move(folder), calls, [this](const QByteArray& name) { return m_store.owns(name); }) {}

SaveRecords::~SaveRecords() {
    if (ofProcess() == this)
        setOfProcess(nullptr);
}

QString SaveRecords::saveRecordFolder() {
    return stateFolder() + u"/saves"_qs;
}

/// Bytes from a source may run the event loop while they are read, so no other thread waits for them.
std::unique_ptr<WatchedWrite> SaveRecords::aboutToWrite(const PlannedWrite& write) {
    if (write.isUnnamed)
        return watched(write, nullptr);
    if (!write.pieces.empty())
        return joinGroup(write);
    return watched(write, record({&write}));
}

/// Whoever comes while no record is being made makes one for all that wait.
std::unique_ptr<WatchedWrite> SaveRecords::joinGroup(const PlannedWrite& write) {
    Request request{write};
    std::unique_lock lock(m_mutex);
    m_waiting.push_back(&request);
    while (!request.isServed) {
        m_served.wait(lock, [&] { return request.isServed || !m_isServing; });
        if (request.isServed)
            break;
        m_isServing = true;
        const Group group = takeGroup();
        lock.unlock();
        serve(group);
        lock.lock();
        for (Request* served : group)
            served->isServed = true;
        m_isServing = false;
        m_served.notify_all();
    }
    return watched(write, std::move(request.record));
}

/// Without a record: those of earlier writes must be gone from the disk all the same before the file changes. A new
/// file may have name and inode of a removed one.
std::unique_ptr<WatchedWrite> SaveRecords::watched(const PlannedWrite& write, std::shared_ptr<Shared> record) {
    if (record == nullptr)
        m_store.flushRemovals();
    return std::make_unique<Watched>(*this, std::move(record), write.before);
}

SaveRecords::Group SaveRecords::takeGroup() {
    Group group;
    qint64 bytes = 0;
    while (!m_waiting.empty() && static_cast<int>(group.size()) < m_limits.files) {
        bytes += m_waiting.front()->write.length;
        if (!group.empty() && bytes > m_limits.bytes)
            break;
        group.push_back(m_waiting.front());
        m_waiting.pop_front();
    }
    return group;
}

/// One file of which no record can be made does not leave the others without.
void SaveRecords::serve(const Group& group) {
    std::vector<const PlannedWrite*> writes;
    for (const Request* request : group)
        writes.push_back(&request->write);
    const std::shared_ptr<Shared> shared = record(writes);
    for (Request* request : group)
        request->record = shared != nullptr || group.size() == 1 ? shared : record({&request->write});
}

std::shared_ptr<SaveRecords::Shared> SaveRecords::record(const std::vector<const PlannedWrite*>& writes) {
    std::shared_ptr<OwnRecord> file = m_store.take();
    if (file == nullptr)
        return nullptr;
    try {
        if (fill(*file, writes))
            return std::make_shared<Shared>(*this, file);
    } catch (const std::bad_alloc&) {
        // A save that cannot be recorded for want of memory goes on without a record.
    }
    m_store.drop(file);
    return nullptr;
}

bool SaveRecords::fill(OwnRecord& file, const std::vector<const PlannedWrite*>& writes) {
    SaveRecordWriter writer(m_calls, file.handle(), file.size(), RecordStore::nextSequence());
    const bool isWhole = std::none_of(writes.begin(), writes.end(),
                                      [&](const PlannedWrite* write) { return bool(writer.add(*write)); }) &&
                         !writer.finish();
    file.setWritten(writer.written(), isWhole);
    return isWhole && m_store.makeLast(file) && !writer.flushOldFiles(m_flushed);
}

void SaveRecords::keep(std::shared_ptr<OwnRecord> record, std::set<FileKey> files) {
    const std::scoped_lock lock(m_mutex);
    m_kept.push_back({std::move(record), std::move(files)});
}

/// They are gone from the disk before the newer record of this file is: see SaveRecovery::finishAll().
void SaveRecords::removeKept(FileKey file) {
    std::vector<std::shared_ptr<OwnRecord>> removed;
    std::unique_lock lock(m_mutex);
    std::erase_if(m_kept, [&](Kept& kept) {
        if (kept.files.erase(file) == 0 || !kept.files.empty())
            return false;
        removed.push_back(std::move(kept.record));
        return true;
    });
    lock.unlock();
    for (std::shared_ptr<OwnRecord>& record : removed)
        m_store.giveBack(std::move(record));
    if (!removed.empty())
        m_store.flushRemovals();
}
