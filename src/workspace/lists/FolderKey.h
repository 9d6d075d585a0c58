#pragma once

#include <QString>

/// Keys of the folder tree: a prefix and a path. "DRIVE" and the mount point of a fixed volume, "REMOVABLE" and that of
/// any other, "FOLDER" and the path of a folder. The letter case of paths is kept.

/// Returns the path in the key. A key with another start is read as one with a prefix of nine letters.
QString DecodeFolderKey(const QString& key);

/// Returns the key of a folder.
QString folderKey(const QString& path);
