#include "platform/BackgroundWork.h"

#include <QEventLoop>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

struct BackgroundWork::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::atomic<bool> cancelled = false;
    bool done = false;
    BackgroundWork* owner = nullptr;  ///< null after it was destroyed
};

BackgroundWork::BackgroundWork(Work work, QObject* parent) : QObject(parent), m_state(std::make_shared<State>()) {
    m_state->owner = this;
    const auto task = [state = m_state, work = std::move(work)] { run(state, work); };
    try {
        std::thread(task).detach();
    } catch (const std::system_error&) {  // no more threads
        task();
    }
}

BackgroundWork::~BackgroundWork() {
    cancel();
    const std::scoped_lock lock(m_state->mutex);
    m_state->owner = nullptr;
}

void BackgroundWork::run(const std::shared_ptr<State>& state, const Work& work) {
    work(state->cancelled);
    const std::scoped_lock lock(state->mutex);
    state->done = true;
    state->changed.notify_all();
    if (state->owner != nullptr)
        QMetaObject::invokeMethod(state->owner, &BackgroundWork::finished, Qt::QueuedConnection);
}

void BackgroundWork::cancel() {
    m_state->cancelled = true;
}

bool BackgroundWork::isDone() const {
    const std::scoped_lock lock(m_state->mutex);
    return m_state->done;
}

bool BackgroundWork::waitFor(std::chrono::milliseconds limit) const {
    std::unique_lock lock(m_state->mutex);
    return m_state->changed.wait_for(lock, limit, [this] { return m_state->done; });
}

bool BackgroundWork::waitAlive(std::chrono::milliseconds limit) {
    if (waitFor(std::min(limit, Still)))
        return true;
    const QPointer<BackgroundWork> self(this);
    QEventLoop loop;
    connect(this, &BackgroundWork::finished, &loop, &QEventLoop::quit);
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    loop.exec();
    return self && isDone();
}
