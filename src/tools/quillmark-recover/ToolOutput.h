#pragma once

#include "platform/ByteSource.h"
#include "platform/SystemError.h"

#include <QByteArray>
#include <QString>

/// What the commands of the tool end with, and what they have in common. Paths are absolute.
namespace ToolOutput {

enum ExitCode {
    Done = 0,
    Missing = 1,  ///< the record or journal, or the file in it, doesn't exist
    Misused = 2,  ///< the arguments can't be understood
    Failed = 3,   ///< a file can't be read or written, or a running program has the record or journal
    Unfit = 4     ///< it is damaged, or the file it is based on is another one
};

/// On standard error; returns the code.
int say(ExitCode code, const QString& text);
/// On standard output. False: it cannot be written.
bool print(const QString& text);
/// A text as it can be shown in a terminal: control characters and bytes that are no text are escaped.
QString shown(const QString& text);

QByteArray nameOf(const QString& path);
/// A new file, or nothing: one that exists is left alone, and a link is not followed. Nothing is left after an error.
SystemError writeNew(const QString& path, ByteSource& source);

}  // namespace ToolOutput
