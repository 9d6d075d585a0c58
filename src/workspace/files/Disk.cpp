#include "workspace/files/Disk.h"

#include "platform/FileInfo.h"
#include "platform/Paths.h"
#include "platform/Wildcard.h"

#include <QFile>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

/// What stands behind a name, after links were followed.
enum class Kind { Folder, Regular, Other };

class Folder {
 public:
    explicit Folder(const QString& path) {
        if (const auto name = localName(path))
            m_stream = ::opendir(name->constData());
        else
            errno = ENOENT;
    }
    ~Folder() {
        if (m_stream != nullptr)
            ::closedir(m_stream);
    }
    Q_DISABLE_COPY_MOVE(Folder)

    bool isOpen() const { return m_stream != nullptr; }
    int handle() const { return ::dirfd(m_stream); }
    /// Null at the end, with errno 0, or after an error.
    const dirent* next() {
        errno = 0;
        return ::readdir(m_stream);
    }

    Kind kindOf(const dirent& entry) const {
        if (entry.d_type == DT_DIR)
            return Kind::Folder;
        if (entry.d_type == DT_REG)
            return Kind::Regular;
        struct stat status {};
        const bool mayBeMore = entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN;
        if (!mayBeMore || ::fstatat(handle(), entry.d_name, &status, 0) != 0)
            return Kind::Other;
        return S_ISDIR(status.st_mode) ? Kind::Folder : (S_ISREG(status.st_mode) ? Kind::Regular : Kind::Other);
    }

 private:
    DIR* m_stream = nullptr;
};

/// The order of UTF-8 is that of code points.
QStringList sortedTexts(std::vector<std::string> names) {
    std::ranges::sort(names);
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(names.size()));
    for (const std::string& name : names) {
        if (const auto text = pathText(QByteArrayView(name.data(), static_cast<qsizetype>(name.size()))))
            texts.append(*text);
    }
    return texts;
}

Disk::Names namesIn(const QString& path, const std::atomic<bool>& cancelled,
                    const std::function<bool(const Folder&, const dirent&)>& isWanted) {
    Folder folder(path);
    if (!folder.isOpen())
        return {SystemError::fromErrno(errno), {}};
    std::vector<std::string> names;
    while (const dirent* entry = cancelled ? nullptr : folder.next()) {
        const std::string_view name(entry->d_name);
        if (name != "." && name != ".." && isWanted(folder, *entry))
            names.emplace_back(name);
    }
    SystemError error = errno == 0 ? SystemError() : SystemError::fromErrno(errno);
    return {std::move(error), sortedTexts(std::move(names))};
}

}  // namespace

std::shared_ptr<const Disk> Disk::system() {
    class SystemDisk : public Disk {};
    static const auto disk = std::make_shared<const SystemDisk>();
    return disk;
}

VolumeList Disk::volumes() const {
    return mountedVolumes();
}

VolumeState Disk::stateOf(const QString& mountPoint) const {
    return volumeState(mountPoint);
}

Disk::Names Disk::folders(const QString& path, const std::atomic<bool>& cancelled) const {
    return namesIn(path, cancelled,
                   [](const Folder& folder, const dirent& entry) { return folder.kindOf(entry) == Kind::Folder; });
}

Disk::Names Disk::files(const QString& path, const QString& filter, const std::atomic<bool>& cancelled) const {
    if (filter.isEmpty()) {
        return namesIn(path, cancelled,
                       [](const Folder& folder, const dirent& entry) { return folder.kindOf(entry) != Kind::Folder; });
    }
    return namesIn(path, cancelled, [wildcard = Wildcard(filter)](const Folder& folder, const dirent& entry) {
        const auto name = pathText(QByteArrayView(entry.d_name));
        return name && wildcard.matches(*name) && folder.kindOf(entry) == Kind::Regular;
    });
}

QList<qint64> Disk::writeTimes(const QString& path, const QStringList& names,
                               const std::atomic<bool>& cancelled) const {
    QList<qint64> times(names.size(), NoFileTime);
    const Folder folder(path);
    for (qsizetype at = 0; folder.isOpen() && at < names.size() && !cancelled; ++at) {
        const auto name = localName(names.at(at));
        struct stat status {};
        if (name && ::fstatat(folder.handle(), name->constData(), &status, 0) == 0)
            times[at] = status.st_mtime;
    }
    return times;
}
