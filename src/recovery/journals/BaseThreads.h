#pragma once

#include <QtGlobal>

#include <chrono>
#include <functional>
#include <memory>

/// Threads for work on the files of documents. Such a file may be on a network that never answers, so each device has a
/// thread of its own as long as there is work for it: one that does not answer stops nothing on another. Owned by
/// JournalThread and used in the thread that writes.
class BaseThreads {
 public:
    using Clock = std::chrono::steady_clock;
    /// Owns what it uses: when a device does not answer, it is done after this object was destroyed, or never.
    using Work = std::function<void()>;

    BaseThreads();
    ~BaseThreads();
    Q_DISABLE_COPY_MOVE(BaseThreads)

    /// Does it in the thread of the device, after all work that was given for that device before. False: no thread
    /// could be started, and it is not done.
    bool start(quint64 device, Work work);
    /// Waits until all work is done, but not longer than until then. Returns whether it is.
    bool wait(Clock::time_point until);

 private:
    struct Shared;

    std::shared_ptr<Shared> m_shared;
};
