#include "search/engine/FileWalk.h"

#include "platform/FileErrors.h"
#include "platform/Paths.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

namespace {

constexpr mode_t AnyWriteBit = S_IWUSR | S_IWGRP | S_IWOTH;

bool isHidden(const char* name) {
    return name[0] == '.';
}

bool isPlainDirectory(const struct stat& status) {
    return S_ISDIR(status.st_mode) && (status.st_mode & AnyWriteBit) != 0;
}

/// The elements of a list that is separated by ";", without blanks around them and without empty ones.
QStringList elementsOf(const QString& list) {
    QStringList elements;
    for (const QString& element : list.split(u';')) {
        if (const QString trimmed = element.trimmed(); !trimmed.isEmpty())
            elements.append(trimmed);
    }
    return elements;
}

/// The text of a name that has one. A byte order mark at its start is a character of it.
QString nameText(const QByteArray& name) {
    return pathText(name).value_or(QString());
}

QString withoutSlash(const QString& path) {
    return path.endsWith(u'/') ? path.chopped(1) : path;
}

struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};

/// Null with errno when it fails. A directory that has become a link since it was listed is refused, because the link
/// may lead into a circle.
DIR* openDirectory(const QString& path, bool followsLinks) {
    const auto name = localName(followsLinks ? path + u'/' : path);
    if (!name) {
        errno = ENOENT;
        return nullptr;
    }
    const int handle = open(name->constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | (followsLinks ? 0 : O_NOFOLLOW));
    return handle < 0 ? nullptr : fdopendir(handle);
}

/// Whether an entry is a regular file or, followed to its target, one.
bool isRegularFile(int directory, const dirent& entry) {
    if (entry.d_type == DT_REG)
        return true;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return false;
    struct stat status {};
    return fstatat(directory, entry.d_name, &status, 0) == 0 && S_ISREG(status.st_mode);
}

bool isPlainDirectory(int directory, const dirent& entry) {
    if (isHidden(entry.d_name) || (entry.d_type != DT_DIR && entry.d_type != DT_UNKNOWN))
        return false;
    struct stat status {};
    return fstatat(directory, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && isPlainDirectory(status);
}

}  // namespace

bool IsPlainDirectory(const QString& pPath) {
    const QString path = pPath == u"/" ? pPath : withoutSlash(pPath);
    const auto name = localName(path);
    struct stat status {};
    return name && !FileNameOf(path).startsWith(u'.') && lstat(name->constData(), &status) == 0 &&
           isPlainDirectory(status);
}

FileWalk::FileWalk(const SearchRequest& request)
    : m_directories(elementsOf(request.directories)),
      m_patterns(elementsOf(request.patterns)),
      m_subDirectories(request.subDirectories) {}

std::optional<WalkStep> FileWalk::next() {
    for (;;) {
        if (m_levels.empty()) {
            if (!beginNextWalk())
                return std::nullopt;
        } else if (Level& level = m_levels.back(); level.nextFile < level.files.size()) {
            const File& file = level.files[level.nextFile++];
            return WalkStep{WalkStep::File, level.path + u'/' + nameText(file.name), {}, file.isKnownRegular};
        } else if (level.nextDirectory < level.directories.size()) {
            const QByteArray& name = level.directories[level.nextDirectory++];
            m_failed = enter(level.path + u'/' + nameText(name));
        } else {
            m_levels.pop_back();
        }
        if (m_failed)
            return std::exchange(m_failed, std::nullopt);
    }
}

/// False when there is none left.
bool FileWalk::beginNextWalk() {
    if (m_walk >= m_directories.size() * m_patterns.size())
        return false;
    m_wildcard.emplace(m_patterns[m_walk % m_patterns.size()]);
    const QString& directory = m_directories[m_walk / m_patterns.size()];
    ++m_walk;
    m_failed = enter(withoutSlash(absolutePath(directory)));
    return true;
}

/// A step when it cannot be listed.
std::optional<WalkStep> FileWalk::enter(QString path) {
    Level level;
    level.path = std::move(path);
    if (const SystemError cause = list(level))
        return WalkStep{WalkStep::Unreadable, level.path, FileErrors::reading(level.path + u'/', cause), false};
    m_levels.push_back(std::move(level));
    return std::nullopt;
}

/// Names that are not valid UTF-8 are passed over. UTF-8 sorted by bytes is sorted by code points.
SystemError FileWalk::list(Level& level) const {
    const std::unique_ptr<DIR, CloseDirectory> directory(openDirectory(level.path, m_levels.empty()));
    if (!directory)
        return SystemError::fromErrno(errno);
    const int handle = dirfd(directory.get());
    errno = 0;
    while (const dirent* entry = readdir(directory.get())) {
        const QByteArray bytes(entry->d_name);
        const auto text = pathText(bytes);
        if (text && m_wildcard->matches(*text) && isRegularFile(handle, *entry))
            level.files.push_back({bytes, entry->d_type == DT_REG});
        else if (text && m_subDirectories && isPlainDirectory(handle, *entry))
            level.directories.push_back(bytes);
        errno = 0;
    }
    if (errno != 0)
        return SystemError::fromErrno(errno);
    std::ranges::sort(level.files, {}, &File::name);
    std::ranges::sort(level.directories);
    return {};
}
