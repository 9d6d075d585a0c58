#pragma once

#include <QString>

class QWidget;
class TextControl;

/// The small questions that the control asks by itself. Each is one dialog at a time, not modal, owned by the control;
/// it takes no number outside its bounds, and Escape leaves it. Nothing here waits for an answer.
namespace ControlPrompts {

/// Moves the caret to the start of a line, counted from 1.
void askLine(TextControl& control);

/// Sets how often the next command or key is to be carried out.
void askRepeatCount(TextControl& control);

/// Tells what must not be overlooked.
void tell(QWidget& control, const QString& text);

}  // namespace ControlPrompts
