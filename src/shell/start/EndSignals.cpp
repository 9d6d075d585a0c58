#include "shell/start/EndSignals.h"

#include <fcntl.h>
#include <poll.h>
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
std::atomic<int> pipeInput = -1;   ///< read by the watching thread
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

bool openPipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return false;
    fcntl(ends[1], F_SETFL, O_NONBLOCK);
    pipeInput = ends[0];
    pipeOutput = ends[1];
    return true;
}

void closePipe() {
    close(pipeInput.exchange(-1));
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

/// The next byte of the pipe; nothing when there is none until then.
std::optional<unsigned char> nextByte(int input, std::optional<Clock::time_point> end) {
    for (;;) {
        const auto left = end ? std::chrono::ceil<std::chrono::milliseconds>(*end - Clock::now()).count() : -1;
        if (end && left <= 0)
            return std::nullopt;
        pollfd ready{input, POLLIN, 0};
        const int count = poll(&ready, 1, static_cast<int>(left));
        unsigned char byte = NoSignal;
        if (count > 0 && read(input, &byte, 1) >= 0)
            return byte;
        if (count < 0 && errno != EINTR)
            return NoSignal;
    }
}

/// Whether the object is destroyed until then. Further signals are read and ignored.
bool isDestroyedUntil(int input, Clock::time_point end) {
    while (const std::optional<unsigned char> byte = nextByte(input, end)) {
        if (*byte == NoSignal)
            return true;
    }
    return false;
}

}  // namespace

EndSignals::EndSignals(std::function<void()> lastDuty, std::chrono::milliseconds patience)
    : m_lastDuty(std::move(lastDuty)), m_patience(patience) {
    if (!openPipe())
        return;
    try {
        m_watcher = std::thread([this, input = pipeInput.load()] { watch(input); });
    } catch (const std::system_error&) {
        closePipe();
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
    closePipe();
}

void EndSignals::watch(int input) {
    const int signal = nextByte(input, std::nullopt).value_or(NoSignal);
    if (signal == NoSignal)
        return;
    QMetaObject::invokeMethod(
        this, [this, signal] { Q_EMIT requested(signal); }, Qt::QueuedConnection);
    if (isDestroyedUntil(input, Clock::now() + m_patience))
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
