#pragma once

#include "text/lines/LineSort.h"

class ControlClipboard;
class EditView;

/// Commands that act on whole lines, or from the caret to an end of its line. They run inside a scope of the control;
/// those that change the text, on one that may be edited.
namespace LineCommands {

void deleteToStart(EditView& view);
void deleteToEnd(EditView& view);

/// The selected lines, or the caret's, with their line ends.
void deleteLines(EditView& view);
/// The same to the clipboard.
void cutLines(EditView& view, ControlClipboard& clipboard);

void selectLines(EditView& view);
/// The caret's block of lines between lines of blanks; nothing on such a line.
void selectParagraph(EditView& view);
void selectWord(EditView& view);

/// Inserts a tab, or a tab's width of blanks as set, at the start of each selected line; with several lines the empty
/// ones stay empty.
void indent(EditView& view);
/// Removes up to a tab's width of blanks from the start of each selected line.
void unindent(EditView& view);

/// Sorts the selected lines and leaves them selected. Without a selection nothing is sorted, so that a file is not
/// reordered by accident.
void sort(EditView& view, LineSort::Order order);

}  // namespace LineCommands
