#pragma once

#include <QString>

/// The folder for a code that the menus use: 0 the desktop, 5 the documents, 99 temporary files, 1 the programs of the
/// system ("/usr"), -1 its settings ("/etc"). Empty for any other code.
QString specialFolder(int code);
