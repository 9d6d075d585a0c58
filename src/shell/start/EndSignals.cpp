#include "shell/start/EndSignals.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <system_error>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::array Signals{SIGTERM, SIGHUP, SIGINT};
/// What the destructor writes into the pipe, where handlers write the number of their signal.
constexpr unsigned char NoSignal = 0;

std::array<struct sigaction, Signals.size()> before;
/// Read by the watching thread: the pipe, and signals that no handler has taken yet. A thread that is in a long call of
/// the system takes none before that ends, and would be the one that is chosen.
struct Inputs {
    int pipe = -1;
    int pending = -1;
};
Inputs inputs;
std::atomic<int> pipeOutput = -1;  ///< written by the handlers

static_assert(std::atomic<int>::is_always_lock_free, "a handler may not wait for a lock");

void writeToPipe(unsigned char byte) {
    const ssize_t written = write(pipeOutput, &byte, 1);
    static_cast<void>(written);  // a full pipe holds signals enough
}

void noteSignal(int signal) {
    const int error = errno;
    writeToPipe(static_cast<unsigned char>(signal));
    errno = error;
}

sigset_t ownSignals() {
    sigset_t all;
    sigemptyset(&all);
    for (const int signal : Signals)
        sigaddset(&all, signal);
    return all;
}

bool openInputs() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return false;
    const sigset_t all = ownSignals();
    inputs = {ends[0], signalfd(-1, &all, SFD_CLOEXEC | SFD_NONBLOCK)};
    pipeOutput = ends[1];
    return true;
}

void closeInputs() {
    close(inputs.pipe);
    if (inputs.pending >= 0)
        close(inputs.pending);
    close(pipeOutput.exchange(-1));
}

void takeSignals() {
    struct sigaction noted {};
    noted.sa_handler = noteSignal;
    noted.sa_flags = SA_RESTART;
    sigemptyset(&noted.sa_mask);
    for (std::size_t i = 0; i < Signals.size(); ++i) {
        sigaction(Signals[i], nullptr, &before[i]);
        if (before[i].sa_handler != SIG_IGN)
            sigaction(Signals[i], &noted, nullptr);
    }
}

void giveSignalsBack() {
    for (std::size_t i = 0; i < Signals.size(); ++i)
        sigaction(Signals[i], &before[i], nullptr);
}

/// What has arrived, without waiting.
std::optional<unsigned char> arrivedByte() {
    unsigned char byte = NoSignal;
    if (read(inputs.pipe, &byte, 1) == 1)
        return byte;
    signalfd_siginfo pending{};
    if (inputs.pending >= 0 && read(inputs.pending, &pending, sizeof(pending)) == sizeof(pending))
        return static_cast<unsigned char>(pending.ssi_signo);
    return std::nullopt;
}

/// The next signal, or NoSignal once the object is destroyed; nothing when there is neither until then.
std::optional<unsigned char> nextByte(std::optional<Clock::time_point> end) {
    for (;;) {
        const auto left = end ? std::chrono::ceil<std::chrono::milliseconds>(*end - Clock::now()).count() : -1;
        if (end && left <= 0)
            return std::nullopt;
        if (const std::optional<unsigned char> byte = arrivedByte())
            return byte;
        std::array<pollfd, 2> ready{pollfd{inputs.pipe, POLLIN, 0}, pollfd{inputs.pending, POLLIN, 0}};
        poll(ready.data(), ready.size(), static_cast<int>(left));
    }
}

/// Whether the object is destroyed until then. Further signals are read and ignored.
bool isDestroyedUntil(Clock::time_point end) {
    while (const std::optional<unsigned char> byte = nextByte(end)) {
        if (*byte == NoSignal)
            return true;
    }
    return false;
}

}  // namespace

EndSignals::EndSignals(std::function<void()> lastDuty, std::chrono::milliseconds patience)
    : m_lastDuty(std::move(lastDuty)), m_patience(patience) {
    if (!openInputs())
        return;
    try {
        m_watcher = std::thread([this] { watch(); });
    } catch (const std::system_error&) {
        closeInputs();
        return;
    }
    takeSignals();
}

EndSignals::~EndSignals() {
    if (!m_watcher.joinable())
        return;
    giveSignalsBack();
    writeToPipe(NoSignal);
    m_watcher.join();
    closeInputs();
}

void EndSignals::watch() {
    const int signal = nextByte(std::nullopt).value_or(NoSignal);
    if (signal == NoSignal)
        return;
    QMetaObject::invokeMethod(
        this, [this, signal] { Q_EMIT requested(signal); }, Qt::QueuedConnection);
    if (isDestroyedUntil(Clock::now() + m_patience))
        return;
    if (m_lastDuty)
        m_lastDuty();
    endBy(signal);
}

void EndSignals::endBy(int signal) {
    if (signal == 0)
        _exit(EXIT_SUCCESS);
    std::signal(signal, SIG_DFL);
    sigset_t those;
    sigemptyset(&those);
    sigaddset(&those, signal);
    pthread_sigmask(SIG_UNBLOCK, &those, nullptr);
    std::raise(signal);
    _exit(128 + signal);
}
