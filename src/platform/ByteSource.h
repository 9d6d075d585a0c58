#pragma once

#include "platform/SystemError.h"

#include <QtGlobal>

#include <span>
#include <string_view>

/// Byte ranges that are written one after the other.
using BytePieces = std::span<const std::string_view>;

/// Supplies bytes part by part to a writer, for contents that are never in memory as a whole. Owned by the caller of
/// the writer, and used for one write, which may read it several times.
class ByteSource {
 public:
    virtual ~ByteSource() = default;

    /// The total number of bytes; constant.
    virtual qint64 length() const = 0;
    /// Returns the next bytes in `pieces`, at least one; they are valid until the next call. Together they end where a
    /// page of 4096 bytes or the source does: each part is written for itself, and then no block on the disk can hold
    /// bytes of two writes. After an error it is not called again.
    virtual SystemError next(BytePieces& pieces) = 0;
    /// What the bytes are read for.
    enum class Reading { ToExamine, ToWrite };
    /// From now on next() returns the bytes from the first one on, to be examined or to be written, as they are if this
    /// was not called. False: they can be read once only, and nothing changed.
    virtual bool rewind(Reading /*next*/) { return false; }
};
