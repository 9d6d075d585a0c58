#pragma once

class QWidget;

/// The mark of the keyboard's place around a widget that has no mark of its own.
namespace FocusFrame {

/// To be called in the widget's paint event. Nothing is painted while the widget does not have the focus.
void paint(QWidget& widget);

}  // namespace FocusFrame
