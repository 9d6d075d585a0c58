#pragma once

#include <QString>

/// Keys of the folder tree: a prefix and a path. "DRIVE" and the mount point of a fixed volume, "REMOVABLE" and that of
/// any other, "FOLDER" and the path of a folder. The letter case of paths is kept.

/// Returns the path in the key. A key with another start is read as one with a prefix of nine letters.
QString DecodeFolderKey(const QString& key);

/// Returns the key of a folder.
QString folderKey(const QString& path);

/// Returns the key of a volume by its mount point.
QString volumeKey(const QString& mountPoint, bool isFixed);

/// Reports whether the key is that of a folder, and not of a volume.
bool isFolderKey(const QString& key);
/// Reports whether it is that of a fixed volume.
bool isFixedKey(const QString& key);

/// Returns the path of a name in a folder.
QString pathIn(const QString& folder, const QString& name);
