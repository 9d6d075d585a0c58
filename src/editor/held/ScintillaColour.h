#pragma once

#include <QColor>

/// Colours in the form of Scintilla.
namespace ScintillaColour {

/// Blue-green-red.
long number(const QColor& colour);

}  // namespace ScintillaColour
