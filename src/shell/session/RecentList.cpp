#include "shell/session/RecentList.h"

#include <algorithm>
#include <iterator>
#include <utility>

RecentList::RecentList(const Rule& rule, QStringList entries) : m_rule(rule), m_entries(std::move(entries)) {}

QStringList RecentList::oldestFirst() const {
    QStringList turned;
    turned.reserve(m_entries.size());
    std::ranges::reverse_copy(m_entries, std::back_inserter(turned));
    return turned;
}

void RecentList::add(const QString& entry) {
    const qsizetype present = indexOf(entry);
    if (present >= 0)
        m_entries.removeAt(present);
    else if (m_entries.size() >= m_rule.capacity)
        m_entries.removeAt(m_rule.capacity - 1);
    m_entries.prepend(entry);
}

void RecentList::remove(const QString& entry) {
    const qsizetype present = indexOf(entry);
    if (present < 0)
        return;
    const bool wasFull = m_entries.size() >= m_rule.capacity;
    const QString last = m_entries.last();
    m_entries.removeAt(present);
    if (wasFull)
        m_entries.append(last);
}

qsizetype RecentList::indexOf(const QString& entry) const {
    const auto found = std::ranges::find_if(
        m_entries, [&](const QString& each) { return each.compare(entry, m_rule.comparison) == 0; });
    return found == m_entries.end() ? -1 : std::distance(m_entries.begin(), found);
}
