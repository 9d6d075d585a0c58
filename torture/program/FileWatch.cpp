#include "program/FileWatch.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

namespace {

/// Some megabytes are written in a millisecond.
constexpr useconds_t StepUs = 20;
constexpr unsigned long ShortestSlackNs = 1;
constexpr qsizetype BeginLength = 256;

/// While it exists, its thread runs at once when a sleep is over, also on a busy machine.
class First {
 public:
    First() { set(SCHED_RR, ::sched_get_priority_min(SCHED_RR)); }
    ~First() { set(SCHED_OTHER, 0); }
    First(const First&) = delete;
    First& operator=(const First&) = delete;

 private:
    static void set(int policy, int priority) {
        sched_param parameter{};
        parameter.sched_priority = priority;
        ::sched_setscheduler(0, policy, &parameter);
    }
};

}  // namespace

FileWatch::FileWatch(const QByteArray& path)
    : m_handle(::open(path.constData(), O_RDONLY | O_CLOEXEC)), m_before(state()) {
    // A sleep may take 50 microseconds longer than asked for, unless that is said here.
    ::prctl(PR_SET_TIMERSLACK, ShortestSlackNs);
}

FileWatch::~FileWatch() {
    if (m_handle >= 0)
        ::close(m_handle);
}

bool FileWatch::wait(int milliseconds, unsigned delayUs) const {
    const First first;
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (state() == m_before) {
        if (m_handle < 0 || Clock::now() >= end)
            return false;
        ::usleep(StepUs);
    }
    ::usleep(delayUs);
    return true;
}

FileWatch::State FileWatch::state() const {
    struct stat status {};
    if (m_handle < 0 || ::fstat(m_handle, &status) != 0)
        return {};
    QByteArray begin(BeginLength, '\0');
    const ssize_t count = ::pread(m_handle, begin.data(), std::size_t(begin.size()), 0);
    return {status.st_size, begin.first(std::max<ssize_t>(count, 0))};
}
