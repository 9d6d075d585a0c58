#pragma once

#include "platform/FileSystemCalls.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <set>
#include <utility>
#include <vector>

/// Looks through the records of saves that no living process owns, and completes what was interrupted. Called at the
/// start, before files are opened, and by FileSettling; does not run the event loop. Without records it costs one
/// look-up.
///
/// A record is removed when it is damaged (the save had not begun), when the files have their new contents, or when the
/// interrupted write was completed. When a file can't be written now, its record stays for the next start; when it
/// can't be reached or read, for thirty days. When a file was changed by somebody else since, nothing is touched and
/// the record is set aside under another name, for quillmark-recover.
///
/// So it is when a file has its old contents and was written since the record was made. Somebody restored them, or the
/// power was cut before a new byte was on the disk: that can't be known, but the file is whole as it is.
///
/// A block that was written in part cannot be told from one that somebody has changed since, but by the time. If the
/// file was changed for the last time right after the record was made, the write is completed, and what it overwrites
/// is kept aside, too. A record of another version is set aside.
class SaveRecovery {
 public:
    struct Summary {
        int removed = 0;  ///< nothing had to be done for them
        int completed = 0;
        int setAside = 0;
        int left = 0;  ///< to be tried again

        bool operator==(const Summary&) const = default;
    };

    explicit SaveRecovery(QString folder, FileSystemCalls& calls = FileSystemCalls::system());

    Summary run();
    /// Removes what was set aside long ago: see oldAsides().
    void removeOldAsides(const QDateTime& now = QDateTime::currentDateTime());

    /// The end of the names of records, and what is appended when they are set aside.
    static constexpr const char* RecordSuffix = ".save";
    static constexpr const char* AsideSuffix = ".aside";

 private:
    class Record;

    void finishAll(const std::vector<std::unique_ptr<Record>>& records,
                   const std::set<std::pair<quint64, quint64>>& settled, Summary& summary);
    static void finish(const Record& record, bool isOfOtherFiles, Summary& summary);

    QString m_folder;
    FileSystemCalls& m_calls;
};
