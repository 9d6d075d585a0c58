#pragma once

#include <sys/types.h>

#include <functional>
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
    /// Waits until none of its threads has run for so long or waits for a disk, until this is true or until the limit
    /// is over; all in milliseconds. Without a condition there is none.
    void settle(int rest, int limit, const std::function<bool()>& isTrue = {});

 private:
    pid_t m_process = -1;
    bool m_hasEnded = false;
    int m_status = 0;
};
