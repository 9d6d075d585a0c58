#include "hex/forms/NumberConversion.h"

#include <gtest/gtest.h>

using namespace NumberConversion;

TEST(Conversions, OfADecimalNumber) {
    EXPECT_EQ(DecToHex(u"255"_qs), u"FF"_qs);
    EXPECT_EQ(DecToOct(u"255"_qs), u"377"_qs);
    EXPECT_EQ(DecToBin(u"255"_qs), u"11111111"_qs);
    EXPECT_EQ(DecToHex(u"0"_qs), u"0"_qs);
    EXPECT_EQ(DecToHex(u"2147483647"_qs), u"7FFFFFFF"_qs);
}

TEST(Conversions, ToBinaryHaveWholeBytes) {
    EXPECT_EQ(DecToBin(u"5"_qs), u"00000101"_qs);
    EXPECT_EQ(DecToBin(u"256"_qs), u"0000000100000000"_qs);
    EXPECT_EQ(DecToBin(u"0"_qs), u"00000000"_qs);
}

TEST(Conversions, OfANegativeNumberGiveItsTwosComplement) {
    EXPECT_EQ(DecToHex(u"-1"_qs), u"FFFFFFFF"_qs);
    EXPECT_EQ(DecToOct(u"-1"_qs), u"37777777777"_qs);
    EXPECT_EQ(DecToBin(u"-2"_qs), u"11111111111111111111111111111110"_qs);
    EXPECT_EQ(DecToHex(u"-2147483648"_qs), u"80000000"_qs);
    EXPECT_EQ(HexToDec(u"FFFFFFFF"_qs), u"-1"_qs);
    EXPECT_EQ(OctToDec(u"37777777777"_qs), u"-1"_qs);
}

TEST(Conversions, OfWhatIsNoNumberGiveNothing) {
    for (const auto& text : {QString(), u"-"_qs, u"1-"_qs, u"2147483648"_qs, u"-2147483649"_qs, u"x"_qs}) {
        EXPECT_EQ(DecToHex(text), QString());
        EXPECT_EQ(DecToOct(text), QString());
        EXPECT_EQ(DecToBin(text), QString());
    }
    EXPECT_EQ(HexToDec(QString()), QString());
    EXPECT_EQ(HexToDec(u"100000000"_qs), QString());
    EXPECT_EQ(OctToDec(u"8"_qs), QString());
}

TEST(Conversions, OfBinaryTextHaveNoLimit) {
    EXPECT_EQ(cvBinToDec(u"100000000"_qs), u"256"_qs);
    EXPECT_EQ(cvBinToDec(u"0"_qs), u"0"_qs);
    EXPECT_EQ(cvBinToDec(QString(53, u'1')), u"9007199254740991"_qs);
    EXPECT_EQ(cvBinToDec(u'1' + QString(99, u'0')), u"6.33825300114115E+29"_qs);
    EXPECT_EQ(cvBinToDec(QString(2000, u'1')), QString());
}

TEST(Conversions, TakeNothingButDigitsOfTheirBase) {
    for (const auto& text : {u"0x10"_qs, u"-1"_qs, u"+1"_qs, u" 1"_qs, u"1 "_qs, u"G"_qs, u"\u0661"_qs, QString()}) {
        EXPECT_EQ(NumberConversion::numberOfDigits(text, 16), std::nullopt) << text.toStdString();
        EXPECT_EQ(NumberConversion::HexToDec(text), QString()) << text.toStdString();
        EXPECT_EQ(NumberConversion::OctToDec(text), QString()) << text.toStdString();
    }
    EXPECT_EQ(NumberConversion::OctToDec(u"8"_qs), QString());
    EXPECT_EQ(NumberConversion::numberOfDigits(u"fFfFfFfF"_qs, 16), 0xFFFFFFFFU);
    EXPECT_EQ(NumberConversion::numberOfDigits(u"100000000"_qs, 16), std::nullopt);
    EXPECT_EQ(NumberConversion::numberOfDigits(u"0000000000017"_qs, 8), 15U);
}

TEST(Conversions, OfAPairOfDigits) {
    EXPECT_EQ(GetVal(u"FF"_qs), 255);
    EXPECT_EQ(GetVal(u"0a"_qs), 10);
    EXPECT_EQ(GetVal(QString()), 0);
    EXPECT_EQ(GetVal(u"  "_qs), 0);
}
