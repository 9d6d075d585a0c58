#pragma once

#include "recovery/journals/BaseThreads.h"
#include "recovery/journals/JournalLimits.h"
#include "recovery/journals/JournalOutput.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

class Journal;

/// The thread that writes all journals of the process. Started with the first one. It waits for no file but those of
/// the journals. Owned by Journals; shared with what makes further journals of it.
class JournalThread : public std::enable_shared_from_this<JournalThread> {
 public:
    JournalThread(FileSystemCalls& calls, QString folder, JournalLimits limits);
    ~JournalThread();
    Q_DISABLE_COPY_MOVE(JournalThread)

    FileSystemCalls& calls() const { return m_calls; }

    std::unique_ptr<Journal> begin(JournalBase base);
    /// `time`: of its last edit, in milliseconds since 1970.
    std::unique_ptr<Journal> goOn(JournalBase base, JournalOutput::Continued continued, qint64 time);
    bool flush(std::chrono::milliseconds limit);
    /// Writes everything and ends the thread; waits some seconds at most. Nothing is written afterwards.
    void end();

 private:
    using Clock = JournalStream::Clock;

    std::shared_ptr<JournalStream> makeStream(qint64 time);
    std::unique_ptr<Journal> add(std::shared_ptr<JournalStream> stream, std::unique_ptr<JournalOutput> output);
    void start();
    void wake();
    void run();
    void work(bool all, bool ends);
    void removeFinished();
    bool isCopying() const;
    bool isChecking() const;
    bool isClean() const;
    std::optional<Clock::time_point> nextDue() const;

    FileSystemCalls& m_calls;
    const QString m_folder;
    const JournalLimits m_limits;
    std::thread m_thread;
    BaseThreads m_baseThreads;
    std::vector<std::unique_ptr<JournalOutput>> m_outputs;  ///< of the thread

    std::mutex m_mutex;  ///< of all below
    std::condition_variable m_woken;
    std::condition_variable m_flushed;
    std::vector<std::unique_ptr<JournalOutput>> m_added;
    bool m_hasNews = false;
    bool m_ends = false;
    bool m_hasEnded = false;
    std::condition_variable m_ended;
    quint64 m_flushesAsked = 0;
    quint64 m_flushesBegun = 0;
    quint64 m_flushesDone = 0;
    bool m_isClean = true;
};
