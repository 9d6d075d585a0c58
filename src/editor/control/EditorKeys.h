#pragma once

#include <span>

class QKeyEvent;

/// The default keys of the control's commands, as one table; keys that belong to the menus are not among them.
namespace EditorKeys {

struct Row {
    int key;        ///< Qt::Key
    int modifiers;  ///< Qt::KeyboardModifier
    int command;
};

std::span<const Row> all();

/// The command of a key, 0 for none.
int commandFor(const QKeyEvent& key);

/// Whether the key is held for another's sake, like Shift, and is no stroke by itself.
bool isModifier(const QKeyEvent& key);

/// Whether the key types its text: nothing that Ctrl, Alt or Meta turned into something else. Ctrl and Alt together are
/// the AltGr of some keyboards and do type.
bool typesText(const QKeyEvent& key);

}  // namespace EditorKeys
