#include "program/Operator.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int StepMs = 4;
constexpr int PictureMs = 5'000;
/// The frame shows the next document soon after the key; waiting longer only finds out that it does not.
constexpr int SwitchMs = 1'000;
constexpr const char* FrameBegin = "Quillmark - [";
constexpr const char* FrameAlone = "Quillmark";

bool isFrame(const std::string& title) {
    return title.starts_with(FrameBegin);
}

}  // namespace

void Operator::beginStart(const QByteArray& home, const std::vector<QByteArray>& files) {
    const std::string folder = home.toStdString();
    std::vector<std::string> words{m_program};
    for (const QByteArray& file : files)
        words.push_back(file.toStdString());
    std::vector<std::string> environment{"DISPLAY=" + m_desktop.name(),
                                         "HOME=" + folder,
                                         "TMPDIR=" + folder + "/tmp",
                                         "XDG_RUNTIME_DIR=" + folder + "/run",
                                         "XDG_CONFIG_HOME=" + folder + "/config",
                                         "XDG_DATA_HOME=" + folder + "/data",
                                         "XDG_STATE_HOME=" + folder + "/state",
                                         "QT_QPA_PLATFORM=xcb",
                                         "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent"};
    m_running = std::make_unique<RunningProgram>(std::move(words), std::move(environment), folder + "/errors");
}

void Operator::start(const QByteArray& home, const std::vector<QByteArray>& files) {
    beginStart(home, files);
    const auto isThere = [&] {
        const std::vector<std::string> titles = m_desktop.titles();
        return std::ranges::any_of(titles, isFrame) || titles.size() > 1;
    };
    if (!waitUntil(isThere))
        throw Broken{"the program does not start"};
    // The files are opened one after the other once the program has started, and the last one is active in the end.
    waitUntil([&] { return activeDocument() == files.back() && isFrame(m_desktop.activeTitle()); });
    settleWell();
    expectNoBox();
}

void Operator::expectNoBox() const {
    const std::vector<std::string> titles = m_desktop.titles();
    for (const std::string& title : titles) {
        // While documents come and go the frame has a title without one for a moment.
        if (!isFrame(title) && (titles.size() > 1 || title != FrameAlone))
            throw Broken{"a window \"" + QByteArray::fromStdString(title) + "\""};
    }
}

void Operator::takePicture(const std::string& file) const {
    RunningProgram picture({"/usr/bin/import", "-silent", "-window", "root", file}, {"DISPLAY=" + m_desktop.name()},
                           "/dev/null");
    for (int passed = 0; passed < PictureMs && !picture.hasEnded(); passed += StepMs)
        ::usleep(StepMs * 1000);
}

void Operator::waitForEnd() {
    if (!waitUntil([this] { return m_running->hasEnded(); }))
        throw Broken{"the program does not end"};
    if (!m_running->hasEndedWell())
        throw Broken{"the program ended with a fault"};
}

int Operator::count(const std::string& title) const {
    return int(std::ranges::count(m_desktop.titles(), title));
}

void Operator::waitForWindow(const std::string& title, int wanted) {
    if (!waitUntil([&] { return count(title) >= wanted && m_desktop.activeTitle() == title; }))
        throw Broken{"no window \"" + QByteArray::fromStdString(title) + "\""};
    settle();
}

bool Operator::waitUntil(const std::function<bool()>& isTrue, int milliseconds) {
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (!isTrue()) {
        if (m_running->hasEnded() || Clock::now() >= end)
            return isTrue();
        ::usleep(StepMs * 1000);
    }
    return true;
}

QByteArray Operator::activeDocument() const {
    for (const std::string& title : m_desktop.titles()) {
        if (isFrame(title))
            return QByteArray::fromStdString(title).sliced(qstrlen(FrameBegin)).chopped(1);
    }
    return {};
}

bool Operator::waitWhileBusy(const std::function<bool()>& isTrue, int milliseconds) {
    m_running->settle(LongRestMs, milliseconds, isTrue);
    return isTrue();
}

/// What comes up late is found the second time.
bool Operator::activate(const std::function<bool(const QByteArray& name)>& isWanted, int documents) {
    if (isWanted(activeDocument()))
        return true;
    const bool isFound = activateOnce(isWanted, documents);
    settleWell();
    return isFound || activateOnce(isWanted, documents);
}

/// Once round: there is nothing else when the key has no effect, or has brought back the first one.
bool Operator::activateOnce(const std::function<bool(const QByteArray& name)>& isWanted, int documents) {
    const QByteArray first = activeDocument();
    QByteArray active = first;
    for (int i = 0; i < documents && !isWanted(active); ++i) {
        press("ctrl+Tab");
        waitWhileBusy([&] { return !activeDocument().isEmpty() && activeDocument() != active; }, SwitchMs);
        settle();
        active = activeDocument();
        if (active == first)
            break;
    }
    return isWanted(active);
}
