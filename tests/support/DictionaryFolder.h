#pragma once

#include "spelling/dictionary/Dictionary.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A folder of small dictionaries that a test makes itself.
class DictionaryFolder {
 public:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString folder() const { return m_folder.path(); }

    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << name.toStdString();
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    /// A dictionary of these words, one a line, in UTF-8 unless the affix file names another encoding.
    Dictionary make(const QString& name, const QByteArray& words,
                    const QByteArray& affix = "SET UTF-8\nTRY abcdefghijklmnopqrstuvwxyz\n") const {
        write(name + u".aff"_qs, affix);
        write(name + u".dic"_qs, QByteArray::number(words.count('\n') + 1) + '\n' + words + '\n');
        return at(name);
    }

    Dictionary at(const QString& name) const {
        return {name, name, path(name + u".aff"_qs), path(name + u".dic"_qs), {}};
    }

 private:
    QTemporaryDir m_folder;
};
