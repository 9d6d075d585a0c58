#pragma once

#include <QColor>

class QPalette;

/// Colours of the hex view, made from those of the desktop so that they can be read in any of its themes.
namespace HexColours {

/// Contrast of text that anybody can read.
inline constexpr double Readable = 4.5;

/// From 1 to 21, as the guidelines for accessible content count it.
double contrast(const QColor& one, const QColor& other);

/// So much of one colour over another.
QColor blended(const QColor& over, const QColor& under, double share);

/// The colour wanted, made darker or lighter until it can be read on the other.
QColor readableOn(const QColor& background, QColor wanted);

/// Of bytes that were typed, and of the ground behind them.
QColor changedText(const QPalette& palette);
QColor changedBase(const QPalette& palette);

}  // namespace HexColours
