#pragma once

#include <QByteArray>

#include <sys/stat.h>

#include <vector>

/// A folder of files in each of which the same word is replaced by the next one again and again.
class ReplacedFiles {
 public:
    /// Makes the files.
    explicit ReplacedFiles(QByteArray folder);

    const QByteArray& folder() const { return m_folder; }
    QByteArray oldWord() const { return word(m_version); }
    QByteArray newWord() const { return word(m_version + 1); }
    /// Looks at all files after the replacement of the old word by the new one: names those that have neither bytes, or
    /// another inode or mode, and counts those that have the new ones. Then all are given the new ones.
    std::vector<QByteArray> judge(int& replaced);
    /// How many files have neither the old word nor the new one in all places.
    int torn() const;
    /// The one that takes longest to write.
    const QByteArray& largest() const { return m_files.back().path; }
    int count() const { return int(m_files.size()); }

 private:
    struct File {
        QByteArray path;
        qsizetype length;
        struct stat status;
    };

    static QByteArray word(int version) { return "w" + QByteArray::number(version * 7) + "w"; }
    QByteArray contents(const File& file, const QByteArray& word) const;

    QByteArray m_folder;
    std::vector<File> m_files;
    int m_version = 0;
};
