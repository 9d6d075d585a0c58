#pragma once

class TextControl;

/// The windows in which the user searches a control: each control has its own of each kind, created at the first call
/// and brought to the front at later ones. They use the control until it ends, so each deletes itself when the control
/// is about to be destroyed.
namespace SearchWindows {

void openFind(TextControl& control);
void openReplace(TextControl& control);
/// The bar of the search while typing, forwards or backwards from the caret.
void openIncremental(TextControl& control, bool backwards);

}  // namespace SearchWindows
