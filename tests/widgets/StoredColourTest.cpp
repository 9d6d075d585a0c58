#include "widgets/StoredColour.h"

#include <gtest/gtest.h>

TEST(StoredColour, HasRedInTheLowestByte) {
    EXPECT_EQ(StoredColour::colourOf(15194061), QColor(205, 215, 231));
    EXPECT_EQ(StoredColour::colourOf(255), QColor(255, 0, 0));
    EXPECT_EQ(StoredColour::colourOf(16384), QColor(0, 64, 0));
    EXPECT_EQ(StoredColour::numberOf(QColor(205, 215, 231)), 15194061);
    EXPECT_EQ(StoredColour::numberOf(QColor(0, 0, 255)), 0xFF0000);
}

TEST(StoredColour, IsReadByItsLowestBytesAlone) {
    EXPECT_EQ(StoredColour::colourOf(-1), QColor(255, 255, 255));
    EXPECT_EQ(StoredColour::colourOf(0x7F'00'00'FF), QColor(255, 0, 0));
}

TEST(StoredColour, ComesBackFromItsNumber) {
    for (const QColor& colour : {QColor(1, 2, 3), QColor(255, 255, 255), QColor(0, 0, 0), QColor(250, 200, 0)}) {
        EXPECT_EQ(StoredColour::colourOf(StoredColour::numberOf(colour)), colour) << colour.name().toStdString();
    }
}
