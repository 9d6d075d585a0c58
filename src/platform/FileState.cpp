#include "platform/FileState.h"

#include "platform/Paths.h"

#include <sys/stat.h>

namespace {

qint64 nanoseconds(const timespec& time) {
    constexpr qint64 PerSecond = 1'000'000'000;
    return time.tv_sec * PerSecond + time.tv_nsec;
}

FileState stateFrom(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

}  // namespace

bool FileState::isStillAt(const QString& path) const {
    const std::optional<FileState> now = of(path);
    return now && now->hasSameBytesAs(*this);
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
