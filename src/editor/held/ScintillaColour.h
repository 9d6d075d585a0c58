#pragma once

#include <QColor>

/// Colours as Scintilla takes them.
namespace ScintillaColour {

/// Blue-green-red.
long number(const QColor& colour);

}  // namespace ScintillaColour
