#include "platform/FileIdentity.h"

#include <QFile>

#include <sys/stat.h>

std::optional<FileIdentity> FileIdentity::of(const QString& path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return std::nullopt;
    }
    return FileIdentity{status.st_dev, status.st_ino, S_ISREG(status.st_mode)};
}
