#pragma once

#include <QStringList>

/// Texts that were searched for or put in their place, newest first, each once. There are two for the whole program,
/// shared by all controls.
class SearchHistory {
 public:
    static constexpr qsizetype Most = 30;

    static SearchHistory& ofFinds();
    static SearchHistory& ofReplacements();

    /// Puts a text on top. Nothing is kept of an empty text or one with a line end in it.
    void add(const QString& text);
    QString newestOr(const QString& other) const { return m_entries.value(0, other); }
    const QStringList& entries() const { return m_entries; }
    /// All entries, divided by line feeds.
    QString text() const { return m_entries.join(u'\n'); }

 private:
    QStringList m_entries;
};
