#pragma once

#include "bench/Keyboard.h"

#include <sys/types.h>

#include <string>
#include <vector>

/// A virtual display of its own with a window manager and a keyboard. Owned by the code that needs it; the display ends
/// with it. Used by one thread.
class Desktop {
 public:
    Desktop();
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// As in the environment variable DISPLAY.
    const std::string& name() const { return m_name; }
    Keyboard keyboard() const { return Keyboard(m_display); }
    /// The titles of the windows that the window manager shows, the oldest first.
    std::vector<std::string> titles() const;
    /// The title of the window that has the keys; empty: there is none.
    std::string activeTitle() const;

 private:
    pid_t m_process = -1;
    std::string m_name;
    _XDisplay* m_display = nullptr;
};
