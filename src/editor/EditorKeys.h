#pragma once

class QKeyEvent;

/// The keys of the editing control that are not left to the menus, as one table.
namespace EditorKeys {

/// The Scintilla message a key stands for, 0 for none.
int messageFor(const QKeyEvent& key);

/// Whether the key types its text: nothing that Ctrl, Alt or Meta turned into something else. Ctrl and Alt together are
/// the AltGr of some keyboards and do type.
bool typesText(const QKeyEvent& key);

}  // namespace EditorKeys
