#pragma once

#include "platform/SystemError.h"

#include <QString>

/// Where the program keeps what. The names come from the environment at each call; a variable that is empty, relative
/// or not valid UTF-8 counts as not set. Asking makes nothing: makeFolder() and makePrivateFolder() do.

/// Takes the desktop's variables for folders that name no absolute path out of the environment, so that no library
/// makes folders where the program happens to stand. To be called before any library looks.
void forgetRelativeFolders();

/// Folder of the running executable.
QString executableFolder();

/// The settings store.
QString configFolder();

/// Everything else that the program writes for itself: beside the executable in a copy that brings its `languages`
/// along and may be written to, else among the user's data.
QString ProgramFolder(const QString& executable = executableFolder());

/// What was installed with the program and is only read.
QString shareFolder(const QString& executable = executableFolder());

/// For working copies: a folder of this user's alone, made by makePrivateFolder(). It lies under $TMPDIR or else in
/// /var/tmp, which unlike /tmp is never kept in memory. Passes over names that somebody else has taken.
QString temporaryFolder();

/// For locks and sockets that go with the session. Without a usable $XDG_RUNTIME_DIR it is the temporary folder, and
/// made like it.
QString runtimeFolder();

/// Makes the folder and those above it that are missing, readable for this user alone. One that is there is left alone.
SystemError makeFolder(const QString& path);

/// Makes the folder with mode 0700, or sees to it that the one there is a real folder, this user's, and closed to
/// others.
SystemError makePrivateFolder(const QString& path);
