#pragma once

#include <QString>

/// Times and size of a file, as the program shows and compares them. Times are local time, in a form that does not
/// depend on the locale. For a folder, or a file that can't be read, the size is 0 and the times are in the year 1601.
struct FileInfo {
    QString created;   ///< "mm/d/yyyy hh:mm:ss AM": month and hour have two digits, 12-hour clock
    QString modified;  ///< "yyyy/mm/dd hh:mm:ss"
    QString accessed;  ///< "mm/d/yyyy"
    qint64 size = 0;   ///< in bytes
};

/// Examines the file without opening it, so it never blocks on a FIFO and has no effect on a device.
FileInfo GetFileInfo(const QString& pFilename);

/// The time of a file that has none: the start of 1601, in seconds since the start of 1970.
inline constexpr qint64 NoFileTime = -11'644'473'600;

/// The form of FileInfo::modified for a time in seconds since the start of 1970.
QString modifiedText(qint64 seconds);
