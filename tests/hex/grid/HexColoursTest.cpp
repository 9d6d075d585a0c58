#include "hex/grid/HexColours.h"
#include "hex/grid/HexMarker.h"
#include "widgets/Contrast.h"

#include <QImage>
#include <QPalette>
#include <QPixmap>

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace {

constexpr double EnoughForText = 4.5;
constexpr double EnoughForShapes = 3;

/// Palettes of light and dark desktops, some with a highlight that is hard to see.
std::vector<QPalette> palettes() {
    std::vector<QPalette> all;
    for (const QColor& highlight :
         {QColor(48, 140, 198), QColor(47, 111, 222), QColor(0, 0, 128), QColor(255, 220, 0), QColor(128, 128, 128)}) {
        for (const auto& [window, base, text] :
             {std::tuple(QColor(239, 239, 239), QColor(Qt::white), QColor(Qt::black)),
              std::tuple(QColor(42, 46, 50), QColor(27, 30, 32), QColor(226, 229, 231)),
              std::tuple(QColor(Qt::black), QColor(Qt::black), QColor(Qt::white))}) {
            QPalette palette;
            palette.setColor(QPalette::Window, window);
            palette.setColor(QPalette::Base, base);
            palette.setColor(QPalette::Text, text);
            palette.setColor(QPalette::Highlight, highlight);
            palette.setColor(QPalette::HighlightedText, Qt::white);
            all.push_back(palette);
        }
    }
    return all;
}

}  // namespace

TEST(ColoursOfTheHexView, ShowBorderAndMarkersInEveryTheme) {
    for (const QPalette& palette : palettes()) {
        const QColor window = palette.color(QPalette::Window);
        const QColor border = HexColours::border(palette);
        EXPECT_GE(Contrast::between(border, palette.color(QPalette::Base)), EnoughForShapes);
        EXPECT_GE(Contrast::between(border, window), EnoughForShapes);
        EXPECT_GE(Contrast::between(HexColours::marker(palette), window), EnoughForText);
    }
}

TEST(ColoursOfTheHexView, CanBeReadInEveryTheme) {
    for (const QPalette& palette : palettes()) {
        const HexColours::Cells cells(palette);
        for (const bool isChanged : {false, true}) {
            for (const bool isFound : {false, true}) {
                const HexColours::Cell& look = cells.of(isChanged, isFound);
                EXPECT_GE(Contrast::between(look.text, look.ground), EnoughForText) << isChanged << isFound;
                EXPECT_EQ(look.ground, HexColours::cell(palette, isChanged, isFound).ground);
            }
        }
        EXPECT_NE(cells.of(false, true).ground, cells.of(false, false).ground);
    }
}

TEST(ColoursOfTheHexView, AreThoseOfTheMarkers) {
    for (const QPalette& palette : palettes()) {
        HexMarker marker(nullptr);
        marker.setPalette(palette);
        EXPECT_EQ(marker.grab().toImage().pixelColor(2, 2), HexColours::marker(palette));
    }
}
