#include "FaultRun.h"

#include "recovery/saves/SaveRecords.h"
#include "recovery/saves/SaveRecovery.h"

namespace {

using Reach = Fault::Reach;

/// One of so many faults in recoveries is tried before the others.
constexpr int OneFirstOf = 10;
constexpr Reach Reaches[] = {Reach::Once, Reach::SameKind, Reach::Everything};

QByteArray textOf(Fault fault) {
    return "call " + QByteArray::number(fault.at) + ", reach " + QByteArray::number(static_cast<int>(fault.reach)) +
           ", variant " + QByteArray::number(fault.variant);
}

template <typename Try>
void forEachFault(const std::vector<CallKind>& kinds, Try attempt) {
    for (int at = 0; at < static_cast<int>(kinds.size()); ++at) {
        for (const Reach reach : Reaches) {
            const int variants = Fault::variants(kinds[static_cast<std::size_t>(at)], reach);
            for (int variant = 0; variant < variants; ++variant)
                attempt(Fault{at, reach, variant});
        }
    }
}

}  // namespace

/// Of the faults in recoveries, which are many, some come first, so that a run that is cut short has them of each
/// scene; saves of large files take longer than all else.
void FaultRun::run() {
    tryScenes(Trial::Save, Size::Small);
    tryScenes(Trial::SomeRecoveries, Size::Small);
    if (m_effort.isLong())
        tryScenes(Trial::Save, Size::Large);
    tryScenes(Trial::OtherRecoveries, Size::Small);
}

void FaultRun::tryScenes(Trial trial, Size size) {
    for (const Scene& scene : scenes()) {
        if (!m_effort.isOver() && scene.isLarge() == (size == Size::Large))
            tryScene(scene, trial);
    }
}

void FaultRun::tryScene(const Scene& scene, Trial trial) {
    SceneFiles files(m_root, scene);
    if (!files.prepare()) {
        m_report.count("scenes that this file system cannot show");
        return;
    }
    static constexpr const char* Names[] = {"scenes of faults in a save", "scenes of faults in a recovery",
                                            "scenes of further faults in a recovery"};
    m_report.count(Names[static_cast<std::size_t>(trial)]);
    m_trial = trial;
    m_recoveries = 0;
    FaultyCalls undisturbed;
    const std::vector<CallKind> kinds = saveOnce(files, undisturbed);
    recover(files, FileSystemCalls::system());
    files.examine(m_report, "without a fault");
    forEachFault(kinds, [&](Fault fault) {
        if (m_effort.isOver() || !m_effort.takes())
            return;
        if (trial == Trial::Save)
            trySave(files, fault);
        else if (fault.reach == Reach::Everything)
            tryRecovery(files, fault);
    });
}

std::vector<CallKind> FaultRun::saveOnce(SceneFiles& files, FaultyCalls& calls) const {
    files.prepare();
    {
        SaveRecords records(files.recordFolder(), calls);
        files.save(calls, records);
    }
    return calls.kinds();
}

void FaultRun::recover(const SceneFiles& files, FileSystemCalls& calls) const {
    SaveRecovery(files.recordFolder(), calls).run();
}

void FaultRun::trySave(SceneFiles& files, Fault fault) {
    FaultyCalls faulty(fault);
    saveOnce(files, faulty);
    recover(files, FileSystemCalls::system());
    files.examine(m_report, "save, " + textOf(fault));
    m_report.count("faults in a save");
}

void FaultRun::tryRecovery(SceneFiles& files, Fault kill) {
    FaultyCalls killed(kill);
    saveOnce(files, killed);
    FaultyCalls undisturbed;
    recover(files, undisturbed);
    forEachFault(undisturbed.kinds(), [&](Fault fault) {
        const bool isFirst = m_recoveries++ % OneFirstOf == 0;
        if (m_effort.isOver() || !m_effort.takes() || isFirst != (m_trial == Trial::SomeRecoveries))
            return;
        FaultyCalls again(kill);
        saveOnce(files, again);
        FaultyCalls faulty(fault);
        recover(files, faulty);
        recover(files, FileSystemCalls::system());
        files.examine(m_report, "save killed at " + textOf(kill) + "; recovery, " + textOf(fault));
        m_report.count("faults in a recovery");
    });
}
