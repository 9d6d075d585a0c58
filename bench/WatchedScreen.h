#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// The display as somebody in front of it sees it: its picture, when it changed, the windows that came up, and a
/// keyboard. Owned by the program that watches. A picture is one byte a pixel, row by row.
class WatchedScreen {
 public:
    using Picture = std::vector<std::uint8_t>;

    WatchedScreen();
    ~WatchedScreen();

    bool isOpen() const;
    /// Waits at most that many milliseconds; true when something was drawn since the last call.
    bool wasDrawn(int milliseconds);
    Picture picture();
    /// Pixels of the largest window that was mapped since the start; 0 while there is none.
    int windowPixels() const;
    /// True when the keyboard belongs to a window of a program, not to the window manager.
    bool hasFocusedWindow() const;
    /// Presses and releases a key by its X name, "End", with Control held if wanted.
    void press(const std::string& key, bool control);
    bool write(const Picture& picture, const std::string& path) const;

 private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

/// How many pixels differ.
int differingPixels(const WatchedScreen::Picture& one, const WatchedScreen::Picture& other);
