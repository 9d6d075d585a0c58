#pragma once

#include <QObject>

#include <chrono>
#include <functional>
#include <thread>

/// Requests from outside to end the process: SIGTERM, SIGHUP and SIGINT. From its construction on they do not end the
/// process by themselves but are reported in the thread of the event loop, wherever that runs: in a modal box or a menu
/// too. The receiver has to end the process by endBy(). When it does not in time, because the thread is busy, another
/// thread ends the process. One object at most, owned by main(); the destructor restores what the signals did before.
///
/// A signal that the starter of the process wanted to be ignored (nohup) stays ignored. Programs that are started from
/// this one have the signals as usual.
class EndSignals : public QObject {
    Q_OBJECT

 public:
    /// So long the event loop's thread has; the rest of two seconds is for the last duty.
    static constexpr std::chrono::milliseconds Patience{1500};

    /// `lastDuty` is called in the other thread, before that ends the process, and must not wait for the thread of the
    /// event loop.
    explicit EndSignals(std::function<void()> lastDuty, std::chrono::milliseconds patience = Patience);
    ~EndSignals() override;
    Q_DISABLE_COPY_MOVE(EndSignals)

    /// Ends the process at once, and so that its starter sees by which signal; 0: without one, with exit code 0.
    /// Nothing is destroyed, because that would answer the questions that are open.
    [[noreturn]] static void endBy(int signal);

 Q_SIGNALS:
    /// Emitted once, from the event loop; further signals are ignored.
    void requested(int signal);

 private:
    void watch();

    std::function<void()> m_lastDuty;
    std::chrono::milliseconds m_patience;
    std::thread m_watcher;  ///< none when the signals could not be taken over
};
