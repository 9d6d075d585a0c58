#pragma once

#include "platform/SystemError.h"

#include <QString>

#include <sys/stat.h>

/// Builds the error messages for files that can't be read, written or deleted: the file name and the reason in the
/// system's words. No other code builds such messages.
namespace FileErrors {

SystemError reading(const QString& path, const SystemError& cause);
SystemError writing(const QString& path, const SystemError& cause);
SystemError deleting(const QString& path, const SystemError& cause);

/// Returns why a file of this type can be neither read nor written; no error for a regular file.
SystemError unlessRegular(mode_t mode);

}  // namespace FileErrors
