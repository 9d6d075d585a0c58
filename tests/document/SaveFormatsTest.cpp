#include "document/SaveFormats.h"

#include <gtest/gtest.h>

TEST(SaveFormats, EachFormatHasItsTitleAndFlagWord) {
    struct Expected {
        int number;
        const char* suffix;
        int word;
    };
    for (const Expected& row : {Expected{1, "", 0}, Expected{2, " (ANSI)", 16}, Expected{3, " (UTF-8)", 32},
                                Expected{4, " (Unicode)", 64}, Expected{5, " (No Byte Order Mark)", 128}}) {
        EXPECT_EQ(SaveFormats::row(row.number).titleSuffix, QLatin1String(row.suffix)) << row.number;
        EXPECT_EQ(SaveFormats::flagWord(row.number, false), row.word) << row.number;
        EXPECT_EQ(SaveFormats::flagWord(row.number, true), row.word + 1) << row.number;
    }
}

TEST(SaveFormats, AnyOtherNumberCountsAsLoaded) {
    for (const int number : {-1, 0, 6, 1000}) {
        EXPECT_EQ(SaveFormats::row(number).number, SaveFormats::AsLoaded);
        EXPECT_EQ(SaveFormats::flagWord(number, false), 0);
        EXPECT_EQ(SaveFormats::flagWord(number, true), 1);
    }
}
