#pragma once

#include <QObject>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>

/// Work in a thread of its own, for calls of the system that may take long or never return, such as those on a network
/// folder that does not answer. Created, used and destroyed in one thread, that of its owner. Destroying it cancels the
/// work without waiting for it, so the work must own all that it uses: copies and shared pointers.
class BackgroundWork : public QObject {
    Q_OBJECT

 public:
    /// Runs in the other thread. It should return early once `cancelled` is true.
    using Work = std::function<void(const std::atomic<bool>& cancelled)>;

    /// For how long the window may stand still.
    static constexpr std::chrono::milliseconds Still{60};

    /// Starts the work at once.
    explicit BackgroundWork(Work work, QObject* parent = nullptr);
    ~BackgroundWork() override;
    Q_DISABLE_COPY_MOVE(BackgroundWork)

    /// The work is to end early; finished() is still emitted.
    void cancel();

    /// What the work has written may be read once this returns true.
    bool isDone() const;

    /// Waits without running the event loop. Returns whether the work is done.
    bool waitFor(std::chrono::milliseconds limit) const;

    /// Waits, and from `Still` on runs the event loop. Returns false when the time is over, the program ends, or this
    /// object was destroyed meanwhile.
    bool waitAlive(std::chrono::milliseconds limit);

 Q_SIGNALS:
    /// Emitted from the event loop of the owner's thread.
    void finished();

 private:
    struct State;

    static void run(const std::shared_ptr<State>& state, const Work& work);

    std::shared_ptr<State> m_state;
};
