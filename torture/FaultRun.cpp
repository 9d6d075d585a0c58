#include "FaultRun.h"

#include "recovery/saves/SaveRecords.h"
#include "recovery/saves/SaveRecovery.h"

namespace {

using Reach = Fault::Reach;

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

void FaultRun::run() {
    for (const bool inRecoveries : {false, true}) {
        for (const Scene& scene : scenes()) {
            if (!m_effort.isOver() && (!scene.isLarge() || m_effort.isLong()))
                tryScene(scene, inRecoveries);
        }
    }
}

void FaultRun::tryScene(const Scene& scene, bool inRecoveries) {
    SceneFiles files(m_root, scene);
    if (!files.prepare()) {
        m_report.count("scenes that this file system cannot show");
        return;
    }
    m_report.count(inRecoveries ? "scenes of faults in a recovery" : "scenes of faults in a save");
    FaultyCalls undisturbed;
    const std::vector<CallKind> kinds = saveOnce(files, undisturbed);
    recover(files, FileSystemCalls::system());
    files.examine(m_report, "without a fault");
    forEachFault(kinds, [&](Fault fault) {
        if (m_effort.isOver() || !m_effort.takes())
            return;
        if (!inRecoveries)
            trySave(files, fault);
        else if (fault.reach == Reach::Everything && !scene.isLarge())
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
        if (m_effort.isOver() || !m_effort.takes())
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
