#include "text/codec/Windows1252.h"

#include <algorithm>

int Windows1252::byteOf(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<int>(character);
    const auto found = std::find(HighControls.begin(), HighControls.end(), character);
    return found == HighControls.end() ? -1 : 0x80 + static_cast<int>(found - HighControls.begin());
}
