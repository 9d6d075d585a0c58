#pragma once

#include "platform/SystemError.h"

#include <QString>

#include <sys/stat.h>

/// Sentences for the user about files that can't be read or written: which file, and why in the system's words. Made
/// here and nowhere else.
namespace FileErrors {

SystemError reading(const QString& path, const SystemError& cause);
SystemError writing(const QString& path, const SystemError& cause);

/// The cause why a thing of this kind is neither read nor written; no error for a regular file.
SystemError unlessRegular(mode_t mode);

}  // namespace FileErrors
