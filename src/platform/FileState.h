#pragma once

#include <QString>

#include <optional>

/// Which file it is, and when and at which size it was last changed: equal as long as nobody has written to it since,
/// as far as the file system's clock can tell. A plain value; times are nanoseconds.
struct FileState {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 modified = 0;
    qint64 changed = 0;

    bool operator==(const FileState&) const = default;
    /// Whether it is the same file, not written to since; its mode, owner or links may be others. The number of the
    /// device is not compared: the same disk may have another one after a restart or when it is mounted again.
    bool hasSameBytesAs(const FileState& other) const {
        return inode == other.inode && size == other.size && modified == other.modified;
    }

    /// Whether the path still leads to this file, and nobody has written to it since.
    bool isStillAt(const QString& path) const;

    /// Nothing when the file cannot be examined. Links are followed.
    static std::optional<FileState> of(const QString& path);
    /// The same of an open file.
    static std::optional<FileState> of(int handle);
};

/// False: a file system of this type (statfs) numbers its files anew when it is mounted, or whenever it reads them
/// again.
bool hasLastingInodes(unsigned long typeOfFileSystem);
