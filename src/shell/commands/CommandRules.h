#pragma once

/// When a command can be chosen, as one of a few groups.
enum class Enabled {
    Always,
    InText,          ///< the document shows text
    Unlocked,        ///< the document is not locked
    InUnlockedText,  ///< both
    InHex,           ///< the document shows bytes
};

/// The properties of a document that decide which commands are enabled.
struct DocumentState {
    bool text = true;  ///< text mode, not hex
    bool locked = false;
};

constexpr bool isEnabled(Enabled when, const DocumentState& state) {
    switch (when) {
        case Enabled::Always:
            return true;
        case Enabled::InText:
            return state.text;
        case Enabled::Unlocked:
            return !state.locked;
        case Enabled::InUnlockedText:
            return state.text && !state.locked;
        case Enabled::InHex:
            return !state.text;
    }
    return true;
}
