#pragma once

#include "platform/SystemError.h"

#include <QByteArray>
#include <QString>

#include <cerrno>

/// A small file, read whole.
struct BoundedFile {
    QByteArray bytes;   ///< empty after an error
    SystemError error;  ///< names the file

    bool isTooLong() const { return error.number == EFBIG; }
};

/// Reads a regular file of at most `most` bytes; a longer one is an error.
BoundedFile readBounded(const QString& path, qsizetype most);
