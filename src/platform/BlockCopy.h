#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <functional>

/// Called after each block with the part of the copy that is done, in whole percent. It may run the event loop. Return
/// false when the object that started the copy was destroyed meanwhile: copyFile() then stops.
using CopyProgress = std::function<bool(int percent)>;

/// Returns how much is done, in whole percent of the `length / blockSize` full blocks; 100 at the end. All sizes are
/// bytes.
int percentDone(qint64 done, qint64 length, qint64 blockSize);

/// Copies the file open at `from` into the empty file open at `to`; both handles stay open and stay the caller's. If
/// the file system can share the bytes between both files, they are shared; otherwise the kernel copies block by block,
/// and if it can't, the bytes are read and written. Holes stay holes.
///
/// `length` is the expected length in bytes: a file that has become shorter ends the copy early, and bytes after
/// `length` are not copied (unless the bytes are shared). Returns ECANCELED when `progress` returned false. Runs the
/// event loop only if `progress` does.
SystemError copyFile(FileSystemCalls& calls, int from, int to, qint64 length, qint64 blockSize,
                     const CopyProgress& progress);
