#pragma once

#include "ByteSubject.h"
#include "Effort.h"
#include "LoggedCalls.h"
#include "Report.h"
#include "TextSubject.h"
#include "WeakDisk.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

class Journal;
class Journals;

/// Cuts the power at every point of the life of a journal of a text or of bytes: first edits, the copy of the base,
/// further batches, whole contents, compaction, a kill and the next life, a discard. Makes each state that a weak file
/// system could leave real, brings the journal back, and compares the text, or the bytes with their undo log and marks:
/// what was flushed once is never lost.
class JournalRun {
 public:
    JournalRun(QByteArray root, Effort& effort, Report& report)
        : m_root(std::move(root)), m_effort(effort), m_report(report), m_bytes(m_root + "/working copy") {}

    /// Until the effort is over; a few stories in a short run.
    void run();

 private:
    /// What was promised from this place of the log on; no state: nothing is to be brought back.
    struct Promise {
        int place = 0;
        std::optional<std::string> state;
    };

    void tryStory(unsigned seed);
    void play(unsigned seed);
    void playLife(std::mt19937& random, LoggedCalls& calls, Journals& journals, Journal& journal);
    void promise(LoggedCalls& calls, std::optional<std::string> state);
    void tryPlace(int place);
    void put(const WeakDisk::State& state) const;
    void examine(int place, const QByteArray& what);
    bool allows(int place, const std::optional<std::string>& state) const;

    QByteArray stateFolder() const { return m_root + "/state"; }
    QByteArray journalFolder() const { return m_root + "/state/recovery"; }
    QByteArray document() const { return m_root + "/document"; }

    QByteArray m_root;
    Effort& m_effort;
    Report& m_report;
    TextSubject m_text;
    ByteSubject m_bytes;
    JournalSubject* m_subject = &m_text;  ///< of the story
    unsigned m_seed = 0;
    WeakDisk m_disk;
    std::vector<Promise> m_promises;
    std::unordered_set<std::uint64_t> m_states;
    std::set<std::pair<std::uint64_t, int>> m_tried;  ///< of this story, each with its place
};
