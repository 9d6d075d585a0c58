#pragma once

#include "text/lines/TextCase.h"

class EditView;

/// Commands that change the case of letters. They run inside a scope of the control, on a text that may be edited.
namespace CaseCommands {

/// The word at the caret. The caret stays in front of the letter it stood before.
void changeWord(EditView& view, TextCase::Change change);

/// What is selected, which stays selected; of several selections each.
void changeSelection(EditView& view, TextCase::Change change);

}  // namespace CaseCommands
