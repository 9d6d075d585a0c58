#pragma once

#include "hex/bytes/WorkingCopy.h"

/// How the working copies of hex views are created and kept: the system calls, which outlive all views, and how many
/// bytes a load or save copies between two passes of the event loop.
struct HexStorage {
    FileSystemCalls& calls = FileSystemCalls::system();
    qint64 blockSize = WorkingCopy::BlockSize;
};
