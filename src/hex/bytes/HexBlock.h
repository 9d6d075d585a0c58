#pragma once

#include "hex/bytes/ByteStore.h"

#include <QByteArray>

#include <functional>
#include <optional>

/// A run of bytes of a file, both ends belonging to it.
struct HexBlock {
    static constexpr qint64 BytesAtOnce = 512'000;  ///< that a fill writes

    FilePosition first;
    FilePosition last;

    qint64 size() const { return last - first + 1; }
    bool operator==(const HexBlock&) const = default;

    /// Between two offsets in either order, cut to the file. Nothing when one has no 32-bit position or the file no
    /// byte.
    static std::optional<HexBlock> between(Offset one, Offset other, qint64 length);

    /// Nothing when it can't be read.
    std::optional<QByteArray> bytesIn(const ByteStore& file) const;
    /// How many bytes were overwritten, and why not the others.
    struct Filled {
        qint64 bytes = 0;
        SystemError error;
    };
    /// Overwrites each byte of it. The watch is called often with how far it is, in percent; once it returns false the
    /// rest stays as it is, and the file is not used any more.
    Filled fill(ByteStore& file, quint8 byte, const std::function<bool(int percent)>& watch = {}) const;
};
