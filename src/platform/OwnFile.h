#pragma once

#include "platform/FileSystemCalls.h"

#include <QByteArray>
#include <QString>

/// How an attempt to lock a file that the program made for itself ended.
enum class OwnFileLock {
    Done,
    Missing,
    InUse,   ///< a living process has it locked, or has put another file in its place
    Refused  ///< it is no file of this user's own, or cannot be opened or locked
};

/// Opens a file for reading and, where that is allowed, for writing, and locks it (flock) without waiting, so that no
/// other process takes it. `handle` is the caller's, who closes it and so releases the lock; -1 unless the result is
/// Done. Links and other kinds of files are never opened.
OwnFileLock lockOwnFile(FileSystemCalls& calls, const QByteArray& name, int& handle);

/// Whether it is a regular file of this user that has one name.
bool isOwnFile(FileSystemCalls& calls, int handle);

/// Whether there is a folder of this user, and no link to one.
bool isOwnFolder(const QString& path);
