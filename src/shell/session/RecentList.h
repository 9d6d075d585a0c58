#pragma once

#include <QStringList>

/// A list of texts that were used lately, the newest first; a text beyond the capacity falls out at the end. A plain
/// class without a window.
class RecentList {
 public:
    struct Rule {
        qsizetype capacity;
        Qt::CaseSensitivity comparison = Qt::CaseSensitive;
    };

    explicit RecentList(const Rule& rule, QStringList entries = {});

    const QStringList& entries() const { return m_entries; }
    QStringList oldestFirst() const;
    bool contains(const QString& entry) const { return indexOf(entry) >= 0; }

    /// Puts the entry on top; where it stood before, the others close up.
    void add(const QString& entry);
    /// The entries after it close up. The last place of a full list is not cleared, so that its last entry then stands
    /// twice, and nothing changes when the entry stands in that place itself.
    void remove(const QString& entry);

 private:
    qsizetype indexOf(const QString& entry) const;

    Rule m_rule;
    QStringList m_entries;
};
