#include "Keyboard.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <vector>

namespace {

/// The X name of a key that is held; any other word is such a name itself.
std::string nameOfHeld(const std::string& word) {
    if (word == "ctrl")
        return "Control_L";
    if (word == "alt")
        return "Alt_L";
    return word == "shift" ? "Shift_L" : word;
}

KeyCode codeOf(Display* display, const std::string& name) {
    return XKeysymToKeycode(display, XStringToKeysym(name.c_str()));
}

}  // namespace

void Keyboard::press(const std::string& chord) const {
    std::vector<KeyCode> codes;
    std::size_t begin = 0;
    for (std::size_t end = chord.find('+'); end != std::string::npos; end = chord.find('+', begin)) {
        codes.push_back(codeOf(m_display, nameOfHeld(chord.substr(begin, end - begin))));
        begin = end + 1;
    }
    codes.push_back(codeOf(m_display, chord.substr(begin)));
    for (const KeyCode code : codes)
        XTestFakeKeyEvent(m_display, code, True, CurrentTime);
    for (auto code = codes.rbegin(); code != codes.rend(); ++code)
        XTestFakeKeyEvent(m_display, *code, False, CurrentTime);
    XFlush(m_display);
}

/// The key symbols of Latin-1 characters are their codes.
void Keyboard::type(const std::string& text) const {
    const KeyCode shift = codeOf(m_display, "Shift_L");
    for (const char each : text) {
        const KeySym symbol = static_cast<unsigned char>(each);
        const KeyCode code = XKeysymToKeycode(m_display, symbol);
        const bool isShifted = XkbKeycodeToKeysym(m_display, code, 0, 0) != symbol;
        if (isShifted)
            XTestFakeKeyEvent(m_display, shift, True, CurrentTime);
        XTestFakeKeyEvent(m_display, code, True, CurrentTime);
        XTestFakeKeyEvent(m_display, code, False, CurrentTime);
        if (isShifted)
            XTestFakeKeyEvent(m_display, shift, False, CurrentTime);
    }
    XFlush(m_display);
}
