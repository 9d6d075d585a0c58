#pragma once

#include "editor/language/LanguageDefinition.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

/// A language in a list: its name in upper case, and its patterns as they are written to the index.
struct LanguageRow {
    QString name;
    QString patterns;

    bool operator==(const LanguageRow&) const = default;
};

/// The languages that the program knows, the files that belong to each, and the definitions that have been loaded. One
/// for the process, owned by the shell, used by one thread.
///
/// Its files lie in the folder `languages`: the index `languages.idx`, and NAME.lng and NAME.TXT of each language. Each
/// is taken from the program folder, or else from what was installed. No failure shows a message: without an index the
/// table stays empty, of an index that is too long, not readable to its end or has a record that is no language the
/// table has what could be read, and indexFault() says why it is not written again; without a sound definition a
/// language stays unloaded, and lastError() says why.
class LanguageTable {
 public:
    static constexpr int MostLanguages = 51;
    static constexpr qsizetype MostIndexBytes = 1024 * 1024;

    struct Entry {
        QString LangName;  ///< upper case
        QString LangExt;   ///< "," + trimmed patterns + "," in upper case
        bool LangLoaded = false;
    };

    LanguageTable(const QString& programFolder, const QString& shareFolder);

    /// Appends the records of the index, up to the limit, and registers every language.
    void LoadLanguageIndex();
    const QList<Entry>& entries() const { return m_entries; }
    /// The languages of the index as it was last read, each once, by its first record. The table may have older
    /// patterns of a language, by which its files are found until the program is started again.
    const QList<LanguageRow>& rows() const { return m_rows; }
    /// Why rows() lacks a part of the index, which therefore must not be written; empty when nothing is missing.
    const QString& indexFault() const { return m_indexFault; }
    /// The names of the registered languages, in the order of the table.
    QStringList loadedNames() const;
    /// Writes the index to the program folder; false: it is as it was. An index with a fault is never written, nor are
    /// more than MostLanguages rows.
    bool saveIndex(const QList<LanguageRow>& rows) const;

    /// Reads the definition unless that was done, or the name is not in the table.
    void RegisterLanguage(const QString& pName);
    /// The name of the language that claims the file, registered; empty when none does.
    QString LanguageOfFile(const QString& pFilename);

    /// The definition of a registered language, by its name in any letter case; null for others. Stays where it is as
    /// long as the table.
    const LanguageDefinition* definition(const QString& name) const;
    /// Full path of the sample text of a language.
    QString samplePath(const QString& name) const;
    /// Why the definition requested last could not be loaded; empty when it could.
    const QString& lastError() const { return m_lastError; }

 private:
    QStringList indexLines();
    QList<LanguageRow> recordsOf(const QStringList& lines);
    void noteFault(const QString& fault);
    void addRow(const LanguageRow& record);
    QString pathOf(const QString& file) const;
    void registerEntry(Entry& entry);

    QString m_programFolder;
    QString m_shareFolder;
    QList<Entry> m_entries;
    QList<LanguageRow> m_rows;
    QString m_indexFault;
    QHash<QString, std::shared_ptr<const LanguageDefinition>> m_definitions;
    QString m_lastError;
};
