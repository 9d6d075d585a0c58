#pragma once

#include "Effort.h"
#include "FaultyCalls.h"
#include "Report.h"
#include "SceneFiles.h"

#include <QByteArray>

#include <vector>

/// Makes each system call of a save, of its record and of the recovery fail in its turn, in every scene, and examines
/// what is left after an undisturbed recovery.
class FaultRun {
 public:
    FaultRun(QByteArray root, Effort& effort, Report& report)
        : m_root(std::move(root)), m_effort(effort), m_report(report) {}

    void run();

 private:
    enum class Trial { Save, SomeRecoveries, OtherRecoveries };
    enum class Size { Small, Large };

    void tryScenes(Trial trial, Size size);
    void tryScene(const Scene& scene, Trial trial);
    std::vector<CallKind> saveOnce(SceneFiles& files, FaultyCalls& calls) const;
    void recover(const SceneFiles& files, FileSystemCalls& calls) const;
    void trySave(SceneFiles& files, Fault fault);
    /// The save is killed, and then the recovery of it fails.
    void tryRecovery(SceneFiles& files, Fault kill);

    QByteArray m_root;
    Effort& m_effort;
    Report& m_report;
    Trial m_trial = Trial::Save;
    int m_recoveries = 0;  ///< faults in recoveries of this scene that there are
};
