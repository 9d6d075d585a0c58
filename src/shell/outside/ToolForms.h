#pragma once

class QWidget;

/// The small forms of the Tools menu, one of each at most. They stand beside the frame, not modal, until they are
/// closed, and go with it. Asked for again, a form that is there comes to the front.
namespace ToolForms {

void ShowAnsiTable(QWidget* frame);
void ShowConvertor(QWidget* frame);

}  // namespace ToolForms
