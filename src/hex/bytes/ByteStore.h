#pragma once

#include "hex/bytes/FilePosition.h"
#include "platform/SystemError.h"

#include <QtGlobal>

#include <string_view>

/// The bytes of one file, whose number does not change: read and overwritten by position. Lengths are bytes.
class ByteStore {
 public:
    virtual ~ByteStore() = default;

    virtual qint64 length() const = 0;

    /// Returns the number of bytes read: fewer than `count` at the end of the file, -1 when it can't be read.
    virtual qint64 read(FilePosition from, char* buffer, qint64 count) const = 0;

    /// Bytes past the end are cut off.
    virtual SystemError write(FilePosition from, std::string_view bytes) = 0;
};
