#pragma once

#include "hex/bytes/WorkingCopy.h"

/// How the working copies of hex views are made and kept: the calls to the system, which outlive all views, and how
/// many bytes a load or save copies between two passes of the event loop.
struct HexStorage {
    FileSystemCalls& calls = FileSystemCalls::system();
    qint64 blockSize = WorkingCopy::BlockSize;
};
