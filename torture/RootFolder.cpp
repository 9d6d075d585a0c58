#include "RootFolder.h"

#include "Contents.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <thread>
#include <utility>

namespace {

constexpr int Signals[] = {SIGINT, SIGTERM, SIGHUP};
/// What a shell reports of a process that a signal has ended.
constexpr int StatusOfSignal = 128;

constexpr int Attempts = 10;
constexpr useconds_t AttemptUs = 20'000;

std::mutex removing;
std::filesystem::path removedAtEnd;
/// Signals are written to the second one.
std::array<int, 2> pipeEnds{-1, -1};
pid_t owner = -1;

/// A virtual display ends what it has started itself when it is asked to; nothing else is asked.
void endChildren() {
    std::error_code error;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task", error)) {
        std::ifstream children(thread.path() / "children");
        for (pid_t child = 0; children >> child;) {
            std::string name;
            std::getline(std::ifstream("/proc/" + std::to_string(child) + "/comm"), name);
            ::kill(child, name == "with-display" ? SIGTERM : SIGKILL);
        }
    }
}

/// Not in a process that was forked, which ends by itself.
void removeAtEnd() {
    const std::lock_guard lock(removing);
    if (removedAtEnd.empty() || ::getpid() != owner)
        return;
    // A process that is being ended, or was being started, may make one more file.
    for (int attempts = 0; attempts < Attempts; ++attempts) {
        endChildren();
        std::error_code error;
        std::filesystem::remove_all(removedAtEnd, error);
        ::usleep(AttemptUs);
    }
    removedAtEnd.clear();
}

void passOn(int signal) {
    const auto byte = static_cast<char>(signal);
    if (::write(pipeEnds[1], &byte, 1) != 1)
        ::_exit(StatusOfSignal + signal);
}

void waitForSignal(const std::function<void()>& beforeEnd) {
    char signal = 0;
    if (::read(pipeEnds[0], &signal, 1) != 1)
        return;
    beforeEnd();
    removeAtEnd();
    ::_exit(StatusOfSignal + signal);
}

}  // namespace

RootFolder::RootFolder(const std::string& parent, std::function<void()> beforeEnd) {
    const std::string folder = !parent.empty() ? parent : ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    std::string pattern = folder + "/quillmark-torture-XXXXXX";
    mustWork(::pipe2(pipeEnds.data(), O_CLOEXEC) == 0, "cannot make a pipe");
    mustWork(::mkdtemp(pattern.data()) != nullptr, "cannot make a folder in " + QByteArray::fromStdString(folder));
    owner = ::getpid();
    removedAtEnd = std::filesystem::canonical(pattern);
    m_path = QByteArray::fromStdString(removedAtEnd.string());
    std::atexit(removeAtEnd);
    std::thread(waitForSignal, std::move(beforeEnd)).detach();
    // A program that is started has none of these handlers.
    for (const int each : Signals)
        std::signal(each, passOn);
}

RootFolder::~RootFolder() {
    removeAtEnd();
}
