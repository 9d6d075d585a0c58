#pragma once

#include "platform/SystemError.h"

#include <QString>

#include <atomic>

/// What the dialog of a file's properties shows, as texts. Links are not followed.
struct FileFacts {
    SystemError error;  ///< the path cannot be examined
    bool isFolder = false;
    QString type;
    qint64 size = 0;  ///< bytes; 0 for a folder
    QString linkTarget;
    QString created;  ///< times as "yyyy/mm/dd hh:mm:ss"; empty where the file system does not keep it
    QString modified;
    QString accessed;
    QString owner;  ///< user and group
    QString mode;   ///< letters and number
};

/// Does not open the file. Waits for as long as its disk takes.
FileFacts factsOf(const QString& path);

/// What a folder holds, counted so far. Read while another thread counts.
struct FolderSum {
    std::atomic<qint64> bytes = 0;
    std::atomic<qint64> files = 0;
    std::atomic<qint64> folders = 0;
    std::atomic<qint64> unread = 0;  ///< folders that could not be read
};

/// Counts everything below a folder on its own volume; links count as themselves, which ends circles of them. Stops
/// early once `cancelled` is true.
void addUp(const QString& folder, FolderSum& sum, const std::atomic<bool>& cancelled);
