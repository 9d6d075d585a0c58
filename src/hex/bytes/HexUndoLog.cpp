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

std::vector<HexUndoEntry> HexUndoLog::entries() const {
    std::vector<HexUndoEntry> entries;
    for (int i = m_count; i > 0; --i)
        entries.push_back(m_entries[static_cast<std::size_t>((m_next + Capacity - i) % Capacity)]);
    return entries;
}
