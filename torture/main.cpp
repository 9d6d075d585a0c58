// Tortures saves and journals: faults of every system call, power cuts as a weak file system could leave them, kills,
// and many instances that write at once. Every promise that is broken is printed, and the exit status is then 1.

#include "Contents.h"
#include "Effort.h"
#include "FaultRun.h"
#include "InstancesRun.h"
#include "JournalRun.h"
#include "KillRun.h"
#include "PowerRun.h"
#include "Report.h"
#include "Scene.h"
#include "SettingsRun.h"

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Clock = Effort::Clock;

constexpr const char* Usage = R"(Usage: quillmark-torture [OPTION]... [PART]...

PART is faults, power, kills, journals or instances; all without one.

  --minutes N   try for so long (default 10)
  --quick       a fixed part of all trials, some seconds
  --seed N      another choice of trials
  --folder DIR  where the files are (default: a new folder in /dev/shm)
)";

constexpr std::string_view Parts[] = {"faults", "power", "kills", "journals", "instances"};

/// In a short run one trial of so many is made.
constexpr int QuickPart = 12;

struct Options {
    int minutes = 10;
    bool isQuick = false;
    unsigned seed = 1;
    std::string folder;
    std::vector<std::string> parts;
};

void listScenes() {
    std::puts("\nThe scenes of faults:");
    for (const Scene& scene : scenes())
        std::printf("  %s\n", scene.name);
}

/// Ends the program when the arguments are not understood.
Options parse(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (word == "--quick") {
            options.isQuick = true;
        } else if (word == "--minutes" && hasValue) {
            options.minutes = std::atoi(arguments[++i].c_str());
        } else if (word == "--seed" && hasValue) {
            options.seed = static_cast<unsigned>(std::atoi(arguments[++i].c_str()));
        } else if (word == "--folder" && hasValue) {
            options.folder = arguments[++i];
        } else if (std::find(std::begin(Parts), std::end(Parts), word) != std::end(Parts)) {
            options.parts.push_back(word);
        } else {
            std::fputs(Usage, word == "--help" ? stdout : stderr);
            if (word == "--help")
                listScenes();
            std::exit(word == "--help" ? 0 : 2);
        }
    }
    if (options.parts.empty())
        options.parts.assign(std::begin(Parts), std::end(Parts));
    return options;
}

/// A new folder in memory where that is possible: nothing here depends on a disk, and flushes cost nothing there.
QByteArray makeRoot(const std::string& folder) {
    const char* parent = !folder.empty() ? folder.c_str() : ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    std::string pattern = std::string(parent) + "/quillmark-torture-XXXXXX";
    mustWork(::mkdtemp(pattern.data()) != nullptr, QByteArray("cannot make a folder in ") + parent);
    return QByteArray::fromStdString(std::filesystem::canonical(pattern).string());
}

/// The store first: it has few calls.
void runFaults(const QByteArray& root, Effort& effort, Report& report) {
    SettingsRun(root, effort, report).run();
    FaultRun(root, effort, report).run();
}

void runPart(const std::string& part, const QByteArray& root, Effort& effort, Report& report) {
    if (part == "faults")
        runFaults(root, effort, report);
    else if (part == "power")
        PowerRun(root, effort, report).run();
    else if (part == "instances")
        InstancesRun(root, effort, report).run();
    else if (part == "journals")
        JournalRun(root, effort, report).run();
    else
        KillRun(root, effort, report).run();
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const Options options = parse(arguments);
    const QByteArray root = makeRoot(options.folder);
    Report report;
    Effort effort(options.isQuick ? QuickPart : 1, !options.isQuick, options.seed);
    const Clock::time_point begin = Clock::now();
    const auto whole = std::chrono::minutes(options.minutes);
    for (std::size_t i = 0; i < options.parts.size(); ++i) {
        effort.setEnd(begin + whole * static_cast<int>(i + 1) / static_cast<int>(options.parts.size()));
        runPart(options.parts[i], root, effort, report);
    }
    std::error_code error;
    std::filesystem::remove_all(root.constData(), error);
    report.print();
    return report.faults() == 0 ? 0 : 1;
}
