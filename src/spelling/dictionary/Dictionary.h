#pragma once

#include <QString>
#include <QStringList>

/// A dictionary of the system: two files of the same name. A plain value.
struct Dictionary {
    QString name;         ///< of the files, such as "en_US"
    QString title;        ///< as people read it, such as "English (United States)"
    QString affixPath;    ///< how words are inflected, NAME.aff
    QString wordsPath;    ///< the words, NAME.dic
    QStringList aliases;  ///< further names of the same two files

    bool isNamed(const QString& other) const { return name == other || aliases.contains(other); }
};
