#include "recovery/saves/SaveRecovery.h"

#include "platform/OwnFile.h"
#include "platform/Paths.h"
#include "recovery/saves/FolderFlush.h"
#include "recovery/saves/OldAsides.h"
#include "recovery/saves/OverwrittenBytes.h"
#include "recovery/saves/RecordFile.h"
#include "recovery/saves/RecordedWrite.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace {

using Files = std::set<FileKey>;

/// For so long a file may be out of reach, on a disk that is not mounted.
constexpr std::chrono::hours LongestAbsence{30 * 24};

QStringList recordNames(const QString& folder) {
    const QString pattern = u'*' + QLatin1String(SaveRecovery::RecordSuffix);
    return QDir(folder).entryList({pattern}, QDir::Files | QDir::Hidden, QDir::Name);
}

}  // namespace

/// A record that no living process owns; locked while it is examined.
class SaveRecovery::Record {
 public:
    Record(FileSystemCalls& calls, const QString& path)
        : m_calls(calls), m_file(calls, localName(path).value_or(QByteArray())) {}
    Q_DISABLE_COPY_MOVE(Record)

    /// False: it belongs to a living process, or is no file of this user's own.
    bool open() { return m_file.open() == RecordFile::Opening::Done; }

    /// Damaged: it was never finished, so the write had not begun. OfAnother: only the version that made it can say
    /// whether its bytes are still needed.
    enum class Reading { Done, Damaged, OfAnother, Impossible };
    Reading read() {
        SystemError error;
        m_content = SaveRecord::read(m_calls, m_file.handle(), error);
        if (m_content || error)
            return m_content ? Reading::Done : Reading::Impossible;
        switch (SaveRecord::kindOf(m_calls, m_file.handle())) {
            case SaveRecord::Kind::Unknown:
                return Reading::Impossible;
            case SaveRecord::Kind::OfAnother:
                return Reading::OfAnother;
            default:
                return Reading::Damaged;
        }
    }

    bool isAfter(const Record& other) const { return m_content->sequence() > other.m_content->sequence(); }

    /// Brings the files to their new contents where that is possible, but for those in `settled`, which are of a newer
    /// record. Adds to it those that have their contents now.
    void settle(Files& settled) {
        for (const RecordedFile& file : m_content->files()) {
            const std::optional<FileKey> target = RecordedWrite(m_calls, m_file.handle(), file).target();
            if (!target || !settled.contains(*target))
                settle(file, target, settled);
            else
                m_isSuperseded = true;
        }
    }

    bool isLeft() const { return m_isLeft; }
    /// Whether there is a file of it that another record explains.
    bool needsAnother() const { return m_isSuperseded || !m_others.empty(); }
    bool hasCompleted() const { return m_hasCompleted; }
    /// Whether somebody else changed a file of it, which no other record explains.
    bool isOfOtherFiles(const Files& settled) const {
        return m_isForAside || !std::includes(settled.begin(), settled.end(), m_others.begin(), m_others.end());
    }

    void remove() const { m_file.remove(); }
    void setAside() const { m_calls.rename(m_file.name().constData(), (m_file.name() + AsideSuffix).constData()); }

 private:
    static bool isInterrupted(WriteState state) { return state == WriteState::Partial || state == WriteState::Torn; }

    void settle(const RecordedFile& file, const std::optional<FileKey>& target, Files& settled) {
        const RecordedWrite write(m_calls, m_file.handle(), file);
        const WriteState state = write.state();
        const bool isOutOfReach = state == WriteState::Away || state == WriteState::Unknown;
        if (state == WriteState::Other && target)
            m_others.insert(*target);
        else if (state == WriteState::Other || state == WriteState::Old || (isOutOfReach && isTooOld()))
            m_isForAside = true;
        else if (target && isSettled(write, file.path, state))
            settled.insert(*target);
        else
            m_isLeft = true;
        m_hasCompleted = m_hasCompleted || (isInterrupted(state) && !m_isLeft);
    }

    /// Whether the file has its new contents for certain, or has them now.
    bool isSettled(const RecordedWrite& write, const QByteArray& target, WriteState state) {
        if (state == WriteState::Whole)
            return !write.confirm();
        if (state == WriteState::Torn && keepOverwrittenBytes(m_calls, m_file.name(), target))
            return false;
        return isInterrupted(state) && makeLast() && !write.complete();
    }

    /// A clock that was set back makes it no older.
    bool isTooOld() const {
        struct stat status {};
        if (m_calls.fstat(m_file.handle(), &status) != 0)
            return false;
        const auto made = std::chrono::system_clock::from_time_t(status.st_mtim.tv_sec);
        return std::chrono::system_clock::now() - made > LongestAbsence;
    }

    /// The process may have been killed before the record was on the disk.
    bool makeLast() {
        if (m_isLasting)
            return true;
        const QString folder = QFile::decodeName(m_file.name().left(m_file.name().lastIndexOf('/')));
        m_isLasting =
            uninterrupted([this] { return m_calls.fsync(m_file.handle()); }) == 0 && flushFolder(m_calls, folder);
        flushFoldersAbove(m_calls, folder);
        return m_isLasting;
    }

    FileSystemCalls& m_calls;
    RecordFile m_file;
    std::optional<SaveRecord> m_content;
    Files m_others;
    bool m_isForAside = false;
    bool m_isSuperseded = false;
    bool m_isLasting = false;
    bool m_isLeft = false;
    bool m_hasCompleted = false;
};

SaveRecovery::SaveRecovery(QString folder, FileSystemCalls& calls) : m_folder(std::move(folder)), m_calls(calls) {}

SaveRecovery::Summary SaveRecovery::run() {
    Summary summary;
    if (!isOwnFolder(m_folder))
        return summary;
    std::vector<std::unique_ptr<Record>> records;
    for (const QString& name : recordNames(m_folder)) {
        auto record = std::make_unique<Record>(m_calls, m_folder + u'/' + name);
        if (!record->open())
            continue;
        const Record::Reading reading = record->read();
        if (reading == Record::Reading::Done) {
            records.push_back(std::move(record));
        } else if (reading == Record::Reading::Damaged) {
            record->remove();
            ++summary.removed;
        } else if (reading == Record::Reading::OfAnother) {
            record->setAside();
            ++summary.setAside;
        } else {
            ++summary.left;
        }
    }
    Files settled;  // of the newest record first
    std::sort(records.begin(), records.end(),
              [](const auto& left, const auto& right) { return left->isAfter(*right); });
    for (const auto& record : records)
        record->settle(settled);
    finishAll(records, settled, summary);
    return summary;
}

void SaveRecovery::removeOldAsides(const QDateTime& now) {
    if (!isOwnFolder(m_folder))
        return;
    for (const QString& name : oldAsides(m_folder, QLatin1String(RecordSuffix) + QLatin1String(AsideSuffix), now)) {
        RecordFile file(m_calls, localName(m_folder + u'/' + name).value_or(QByteArray()));
        if (file.open() == RecordFile::Opening::Done)
            file.remove();
    }
}

/// A record that explains a file is removed last, and not before it is on the disk that the others are gone: after a
/// power cut one of them must not stand alone, since the file may look like an interrupted write of it.
void SaveRecovery::finishAll(const std::vector<std::unique_ptr<Record>>& records, const std::set<FileKey>& settled,
                             Summary& summary) {
    for (const bool needsAnother : {true, false}) {
        for (const auto& record : records) {
            if (record->needsAnother() == needsAnother)
                finish(*record, record->isOfOtherFiles(settled), summary);
        }
        if (!records.empty())
            flushFolder(m_calls, m_folder);
    }
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
