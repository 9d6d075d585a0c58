#include "platform/FileIdentity.h"

#include "platform/Paths.h"

#include <sys/stat.h>

std::optional<FileIdentity> FileIdentity::of(const QString& path) {
    const std::optional<QByteArray> name = localName(path);
    struct stat status {};
    if (!name || ::stat(name->constData(), &status) != 0)
        return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino, S_ISREG(status.st_mode)};
}
