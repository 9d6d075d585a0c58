#pragma once

#include <QIcon>
#include <QString>

/// Pictures of files and folders as the desktop shows them, by their type.
namespace SystemIcons {

/// The picture for the type that the name tells; the file is not read. The same picture object for all files of a type.
QIcon ofFile(const QString& path);
QIcon ofFolder(const QString& path);

}  // namespace SystemIcons
