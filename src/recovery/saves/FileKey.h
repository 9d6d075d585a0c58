#pragma once

#include <QtGlobal>

#include <sys/stat.h>

#include <utility>

/// Identifies a file: its device and inode.
using FileKey = std::pair<quint64, quint64>;

inline FileKey keyOf(const struct stat& status) {
    return {status.st_dev, status.st_ino};
}
