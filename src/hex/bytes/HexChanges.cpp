#include "hex/bytes/HexChanges.h"

#include <algorithm>

void HexChanges::type(FilePosition at, quint8 before, quint8 now) {
    const auto kept = m_before.constFind(at.number());
    if (kept == m_before.constEnd() && before != now)
        m_before.insert(at.number(), before);
    else
        restore(at, now);
}

void HexChanges::restore(FilePosition at, quint8 now) {
    const auto kept = m_before.constFind(at.number());
    if (kept != m_before.constEnd() && *kept == now)
        m_before.erase(kept);
}

/// A replacement may have overwritten a typed byte since.
bool HexChanges::isMarked(FilePosition at, quint8 now) const {
    const auto kept = m_before.constFind(at.number());
    return kept != m_before.constEnd() && *kept != now;
}

std::vector<std::pair<FilePosition, quint8>> HexChanges::all() const {
    std::vector<std::pair<FilePosition, quint8>> all;
    all.reserve(static_cast<std::size_t>(m_before.size()));
    for (auto each = m_before.cbegin(); each != m_before.cend(); ++each)
        all.emplace_back(FilePosition(each.key()), each.value());
    std::sort(all.begin(), all.end());
    return all;
}
