#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The file types of an extension, as the desktop names them. Those that the system knows are used as they are; for any
/// other extension the program has a type of its own, which a package (an XML file) describes to the desktop.
namespace MimePackage {

/// Whether files can end in the extension, which has no dot in front: not empty, not too long, without "/" and control
/// characters.
bool isUsable(const QString& extension);

/// At least one type.
QStringList typesOf(const QString& extension);

/// Whether a package has to describe the type.
bool isOwn(const QString& type);

/// The name of the package's file.
QString fileName(const QString& extension);

/// The whole package for a type of its own; `description` is what a file manager calls such a file.
QByteArray bytes(const QString& type, const QString& extension, const QString& description, bool hasIcon);

}  // namespace MimePackage
