#include "recovery/saves/SaveRecords.h"

#include "platform/Folders.h"
#include "platform/Paths.h"
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

/// Names ascend with time, and no two processes use the same one.
QString recordName(unsigned number) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const qint64 time = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    return u"/%1-%2-%3.save"_qs.arg(time, 20, 10, QLatin1Char('0')).arg(::getpid()).arg(number);
}

bool flushFolder(FileSystemCalls& calls, const QString& folder) {
    const int handle = calls.open(localName(folder).value_or(QByteArray()).constData(),
                                  O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (handle < 0)
        return false;
    const bool done = uninterrupted([&] { return calls.fsync(handle); }) == 0;
    calls.close(handle);
    return done;
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
    void remove() const { m_calls.unlink(m_name.constData()); }

 private:
    FileSystemCalls& m_calls;
    QByteArray m_name;
    int m_handle;
};

/// One write and its record.
class SaveRecords::Watched : public WatchedWrite {
 public:
    Watched(SaveRecords& records, std::unique_ptr<File> record, const struct stat& target)
        : m_records(records), m_record(std::move(record)), m_device(target.st_dev), m_inode(target.st_ino) {}

    /// A file that is partly written needs its record. One that was not touched is whole as it was, and its owner has
    /// been told that the write failed.
    void ended(bool whole, bool touched) override {
        if (!whole && touched) {
            m_records.keep(std::move(m_record), m_device, m_inode);
            return;
        }
        m_record->remove();
        if (whole)
            m_records.removeKept(m_device, m_inode);
    }

 private:
    SaveRecords& m_records;
    std::unique_ptr<File> m_record;
    quint64 m_device;
    quint64 m_inode;
};

SaveRecords::SaveRecords(QString folder, FileSystemCalls& calls) : m_folder(std::move(folder)), m_calls(calls) {}

SaveRecords::~SaveRecords() = default;

QString SaveRecords::saveRecordFolder() {
    return stateFolder() + u"/saves"_qs;
}

std::unique_ptr<WatchedWrite> SaveRecords::aboutToWrite(const PlannedWrite& write) {
    std::unique_ptr<File> file = makeFile();
    if (file == nullptr)
        return nullptr;
    SaveRecordWriter record(m_calls, file->handle());
    if (record.add(write) || record.finish() || !flushFolder(m_calls, m_folder)) {
        file->remove();
        return nullptr;
    }
    return std::make_unique<Watched>(*this, std::move(file), write.before);
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

void SaveRecords::keep(std::unique_ptr<File> record, quint64 device, quint64 inode) {
    const std::scoped_lock lock(m_mutex);
    m_kept.push_back({device, inode, std::move(record)});
}

void SaveRecords::removeKept(quint64 device, quint64 inode) {
    const std::scoped_lock lock(m_mutex);
    const auto isOfFile = [&](const Kept& kept) { return kept.device == device && kept.inode == inode; };
    for (const Kept& kept : m_kept) {
        if (isOfFile(kept))
            kept.record->remove();
    }
    std::erase_if(m_kept, isOfFile);
}
