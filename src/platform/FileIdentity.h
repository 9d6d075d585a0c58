#pragma once

#include <QString>

#include <optional>

/// What tells one file from another that has taken its path, and whether it may be opened at all: a FIFO, socket,
/// device or folder is not regular. Links are followed.
struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    bool regular = false;

    bool operator==(const FileIdentity&) const = default;

    /// Of the file that bears the path now; nothing when there is none or it can't be looked at. Opens nothing.
    static std::optional<FileIdentity> of(const QString& path);
};
