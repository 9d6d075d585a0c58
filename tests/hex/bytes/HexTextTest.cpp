#include "hex/bytes/HexText.h"

#include <gtest/gtest.h>

using namespace HexText;

TEST(FilePositions, CountFromOneAndOffsetsFromZero) {
    EXPECT_EQ(FilePosition().number(), 1);
    EXPECT_EQ(Offset(FilePosition(1)).number(), 0);
    EXPECT_EQ(Offset(0).position(), FilePosition(1));
    EXPECT_EQ(Offset(Offset(2147483646).position()), Offset(2147483646));
    EXPECT_EQ(FilePosition(2147483647) + 320, FilePosition(2147483967));
    EXPECT_EQ(FilePosition(337) - FilePosition(17), 320);
    EXPECT_LT(FilePosition(17) - 16, FilePosition(2));
}

TEST(HexCells, HaveTwoUpperCaseDigits) {
    EXPECT_EQ(ByteToHexCell(0), u"00"_qs);
    EXPECT_EQ(ByteToHexCell(10), u"0A"_qs);
    EXPECT_EQ(ByteToHexCell(255), u"FF"_qs);
    EXPECT_EQ(ByteToHexCell(NoByte), u"0"_qs);
}

TEST(HexCells, GiveTheirByteBack) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(HexCellToByte(ByteToHexCell(byte)), byte);
    }
    EXPECT_EQ(HexCellToByte(u"A"_qs), 10);
    EXPECT_EQ(HexCellToByte(u" 7f "_qs), 127);
    for (const auto& cell : {u"-1"_qs, QString(), u"x"_qs, u"100"_qs}) {
        EXPECT_EQ(HexCellToByte(cell), 0);
    }
}

TEST(TextCells, ShowAPointBelowThirtyThreeAndElseTheCharacter) {
    for (int byte = 0; byte < 33; ++byte) {
        EXPECT_EQ(ByteToTextCell(byte), u"."_qs);
    }
    EXPECT_EQ(ByteToTextCell(33), u"!"_qs);
    EXPECT_EQ(ByteToTextCell(127), QString(QChar(127)));
    EXPECT_EQ(ByteToTextCell(0x80), u"\u20AC"_qs);
    EXPECT_EQ(ByteToTextCell(0x81), QString(QChar(0x81)));
    EXPECT_EQ(ByteToTextCell(0xA0), u"\u00A0"_qs);
    EXPECT_EQ(ByteToTextCell(0xFF), u"\u00FF"_qs);
    EXPECT_EQ(ByteToTextCell(NoByte), QString());
}

TEST(Offsets, AreTenCharactersWide) {
    EXPECT_EQ(FormatOffset(Offset(0), false), u"0000000000"_qs);
    EXPECT_EQ(FormatOffset(Offset(2147483646), false), u"2147483646"_qs);
    EXPECT_EQ(FormatOffset(Offset(2147483646), true), u"007FFFFFFE"_qs);
    EXPECT_EQ(FormatOffset(Offset(31), true), u"000000001F"_qs);
}

TEST(HexTexts, HaveABlankBehindEachPair) {
    EXPECT_EQ(SpaceHexText(u"ABC0"_qs), u"AB C0 "_qs);
    EXPECT_EQ(SpaceHexText(QString()), QString());
    EXPECT_EQ(NormalizeHexText(u"ABC"_qs), u"AB C0 "_qs);
    EXPECT_EQ(NormalizeHexText(u" A B C D "_qs), u"AB CD "_qs);
    EXPECT_EQ(NormalizeHexText(NormalizeHexText(u"ABC"_qs)), u"AB C0 "_qs);
    EXPECT_EQ(NormalizeHexText(u"   "_qs), QString());
}

TEST(HexTexts, AreReadThreeCharactersAByte) {
    EXPECT_EQ(bytesOfHexText(u"AB C0 "_qs), QByteArray("\xAB\xC0"));
    EXPECT_EQ(bytesOfHexText(u"00 ff"_qs), QByteArray("\0\xFF", 2));
    EXPECT_EQ(bytesOfHexText(u"A  B"_qs), QByteArray("\x0A\x0B"));
    EXPECT_EQ(bytesOfHexText(QString()), QByteArray());
}

TEST(HexTexts, OfAnotherFormHaveNoBytes) {
    for (const auto& text : {u"4142"_qs, u"AB    C0"_qs, u"xy "_qs, u"hello"_qs, u"-1 "_qs, u"0x1"_qs, u"+1 "_qs,
                             u"AB C"_qs + QChar(0xE9)}) {
        EXPECT_EQ(bytesOfHexText(text), std::nullopt) << text.toStdString();
    }
}

TEST(Texts, HaveTheBytesOfTheirCharactersOrNone) {
    EXPECT_EQ(bytesOfText(u"a\u20AC\u0178\u0081"_qs), QByteArray("a\x80\x9F\x81"));
    EXPECT_EQ(bytesOfText(u"\u0416"_qs), std::nullopt);
    EXPECT_EQ(bytesOfText(u"\U0001F600"_qs), std::nullopt);
    EXPECT_EQ(bytesOfText(QString()), QByteArray());
}

TEST(TypedHex, IsReadWithAndWithoutBlanks) {
    const QByteArray bytes("\xDE\xAD\xBE\xEF");
    for (const auto& text :
         {u"DEADBEEF"_qs, u"DE AD BE EF"_qs, u"de ad be ef "_qs, u"DEAD BEEF"_qs, u"  DE\tAD  BEEF "_qs}) {
        EXPECT_EQ(bytesOfTypedHex(text), bytes) << text.toStdString();
    }
    EXPECT_EQ(bytesOfTypedHex(u"ABC"_qs), QByteArray("\xAB\xC0"));
    EXPECT_EQ(bytesOfTypedHex(u"0FF"_qs), QByteArray("\x0F\xF0"));
    EXPECT_EQ(bytesOfTypedHex(u"A B"_qs), QByteArray("\x0A\x0B"));
    EXPECT_EQ(bytesOfTypedHex(u" "_qs), QByteArray());
}

TEST(TypedHex, IsNothingWithAnyOtherCharacter) {
    for (const auto& text : {u"hello"_qs, u"0x41"_qs, u"-1"_qs, u"41,42"_qs, u"4\u00E9"_qs, u"DEADBEEG"_qs}) {
        EXPECT_EQ(bytesOfTypedHex(text), std::nullopt) << text.toStdString();
    }
}

TEST(TypedHex, OfSpacedPairsIsWhatThreeCharactersAByteAre) {
    for (int byte = 0; byte < 256; ++byte) {
        const QString text = ByteToHexCell(byte) + u" 00 "_qs + ByteToHexCell(255 - byte) + u' ';
        EXPECT_EQ(bytesOfTypedHex(text), bytesOfHexText(text));
    }
}
