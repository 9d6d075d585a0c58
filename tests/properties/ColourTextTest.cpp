#include "properties/ColourText.h"
#include "settings/Options.h"

#include <gtest/gtest.h>

TEST(ColourText, HasSixDigitsInTheOrderRedGreenBlue) {
    EXPECT_EQ(ColourText::textOf(Options().RowHighlightColor), u"CDD7E7"_qs);
    EXPECT_EQ(ColourText::textOf(255), u"FF0000"_qs);
    EXPECT_EQ(ColourText::textOf(16384), u"004000"_qs);
    EXPECT_EQ(ColourText::textOf(0), u"000000"_qs);
    EXPECT_EQ(ColourText::textOf(-1), u"FFFFFF"_qs);
}

TEST(ColourText, IsReadInAnyLetterCaseWithBlanksAndASign) {
    for (const char* text : {"CDD7E7", "cdd7e7", " CdD7e7 ", "#CDD7E7", " #cdd7e7"}) {
        EXPECT_EQ(ColourText::numberOf(QLatin1String(text)), Options().RowHighlightColor) << text;
    }
    EXPECT_EQ(ColourText::numberOf(u"FF0000"_qs), 255);
}

TEST(ColourText, IsNothingElse) {
    for (const char* text : {"", " ", "#", "CDD7E", "CDD7E70", "CDD 7E7", "CDD7EG", "##CDD7E7", "0xCDD7", "red",
                             "-DD7E7", "+DD7E7", "\xB2\xB2\xB2\xB2\xB2\xB2"}) {
        EXPECT_EQ(ColourText::numberOf(QLatin1String(text)), std::nullopt) << text;
    }
    EXPECT_EQ(ColourText::numberOf(QString(6, QChar(0x661))), std::nullopt) << "digits of another script";
    EXPECT_EQ(ColourText::numberOf(u"CDD7E7\n"_qs), Options().RowHighlightColor);
    EXPECT_EQ(ColourText::numberOf(u"CDD7E7\nCDD7E7"_qs), std::nullopt);
}

TEST(ColourText, IsReadAsItIsWritten) {
    for (qint32 colour = 0; colour <= 0xFFFFFF; colour += 257) {
        ASSERT_EQ(ColourText::numberOf(ColourText::textOf(colour)), colour);
    }
}
