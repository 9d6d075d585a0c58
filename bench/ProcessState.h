#pragma once

#include <sys/types.h>

/// Information from the system about a running child process; its threads are counted together. It does not own the
/// process.
class ProcessState {
 public:
    explicit ProcessState(pid_t process);

    /// Processor time used so far, in clock ticks.
    long ticks() const;
    /// Processor time of the threads that there are now, in nanoseconds.
    long long threadTime() const;
    /// Whether a thread waits for a disk.
    bool isWriting() const;
    /// Whether a thread is running or ready to run.
    bool isRunning() const;
    /// The maximum resident memory so far, in KiB.
    long peakMemory() const;
    /// Whether the process has ended; its exit status is then collected too.
    bool hasEnded() const;

 private:
    bool hasThreadIn(char state) const;

    pid_t m_process;
};
