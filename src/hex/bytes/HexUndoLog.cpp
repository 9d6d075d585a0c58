#include "hex/bytes/HexUndoLog.h"

#include <algorithm>

void HexUndoLog::add(const HexUndoEntry& entry) {
    m_entries[static_cast<std::size_t>(m_next)] = entry;
    m_next = (m_next + 1) % Capacity;
    m_count = std::min(m_count + 1, Capacity);
}

std::optional<HexUndoEntry> HexUndoLog::take() {
    if (isEmpty())
        return std::nullopt;
    --m_count;
    m_next = (m_next + Capacity - 1) % Capacity;
    return m_entries[static_cast<std::size_t>(m_next)];
}
