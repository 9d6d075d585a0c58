#pragma once

#include "platform/FileSystemCalls.h"

#include <QString>

/// Waits until the names in the folder are on the disk. False: it cannot be opened or flushed. The folder itself is not
/// a link.
bool flushFolder(FileSystemCalls& calls, const QString& folder);
/// The same for the folders above it, as far as they can be opened: their names were perhaps only just made.
void flushFoldersAbove(FileSystemCalls& calls, const QString& folder);
