#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// A desktop entry: the file by which a desktop starts a program, from a menu or for a file. Plain data with a writer;
/// nothing is read.
struct DesktopEntry {
    QString name;
    QString comment;
    QString program;        ///< absolute path of the executable; the file to open is its only argument
    QString workingFolder;  ///< empty: none
    QString icon;           ///< name in the icon theme, or an absolute path
    QStringList types;      ///< file types that the program opens
    bool hidden = false;    ///< opens files, but is in no menu

    /// The entry of this program, without file types.
    static DesktopEntry ofProgram(const QString& program);

    /// The whole file. Each text is escaped, so that any path and any name is read back unchanged.
    QByteArray bytes() const;
};
