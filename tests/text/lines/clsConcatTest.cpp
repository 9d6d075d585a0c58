#include "text/lines/clsConcat.h"

#include <gtest/gtest.h>

#include <random>

TEST(clsConcat, AppendsBehindWhatIsUsed) {
    clsConcat builder;
    builder.ReInit();
    builder.SConcat(u"one");
    builder.SConcat(u"");
    builder.SConcat(u" two");
    EXPECT_EQ(builder.GetString(), u"one two"_qs);
}

TEST(clsConcat, GivesWhatItHoldsOnce) {
    clsConcat builder;
    builder.SConcat(u"one");
    EXPECT_EQ(builder.GetString(), u"one"_qs);
    EXPECT_EQ(builder.GetString(), QString());
}

TEST(clsConcat, ReInitBeginsANewText) {
    clsConcat builder;
    builder.SConcat(u"one");
    builder.GetString();
    builder.ReInit();
    builder.SConcat(u"two");
    EXPECT_EQ(builder.GetString(), u"two"_qs);
    builder.ReInit();
    EXPECT_EQ(builder.GetString(), QString());
}

TEST(clsConcat, SetStringFillsTheBufferAndLeavesTheUsedLength) {
    clsConcat builder;
    builder.ReInit();
    builder.SetString(u"abc"_qs);
    EXPECT_EQ(builder.GetString(), QString());
    builder.ReInit();
    builder.SConcat(u"12");
    builder.SetString(u"abc"_qs);
    builder.SConcat(u"34");
    EXPECT_EQ(builder.GetString(), u"ab34"_qs);
}

TEST(clsConcat, WithoutAReInitTheOldLengthIsStillUsed) {
    clsConcat builder;
    builder.SConcat(u"one");
    builder.GetString();
    builder.SConcat(u"two");
    EXPECT_EQ(builder.GetString(), QString(3, QChar(0)) + u"two"_qs);
}

TEST(clsConcat, HoldsTextsAroundEachStepOfItsGrowth) {
    for (const qsizetype size : {14'999, 15'000, 15'001, 40'000}) {
        clsConcat builder;
        const QString text(size, u'x');
        builder.SConcat(text);
        builder.SConcat(u"y");
        builder.SConcat(text);
        EXPECT_TRUE(builder.GetString() == text + u'y' + text) << size;
    }
}

TEST(clsConcat, APieceThatIsShorterThanTheTextButLongerThanAStepFits) {
    clsConcat builder;
    const QString first(100'000, u'a');
    const QString second(50'000, u'b');
    builder.SConcat(first);
    builder.SConcat(second);
    EXPECT_TRUE(builder.GetString() == first + second);
}

TEST(clsConcat, AgreesWithPlainAppending) {
    std::mt19937 random(3);
    for (int round = 0; round < 20; ++round) {
        clsConcat builder;
        QString plain;
        for (int piece = 0; piece < 50; ++piece) {
            const QString text(static_cast<qsizetype>(random() % (piece % 7 == 0 ? 30'000 : 40)),
                               QChar(u'a' + static_cast<char16_t>(random() % 26)));
            builder.SConcat(text);
            plain += text;
        }
        EXPECT_TRUE(builder.GetString() == plain);
    }
}
