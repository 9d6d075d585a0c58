#pragma once

#include "text/lines/TextCase.h"

class EditView;

/// Commands that change the case of letters. They run inside a scope of the control, on a text that may be edited.
namespace CaseCommands {

/// The word at the caret. The caret stays before the same letter.
void changeWord(EditView& view, TextCase::Change change);

/// The selected text, which stays selected; with several selections each of them.
void changeSelection(EditView& view, TextCase::Change change);

}  // namespace CaseCommands
