#pragma once

class QWidget;
struct FrameParts;

/// Walks the keyboard focus over the parts of the frame, for those who use no mouse: active document, find bar, tabs,
/// and round again. A part that is hidden is passed over.
namespace FocusRound {

/// `step` is 1, or -1 for the way back.
void go(const FrameParts& parts, QWidget& tabs, int step);

}  // namespace FocusRound
