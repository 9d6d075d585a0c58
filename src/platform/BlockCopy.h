#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <functional>

/// How much of a copy is done, in whole percent, after each block. It may yield. False ends the copy there: whoever
/// asked for it is gone.
using CopyProgress = std::function<bool(int percent)>;

/// Percent after each of `length / blockSize` full blocks, and 100 at the end.
int percentDone(qint64 done, qint64 length, qint64 blockSize);

/// Copies a file into an empty one, both open: shares its bytes where the file system can, else lets the system copy
/// block by block, else reads and writes. Holes stay holes. `length` is what the file is believed to hold: a shorter
/// one ends early, more is not taken unless it is shared. ECANCELED when progress ended it.
SystemError copyFile(FileSystemCalls& calls, int from, int to, qint64 length, qint64 blockSize,
                     const CopyProgress& progress);
