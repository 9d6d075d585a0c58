#pragma once

#include <QString>

#include <optional>

/// Identifies a file, so that another file under the same path can be told apart from it, and reports whether it may be
/// opened: only regular files are, not a FIFO, socket, device or folder. A plain value. Links are followed.
struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    bool regular = false;

    bool operator==(const FileIdentity&) const = default;

    /// Returns the identity of the file that has this path now; nothing when it doesn't exist or can't be examined.
    /// Does not open the file.
    static std::optional<FileIdentity> of(const QString& path);
};
