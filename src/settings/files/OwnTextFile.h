#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <cerrno>
#include <optional>

/// The small files that the program keeps for itself: lists, histories, language files. Lines end in CR LF, and LF
/// alone is read too. Written as UTF-8 without a byte order mark; read in the encoding of the mark, else as UTF-8, else
/// as Windows-1252. Only regular files are read. Lengths are bytes.
namespace OwnTextFile {

/// More bytes than any list that the program writes.
inline constexpr qsizetype MostListBytes = 16 * 1024 * 1024;

/// The path of a file of the program folder.
QString path(const QString& name);

/// A file read whole.
struct Content {
    QByteArray bytes;   ///< empty after an error
    SystemError error;  ///< names the file

    bool isTooLong() const { return error.number == EFBIG; }
};

/// A file longer than `most` is an error.
Content read(const QString& path, qsizetype most);
/// Of a file longer than `most` only the first `most` bytes are read.
Content readHead(const QString& path, qsizetype most);

/// A last line without an end counts, an empty one after the last end does not.
QStringList linesOf(QByteArrayView bytes);

/// Nothing when the file cannot be read or is longer than `most`.
std::optional<QStringList> readLines(const QString& path, qsizetype most);

/// Whether a text is one field of one line: it contains neither a tab nor a line break. May be empty.
bool isOneField(const QString& text);

/// Replaces the whole file, and creates its folder first. A line that contains a line break is left out. False: the
/// file could not be written and is unchanged.
bool writeLines(const QString& path, const QStringList& lines);

/// The same in a folder that exists, with the reason when the file could not be written.
SystemError replace(const QString& path, const QStringList& lines, FileSystemCalls& calls = FileSystemCalls::system());

/// The bytes of a file with these lines.
QByteArray bytesOf(const QStringList& lines);

}  // namespace OwnTextFile
