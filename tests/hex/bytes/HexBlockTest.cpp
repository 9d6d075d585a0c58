#include "hex/bytes/BlockExport.h"
#include "hex/bytes/HexBlock.h"
#include "hex/bytes/MemoryBytes.h"

#include <QList>

#include <gtest/gtest.h>

#include <cerrno>

TEST(ABlock, LiesBetweenTwoOffsetsInEitherOrder) {
    const HexBlock expected{FilePosition(4), FilePosition(8)};
    EXPECT_EQ(HexBlock::between(Offset(3), Offset(7), 100), expected);
    EXPECT_EQ(HexBlock::between(Offset(7), Offset(3), 100), expected);
    EXPECT_EQ(expected.size(), 5);
    EXPECT_EQ(HexBlock::between(Offset(3), Offset(3), 100)->size(), 1);
}

TEST(ABlock, IsCutToTheFile) {
    EXPECT_EQ(HexBlock::between(Offset(8), Offset(200), 10), (HexBlock{FilePosition(9), FilePosition(10)}));
    EXPECT_EQ(HexBlock::between(Offset(50), Offset(200), 10), (HexBlock{FilePosition(10), FilePosition(10)}));
    EXPECT_EQ(HexBlock::between(Offset(0), Offset(0), 0), std::nullopt);
}

TEST(ABlock, OfOffsetsBeyondThirtyTwoBitsIsNone) {
    EXPECT_TRUE(HexBlock::between(Offset(0), Offset(2147483646), 10));
    EXPECT_EQ(HexBlock::between(Offset(0), Offset(2147483647), 10), std::nullopt);
    EXPECT_EQ(HexBlock::between(Offset(-1), Offset(5), 10), std::nullopt);
}

TEST(ABlock, IsFilledWithOneByteAndNothingElse) {
    MemoryBytes file("0123456789");
    EXPECT_FALSE(HexBlock::between(Offset(3), Offset(5), 10)->fill(file, 'x').error);
    EXPECT_EQ(file.bytes, "012xxx6789");
    MemoryBytes large(QByteArray(1'300'000, '.'));
    EXPECT_FALSE(HexBlock::between(Offset(1), Offset(1'299'998), large.length())->fill(large, 0xFF).error);
    EXPECT_EQ(large.bytes, "." + QByteArray(1'299'998, '\xFF') + ".");
}

TEST(ABlock, IsFilledUntilItIsStopped) {
    MemoryBytes file(QByteArray(1'300'000, '.'));
    const HexBlock block{FilePosition(2), FilePosition(1'299'999)};
    QList<int> percents;
    const auto fill = [&](int last) {
        percents.clear();
        return block.fill(file, 'x', [&](int percent) {
            percents.append(percent);
            return percent < last;
        });
    };
    EXPECT_EQ(fill(50).bytes, 1'024'000);
    EXPECT_EQ(percents, QList<int>({39, 78}));
    EXPECT_EQ(file.bytes.count('x'), 1'024'000);
    EXPECT_EQ(fill(1000).bytes, block.size());
    EXPECT_EQ(percents, QList<int>({39, 78, 100}));
    EXPECT_EQ(file.bytes, '.' + QByteArray(1'299'998, 'x') + '.');
}

TEST(ABlock, ThatCannotBeReadOrWrittenIsTold) {
    MemoryBytes file("0123456789");
    const HexBlock block{FilePosition(1), FilePosition(3)};
    EXPECT_EQ(block.bytesIn(file), QByteArray("012"));
    file.fails = true;
    EXPECT_EQ(block.bytesIn(file), std::nullopt);
    EXPECT_EQ(block.fill(file, 0).error.number, EIO);
}

TEST(TheTextOfABlock, InHexHasABlankBehindEachByteAndALineForSixteen) {
    EXPECT_EQ(blockText("\xAB", BlockForm::HexValues), u"AB "_qs);
    const QString line = u"30 31 32 33 34 35 36 37 38 39 3A 3B 3C 3D 3E 3F \r\n"_qs;
    EXPECT_EQ(blockText("0123456789:;<=>?", BlockForm::HexValues), line);
    EXPECT_EQ(blockText("0123456789:;<=>?0", BlockForm::HexValues), line + u"30 "_qs);
    EXPECT_EQ(blockText("0123456789:;<=>?0123456789:;<=>?", BlockForm::HexValues), line + line);
}

TEST(TheTextOfABlock, InCIsAnArray) {
    EXPECT_EQ(blockText("\xAB", BlockForm::CSource), u"unsigned char data[1] = {\r\n\t0xAB\r\n};"_qs);
    EXPECT_EQ(blockText(QByteArray("\0\x0A", 2), BlockForm::CSource),
              u"unsigned char data[2] = {\r\n\t0x00, 0x0A\r\n};"_qs);
    const QString line =
        u"0x30, 0x31, 0x32, 0x33, 0x34, 0x35, 0x36, 0x37, 0x38, 0x39, 0x3A, 0x3B, 0x3C, 0x3D, 0x3E, 0x3F"_qs;
    EXPECT_EQ(blockText("0123456789:;<=>?", BlockForm::CSource),
              u"unsigned char data[16] = {\r\n\t"_qs + line + u"\r\n};"_qs);
    EXPECT_EQ(blockText("0123456789:;<=>?0", BlockForm::CSource),
              u"unsigned char data[17] = {\r\n\t"_qs + line + u", \r\n\t0x30\r\n};"_qs);
}

TEST(TheTextOfABlock, InPascalIsAnArrayUpToItsHighestIndex) {
    EXPECT_EQ(blockText("\xAB", BlockForm::PascalSource), u"data: array[0..0] of byte = (\r\n\t$AB\r\n);"_qs);
    EXPECT_EQ(blockText("0123456789:;<=>?", BlockForm::PascalSource),
              u"data: array[0..15] of byte = (\r\n\t$30, $31, $32, $33, $34, $35, $36, $37, $38, $39, $3A, $3B, $3C, "
              "$3D, $3E, $3F\r\n);"_qs);
}
