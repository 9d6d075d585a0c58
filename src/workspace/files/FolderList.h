#pragma once

#include <QString>
#include <QStringList>

/// The favourite or the recent folders: folder tree keys in order, kept in a file of the program folder that is
/// replaced at each change. A file that cannot be read counts as empty, and one that cannot be written stays as it was.
/// Owned by the file explorer.
class FolderList {
 public:
    /// As many are written to the file; the first ones.
    static constexpr qsizetype MostKept = 21;

    /// `fileName` without a folder.
    explicit FolderList(QString fileName);

    void load();
    const QStringList& keys() const { return m_keys; }
    bool contains(const QString& key) const { return m_keys.contains(key); }

    /// At the end, unless the key is there already. Writes the file.
    void add(const QString& key);
    void remove(const QString& key);

 private:
    void save() const;

    QString m_fileName;
    QStringList m_keys;
};
