#pragma once

#include "platform/FileSystemCalls.h"
#include "recovery/saves/SaveRecovery.h"

#include <QString>

#include <chrono>
#include <functional>

/// Completes what another process has left half-written in a file that is about to be read or written, as a start does
/// it. Owned by SaveRecords; used by several threads at once. Does not run the event loop.
///
/// While the file is being written, or completed, by a process that lives, it is waited for a short while. Without
/// records of other processes it costs one look into the folder.
class FileSettling {
 public:
    /// Whether the record of this name is one of this process.
    using IsOwn = std::function<bool(const QByteArray& name)>;
    /// Called in the thread that has settled something.
    using Report = std::function<void(const SaveRecovery::Summary& summary)>;

    static constexpr std::chrono::milliseconds LongestWait{2000};

    /// `folder`: where records are.
    FileSettling(QString folder, FileSystemCalls& calls, IsOwn isOwn);

    /// Set before other threads use it.
    void setReport(Report report) { m_report = std::move(report); }
    void setLongestWait(std::chrono::milliseconds limit) { m_longestWait = limit; }

    void settle(const QByteArray& name) const;

 private:
    class Target;
    enum class Record { None, Abandoned, InUse };

    Record recordOf(Target& target) const;
    Record examine(const QByteArray& record, Target& target) const;

    const QString m_folder;
    const QByteArray m_folderName;
    FileSystemCalls& m_calls;
    IsOwn m_isOwn;
    Report m_report;
    std::chrono::milliseconds m_longestWait = LongestWait;
};
