#pragma once

#include <QString>

class QWidget;
class TextControl;

/// The small questions that the control asks by itself. Each is one dialog at a time, not modal, owned by the control;
/// it accepts no number outside its bounds, and Escape closes it. No function waits for the answer.
namespace ControlPrompts {

/// Moves the caret to the start of a line, counted from 1.
void askLine(TextControl& control);

/// Asks how often the next command or key should be carried out.
void askRepeatCount(TextControl& control);

/// Shows a message that the user must see.
void tell(QWidget& control, const QString& text);

}  // namespace ControlPrompts
