#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// The X display as a user sees it: takes pictures, reports drawing and new windows, and presses keys. Owned by the
/// program that measures; closes the display when destroyed. A picture has one byte (green) per pixel, row by row.
class WatchedScreen {
 public:
    using Picture = std::vector<std::uint8_t>;
    /// Neighbouring rows of the screen, as wide as it.
    struct Rows {
        int first = 0;
        int count = 0;
    };

    WatchedScreen();
    ~WatchedScreen();

    /// False if there is no display, or it does not report drawing; then call nothing else.
    bool isOpen() const;
    /// Waits at most this many milliseconds; returns true if something was drawn since the last call.
    bool wasDrawn(int milliseconds);
    Picture picture();
    Picture picture(Rows rows);
    /// The topmost unbroken group of rows in which two pictures of the whole screen differ; none if they are equal.
    Rows topmostChange(const Picture& one, const Picture& other) const;
    /// From the leftmost to the rightmost pixel, of all rows, in which two pictures of equal height differ.
    int changedWidth(const Picture& one, const Picture& other) const;
    /// The number of pixels of the largest window that was mapped since the start; 0 if there was none.
    int windowPixels() const;
    /// Whether a window of a program has the keyboard focus, not one of the window manager.
    bool hasFocusedWindow() const;
    /// Presses and releases a key, given by its X name such as "End", with Control if requested.
    void press(const std::string& key, bool control);
    bool write(const Picture& picture, const std::string& path) const;

 private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

/// The number of pixels that differ.
int differingPixels(const WatchedScreen::Picture& one, const WatchedScreen::Picture& other);
