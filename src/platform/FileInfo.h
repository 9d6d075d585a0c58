#pragma once

#include <QString>

/// What the system knows about a file, as the program keeps and compares it: local time, the same in every locale.
/// When the file can't be read or is a folder the size is 0 and the times are those of a year that no file has.
struct FileInfo {
    QString created;   ///< "mm/d/yyyy hh:mm:ss AM": month and hour of two digits, twelve hours
    QString modified;  ///< "yyyy/mm/dd hh:mm:ss"
    QString accessed;  ///< "mm/d/yyyy"
    qint64 size = 0;   ///< bytes
};

/// Opens nothing, so that a FIFO or device is never waited for or disturbed: what they have comes from their entry.
FileInfo GetFileInfo(const QString& pFilename);
