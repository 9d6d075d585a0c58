#include "hex/bytes/BytesBefore.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <utility>

namespace {

/// Of a part, beside its bytes; an estimate.
constexpr qint64 MemoryOfAPart = 128;

}  // namespace

BytesBefore::Parts::const_iterator BytesBefore::partBehind(qint64 at) const {
    const auto next = m_parts.upper_bound(at);
    if (next == m_parts.begin() || endOf(*std::prev(next)) <= at)
        return next;
    return std::prev(next);
}

SystemError BytesBefore::keep(qint64 at, qint64 count, const Read& read) {
    const qint64 end = at + count;
    while (at < end) {
        const auto next = partBehind(at);
        if (next != m_parts.end() && next->first <= at) {
            at = endOf(*next);
            continue;
        }
        const qint64 gapEnd = next == m_parts.end() ? end : std::min(end, next->first);
        QByteArray bytes(static_cast<qsizetype>(gapEnd - at), Qt::Uninitialized);
        const qint64 memory = m_memory + bytes.size() + MemoryOfAPart;
        if (memory > m_mostMemory)
            return SystemError::fromErrno(EBUSY);
        if (read(at, bytes.data(), bytes.size()) != bytes.size())
            return SystemError::fromErrno(EIO);
        m_memory = memory;
        m_parts.emplace(at, std::move(bytes));
        at = gapEnd;
    }
    return {};
}

void BytesBefore::putInto(qint64 at, char* buffer, qint64 count) const {
    const qint64 end = at + count;
    for (auto part = partBehind(at); part != m_parts.end() && part->first < end; ++part) {
        const qint64 from = std::max(at, part->first);
        const qint64 to = std::min(end, endOf(*part));
        std::memcpy(buffer + (from - at), part->second.constData() + (from - part->first),
                    static_cast<std::size_t>(to - from));
    }
}
