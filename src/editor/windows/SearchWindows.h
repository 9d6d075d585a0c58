#pragma once

class TextControl;

/// The windows in which a person searches a control: each control has its own of each kind, made when it is first asked
/// for, and brought to the front after that.
namespace SearchWindows {

void openFind(TextControl& control);
void openReplace(TextControl& control);
/// The bar of the search while typing, forwards or backwards from the caret.
void openIncremental(TextControl& control, bool backwards);
/// For a control that is about to go: they look at it to their end.
void removeFrom(TextControl& control);

}  // namespace SearchWindows
