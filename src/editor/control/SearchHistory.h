#pragma once

#include <QStringList>

/// The texts last searched for, or last inserted as replacements, newest first, each once. There are two such lists for
/// the whole program, shared by all controls.
class SearchHistory {
 public:
    static constexpr qsizetype Most = 30;

    static SearchHistory& ofFinds();
    static SearchHistory& ofReplacements();

    /// Adds a text at the top. An empty text or one with a line end is not added.
    void add(const QString& text);
    QString newestOr(const QString& other) const { return m_entries.value(0, other); }
    const QStringList& entries() const { return m_entries; }
    /// All entries, divided by line feeds.
    QString text() const { return m_entries.join(u'\n'); }

 private:
    QStringList m_entries;
};
