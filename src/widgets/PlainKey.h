#pragma once

#include <QKeyEvent>

/// Whether a key is pressed by itself, on the main keys or the keypad. With a modifier it is another command.
inline bool isPlainKey(const QKeyEvent& event) {
    return (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}
