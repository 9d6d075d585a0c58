#pragma once

#include <initializer_list>

class QWidget;

/// Walks the keyboard focus over parts of a window, for those who use no mouse. A part that is hidden, or null, is
/// passed over.
namespace FocusRound {

/// From the part that has the focus to the next one, round at the ends; `step` is 1, or -1 for the way back.
void go(std::initializer_list<QWidget*> parts, int step);

}  // namespace FocusRound
