#pragma once

#include "WatchedScreen.h"

#include <functional>
#include <vector>

/// Measures how long after the press of a key the line with the caret has changed on the screen. Owned by the program
/// that measures.
class KeyTimes {
 public:
    /// The function waits until nothing happens any more and returns whether that came in time. Both outlive this
    /// object.
    KeyTimes(WatchedScreen& screen, const std::function<bool()>& waitUntilStill)
        : m_screen(screen), m_waitUntilStill(waitUntilStill) {}

    /// Moves the caret into the middle of the first page, types and deletes by turns, and returns the milliseconds of
    /// each key. Empty if the line with the caret was not found, or a key did not change it in time.
    std::vector<double> measure(int keys);

 private:
    bool findLine();
    void waitUntilQuiet(int key);
    double time(const char* key);

    WatchedScreen& m_screen;
    const std::function<bool()>& m_waitUntilStill;
    WatchedScreen::Rows m_line;
};
