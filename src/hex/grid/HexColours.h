#pragma once

#include <QColor>

class QPalette;

/// Colours of the hex view, derived from those of the desktop so that they can be read in any of its themes.
namespace HexColours {

/// Of bytes that were typed, and of their background.
QColor changedText(const QPalette& palette);
QColor changedBase(const QPalette& palette);

}  // namespace HexColours
