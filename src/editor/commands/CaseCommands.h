#pragma once

#include "text/lines/TextCase.h"

class EditView;

/// Commands that change the case of letters. They run inside a scope of the control, on a text that may be edited.
namespace CaseCommands {

/// The word at each caret. A caret stays in front of the letter it stood before.
void changeWords(EditView& view, TextCase::Change change);

/// The text of each selected range, which stays selected; of a rectangle its part of each line.
void changeSelection(EditView& view, TextCase::Change change);

}  // namespace CaseCommands
