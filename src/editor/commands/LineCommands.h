#pragma once

#include "text/lines/LineSort.h"

class ControlClipboard;
class EditView;

/// Commands that act on whole lines, or from the caret to an end of its line: on the lines of each selected range and
/// of each caret, but on none between them. They run inside a scope of the control; those that change the text, on one
/// that may be edited.
namespace LineCommands {

void deleteToStart(EditView& view);
void deleteToEnd(EditView& view);

/// The selected lines, or those of the carets, with their line ends and bookmarks.
void deleteLines(EditView& view);
/// The same to the clipboard, one text in the order of the lines. Uses up the repeat count: the lines of all repeats
/// are one text.
void cutLines(EditView& view, ControlClipboard& clipboard);

void selectLines(EditView& view);
/// The block of lines around each caret between lines of blanks; nothing on such a line.
void selectParagraphs(EditView& view);
void selectWords(EditView& view);

/// Inserts a tab, or a tab's width of blanks as it is set, at the start of each selected line; among several lines the
/// empty ones stay empty.
void indent(EditView& view);
/// Removes up to a tab's width of blanks from the start of each selected line.
void unindent(EditView& view);

/// Sorts the selected lines with their bookmarks and leaves them selected; the lines of several ranges are sorted range
/// by range. With nothing selected there is nothing to sort: a file is not turned over by a slip of the mouse.
void sort(EditView& view, LineSort::Order order);

}  // namespace LineCommands
