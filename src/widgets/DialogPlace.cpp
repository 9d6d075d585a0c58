#include "widgets/DialogPlace.h"

#include <algorithm>

namespace {

/// Pixels between a dialog and the rectangle beside it.
constexpr int Distance = 12;

int within(int wanted, int length, int from, int to) {
    return std::max(from, std::min(wanted, to - length));
}

}  // namespace

namespace DialogPlace {

QPoint cornerOf(const QRect& text, const QSize& dialog, const QRect& screen) {
    const int x = text.right() + 1 - Distance - dialog.width();
    return {within(x, dialog.width(), screen.left(), screen.right() + 1),
            within(text.top() + Distance, dialog.height(), screen.top(), screen.bottom() + 1)};
}

QPoint besideMatch(const QRect& match, const QRect& dialog, const QRect& screen) {
    if (!dialog.intersects(match))
        return dialog.topLeft();
    const int below = match.bottom() + 1 + Distance;
    if (below + dialog.height() <= screen.bottom() + 1)
        return {dialog.left(), below};
    return {dialog.left(), std::max(screen.top(), match.top() - Distance - dialog.height())};
}

}  // namespace DialogPlace
