#include "text/codec/Utf16Units.h"

#include <QList>
#include <QString>

#include <gtest/gtest.h>

#include <random>

namespace {

QString randomText(std::mt19937& random, int length) {
    static const QString letters = QString::fromUtf8("aZ 9äß€漢字\U0001F600\U00010348\n");
    const QList<uint> points = letters.toUcs4();
    QString text;
    for (int i = 0; i < length; ++i) {
        const char32_t point = points[static_cast<qsizetype>(random() % static_cast<unsigned>(points.size()))];
        text += QString::fromUcs4(&point, 1);
    }
    return text;
}

}  // namespace

TEST(Utf16Units, CountWhatQStringCounts) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        const QString text = randomText(random, round % 70);
        EXPECT_EQ(countUtf16Units(text.toStdString()), text.size());
    }
}

TEST(Utf16Units, AreAddedUpAcrossACutAnywhere) {
    std::mt19937 random(8);
    const QString text = randomText(random, 60);
    const std::string utf8 = text.toStdString();
    for (std::size_t cut = 0; cut <= utf8.size(); ++cut) {
        EXPECT_EQ(countUtf16Units(utf8.substr(0, cut)) + countUtf16Units(utf8.substr(cut)), text.size());
    }
}

TEST(Utf16Units, LeadBackToTheBytes) {
    std::mt19937 random(9);
    const QString text = randomText(random, 80);
    const std::string utf8 = text.toStdString();
    for (qsizetype units = 0; units <= text.size(); ++units) {
        if (units < text.size() && text[units].isLowSurrogate())
            continue;
        EXPECT_EQ(bytesForUtf16Units(utf8, units), text.left(units).toUtf8().size()) << units;
    }
}

TEST(Utf16Units, StopInFrontOfAPairOfWhichOnlyHalfIsAskedFor) {
    EXPECT_EQ(bytesForUtf16Units("a\xF0\x9F\x98\x80z", 2), 1);
    EXPECT_EQ(bytesForUtf16Units("a\xF0\x9F\x98\x80z", 3), 5);
}

TEST(Utf16Units, EndWithTheTextWhenThereAreFewer) {
    EXPECT_EQ(bytesForUtf16Units("abc", 9), 3);
}
