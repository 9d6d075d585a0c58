#pragma once

#include <functional>

/// Whether a file opens as text (true) or as hex. The content is examined only when the result depends on it.
inline bool chooseTextMode(bool checkBinary, bool textMode, bool checkHexModeWhenOpen,
                           const std::function<bool()>& isBinary) {
    if (!checkBinary)
        return textMode;
    return !checkHexModeWhenOpen || !isBinary();
}
