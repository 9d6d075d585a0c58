#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

/// The built program in a process of its own. Killed when this object is destroyed while it still runs.
class RunningProgram {
 public:
    /// `words`: the program and its arguments; `environment`: what differs from that of this process, as NAME=VALUE;
    /// `errors`: the file that takes what is written to standard error.
    RunningProgram(std::vector<std::string> words, std::vector<std::string> environment, const std::string& errors);
    ~RunningProgram() { kill(); }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    bool hasEnded();
    /// Ended by itself, without a fault.
    bool hasEndedWell() { return hasEnded() && m_status == 0; }
    /// Ends it without giving it a chance, and waits until it is gone. False: it was gone before.
    bool kill();
    /// Waits until it has used no processor time for a moment, at most so many milliseconds.
    void settle(int milliseconds);

 private:
    pid_t m_process = -1;
    bool m_hasEnded = false;
    int m_status = 0;
};
