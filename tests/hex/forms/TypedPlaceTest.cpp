#include "hex/forms/TypedPlace.h"

#include <gtest/gtest.h>

TEST(TypedPlaces, OfOffsetsAreDecimalOrHexadecimalBehindTheirMark) {
    EXPECT_EQ(TypedPlace::offsetOf(u"500"_qs), 500);
    EXPECT_EQ(TypedPlace::offsetOf(u"1E3"_qs), 1000);
    EXPECT_EQ(TypedPlace::offsetOf(u"&H1F"_qs), 31);
    EXPECT_EQ(TypedPlace::offsetOf(u"&HFFFFFFFF"_qs), -1);
    EXPECT_EQ(TypedPlace::offsetOf(u"-3"_qs), -3);
}

TEST(TypedPlaces, ThatAreNoNumberAreNone) {
    for (const auto& text :
         {QString(), u"AB"_qs, u"&H"_qs, u"&H&H1"_qs, u"&H100000000"_qs, u"1E400"_qs, u"nan"_qs, u"inf"_qs}) {
        EXPECT_FALSE(TypedPlace::offsetOf(text)) << text.toStdString();
    }
    for (const auto& text : {QString(), u"x"_qs, u"1.5"_qs, u"99999999999999999999"_qs}) {
        EXPECT_FALSE(TypedPlace::pageOf(text)) << text.toStdString();
    }
}

TEST(TypedPlaces, OfPagesBeginWithTheFirst) {
    EXPECT_EQ(TypedPlace::pageOf(u"7"_qs), 7);
    EXPECT_EQ(TypedPlace::pageOf(u"0"_qs), 1);
    EXPECT_EQ(TypedPlace::pageOf(u"-4"_qs), 1);
}
