#pragma once

#include <QString>

/// Holds a folder against other processes that lock it too, from construction to destruction: the lock is on the open
/// folder itself, so it leaves no file behind and dies with its process. Waits up to five seconds; a folder that can't
/// be locked (missing, unreadable, on a file system without locks, held by a process that stands still) is gone on
/// with unlocked, since those who use it have finer locks below.
class FolderLock {
 public:
    explicit FolderLock(const QString& folder);
    ~FolderLock();
    Q_DISABLE_COPY_MOVE(FolderLock)

 private:
    int m_handle = -1;
};
