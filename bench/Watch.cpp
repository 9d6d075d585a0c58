#include "KeyTimes.h"
#include "ProcessState.h"
#include "WatchedScreen.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* Usage =
    "usage: Watch [--end] [--save FILE] [--keys COUNT] [--timeout SECONDS] [--picture FILE.pgm] PROGRAM [ARGUMENT]...\n"
    "\n"
    "Starts a program on $DISPLAY, watches the screen from outside, ends the program and prints one line of figures, "
    "in\n"
    "milliseconds since the start:\n"
    "  mapped  its window came up\n"
    "  shown   from here on the picture was the one that stood in the end, but for a thousandth of the window\n"
    "  saved   with --save: from Ctrl+S until the file was written and the program had no thread at work\n"
    "  keys    with --keys: for each key, typed and deleted by turns, from its press until the line with the caret\n"
    "          had changed on the screen\n"
    "  peak    the most memory it held, in KiB\n"
    "The end is when nothing larger than a caret has changed for 0.7 s and the program used no processor time.\n"
    "With --end, Ctrl+End is pressed as soon as the window has the keyboard, 40 times a second for the first half "
    "second,\n"
    "since some programs show their window before they begin to load, and once more at the end, in case the program "
    "was\n"
    "still loading; only when that changes nothing is it the end.\n";

/// How many pixels may differ in "the same picture" and in "only a caret", as fractions of the window's pixels.
constexpr double SamePicture = 0.001;
constexpr double OnlyACaret = 0.0002;
constexpr double StillFor = 700.0;
/// Processor time, in clock ticks, that an idle program may use to blink its caret.
constexpr long IdleTicks = 3;
constexpr std::size_t MostPictures = 400;
constexpr int FirstPresses = 20;
constexpr double BetweenPresses = 25.0;

struct Wanted {
    bool end = false;
    std::string save;
    int keys = 0;
    double timeout = 60'000.0;
    std::string picture;
    std::vector<char*> command;
};

struct Figures {
    double mapped = -1.0;
    double shown = -1.0;
    double saved = -1.0;
    std::vector<double> keys;
    long peak = 0;
};

class Watch {
 public:
    Watch(const Wanted& wanted, WatchedScreen& screen) : m_wanted(wanted), m_screen(screen) {}

    bool run(Figures& figures);

 private:
    double now() const { return std::chrono::duration<double, std::milli>(Clock::now() - m_start).count(); }
    bool isLate() const { return now() > m_wanted.timeout; }
    void look();
    bool waitUntilStill(const ProcessState& process);
    void pressEndAtFirst();
    bool showEnd(const ProcessState& process);
    double sameSince() const;
    double save(const ProcessState& process);

    const Wanted& m_wanted;
    WatchedScreen& m_screen;
    Clock::time_point m_start;
    double m_mapped = -1.0;
    double m_lastChange = 0.0;
    std::deque<std::pair<double, WatchedScreen::Picture>> m_pictures;
};

/// Takes a picture if something was drawn, and keeps it if it differs from the last one.
void Watch::look() {
    const bool drawn = m_screen.wasDrawn(5);
    const double when = now();
    if (m_mapped < 0 && m_screen.windowPixels() > 0)
        m_mapped = when;
    if (!drawn)
        return;
    WatchedScreen::Picture picture = m_screen.picture();
    const int changed = m_pictures.empty() ? 1 : differingPixels(picture, m_pictures.back().second);
    if (changed == 0)
        return;
    if (m_pictures.empty() || changed > OnlyACaret * m_screen.windowPixels())
        m_lastChange = when;
    m_pictures.emplace_back(when, std::move(picture));
    if (m_pictures.size() > MostPictures)
        m_pictures.pop_front();
}

bool Watch::waitUntilStill(const ProcessState& process) {
    double idleSince = now();
    long ticks = process.ticks();
    while (!isLate()) {
        look();
        const long used = process.ticks();
        if (used > ticks + IdleTicks) {
            ticks = used;
            idleSince = now();
        }
        if (process.hasEnded())
            return false;
        if (m_mapped >= 0 && now() - std::max(m_lastChange, idleSince) > StillFor)
            return true;
    }
    return false;
}

void Watch::pressEndAtFirst() {
    const double begun = now();
    for (int pressed = 0; pressed < FirstPresses; ++pressed) {
        m_screen.press("End", true);
        do
            look();
        while (now() < begun + (pressed + 1) * BetweenPresses);
    }
}

bool Watch::showEnd(const ProcessState& process) {
    while (!m_screen.hasFocusedWindow()) {
        look();
        if (isLate() || process.hasEnded())
            return false;
    }
    pressEndAtFirst();
    for (double changed = -1.0; changed != m_lastChange;) {
        if (!waitUntilStill(process))
            return false;
        changed = m_lastChange;
        m_screen.press("End", true);
        if (!waitUntilStill(process))
            return false;
    }
    return true;
}

