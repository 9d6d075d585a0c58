#pragma once

#include "keys/HotKey.h"

#include <Qt>

#include <optional>

class QKeyEvent;

/// Names of keys, and conversion of key events to strokes. A key is written as one character, whose code is the number
/// of the key: upper-case letters and digits have their own code, F1 has 112.
namespace KeyNames {

/// Returns the name of the key; `pKey` itself if it has no name.
QString KeyName(const QString& pKey);

/// Whether the user needs the stroke for typing: letters, digits, Space, Tab and Backspace without Ctrl or Alt.
bool isTyped(const HotKeyStroke& stroke);

/// Returns the names of Ctrl, Shift, Alt and the key, joined by " + ". Without a key, the text ends with " + ".
QString text(const HotKeyStroke& stroke);
/// Returns the text of the strokes, separated by ", " if there are two.
QString text(const HotKey& hotKey);

/// Returns the stroke of a pressed key (a Qt::Key). Nothing if the key is neither a letter or digit nor in the table of
/// names, or if Meta is pressed.
std::optional<HotKeyStroke> strokeOf(int key, Qt::KeyboardModifiers held);
/// The same for a key event. If its character has no stroke, a key in the top row counts as its digit; this happens
/// with Shift, and in keyboard layouts that have other characters there.
std::optional<HotKeyStroke> strokeOf(const QKeyEvent& key);

}  // namespace KeyNames
