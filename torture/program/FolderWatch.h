#pragma once

#include <QByteArray>

/// Waits for changes of the files in a folder.
class FolderWatch {
 public:
    explicit FolderWatch(const QByteArray& folder);
    ~FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /// True: a file was made, written, renamed or removed since this object was made.
    bool wait(int milliseconds) const;
    /// True: since the last call a file was written whose name ends so.
    bool waitFor(const char* nameEnd, int milliseconds) const;

 private:
    int m_handle;
};
