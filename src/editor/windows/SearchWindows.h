#pragma once

class TextControl;

/// The windows in which the user searches a control: each control has its own of each kind, made when it is first asked
/// for, and brought to the front after that. They use the control to their end, so each deletes itself when the control
/// is about to be destroyed.
namespace SearchWindows {

void openFind(TextControl& control);
void openReplace(TextControl& control);
/// The bar of the search while typing, forwards or backwards from the caret.
void openIncremental(TextControl& control, bool backwards);

}  // namespace SearchWindows
