#pragma once

#include "WeakDisk.h"

#include <QByteArray>

#include <optional>
#include <utility>
#include <vector>

class HashSum;

/// Saves of one or several files one after the other, and what of them is promised when. Owned by PowerRun.
struct Story {
    struct Step {
        QByteArray bytes;
        qsizetype part = 0;  ///< 0: all in memory; otherwise a source that supplies so many bytes at a time
        bool cuts = true;
        int failAtWrite = 0;  ///< this write of the step fails half-way
        bool hasRecord = true;
        bool isByAnother = false;  ///< by another instance of the program
    };

    const char* name;
    std::optional<QByteArray> before;  ///< nothing: the first step makes the file
    std::vector<Step> steps;
    int files = 1;  ///< written at the same time by as many threads
};

std::vector<Story> stories();

/// Which contents a file may have after a power cut at each place of the log. Nothing stands for no file. A plain
/// value.
class Promises {
 public:
    using Contents = std::optional<QByteArray>;

    explicit Promises(Contents before) { m_events.push_back({0, true, std::move(before)}); }

    void begun(int place, Contents contents) { m_events.push_back({place, false, std::move(contents)}); }
    /// A save without a record: nothing is promised until it is reported.
    void begunWithoutRecord(int place) { m_events.push_back({place, false, std::nullopt, true}); }
    /// The save was reported as done.
    void reported(int place, Contents contents) { m_events.push_back({place, true, std::move(contents)}); }

    bool allows(int place, const Contents& contents) const;
    /// Adds all contents that are allowed.
    void addAllowed(int place, HashSum& sum) const;
    /// Whether the file has what was written last.
    bool isLast(int place, const Contents& contents) const;

 private:
    struct Event {
        int place;
        bool isSaved;
        Contents contents;
        bool isAnything = false;
    };
    /// The event from which on everything is allowed that was begun, and the first one that has not happened yet.
    std::pair<std::size_t, std::size_t> eventsAt(int place) const;

    std::vector<Event> m_events;
};
