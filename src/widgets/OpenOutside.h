#pragma once

#include <QString>

class QUrl;

/// Opens things in other programs of the desktop. Returns at once; nothing is reported when no program is found.
namespace OpenOutside {

/// A window of the file manager on the folder.
void folder(const QString& path);

/// A page or a mail, in the program that the desktop has for such addresses.
void address(const QUrl& address);

}  // namespace OpenOutside
