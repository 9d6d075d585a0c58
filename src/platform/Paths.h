#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

/// Functions for paths as text. Paths are compared exactly, their letter case is never changed, and "/" separates their
/// elements.

/// Returns the part after the last "/"; the whole path when it has none.
QString FileNameOf(const QString& path);

/// Reports whether the path names a folder; links are followed. False when it can't be examined.
bool IsFolderPath(const QString& path);

/// Reports whether the path names a regular file; links are followed.
bool isNormalFile(const QString& path);

/// Reports whether a file of any type has this path; false for a link whose target doesn't exist.
bool fileExists(const QString& path);

/// Returns the absolute path: a relative one is appended to the working folder, "." and doubled "/" are removed. ".."
/// stays, because after a link only the system knows what it means; a "/" at the end stays too. An empty path stays
/// empty, because it names nothing.
QString absolutePath(const QString& path, const QString& workingFolder);

/// The same with the working folder of this process. Every path that is to be opened, saved to or compared passes
/// through it, so that one file has one spelling wherever its path comes from.
QString absolutePath(const QString& path);

/// Returns the bytes of the path for system calls. Nothing when the text can't be a path: it is empty, or contains a
/// NUL or an unpaired surrogate.
std::optional<QByteArray> localName(const QString& path);

/// Returns the text of a path that came from the system. Nothing when the bytes are not valid UTF-8, since a QString
/// can't hold them.
std::optional<QString> pathText(QByteArrayView name);
