#pragma once

#include <sys/types.h>

/// What the system says about a process while it runs, all its threads together.
class ProcessState {
 public:
    explicit ProcessState(pid_t process);

    /// Processor time used so far, in clock ticks.
    long ticks() const;
    /// A thread waits for a disk.
    bool isWriting() const;
    /// A thread is on a processor or waits for one.
    bool isRunning() const;
    /// The most memory it ever held, in KiB.
    long peakMemory() const;
    bool hasEnded() const;

 private:
    bool hasThreadIn(char state) const;

    pid_t m_process;
};
