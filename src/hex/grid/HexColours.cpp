#include "hex/grid/HexColours.h"

#include "widgets/Contrast.h"

#include <QPalette>

namespace {

const QColor Amber(0xB5, 0x6A, 0x00);
constexpr int PercentOfAmber = 14;

}  // namespace

QColor HexColours::changedBase(const QPalette& palette) {
    return Contrast::blended(palette.color(QPalette::Base), Amber, PercentOfAmber);
}

QColor HexColours::changedText(const QPalette& palette) {
    return Contrast::readableOn(changedBase(palette), Amber);
}
