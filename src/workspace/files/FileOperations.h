#pragma once

#include "platform/SystemError.h"

#include <QString>

#include <atomic>

/// What the file explorer does to files. Each returns the system's error. They may take long, so they are called in
/// threads of their own.
namespace FileOperations {

/// Gives a file another name in its folder; never that of a file that is there.
SystemError rename(const QString& path, const QString& newName);

/// Where duplicate() puts the copy: beside the file.
QString duplicateOf(const QString& path);

/// Makes a copy of a regular file, with its mode. An earlier copy is replaced once the new one is complete, unless it
/// has no write bit. Nothing stays of a copy that could not be completed.
SystemError duplicate(const QString& path, const std::atomic<bool>& cancelled);

/// Deletes a file, or a link itself, for good. The error names the file.
SystemError remove(const QString& path);

}  // namespace FileOperations