/// Returns the time from which the final picture was visible: that of the first picture in the unbroken sequence, up to
/// the last, of pictures that equal the last.
double Watch::sameSince() const {
    const WatchedScreen::Picture& last = m_pictures.back().second;
    double since = m_pictures.back().first;
    for (auto at = m_pictures.rbegin(); at != m_pictures.rend(); ++at) {
        if (differingPixels(at->second, last) > SamePicture * m_screen.windowPixels())
            break;
        since = at->first;
    }
    return since;
}

/// Returns how many milliseconds the save took; negative if it failed. The program counts as working while one of its
/// threads waits for the disk, or was running in at least three of the last four checks (so that a blinking caret does
/// not count), or while the file changes.
double Watch::save(const ProcessState& process) {
    struct stat before = {};
    m_screen.press("x", false);
    if (!waitUntilStill(process) || stat(m_wanted.save.c_str(), &before) != 0)
        return -1.0;
    const double begun = now();
    m_screen.press("s", true);
    double lastWork = begun;
    bool written = false;
    struct stat seen = before;
    std::deque<bool> running(4, false);
    while (!isLate()) {
        look();
        struct stat file = {};
        const bool changed = stat(m_wanted.save.c_str(), &file) == 0 &&
                             (file.st_size != seen.st_size || file.st_mtim.tv_nsec != seen.st_mtim.tv_nsec ||
                              file.st_mtim.tv_sec != seen.st_mtim.tv_sec);
        seen = file;
        written = written || changed;
        running.pop_front();
        running.push_back(process.isRunning());
        const bool busy = running[0] + running[1] + running[2] + running[3] >= 3;
        if (changed || busy || process.isWriting())
            lastWork = now();
        if (written && now() - lastWork > StillFor)
            return lastWork - begun;
    }
    return -1.0;
}

pid_t startProgram(const std::vector<char*>& command) {
    pid_t process = 0;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    const int failed = posix_spawnp(&process, command.front(), &actions, nullptr, command.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return failed == 0 ? process : -1;
}

void endProgram(pid_t process) {
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

bool Watch::run(Figures& figures) {
    m_start = Clock::now();
    const pid_t program = startProgram(m_wanted.command);
    if (program < 0)
        return false;
    const ProcessState process(program);
    bool good = m_wanted.end ? showEnd(process) : waitUntilStill(process);
    figures.peak = process.peakMemory();
    figures.mapped = m_mapped;
    if (good) {
        figures.shown = sameSince();
        if (!m_wanted.picture.empty())
            m_screen.write(m_pictures.back().second, m_wanted.picture);
    }
    if (good && !m_wanted.save.empty()) {
        figures.saved = save(process);
        good = figures.saved >= 0;
    }
    if (good && m_wanted.keys > 0) {
        const std::function<bool()> wait = [&] { return waitUntilStill(process); };
        figures.keys = KeyTimes(m_screen, wait).measure(m_wanted.keys);
        good = !figures.keys.empty();
    }
    endProgram(program);
    return good;
}

bool parse(int argc, char** argv, Wanted& wanted) {
    int at = 1;
    for (; at < argc && std::strncmp(argv[at], "--", 2) == 0; ++at) {
        const std::string option = argv[at];
        const bool hasValue = at + 1 < argc;
        if (option == "--end")
            wanted.end = true;
        else if (option == "--save" && hasValue)
            wanted.save = argv[++at];
        else if (option == "--keys" && hasValue)
            wanted.keys = std::atoi(argv[++at]);
        else if (option == "--timeout" && hasValue)
            wanted.timeout = std::atof(argv[++at]) * 1000.0;
        else if (option == "--picture" && hasValue)
            wanted.picture = argv[++at];
        else
            return false;
    }
    wanted.command.assign(argv + at, argv + argc);
    wanted.command.push_back(nullptr);
    return wanted.command.size() > 1;
}

std::string joined(const std::vector<double>& values) {
    std::string text;
    for (const double value : values)
        text += (text.empty() ? "" : ", ") + std::to_string(value);
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    Wanted wanted;
    if (!parse(argc, argv, wanted)) {
        std::fputs(Usage, stderr);
        return 2;
    }
    WatchedScreen screen;
    if (!screen.isOpen()) {
        std::fputs("Watch: no display that tells of drawing\n", stderr);
        return 1;
    }
    Figures figures;
    const bool good = Watch(wanted, screen).run(figures);
    std::printf("{\"mapped\": %.1f, \"shown\": %.1f, \"saved\": %.1f, \"keys\": [%s], \"peak\": %ld, \"good\": %s}\n",
                figures.mapped, figures.shown, figures.saved, joined(figures.keys).c_str(), figures.peak,
                good ? "true" : "false");
    return 0;
}
