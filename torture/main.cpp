// Tortures saves and journals: faults of every system call, power cuts as a weak file system could leave them, and
// kills; many instances that write at once; and the built program, which is killed while somebody works with it. Every
// promise that is broken is printed, and the exit status is then 1.

#include "Effort.h"
#include "FaultRun.h"
#include "InstancesRun.h"
#include "JournalRun.h"
#include "KillRun.h"
#include "PowerRun.h"
#include "Report.h"
#include "RootFolder.h"
#include "Scene.h"
#include "SettingsRun.h"
#include "program/ProgramOptions.h"
#include "program/ProgramRun.h"

#include <QThread>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

using Clock = Effort::Clock;

constexpr const char* Usage = R"(Usage: quillmark-torture [OPTION]... [PART]...

PART is faults, power, kills, journals, instances or program; all without one.

  --minutes N    try for so long (default 10)
  --quick        a fixed part of all trials, some seconds
  --seed N       the choice of trials; a long run without it makes another one each time
  --folder DIR   where the files are (default: a new folder in /dev/shm)

The part program starts the built program on virtual displays and presses its keys:

  --program FILE the program (default: that of the same build)
  --desks N      on so many displays at the same time (default 2; in a long run three for each processor)
  --files-only   of a program that brings no unsaved texts back, judge the files alone
  --lose-records remove the records of saves before each start: a run must then find broken promises
  --keep         leave the folders in which promises were broken
)";

/// In a short run one trial of so many is made.
constexpr int QuickPart = 12;
/// A short run is a test: it runs on slow machines too, and makes fewer kills, for which it can wait.
constexpr int QuickPatience = 120'000;
constexpr std::chrono::milliseconds QuickDelay{3'000};
constexpr int QuickDesks = 2;
/// Somebody at a desk waits most of the time.
constexpr int DesksOfAProcessor = 3;

struct Options {
    int minutes = 10;
    bool isQuick = false;
    std::optional<unsigned> seed;
    std::string folder;
    ProgramOptions program;
    std::vector<std::string> parts;
};

/// A switch, or an option with a value.
struct Word {
    const char* name;
    bool hasValue;
    void (*set)(Options& options, const std::string& value);
};
constexpr Word Words[] = {
    {"--minutes", true, [](Options& options, const std::string& value) { options.minutes = std::atoi(value.c_str()); }},
    {"--quick", false, [](Options& options, const std::string&) { options.isQuick = true; }},
    {"--seed", true,
     [](Options& options, const std::string& value) {
         options.seed = static_cast<unsigned>(std::atoll(value.c_str()));
     }},
    {"--folder", true, [](Options& options, const std::string& value) { options.folder = value; }},
    {"--program", true, [](Options& options, const std::string& value) { options.program.program = value; }},
    {"--desks", true,
     [](Options& options, const std::string& value) { options.program.desks = std::max(1, std::atoi(value.c_str())); }},
    {"--files-only", false, [](Options& options, const std::string&) { options.program.judgesTexts = false; }},
    {"--lose-records", false, [](Options& options, const std::string&) { options.program.losesRecords = true; }},
    {"--keep", false, [](Options& options, const std::string&) { options.program.keepsFolders = true; }},
};

/// The store first: it has few calls.
void runFaults(const QByteArray& root, Effort& effort, Report& report) {
    SettingsRun(root, effort, report).run();
    FaultRun(root, effort, report).run();
}

struct Part {
    const char* name;
    void (*run)(const QByteArray& root, const Options& options, Effort& effort, Report& report);
};
constexpr Part PartTable[] = {
    {"faults",
     [](const QByteArray& root, const Options&, Effort& effort, Report& report) { runFaults(root, effort, report); }},
    {"power", [](const QByteArray& root, const Options&, Effort& effort,
                 Report& report) { PowerRun(root, effort, report).run(); }},
    {"kills", [](const QByteArray& root, const Options&, Effort& effort,
                 Report& report) { KillRun(root, effort, report).run(); }},
    {"journals", [](const QByteArray& root, const Options&, Effort& effort,
                    Report& report) { JournalRun(root, effort, report).run(); }},
    {"instances", [](const QByteArray& root, const Options&, Effort& effort,
                     Report& report) { InstancesRun(root, effort, report).run(); }},
    {"program", [](const QByteArray& root, const Options& options, Effort& effort,
                   Report& report) { ProgramRun(root, options.program, effort, report).run(); }},
};

void listScenes() {
    std::puts("\nThe scenes of faults in saves of files:");
    for (const Scene& scene : scenes())
        std::printf("  %s\n", scene.name);
    std::puts("\nThe scenes of faults in the settings store:");
    for (const SettingsRun::Scene& scene : SettingsRun::scenes())
        std::printf("  %s\n", scene.name);
}

[[noreturn]] void showUsage(bool isWanted) {
    std::fputs(Usage, isWanted ? stdout : stderr);
    if (isWanted)
        listScenes();
    std::exit(isWanted ? 0 : 2);
}

/// Whether it is one, which then is taken with its value.
bool takeOption(Options& options, const std::vector<std::string>& arguments, std::size_t& i) {
    const auto* word = std::ranges::find_if(Words, [&](const Word& each) { return arguments[i] == each.name; });
    if (word == std::end(Words) || (word->hasValue && i + 1 == arguments.size()))
        return false;
    word->set(options, word->hasValue ? arguments[++i] : std::string());
    return true;
}

/// Ends the program when the arguments are not understood.
Options parse(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (takeOption(options, arguments, i))
            continue;
        if (std::ranges::none_of(PartTable, [&](const Part& part) { return arguments[i] == part.name; }))
            showUsage(arguments[i] == "--help");
        options.parts.push_back(arguments[i]);
    }
    if (options.program.program.empty()) {
        const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe");
        options.program.program = own.parent_path().parent_path() / "bin/quillmark";
    }
    if (options.parts.empty())
        std::ranges::transform(PartTable, std::back_inserter(options.parts), &Part::name);
    if (options.program.desks == 0)
        options.program.desks = options.isQuick ? QuickDesks : DesksOfAProcessor * QThread::idealThreadCount();
    if (options.isQuick) {
        options.program.patience = QuickPatience;
        options.program.afterPause += QuickDelay;
        options.program.whileTyping += QuickDelay;
    } else if (!options.seed) {
        options.seed = std::random_device()();
    }
    return options;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const Options options = parse(arguments);
    Report report;
    const RootFolder root(options.folder, [&report] { report.close(); });
    const unsigned seed = options.seed.value_or(1);
    std::printf("seed %u\n", seed);
    std::fflush(stdout);
    Effort effort(options.isQuick ? QuickPart : 1, !options.isQuick, seed);
    const Clock::time_point begin = Clock::now();
    const auto whole = std::chrono::minutes(options.minutes);
    for (std::size_t i = 0; i < options.parts.size(); ++i) {
        effort.setEnd(begin + whole * static_cast<int>(i + 1) / static_cast<int>(options.parts.size()));
        const auto* part =
            std::ranges::find_if(PartTable, [&](const Part& each) { return options.parts[i] == each.name; });
        part->run(root.path(), options, effort, report);
    }
    report.print();
    return report.faults() == 0 ? 0 : 1;
}
