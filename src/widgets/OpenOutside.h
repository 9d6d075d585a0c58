#pragma once

#include <QString>

/// Opens things in other programs of the desktop. Returns at once; nothing is reported when no program is found.
namespace OpenOutside {

/// A window of the file manager on the folder.
void folder(const QString& path);

}  // namespace OpenOutside
