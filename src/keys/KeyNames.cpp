#include "keys/KeyNames.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace {

struct KeyRow {
    char16_t code;
    const char16_t* name;
    int key;
};

constexpr auto Keys = std::to_array<KeyRow>({
    {8, u"Backspace", Qt::Key_Backspace},
    {9, u"Tab", Qt::Key_Tab},
    {19, u"Pause", Qt::Key_Pause},
    {20, u"Captial", Qt::Key_CapsLock},
    {27, u"Escape", Qt::Key_Escape},
    {32, u"Space", Qt::Key_Space},
    {33, u"Page Up", Qt::Key_PageUp},
    {34, u"Page Down", Qt::Key_PageDown},
    {35, u"End", Qt::Key_End},
    {36, u"Home", Qt::Key_Home},
    {37, u"Left", Qt::Key_Left},
    {38, u"Up", Qt::Key_Up},
    {39, u"Right", Qt::Key_Right},
    {40, u"Down", Qt::Key_Down},
    {42, u"Print", Qt::Key_Print},
    {45, u"Insert", Qt::Key_Insert},
    {46, u"Delete", Qt::Key_Delete},
    {47, u"Help", Qt::Key_Help},
    {144, u"Lock", Qt::Key_NumLock},
    {112, u"F1", Qt::Key_F1},
    {113, u"F2", Qt::Key_F2},
    {114, u"F3", Qt::Key_F3},
    {115, u"F4", Qt::Key_F4},
    {116, u"F5", Qt::Key_F5},
    {117, u"F6", Qt::Key_F6},
    {118, u"F7", Qt::Key_F7},
    {119, u"F8", Qt::Key_F8},
    {120, u"F9", Qt::Key_F9},
    {121, u"F10", Qt::Key_F10},
    {122, u"F11", Qt::Key_F11},
    {123, u"F12", Qt::Key_F12},
    {124, u"F13", Qt::Key_F13},
    {125, u"F14", Qt::Key_F14},
    {126, u"F15", Qt::Key_F15},
    {127, u"F16", Qt::Key_F16},
});

struct ModifierRow {
    int bit;
    Qt::KeyboardModifier held;
    const char16_t* text;
};

constexpr auto Modifiers = std::to_array<ModifierRow>({
    {HotKeyStroke::Ctrl, Qt::ControlModifier, u"Ctrl + "},
    {HotKeyStroke::Shift, Qt::ShiftModifier, u"Shift + "},
    {HotKeyStroke::Alt, Qt::AltModifier, u"Alt + "},
});

/// Returns the Qt::Key of the digit on this key in the top row, by its scan code; 0 for other keys.
int digitAt(quint32 scanCode) {
#ifdef Q_OS_LINUX
    constexpr quint32 One = 10;
    constexpr quint32 Zero = 19;
    if (scanCode == Zero)
        return Qt::Key_0;
    if (scanCode >= One && scanCode < Zero)
        return Qt::Key_1 + static_cast<int>(scanCode - One);
#else
    Q_UNUSED(scanCode)
#endif
    return 0;
}

/// Returns the key code of a Qt::Key; 0 if it has none.
char16_t codeOf(int key) {
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
        return static_cast<char16_t>(key);
    // With Shift, Qt reports the Tab key as a different key.
    const int plain = key == Qt::Key_Backtab ? static_cast<int>(Qt::Key_Tab) : key;
    const auto row = std::find_if(Keys.begin(), Keys.end(), [plain](const KeyRow& One) { return One.key == plain; });
    return row == Keys.end() ? u'\0' : row->code;
}

}  // namespace

QString KeyNames::KeyName(const QString& pKey) {
    if (pKey.size() != 1)
        return pKey;
    const char16_t code = pKey.front().unicode();
    const auto row = std::find_if(Keys.begin(), Keys.end(), [code](const KeyRow& One) { return One.code == code; });
    return row == Keys.end() ? pKey : QString::fromUtf16(row->name);
}

bool KeyNames::isTyped(const HotKeyStroke& stroke) {
    constexpr int KeepsTyping = HotKeyStroke::Ctrl | HotKeyStroke::Alt;
    if ((stroke.modifiers & KeepsTyping) != 0 || stroke.key.isEmpty())
        return false;
    const char16_t code = stroke.key.front().unicode();
    const bool letter = code >= u'A' && code <= u'Z';
    const bool digit = code >= u'0' && code <= u'9';
    return letter || digit || code == u' ' || code == u'\t' || code == u'\b';
}

QString KeyNames::text(const HotKeyStroke& stroke) {
    QString text;
    for (const ModifierRow& row : Modifiers) {
        if ((stroke.modifiers & row.bit) != 0)
            text += QString::fromUtf16(row.text);
    }
    return text + KeyName(stroke.key);
}

QString KeyNames::text(const HotKey& hotKey) {
    const QString second = text(hotKey.second);
    return second.isEmpty() ? text(hotKey.first) : text(hotKey.first) + QLatin1String(", ") + second;
}

std::optional<HotKeyStroke> KeyNames::strokeOf(const QKeyEvent& key) {
    const auto stroke = strokeOf(key.key(), key.modifiers());
    const int digit = digitAt(key.nativeScanCode());
    return stroke || digit == 0 ? stroke : strokeOf(digit, key.modifiers());
}

std::optional<HotKeyStroke> KeyNames::strokeOf(int key, Qt::KeyboardModifiers held) {
    if (key == Qt::Key_Backtab)
        held |= Qt::ShiftModifier;
    const char16_t code = codeOf(key);
    if (code == 0 || held.testFlag(Qt::MetaModifier))
        return std::nullopt;
    HotKeyStroke stroke;
    stroke.key = QChar(code);
    for (const ModifierRow& row : Modifiers)
        stroke.modifiers |= held.testFlag(row.held) ? row.bit : 0;
    return stroke;
}
