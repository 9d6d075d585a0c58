#include "recovery/saves/SaveRecovery.h"

#include "platform/Paths.h"
#include "recovery/saves/RecordedWrite.h"

#include <QDir>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace {

using Inodes = std::set<quint64>;

bool isOwnFolder(const QString& path) {
    struct stat status {};
    return ::lstat(localName(path).value_or(QByteArray()).constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid();
}

/// The newest first, since names begin with the time.
QStringList recordNames(const QString& folder) {
    const QString pattern = u'*' + QLatin1String(SaveRecovery::RecordSuffix);
    QStringList names = QDir(folder).entryList({pattern}, QDir::Files | QDir::Hidden, QDir::Name);
    std::reverse(names.begin(), names.end());
    return names;
}

}  // namespace

/// A record that no living process owns; locked while it is examined.
class SaveRecovery::Record {
 public:
    Record(FileSystemCalls& calls, const QString& path)
        : m_calls(calls), m_name(localName(path).value_or(QByteArray())) {}
    ~Record() {
        if (m_handle >= 0)
            m_calls.close(m_handle);
    }
    Q_DISABLE_COPY_MOVE(Record)

    /// False: it belongs to a living process, or is no file of this user's own.
    bool open() {
        m_handle = m_calls.open(m_name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        struct stat status {};
        return m_handle >= 0 && m_calls.flock(m_handle, LOCK_EX | LOCK_NB) == 0 &&
               m_calls.fstat(m_handle, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
               status.st_nlink == 1;
    }

    /// False: it was never finished, so the write had not begun.
    bool read() {
        m_content = SaveRecord::read(m_calls, m_handle);
        return m_content.has_value();
    }

    /// Brings the files to their new contents where that is possible, but for those in `settled`, which are of a newer
    /// record. Adds to it those that have their contents now.
    void settle(Inodes& settled) {
        for (const RecordedFile& file : m_content->files()) {
            if (settled.contains(file.inode))
                continue;
            const RecordedWrite write(m_calls, m_handle, file);
            const WriteState state = write.state();
            if (state == WriteState::Other)
                m_others.insert(file.inode);
            else if (state == WriteState::Partial && write.complete())
                m_isLeft = true;
            else
                settled.insert(file.inode);
            m_hasCompleted = m_hasCompleted || (state == WriteState::Partial && !m_isLeft);
        }
    }

    bool isLeft() const { return m_isLeft; }
    bool hasCompleted() const { return m_hasCompleted; }
    /// Whether somebody else changed a file of it, which no other record explains.
    bool isOfOtherFiles(const Inodes& settled) const {
        return !std::includes(settled.begin(), settled.end(), m_others.begin(), m_others.end());
    }

    void remove() const { m_calls.unlink(m_name.constData()); }
    void setAside() const { m_calls.rename(m_name.constData(), (m_name + AsideSuffix).constData()); }

 private:
    FileSystemCalls& m_calls;
    QByteArray m_name;
    int m_handle = -1;
    std::optional<SaveRecord> m_content;
    Inodes m_others;
    bool m_isLeft = false;
    bool m_hasCompleted = false;
};

SaveRecovery::SaveRecovery(QString folder, FileSystemCalls& calls) : m_folder(std::move(folder)), m_calls(calls) {}

SaveRecovery::Summary SaveRecovery::run() {
    Summary summary;
    if (!isOwnFolder(m_folder))
        return summary;
    Inodes settled;
    std::vector<std::unique_ptr<Record>> records;
    for (const QString& name : recordNames(m_folder)) {
        auto record = std::make_unique<Record>(m_calls, m_folder + u'/' + name);
        if (!record->open())
            continue;
        if (!record->read()) {
            record->remove();
            ++summary.removed;
            continue;
        }
        record->settle(settled);
        records.push_back(std::move(record));
    }
    for (const auto& record : records)
        finish(*record, record->isOfOtherFiles(settled), summary);
    return summary;
}

/// Decided when all records are known: an older or a newer one may explain what this one does not.
void SaveRecovery::finish(const Record& record, bool isOfOtherFiles, Summary& summary) {
    if (record.isLeft()) {
        ++summary.left;
    } else if (isOfOtherFiles) {
        record.setAside();
        ++summary.setAside;
    } else {
        record.remove();
        ++(record.hasCompleted() ? summary.completed : summary.removed);
    }
}
