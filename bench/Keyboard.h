#pragma once

#include <string>

struct _XDisplay;

/// Presses keys on an X display, as somebody at its keyboard does. The connection to the display outlives it. Nothing
/// waits until a program has received the keys.
class Keyboard {
 public:
    explicit Keyboard(_XDisplay* display) : m_display(display) {}

    /// Presses and releases a key, given by its X name and, before it, the keys that are held meanwhile: "Return",
    /// "ctrl+s", "ctrl+shift+Tab".
    void press(const std::string& chord) const;
    /// Types printable ASCII characters one after the other.
    void type(const std::string& text) const;

 private:
    _XDisplay* m_display;
};
