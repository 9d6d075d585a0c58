#pragma once

#include "platform/SystemError.h"

#include <QtGlobal>

#include <span>
#include <string_view>

/// Bytes to be written one behind the other.
using BytePieces = std::span<const std::string_view>;

/// Gives bytes in turn to whoever writes them, for those that are never in memory as a whole.
class ByteSource {
 public:
    virtual ~ByteSource() = default;

    /// Of all that it gives; does not change.
    virtual qint64 length() const = 0;
    /// What comes next, at least one byte; stands until the next call. An error ends it.
    virtual SystemError next(BytePieces& pieces) = 0;
};
