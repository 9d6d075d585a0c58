#pragma once

#include <QPoint>
#include <QRect>

/// Finds the place of a search dialog on the screen at which it covers as little as possible of the text it searches.
/// All rectangles are those of the whole desktop.
namespace DialogPlace {

/// In the upper right corner of the text, as far as the screen has room.
QPoint cornerOf(const QRect& text, const QSize& dialog, const QRect& screen);

/// Where the dialog is, unless it covers the match; else below it, or above where there is no room below.
QPoint besideMatch(const QRect& match, const QRect& dialog, const QRect& screen);

}  // namespace DialogPlace
