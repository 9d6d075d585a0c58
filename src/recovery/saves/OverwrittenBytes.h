#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <QByteArray>

/// Stores the contents of a file beside the record that is about to be written over it, as a record of their own that
/// is set aside: quillmark-recover restores them. `record` is the name of the record, `target` that of the file. Stored
/// twice, they are there once. A file larger than MostOverwrittenBytes is not stored.
constexpr quint64 MostOverwrittenBytes = 64ULL * 1024 * 1024;
SystemError keepOverwrittenBytes(FileSystemCalls& calls, const QByteArray& record, const QByteArray& target);
