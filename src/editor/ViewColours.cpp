#include "editor/ViewColours.h"

namespace ViewColours {

long number(const QColor& colour) {
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

QColor blended(const QColor& one, const QColor& other, int percentOfOther) {
    const auto mix = [percentOfOther](int a, int b) { return (a * (100 - percentOfOther) + b * percentOfOther) / 100; };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()), mix(one.blue(), other.blue())};
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

}  // namespace ViewColours
