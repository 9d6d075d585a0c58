#pragma once

#include <initializer_list>

class QMdiArea;
class QWidget;

/// Walks the keyboard focus over parts of a window, for those who use no mouse. A part that is hidden, or null, is
/// passed over.
namespace FocusRound {

/// From the part that has the focus to the next one, round at the ends; `step` is 1, or -1 for the way back.
void go(std::initializer_list<QWidget*> parts, int step);

/// To be called before parts are hidden: where one of them has the focus, the active document gets it, if there is one.
/// Qt would pass it to any document, which that would activate.
void leave(std::initializer_list<const QWidget*> parts, const QMdiArea& documents);

}  // namespace FocusRound
