#include "recovery/saves/FileSettling.h"

#include "platform/Paths.h"
#include "recovery/saves/FileKey.h"
#include "recovery/saves/RecordFile.h"
#include "recovery/saves/SaveRecord.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

namespace {

/// A lock (flock) can only be tried or waited for without a limit, so that it is tried again and again.
constexpr std::chrono::milliseconds Pause{10};

}  // namespace

/// The file that is asked for, of which nothing is looked up before there is a record to compare it with.
class FileSettling::Target {
 public:
    explicit Target(const QByteArray& name) : m_name(name) {}

    bool isOneOf(const std::vector<RecordedFile>& files) {
        return std::ranges::any_of(files, [this](const RecordedFile& file) { return isThat(file); });
    }

 private:
    bool isThat(const RecordedFile& file) {
        lookUp();
        return file.path == m_path || (m_key && *m_key == FileKey(file.device, file.inode));
    }

    void lookUp() {
        if (std::exchange(m_isLookedUp, true))
            return;
        const std::unique_ptr<char, decltype(&std::free)> real(::realpath(m_name.constData(), nullptr), &std::free);
        m_path = real == nullptr ? m_name : QByteArray(real.get());
        struct stat status {};
        if (::stat(m_name.constData(), &status) == 0)
            m_key = keyOf(status);
    }

    const QByteArray& m_name;
    bool m_isLookedUp = false;
    QByteArray m_path;  ///< with the links in it resolved
    std::optional<FileKey> m_key;
};

FileSettling::FileSettling(QString folder, FileSystemCalls& calls, IsOwn isOwn)
    : m_folder(std::move(folder)),
      m_folderName(localName(m_folder).value_or(QByteArray())),
      m_calls(calls),
      m_isOwn(std::move(isOwn)) {}

/// A record that is still there after it was settled waits for a later start.
void FileSettling::settle(const QByteArray& name) const {
    Target target(name);
    bool hasSettled = false;
    const auto end = std::chrono::steady_clock::now() + m_longestWait;
    for (;;) {
        const Record record = recordOf(target);
        if (record == Record::None || (record == Record::Abandoned && std::exchange(hasSettled, true)))
            return;
        if (record == Record::Abandoned) {
            const SaveRecovery::Summary summary = SaveRecovery(m_folder, m_calls).run();
            if (m_report)
                m_report(summary);
        } else if (std::chrono::steady_clock::now() >= end) {
            return;
        } else {
            std::this_thread::sleep_for(Pause);
        }
    }
}

FileSettling::Record FileSettling::recordOf(Target& target) const {
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(m_folderName.constData()), &::closedir);
    Record found = Record::None;
    while (entries != nullptr && found != Record::InUse) {
        const dirent* entry = ::readdir(entries.get());
        if (entry == nullptr)
            break;
        const QByteArray name = m_folderName + '/' + entry->d_name;
        if (name.endsWith(SaveRecovery::RecordSuffix) && !m_isOwn(name))
            found = std::max(found, examine(name, target));
    }
    return found;
}

/// It is read without its lock, because its owner may be about to write the file.
FileSettling::Record FileSettling::examine(const QByteArray& record, Target& target) const {
    const int handle = m_calls.open(record.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (handle < 0)
        return Record::None;
    const bool isOfTarget = target.isOneOf(SaveRecord::filesAsTheyStand(m_calls, handle));
    m_calls.close(handle);
    if (!isOfTarget)
        return Record::None;
    switch (RecordFile(m_calls, record).open()) {
        case RecordFile::Opening::Done:
            return Record::Abandoned;
        case RecordFile::Opening::InUse:
            return Record::InUse;
        default:
            return Record::None;
    }
}
