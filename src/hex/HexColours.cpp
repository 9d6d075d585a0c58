#include "hex/HexColours.h"

#include <QPalette>

#include <algorithm>
#include <cmath>

namespace {

const QColor Amber(0xB5, 0x6A, 0x00);
constexpr double ShareOfGround = 0.14;
constexpr double Step = 0.05;

double linear(float part) {
    return part <= 0.03928F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

}  // namespace

double HexColours::contrast(const QColor& one, const QColor& other) {
    const auto [dark, bright] = std::minmax({luminance(one), luminance(other)});
    return (bright + 0.05) / (dark + 0.05);
}

QColor HexColours::blended(const QColor& over, const QColor& under, double share) {
    const auto part = [&](float a, float b) { return static_cast<float>(a * share + b * (1 - share)); };
    return QColor::fromRgbF(part(over.redF(), under.redF()), part(over.greenF(), under.greenF()),
                            part(over.blueF(), under.blueF()));
}

QColor HexColours::readableOn(const QColor& background, QColor wanted) {
    const QColor white(Qt::white);
    const QColor black(Qt::black);
    const QColor end = contrast(white, background) > contrast(black, background) ? white : black;
    const QColor start = wanted;
    for (double share = 0; contrast(wanted, background) < Readable && share < 1; share += Step)
        wanted = blended(end, start, share + Step);
    return wanted;
}

QColor HexColours::changedBase(const QPalette& palette) {
    return blended(Amber, palette.color(QPalette::Base), ShareOfGround);
}

QColor HexColours::changedText(const QPalette& palette) {
    return readableOn(changedBase(palette), Amber);
}
