#pragma once

#include "platform/SystemError.h"

#include <QString>

/// The folders that the program uses, as absolute paths. They are read from the environment at each call; a variable
/// that is empty, relative or not valid UTF-8 counts as not set. These functions create no folder; makeFolder() and
/// makePrivateFolder() do.

/// Removes the XDG variables that don't name an absolute path from the environment, so that no library creates folders
/// in the current directory. Call it before any library reads them.
void forgetRelativeFolders();

/// The folder of the running executable.
QString executableFolder();

/// The folders in which all programs of this user keep their settings and their data.
QString userConfigFolder();
QString userDataFolder();

/// The folder of the settings database.
QString configFolder();

/// The folder of what is kept between runs for safety alone: records of saves, and unsaved changes.
QString stateFolder();

/// The folder of all other files that the program writes for itself. This is the folder of the executable if that
/// contains `languages` and is writable (a portable copy), otherwise a folder in the user's data.
QString ProgramFolder(const QString& executable = executableFolder());

/// The read-only files that were installed with the program.
QString shareFolder(const QString& executable = executableFolder());

/// The folder of working copies: private to this user, created by makePrivateFolder(). It is in $TMPDIR or else in
/// /var/tmp, which unlike /tmp is never kept in memory. Skips names that belong to another user or to something that is
/// no folder.
QString temporaryFolder();

/// The folder for locks and sockets that live as long as the session. Without an $XDG_RUNTIME_DIR that belongs to this
/// user and can be written to it is the temporary folder.
QString runtimeFolder();

/// Creates the folder and its missing parents, accessible to this user only. Existing folders are not changed.
SystemError makeFolder(const QString& path);

/// Creates the folder with mode 0700. If it exists, it must be a real folder (no link) of this user; access is then
/// withdrawn from others.
SystemError makePrivateFolder(const QString& path);

/// Creates the folder of runtimeFolder() where that is the temporary one; $XDG_RUNTIME_DIR is left as it is.
SystemError makeRuntimeFolder();
