#pragma once

#include "hex/bytes/ByteStore.h"

#include <QByteArray>

#include <algorithm>
#include <cerrno>
#include <cstring>

/// The bytes of a file in memory.
class MemoryBytes : public ByteStore {
 public:
    MemoryBytes() = default;
    explicit MemoryBytes(const QByteArray& content) : bytes(content) {}

    QByteArray bytes;
    bool fails = false;
    mutable qint64 mostRead = 0;  ///< the longest read so far

    qint64 length() const override { return bytes.size(); }

    qint64 read(FilePosition from, char* buffer, qint64 count) const override {
        mostRead = std::max(mostRead, count);
        const qint64 at = from.number() - 1;
        if (fails || at < 0)
            return -1;
        const qint64 given = std::clamp<qint64>(length() - at, 0, count);
        if (given > 0)
            std::memcpy(buffer, bytes.constData() + at, static_cast<std::size_t>(given));
        return given;
    }

    SystemError write(FilePosition from, std::string_view part) override {
        if (fails)
            return SystemError::fromErrno(EIO);
        const qint64 at = from.number() - 1;
        const qint64 count = std::clamp<qint64>(length() - at, 0, static_cast<qint64>(part.size()));
        std::copy_n(part.data(), count, bytes.begin() + at);
        return {};
    }
};
