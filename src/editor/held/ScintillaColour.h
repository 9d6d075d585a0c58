#pragma once

#include <QColor>

/// Colours of the control, made from those of the desktop.
namespace ScintillaColour {

/// Scintilla takes colours as blue-green-red.
long number(const QColor& colour);

bool isDark(const QColor& colour);

/// A stored colour meant for dark text on light ground keeps its hue on dark ground and changes its lightness.
QColor readableOn(const QColor& base, const QColor& colour);

}  // namespace ScintillaColour
