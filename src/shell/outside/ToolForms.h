#pragma once

class QWidget;

/// The small forms of the Tools menu, one of each at most. They are not modal, and are destroyed when they are closed
/// or with the frame. A form that is open already is brought to the front.
namespace ToolForms {

void ShowAnsiTable(QWidget* frame);
void ShowConvertor(QWidget* frame);

}  // namespace ToolForms
