#pragma once

#include "text/lines/LineSort.h"

class TextControl;

/// Commands that act on whole lines, or from the caret to an end of its line. They run inside a scope of the control;
/// those that change the text, on one that may be edited.
namespace LineCommands {

void deleteToStart(TextControl& control);
void deleteToEnd(TextControl& control);

/// The selected lines, or the caret's, with their line ends.
void deleteLines(TextControl& control);
/// The same to the clipboard.
void cutLines(TextControl& control);

void selectLines(TextControl& control);
/// The caret's block of lines between lines of blanks; nothing on such a line.
void selectParagraph(TextControl& control);
void selectWord(TextControl& control);

/// Puts a tab, or a tab's width of blanks as it is set, in front of each selected line; of several lines the empty
/// ones stay empty.
void indent(TextControl& control);
/// Takes up to a tab's width of blanks from the front of each selected line.
void unindent(TextControl& control);

/// Sorts the selected lines and leaves them selected. With nothing selected there is nothing to sort: a file is not
/// turned over by a slip of the mouse.
void sort(TextControl& control, LineSort::Order order);

}  // namespace LineCommands
