#include "ProcessState.h"

#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

/// Returns the fields of a "stat" file after the program's name, which may contain spaces; the first one is the state.
std::string fieldsBehindName(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    const auto behind = line.rfind(')');
    return behind == std::string::npos || behind + 2 > line.size() ? std::string() : line.substr(behind + 2);
}

std::filesystem::path folderOf(pid_t process) {
    return "/proc/" + std::to_string(process);
}

}  // namespace

ProcessState::ProcessState(pid_t process) : m_process(process) {}

long ProcessState::ticks() const {
    static constexpr int FieldsBeforeTimes = 11;
    std::istringstream fields(fieldsBehindName(folderOf(m_process) / "stat"));
    std::string passed;
    for (int field = 0; field < FieldsBeforeTimes; ++field)
        fields >> passed;
    long user = 0;
    long system = 0;
    fields >> user >> system;
    return user + system;
}

long long ProcessState::threadTime() const {
    std::error_code failed;
    long long sum = 0;
    for (const auto& thread : std::filesystem::directory_iterator(folderOf(m_process) / "task", failed)) {
        std::ifstream file(thread.path() / "schedstat");
        long long time = 0;
        if (file >> time)
            sum += time;
    }
    return sum;
}

bool ProcessState::hasThreadIn(char state) const {
    std::error_code failed;
    for (const auto& thread : std::filesystem::directory_iterator(folderOf(m_process) / "task", failed)) {
        const std::string fields = fieldsBehindName(thread.path() / "stat");
        if (!fields.empty() && fields.front() == state)
            return true;
    }
    return false;
}

bool ProcessState::isWriting() const {
    return hasThreadIn('D');
}

bool ProcessState::isRunning() const {
    return hasThreadIn('R');
}

long ProcessState::peakMemory() const {
    std::ifstream file(folderOf(m_process) / "status");
    std::string word;
    while (file >> word) {
        long value = 0;
        if (word == "VmHWM:" && file >> value)
            return value;
    }
    return 0;
}

bool ProcessState::hasEnded() const {
    return waitpid(m_process, nullptr, WNOHANG) != 0;
}
