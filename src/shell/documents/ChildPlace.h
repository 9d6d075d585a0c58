#pragma once

#include <QRect>

enum class ChildState { Normal, Minimised, Maximised };

/// State and place of a child window in the frame.
struct ChildPlace {
    ChildState state = ChildState::Normal;
    QRect normal;  ///< where the window is, or was last, in its normal state
};
