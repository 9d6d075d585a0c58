#pragma once

#include <QColor>

/// The contrast of two colours, and colours chosen for enough of it.
namespace Contrast {

/// The contrast that text needs to be readable.
inline constexpr double Enough = 4.5;

/// How far two colours differ in lightness to the eye, from 1 to 21.
double between(const QColor& one, const QColor& other);

/// Whether a ground is one for light colours.
bool isDark(const QColor& ground);

/// `one` with so many parts of a hundred of `other`.
QColor blended(const QColor& one, const QColor& other, int percentOfOther);

/// A background like `wanted` for a window of this background: one that is light where the window is dark, or dark
/// where that is light, keeps its hue and gets the opposite lightness.
QColor fittedTo(const QColor& ground, const QColor& wanted);

/// A colour on this ground. Where it would be hard to read it is blended with black or white until it is not.
QColor readableOn(const QColor& ground, const QColor& wanted);

}  // namespace Contrast
