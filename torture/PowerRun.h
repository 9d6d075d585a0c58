#pragma once

#include "Effort.h"
#include "LoggedCalls.h"
#include "Report.h"
#include "Story.h"
#include "WeakDisk.h"
#include "platform/WriteWitness.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <set>
#include <unordered_set>
#include <utility>
#include <vector>

/// Cuts the power at every point of saves, and of recoveries of saves that were killed or cut: makes each state that a
/// weak file system could leave real, recovers, and examines the files.
class PowerRun {
 public:
    PowerRun(QByteArray root, Effort& effort, Report& report)
        : m_root(std::move(root)), m_effort(effort), m_report(report) {}

    /// Until the effort is over; once through all stories in a short run.
    void run();

 private:
    /// `hasFolder`: records were made before, so their folder is there for certain.
    void tryStory(const Story& story, bool hasFolder);
    void play(const Story& story, bool hasFolder);
    void playStep(const Story::Step& step, LoggedCalls& calls, WriteWitness& records);
    void saveFile(int number, const Story::Step& step, LoggedCalls& calls, WriteWitness& records);

    void tryPlace(const WeakDisk& disk, int place, int promised, const QByteArray& what);
    /// Recovers what the disk shows now, and cuts the power meanwhile.
    void tryRecovery(WeakDisk disk, int promised, const QByteArray& what);
    std::uint64_t allowedAt(int place) const;
    void put(const WeakDisk::State& state);
    void putTarget(int number, WeakDisk::FileId file, const WeakDisk::State& state) const;
    void examine(int promised, const QByteArray& what);
    bool isKeptOfTornFile(const QByteArray& record, int promised) const;

    QByteArray target(int number) const { return m_root + "/files/file" + QByteArray::number(number); }
    QByteArray keeper(int number) const { return m_root + "/keep/file" + QByteArray::number(number); }
    QByteArray stateFolder() const { return m_root + "/state"; }
    QByteArray recordFolder() const { return m_root + "/state/saves"; }

    QByteArray m_root;
    Effort& m_effort;
    Report& m_report;
    const Story* m_story = nullptr;
    WeakDisk m_disk;
    std::vector<Promises> m_promises;  ///< of each file
    std::unordered_set<std::uint64_t> m_states;
    std::set<std::pair<std::uint64_t, std::uint64_t>> m_tried;  ///< states, each with what was allowed
};
