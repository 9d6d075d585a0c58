#include "platform/FileState.h"

#include "platform/Paths.h"

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <algorithm>
#include <iterator>

namespace {

qint64 nanoseconds(const timespec& time) {
    constexpr qint64 PerSecond = 1'000'000'000;
    return time.tv_sec * PerSecond + time.tv_nsec;
}

FileState stateFrom(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

/// 0: it is not known.
unsigned long typeOfFileSystem(const QString& path) {
    struct statfs status {};
    const auto name = localName(path);
    return name && ::statfs(name->constData(), &status) == 0 ? static_cast<unsigned long>(status.f_type) : 0;
}

/// What stands behind FUSE and a server is not known.
constexpr unsigned long WithoutLastingInodes[] = {MSDOS_SUPER_MAGIC, EXFAT_SUPER_MAGIC, FUSE_SUPER_MAGIC,
                                                  SMB_SUPER_MAGIC,   CIFS_SUPER_MAGIC,  SMB2_SUPER_MAGIC};

}  // namespace

bool hasLastingInodes(unsigned long typeOfFileSystem) {
    return std::ranges::find(WithoutLastingInodes, typeOfFileSystem) == std::end(WithoutLastingInodes);
}

bool FileState::isStillAt(const QString& path) const {
    const std::optional<FileState> now = of(path);
    if (!now || now->size != size || now->modified != modified)
        return false;
    return now->inode == inode || !hasLastingInodes(typeOfFileSystem(path));
}

std::optional<FileState> FileState::of(const QString& path) {
    const auto name = localName(path);
    struct stat status {};
    if (!name || ::stat(name->constData(), &status) != 0)
        return std::nullopt;
    return stateFrom(status);
}

std::optional<FileState> FileState::of(int handle) {
    struct stat status {};
    if (::fstat(handle, &status) != 0)
        return std::nullopt;
    return stateFrom(status);
}
