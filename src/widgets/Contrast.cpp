#include "widgets/Contrast.h"

#include <algorithm>
#include <cmath>

namespace {

double linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

}  // namespace

double Contrast::between(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

bool Contrast::isDark(const QColor& ground) {
    return between(ground, Qt::white) > between(ground, Qt::black);
}

QColor Contrast::blended(const QColor& one, const QColor& other, int percentOfOther) {
    const auto mix = [percentOfOther](int a, int b) { return (a * (100 - percentOfOther) + b * percentOfOther) / 100; };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()), mix(one.blue(), other.blue())};
}

QColor Contrast::fittedTo(const QColor& ground, const QColor& wanted) {
    constexpr int Largest = 255;
    constexpr int Raise = 24;  ///< so that the opposite of white still differs from black
    if (isDark(ground) == isDark(wanted))
        return wanted;
    const int opposite = std::min(Largest - wanted.lightness() + Raise, Largest);
    return QColor::fromHsl(wanted.hslHue(), wanted.hslSaturation() / 2, opposite).toRgb();
}

QColor Contrast::readableOn(const QColor& ground, const QColor& wanted) {
    const QColor end = isDark(ground) ? Qt::white : Qt::black;
    constexpr int Step = 5;
    for (int percent = 0; percent < 100; percent += Step) {
        const QColor colour = blended(wanted, end, percent);
        if (between(colour, ground) >= Enough)
            return colour;
    }
    return end;
}
