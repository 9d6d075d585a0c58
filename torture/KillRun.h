#pragma once

#include "Effort.h"
#include "Report.h"

#include <QByteArray>

#include <sys/types.h>

#include <vector>

/// Kills a process that saves without a pause at random moments, recovers, and examines the files.
class KillRun {
 public:
    KillRun(QByteArray root, Effort& effort, Report& report)
        : m_root(std::move(root)), m_effort(effort), m_report(report) {}

    void run();

 private:
    /// What the process says of a save, before and after it.
    struct Message {
        qint64 file;
        qint64 number;
        qint64 isDone;
    };
    /// Of one file: the number of the contents that were reported as saved last, and of those that were begun.
    struct Progress {
        qint64 saved = 0;
        qint64 begun = 0;
    };

    QByteArray name(std::size_t file) const { return m_root + "/files/file" + QByteArray::number(qint64(file)); }
    QByteArray recordFolder() const { return m_root + "/state/saves"; }
    /// Starts the process, kills it, and returns the number of its saves.
    qint64 killOnce();
    [[noreturn]] void saveForEver(int to) const;
    qint64 readProgress(int from);
    void examine(std::size_t file);
    void examineRecord(const QByteArray& record);

    QByteArray m_root;
    Effort& m_effort;
    Report& m_report;
    std::vector<Progress> m_progress;
    bool m_isBehind = false;  ///< a file has the contents before the last save that was begun
};
