#include "recovery/journals/BaseThreads.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

/// Kept by each thread, because it may outlive the object that started it.
struct BaseThreads::Shared {
    /// Does the work of one device until there is none left.
    void run(quint64 device) {
        std::unique_lock lock(mutex);
        for (auto& waiting = queues[device]; !waiting.empty();) {
            Work work = std::move(waiting.front());
            waiting.pop_front();
            lock.unlock();
            work();
            work = {};
            lock.lock();
        }
        queues.erase(device);
        idle.notify_all();
    }

    std::mutex mutex;
    std::condition_variable idle;
    std::map<quint64, std::deque<Work>> queues;  ///< of each device that has a thread
};

BaseThreads::BaseThreads() : m_shared(std::make_shared<Shared>()) {}

BaseThreads::~BaseThreads() = default;

bool BaseThreads::start(quint64 device, Work work) {
    const std::scoped_lock lock(m_shared->mutex);
    const auto [queue, isNew] = m_shared->queues.try_emplace(device);
    queue->second.push_back(std::move(work));
    if (!isNew)
        return true;
    try {
        std::thread([shared = m_shared, device] { shared->run(device); }).detach();
    } catch (const std::system_error&) {
        m_shared->queues.erase(queue);
        return false;
    }
    return true;
}

bool BaseThreads::wait(Clock::time_point until) {
    std::unique_lock lock(m_shared->mutex);
    return m_shared->idle.wait_until(lock, until, [this] { return m_shared->queues.empty(); });
}
