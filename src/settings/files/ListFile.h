#pragma once

#include <QString>
#include <QStringList>

/// The small text files in which the program keeps its lists: an entry a line, in the program folder. A failure is not
/// told: what cannot be read is empty, and what cannot be written leaves the old file whole.
namespace ListFile {

/// Full path of a list by its name.
QString path(const QString& name);

/// The lines of a file, however they end; the encoding is found out.
QStringList read(const QString& path);

/// Replaces the file whole: UTF-8 without a mark, lines ended by CR LF. An entry with a line break in it is left out.
void write(const QString& path, const QStringList& lines);

}  // namespace ListFile
