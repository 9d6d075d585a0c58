#include "program/RunningProgram.h"

#include "Contents.h"
#include "bench/ProcessState.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

namespace {

constexpr int StepMs = 5;

/// The program yields to who kills it: on a busy machine a save would be over before anybody could hit it.
constexpr int Niceness = 5;

}  // namespace

RunningProgram::RunningProgram(std::vector<std::string> words, std::vector<std::string> environment,
                               const std::string& errors) {
    for (char** each = environ; *each != nullptr; ++each) {
        const std::string name = std::string(*each).substr(0, std::string(*each).find('=') + 1);
        bool isGiven = false;
        for (const std::string& given : environment)
            isGiven = isGiven || given.starts_with(name);
        if (!isGiven)
            environment.emplace_back(*each);
    }
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    std::vector<char*> variables;
    variables.reserve(environment.size() + 1);
    for (std::string& variable : environment)
        variables.push_back(variable.data());
    variables.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    mustWork(::posix_spawn(&m_process, arguments[0], &actions, nullptr, arguments.data(), variables.data()) == 0,
             "cannot start " + QByteArray(arguments[0]));
    posix_spawn_file_actions_destroy(&actions);
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(m_process), Niceness);
}

bool RunningProgram::hasEnded() {
    if (!m_hasEnded)
        m_hasEnded = ::waitpid(m_process, &m_status, WNOHANG) == m_process;
    return m_hasEnded;
}

bool RunningProgram::kill() {
    if (m_hasEnded)
        return false;
    ::kill(m_process, SIGKILL);
    mustWork(::waitpid(m_process, &m_status, 0) == m_process, "cannot wait for the program");
    m_hasEnded = true;
    return WIFSIGNALED(m_status) && WTERMSIG(m_status) == SIGKILL;
}

void RunningProgram::settle(int rest, int limit, const std::function<bool()>& isTrue) {
    using Clock = std::chrono::steady_clock;
    const ProcessState state(m_process);
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(limit);
    Clock::time_point quietSince = Clock::now();
    long long before = -1;
    while (!hasEnded() && !(isTrue && isTrue())) {
        const Clock::time_point now = Clock::now();
        const long long time = state.threadTime();
        if (time != before || state.isRunning() || state.isWriting())
            quietSince = now;
        if (now >= end || now - quietSince >= std::chrono::milliseconds(rest))
            return;
        before = time;
        ::usleep(StepMs * 1000);
    }
}
