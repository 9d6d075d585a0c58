#include "hex/grid/HexColours.h"

#include "widgets/Contrast.h"

#include <QPalette>

namespace {

const QColor Amber(0xB5, 0x6A, 0x00);
constexpr int PercentOfAmber = 14;

/// As in the window in front: a match is to be seen while the form that searches is in front.
QColor highlight(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Highlight);
}

}  // namespace

HexColours::Cell HexColours::cell(const QPalette& palette, bool isChanged, bool isFound) {
    if (isFound) {
        const QColor ground = highlight(palette);
        const QColor text = palette.color(QPalette::Active, QPalette::HighlightedText);
        return {ground, Contrast::readableOn(ground, isChanged ? Amber : text)};
    }
    if (isChanged)
        return {changedBase(palette), changedText(palette)};
    return {palette.color(QPalette::Base), palette.color(QPalette::Text)};
}

HexColours::Cells::Cells(const QPalette& palette)
    : m_cells{cell(palette, false, false), cell(palette, true, false), cell(palette, false, true),
              cell(palette, true, true)} {}

QColor HexColours::changedBase(const QPalette& palette) {
    return Contrast::blended(palette.color(QPalette::Base), Amber, PercentOfAmber);
}

QColor HexColours::changedText(const QPalette& palette) {
    return Contrast::readableOn(changedBase(palette), Amber);
}

QColor HexColours::border(const QPalette& palette) {
    return Contrast::readableOn(palette.color(QPalette::Base), marker(palette));
}

QColor HexColours::marker(const QPalette& palette) {
    return Contrast::readableOn(palette.color(QPalette::Window), highlight(palette));
}
