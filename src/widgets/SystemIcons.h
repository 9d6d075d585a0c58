#pragma once

#include <QIcon>
#include <QString>

/// Pictures of files and folders as the desktop shows them, by their type. Where the desktop has none, it is one of the
/// program's own. The disk is not read for the file or folder.
namespace SystemIcons {

/// The picture for the type that the name tells. The same picture object for all files of a type.
QIcon ofFile(const QString& path);

/// A view shows its second form where the folder is open.
QIcon ofFolder(const QString& path);
QIcon ofVolume(bool isFixed);

}  // namespace SystemIcons
