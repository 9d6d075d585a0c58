#pragma once

#include "platform/SystemError.h"

#include <QSet>
#include <QString>

/// The words that the user has added to all dictionaries: an own text file, a word a line. Owned by the check that
/// uses it. The file is read at the first use, and again before each change of it, so that nothing is lost of what was
/// written to it by hand.
class OwnWords {
 public:
    /// The list in the program folder.
    static QString standardPath();

    explicit OwnWords(const QString& path = standardPath());

    /// A word of the list is accepted with a capital at its beginning too, and with either form of the apostrophe.
    bool contains(const QString& word) const;
    /// These return why the file could not be read or written; the list is then unchanged.
    SystemError add(const QString& word);
    SystemError remove(const QString& word);

 private:
    SystemError read(QStringList& lines);
    SystemError write(const QStringList& lines);

    QString m_path;
    QSet<QString> m_words;
};

/// A word in the form in which it is looked up: composed characters, no soft hyphens.
QString lookedUpForm(QStringView word);
