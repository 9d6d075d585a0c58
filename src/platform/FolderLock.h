#pragma once

#include <QString>

/// Locks a folder against other processes that lock it too, from construction to destruction. The lock is an flock() on
/// the folder itself: it leaves no file, and the system releases it when the process ends.
///
/// The constructor waits up to five seconds and does not run the event loop meanwhile. There is no error: if the folder
/// can't be locked (it is missing or unreadable, its file system has no locks, a suspended process holds it), work
/// continues without the lock. The users of this class have finer locks of their own.
class FolderLock {
 public:
    explicit FolderLock(const QString& folder);
    ~FolderLock();
    Q_DISABLE_COPY_MOVE(FolderLock)

 private:
    int m_handle = -1;
};
