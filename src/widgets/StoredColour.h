#pragma once

#include <QColor>

/// Colours as the numbers that settings, profiles and fixed colours have: red in the lowest byte, then green, then
/// blue, so that 255 is red and 16384 a dark green. Bits above do not count.
namespace StoredColour {

QColor colourOf(qint64 number);
qint32 numberOf(const QColor& colour);

}  // namespace StoredColour
