#include "editor/language/TokenClasses.h"
#include "widgets/Contrast.h"

#include <gtest/gtest.h>

namespace {

const QColor LightGround = Qt::white;
const QColor DarkGround = QColor(0x1E, 0x1E, 0x1E);

}  // namespace

TEST(TokenClasses, TheTableFollowsTheOrderOfTheClasses) {
    int number = 0;
    for (const TokenClasses::Row& row : TokenClasses::table()) {
        EXPECT_EQ(static_cast<int>(row.token), number++);
    }
    EXPECT_EQ(number, TokenClasses::Count);
}

TEST(TokenClasses, EachIsFoundByItsName) {
    for (const TokenClasses::Row& row : TokenClasses::table()) {
        EXPECT_EQ(TokenClasses::byName(row.name), row.token);
    }
    for (const char* other : {"", "Comment", "comments", "comment "}) {
        EXPECT_FALSE(TokenClasses::byName(other).has_value()) << other;
    }
}

TEST(TokenClasses, TheThemesStandOutFromTheirGroundsAsTheyAre) {
    for (const TokenClasses::Row& row : TokenClasses::table()) {
        EXPECT_GE(Contrast::between(QColor::fromRgb(row.onLight), LightGround), 4.5) << row.name;
        EXPECT_GE(Contrast::between(QColor::fromRgb(row.onDark), DarkGround), 4.5) << row.name;
        EXPECT_EQ(TokenClasses::colourOn(LightGround, row.token), QColor::fromRgb(row.onLight)) << row.name;
        EXPECT_EQ(TokenClasses::colourOn(DarkGround, row.token), QColor::fromRgb(row.onDark)) << row.name;
    }
}

TEST(TokenClasses, OnAnyGroundEveryClassCanBeRead) {
    for (int red = 0; red < 256; red += 51) {
        for (int green = 0; green < 256; green += 51) {
            for (int blue = 0; blue < 256; blue += 51) {
                const QColor ground(red, green, blue);
                for (const TokenClasses::Row& row : TokenClasses::table()) {
                    EXPECT_GE(Contrast::between(TokenClasses::colourOn(ground, row.token), ground), 4.5)
                        << row.name << " on " << ground.name().toStdString();
                }
            }
        }
    }
}
