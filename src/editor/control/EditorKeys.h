#pragma once

#include <span>

class QKeyEvent;

/// The keys that the commands of the control have from the start, those that are left to the menus aside, as one table.
namespace EditorKeys {

struct Row {
    int key;        ///< Qt::Key
    int modifiers;  ///< Qt::KeyboardModifier
    int command;
};

std::span<const Row> all();

/// The command a key stands for, 0 for none.
int commandFor(const QKeyEvent& key);

/// Whether the key is held for another's sake, like Shift, and is no stroke by itself.
bool isModifier(const QKeyEvent& key);

/// Whether the key types its text: nothing that Ctrl, Alt or Meta turned into something else. Ctrl and Alt together are
/// the AltGr of some keyboards and do type.
bool typesText(const QKeyEvent& key);

}  // namespace EditorKeys
