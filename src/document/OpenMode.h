#pragma once

#include <functional>

/// Whether a file opens as text (true) or as hex. The content is looked at only when the answer hangs on it.
inline bool chooseTextMode(bool checkBinary, bool textMode, bool checkHexModeWhenOpen,
                           const std::function<bool()>& isBinary) {
    if (!checkBinary)
        return textMode;
    return !checkHexModeWhenOpen || !isBinary();
}
