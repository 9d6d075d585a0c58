#include "recovery/saves/SaveRecords.h"

#include "platform/Folders.h"
#include "platform/Paths.h"
#include "recovery/saves/FolderFlush.h"
#include "recovery/saves/SaveRecordWriter.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

constexpr mode_t RecordMode = 0600;
constexpr int NamesToTry = 20;

/// Names ascend, also when the clock was set back, and no two processes use the same one.
QString recordName(unsigned number) {
    static std::atomic<qint64> last{0};
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    qint64 time = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    qint64 before = last;
    while (!last.compare_exchange_weak(before, std::max(time, before + 1)))
        ;
    time = std::max(time, before + 1);
    return u"/%1-%2-%3.save"_qs.arg(time, 20, 10, QLatin1Char('0')).arg(::getpid()).arg(number);
}

}  // namespace

/// The file of one record. It is unlocked when the object is destroyed, and then no longer this process's.
class SaveRecords::File {
 public:
    File(FileSystemCalls& calls, QByteArray name, int handle)
        : m_calls(calls), m_name(std::move(name)), m_handle(handle) {}
    ~File() { m_calls.close(m_handle); }
    Q_DISABLE_COPY_MOVE(File)

    int handle() const { return m_handle; }

    /// Another process that looks for abandoned records may have taken this one for such a one before it was locked.
    bool lock() const {
        struct stat status {};
        return uninterrupted([&] { return m_calls.flock(m_handle, LOCK_EX); }) == 0 &&
               m_calls.fstat(m_handle, &status) == 0 && status.st_nlink == 1;
    }
    /// A record that cannot be removed is made useless: later it would be taken for one of the file as it is then.
    void remove() const {
        if (m_calls.unlink(m_name.constData()) != 0 && m_calls.ftruncate(m_handle, 0) == 0)
            m_calls.fsync(m_handle);
    }

 private:
    FileSystemCalls& m_calls;
    QByteArray m_name;
    int m_handle;
};

/// A record and the writes that are not ended yet.
class SaveRecords::Shared {
 public:
    Shared(SaveRecords& records, std::unique_ptr<File> file) : m_records(records), m_file(std::move(file)) {}
    /// When the last of its writes has ended.
    ~Shared() {
        if (m_partial.empty())
            m_records.remove(*m_file);
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
    std::unique_ptr<File> m_file;
    std::mutex m_mutex;
    std::set<FileKey> m_partial;
};

/// One write and its record; null: it has none.
class SaveRecords::Watched : public WatchedWrite {
 public:
    Watched(SaveRecords& records, std::shared_ptr<Shared> record, const struct stat& target)
        : m_records(records), m_record(std::move(record)), m_file(target.st_dev, target.st_ino) {}

    /// A file that is partly written needs its record. One that was not touched is whole as it was, and its owner has
    /// been told that the write failed.
    void ended(bool whole, bool touched) override {
        if (!whole && touched && m_record != nullptr)
            m_record->setPartial(m_file);
        if (whole)
            m_records.removeKept(m_file);
    }

 private:
    SaveRecords& m_records;
    std::shared_ptr<Shared> m_record;
    FileKey m_file;
};

/// A thread that waits for the record of its write.
struct SaveRecords::Request {
    const PlannedWrite& write;
    bool isServed = false;
    std::shared_ptr<Shared> record = nullptr;
};

SaveRecords::SaveRecords(QString folder, FileSystemCalls& calls) : SaveRecords(std::move(folder), calls, Limits()) {}

SaveRecords::SaveRecords(QString folder, FileSystemCalls& calls, Limits limits)
    : m_folder(std::move(folder)), m_calls(calls), m_limits(limits) {}

SaveRecords::~SaveRecords() {
    if (ofProcess() == this)
        setOfProcess(nullptr);
}

QString SaveRecords::saveRecordFolder() {
    return stateFolder() + u"/saves"_qs;
}

/// Bytes from a source may run the event loop while they are read, so no other thread waits for them.
std::unique_ptr<WatchedWrite> SaveRecords::aboutToWrite(const PlannedWrite& write) {
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

/// Without a record: those of earlier writes must be gone from the disk all the same before the file changes.
std::unique_ptr<WatchedWrite> SaveRecords::watched(const PlannedWrite& write, std::shared_ptr<Shared> record) {
    if (record == nullptr && m_hasRemoved.exchange(false))
        flushFolder(m_calls, m_folder);
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
    std::unique_ptr<File> file = makeFile();
    if (file == nullptr)
        return nullptr;
    SaveRecordWriter writer(m_calls, file->handle());
    const bool isWhole =
        std::none_of(writes.begin(), writes.end(), [&](const PlannedWrite* write) { return bool(writer.add(*write)); });
    if (isWhole && !writer.finish() && flushNames() && !writer.flushOldFiles())
        return std::make_shared<Shared>(*this, std::move(file));
    remove(*file);
    return nullptr;
}

/// The folders above were perhaps made for the first record.
bool SaveRecords::flushNames() {
    if (!m_areFoldersFlushed.exchange(true))
        flushFoldersAbove(m_calls, m_folder);
    m_hasRemoved = false;
    return flushFolder(m_calls, m_folder);
}

std::unique_ptr<SaveRecords::File> SaveRecords::makeFile() {
    const QString parent = m_folder.left(m_folder.lastIndexOf(u'/'));
    if (makeFolder(parent) || makePrivateFolder(m_folder))
        return nullptr;
    for (int i = 0; i < NamesToTry; ++i) {
        const QByteArray name = localName(m_folder + recordName(++m_number)).value_or(QByteArray());
        const int handle =
            m_calls.open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, RecordMode);
        if (handle < 0 && errno != EEXIST && errno != EINTR)
            return nullptr;
        if (handle < 0)
            continue;
        auto file = std::make_unique<File>(m_calls, name, handle);
        if (file->lock())
            return file;
        file->remove();
    }
    return nullptr;
}

void SaveRecords::remove(const File& record) {
    record.remove();
    m_hasRemoved = true;
}

void SaveRecords::keep(std::unique_ptr<File> record, std::set<FileKey> files) {
    const std::scoped_lock lock(m_mutex);
    m_kept.push_back({std::move(record), std::move(files)});
}

void SaveRecords::removeKept(FileKey file) {
    const std::scoped_lock lock(m_mutex);
    const auto removed = std::erase_if(m_kept, [&](Kept& kept) {
        if (kept.files.erase(file) == 0 || !kept.files.empty())
            return false;
        kept.record->remove();
        return true;
    });
    // Before the newer record of this file is removed: see SaveRecovery::finishAll().
    if (removed > 0)
        flushFolder(m_calls, m_folder);
}
