#include "widgets/Contrast.h"

#include <gtest/gtest.h>

TEST(Contrast, RunsFromOneToTwentyOne) {
    EXPECT_DOUBLE_EQ(Contrast::between(Qt::white, Qt::white), 1.0);
    EXPECT_NEAR(Contrast::between(Qt::white, Qt::black), 21.0, 1e-9);
    EXPECT_DOUBLE_EQ(Contrast::between(Qt::black, Qt::white), Contrast::between(Qt::white, Qt::black));
    EXPECT_NEAR(Contrast::between(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(Contrast, AGroundIsDarkWhereWhiteStandsOutMoreThanBlack) {
    EXPECT_TRUE(Contrast::isDark(Qt::black));
    EXPECT_TRUE(Contrast::isDark(QColor(0x60, 0x60, 0x60)));
    EXPECT_FALSE(Contrast::isDark(QColor(0x90, 0x90, 0x90)));
    EXPECT_FALSE(Contrast::isDark(Qt::white));
}

TEST(Contrast, ABlendHasPartsOfBoth) {
    EXPECT_EQ(Contrast::blended(Qt::black, Qt::white, 0), QColor(Qt::black));
    EXPECT_EQ(Contrast::blended(Qt::black, Qt::white, 100), QColor(Qt::white));
    EXPECT_EQ(Contrast::blended(QColor(100, 0, 200), QColor(200, 100, 0), 25), QColor(125, 25, 150));
}

TEST(Contrast, AColourThatCanBeReadStaysAndAnotherIsMadeReadable) {
    EXPECT_EQ(Contrast::readableOn(Qt::white, Qt::black), QColor(Qt::black));
    for (int grey = 0; grey < 256; grey += 15) {
        const QColor ground(grey, grey, grey);
        EXPECT_GE(Contrast::between(Contrast::readableOn(ground, QColor(0x80, 0x90, 0x30)), ground), Contrast::Enough)
            << grey;
    }
}

TEST(Contrast, AGroundIsFittedToADarkWindowAndStaysOnALightOne) {
    const QColor pale(205, 215, 231);
    for (const QColor& light : {QColor(Qt::white), QColor(250, 200, 0), QColor(120, 120, 120)}) {
        EXPECT_EQ(Contrast::fittedTo(light, pale), pale) << light.name().toStdString();
    }
    for (const QColor& dark : {QColor(Qt::black), QColor(10, 10, 40), QColor(110, 0, 0)}) {
        const QColor fitted = Contrast::fittedTo(dark, pale);
        EXPECT_TRUE(Contrast::isDark(fitted)) << dark.name().toStdString();
        EXPECT_EQ(fitted.hslHue(), pale.hslHue());
    }
    EXPECT_EQ(Contrast::fittedTo(Qt::white, Qt::black), QColor(Qt::white));
}
