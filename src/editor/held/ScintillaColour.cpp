#include "editor/held/ScintillaColour.h"

namespace ScintillaColour {

long number(const QColor& colour) {
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

bool isDark(const QColor& colour) {
    return colour.lightness() < 128;
}

QColor readableOn(const QColor& base, const QColor& colour) {
    if (isDark(base) == isDark(colour))
        return colour;
    QColor turned;
    turned.setHsl(colour.hslHue(), colour.hslSaturation() / 2, (255 - colour.lightness()) + 24);
    return turned;
}

}  // namespace ScintillaColour
