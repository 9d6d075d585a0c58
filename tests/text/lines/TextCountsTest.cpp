#include "text/lines/TextCounts.h"

#include <QString>

#include <gtest/gtest.h>

TEST(TextCounts, BlanksAloneHoldNoWord) {
    EXPECT_EQ(TextCounts::words(u""), 0);
    EXPECT_EQ(TextCounts::words(u"  \t \r\n\n "), 0);
}

TEST(TextCounts, WordsArePartedByEveryKindOfBlank) {
    EXPECT_EQ(TextCounts::words(u"one"), 1);
    EXPECT_EQ(TextCounts::words(u" one two\tthree\r\nfour\nfive\rsix "), 6);
    EXPECT_EQ(TextCounts::words(u"one, two-three 4"), 3);
}

TEST(TextCounts, OtherSpacesDoNotPartWords) {
    EXPECT_EQ(TextCounts::words(u"a\u00a0b\u2003c\vd\fe"), 1);
}

TEST(TextCounts, BlanksAreLeftOutOfTheCharacters) {
    EXPECT_EQ(TextCounts::charactersWithoutBlanks(u" a\tb\r\nc "), 3);
    EXPECT_EQ(TextCounts::charactersWithoutBlanks(u" \t\r\n"), 0);
}

TEST(TextCounts, CharactersAreUtf16Units) {
    EXPECT_EQ(TextCounts::charactersWithoutBlanks(u"\U0001F600 \u00e4"), 3);
}

TEST(TextCounts, AreTheSameForUtf8) {
    for (const char* text : {"", " ", "\t\r\n  ", "one", " one\ttwo\r\nthree ", "größe \U0001F600 漢字\n", "a\n\nb"}) {
        const QString units = QString::fromUtf8(text);
        EXPECT_EQ(TextCounts::words(std::string_view(text)), TextCounts::words(units)) << text;
        EXPECT_EQ(TextCounts::charactersWithoutBlanks(std::string_view(text)),
                  TextCounts::charactersWithoutBlanks(units))
            << text;
    }
}
