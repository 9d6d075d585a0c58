#pragma once

#include "Effort.h"
#include "Report.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <array>
#include <vector>

/// Several processes write settings, lists and files at the same time, as instances of the program do, and one after
/// the other is killed and started again. Examined after each kill: what of the killed one was reported as written is
/// there, nothing is damaged, nothing is left over. The longest time of a write is counted, not judged.
class InstancesRun {
 public:
    InstancesRun(QByteArray root, Effort& effort, Report& report)
        : m_root(std::move(root)), m_effort(effort), m_report(report) {}
    ~InstancesRun();
    Q_DISABLE_COPY_MOVE(InstancesRun)

    void run();

    /// What an instance writes in turn.
    enum Kind {
        Setting,     ///< a value of the settings store
        Pair,        ///< two values in one step
        OwnList,     ///< a list that no other instance writes
        SharedList,  ///< a list that all of them write
        File,        ///< a user's file, with a record of the save
        Kinds
    };

 private:
    /// What an instance says before and after a write. Short enough to be written in one step.
    struct Message {
        qint32 instance;
        qint32 kind;
        qint64 number;
        qint64 microseconds;  ///< -1: it begins
    };
    struct Progress {
        qint64 saved = 0;
        qint64 begun = 0;
    };
    struct Instance {
        pid_t process = -1;
        std::array<Progress, Kinds> progress;
    };

    void start(int instance);
    void kill(int instance);
    [[noreturn]] void writeForEver(int instance);
    void send(const Message& message) const;
    void readMessages();
    void examine(int instance);
    void examineNumber(int instance, Kind kind, qint64 number);
    void examineSharedList();
    void examineEnd();
    void fault(int instance, const QByteArray& what);

    QByteArray m_root;
    Effort& m_effort;
    Report& m_report;
    int m_pipe[2] = {-1, -1};
    std::vector<Instance> m_instances;
    qint64 m_longestWrite = 0;  ///< in microseconds
};
