#include "KeyTimes.h"

#include <algorithm>
#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* Letter = "x";
/// Lines that the caret moves down before; a text of fewer lines stays at its last one.
constexpr int LinesDown = 15;
/// So many letters are typed one after the other, and then deleted one after the other.
constexpr int Run = 20;
/// A change that is narrower, in pixels, is a caret that blinks.
constexpr int WidestCaret = 4;
constexpr int LatestMilliseconds = 3000;
/// The pause between two keys, which varies so that no key keeps step with a timer of the program.
constexpr int ShortestPause = 40;
constexpr int PauseSteps = 31;
constexpr int PauseStride = 7;

double millisecondsSince(Clock::time_point begun) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begun).count();
}

}  // namespace

/// The line is the topmost one that a letter changes: a status bar that shows the column lies below.
bool KeyTimes::findLine() {
    m_screen.press(Letter, false);
    if (!m_waitUntilStill())
        return false;
    const WatchedScreen::Picture before = m_screen.picture();
    m_screen.press(Letter, false);
    if (!m_waitUntilStill())
        return false;
    m_line = m_screen.topmostChange(before, m_screen.picture());
    return m_line.count > 0;
}

void KeyTimes::waitUntilQuiet(int key) {
    const Clock::time_point begun = Clock::now();
    const double pause = ShortestPause + key * PauseStride % PauseSteps;
    while (millisecondsSince(begun) < pause)
        m_screen.wasDrawn(static_cast<int>(pause - millisecondsSince(begun)) + 1);
}

/// Negative if nothing came of the key.
double KeyTimes::time(const char* key) {
    const WatchedScreen::Picture before = m_screen.picture(m_line);
    const Clock::time_point begun = Clock::now();
    m_screen.press(key, false);
    while (millisecondsSince(begun) < LatestMilliseconds) {
        if (m_screen.wasDrawn(1) && m_screen.changedWidth(before, m_screen.picture(m_line)) > WidestCaret)
            return millisecondsSince(begun);
    }
    return -1.0;
}

std::vector<double> KeyTimes::measure(int keys) {
    for (int line = 0; line < LinesDown; ++line)
        m_screen.press("Down", false);
    if (!m_waitUntilStill() || !findLine())
        return {};
    std::vector<double> times;
    for (int key = 0; key < keys; ++key) {
        waitUntilQuiet(key);
        const bool deletes = key / Run % 2 == 1;
        times.push_back(time(deletes ? "BackSpace" : Letter));
        if (times.back() < 0)
            return {};
    }
    return times;
}
