#pragma once

#include "platform/FileSystemCalls.h"
#include "platform/SystemError.h"

#include <QByteArray>
#include <QString>

/// Replaces a file by one with these bytes, in a folder that exists: whoever reads it sees the old or the new file
/// whole, also after a kill or a power cut. For files that several instances write and nobody links; a user's file is
/// written by UserFileWriter. The mode stays; a link is followed. A file that is not a regular one, or that may not be
/// written, is refused. Does not run the event loop.
///
/// The new file is made beside the old one, under a name of its own that ends in ReplacementSuffix, and locked (flock).
/// What a kill left there, the next call removes. Of several that write at the same time the last one counts; none
/// waits for another. The error has the system's reason, and no name.
SystemError replaceFile(const QString& path, const QByteArray& bytes,
                        FileSystemCalls& calls = FileSystemCalls::system());

/// The end of the names of files that are not in their place yet.
inline constexpr const char* ReplacementSuffix = ".quillmark-new";
