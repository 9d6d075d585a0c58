#pragma once

#include <chrono>
#include <string>

/// How the built program is tortured.
struct ProgramOptions {
    std::string program;        ///< its path
    int desks = 0;              ///< that work at the same time, each on a display of its own; main sets a number
    bool judgesTexts = true;    ///< whether unsaved text must come back
    bool losesRecords = false;  ///< the records of saves are removed before each start: promises are broken then
    bool keepsFolders = false;  ///< a broken promise leaves the folder in which it was broken
    /// What may be lost of unsaved text, with what a busy machine may add.
    std::chrono::milliseconds afterPause{1'500};
    std::chrono::milliseconds whileTyping{5'500};
    int patience = 30'000;  ///< the longest time to wait for a window, in milliseconds
};
