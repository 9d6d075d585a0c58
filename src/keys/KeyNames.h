#pragma once

#include "keys/HotKey.h"

#include <Qt>

#include <optional>

class QKeyEvent;

/// The names of keys, and the strokes that a keyboard makes of them. A key is a character whose code is the number of
/// the key: upper-case letters and digits stand for themselves, 112 for F1.
namespace KeyNames {

/// The name of the key; one without a name gives `pKey` back as it stands.
QString KeyName(const QString& pKey);

/// Ctrl, Shift, Alt and the key, joined by " + ". Modifiers without a key end in the joint.
QString text(const HotKeyStroke& stroke);
/// The strokes, joined by ", " when there is a second.
QString text(const HotKey& hotKey);

/// The stroke of a pressed key (a Qt::Key). Nothing for keys that are neither a letter, a digit nor in the table of
/// names, and while Meta is held.
std::optional<HotKeyStroke> strokeOf(int key, Qt::KeyboardModifiers held);
/// The same for a key event. Where Shift makes a sign of a digit's key, or the sign stands there without it, the key is
/// still the digit's.
std::optional<HotKeyStroke> strokeOf(const QKeyEvent& key);

}  // namespace KeyNames
