#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

/// Paths as texts. They are compared exactly, never changed in letter case, and "/" parts their elements.

/// What stands behind the last "/"; the path itself when it has none.
QString FileNameOf(const QString& path);

/// Whether the path names a folder, links followed. Any failure to look answers false.
bool IsFolderPath(const QString& path);

/// Whether a regular file bears the path, links followed.
bool isNormalFile(const QString& path);

/// Whether anything bears the path; a link to nothing does not count.
bool fileExists(const QString& path);

/// The path as seen from the root: a relative one is put behind the working folder, "." and doubled "/" are taken out.
/// ".." stays, because only the system knows where it leads through a link; a "/" at the end stays too. An empty path
/// stays empty: it names nothing, not the working folder.
QString absolutePath(const QString& path, const QString& workingFolder);

/// The bytes by which the system knows a path. Nothing when the text can't be a path: it is empty, holds a NUL or half
/// a surrogate pair.
std::optional<QByteArray> localName(const QString& path);

/// The text of a path that the system gave. Nothing when it is not valid UTF-8: such a name can't be carried in a text.
std::optional<QString> pathText(QByteArrayView name);
