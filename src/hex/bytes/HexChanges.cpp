#include "hex/bytes/HexChanges.h"

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
