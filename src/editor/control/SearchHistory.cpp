#include "editor/control/SearchHistory.h"

SearchHistory& SearchHistory::ofFinds() {
    static SearchHistory history;
    return history;
}

SearchHistory& SearchHistory::ofReplacements() {
    static SearchHistory history;
    return history;
}

void SearchHistory::add(const QString& text) {
    if (text.isEmpty() || text.contains(u'\n') || text.contains(u'\r'))
        return;
    m_entries.removeOne(text);
    m_entries.prepend(text);
    m_entries.resize(std::min(m_entries.size(), Most));
}
