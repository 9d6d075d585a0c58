#include "text/search/MatchList.h"

#include <gtest/gtest.h>

#include <limits>

TEST(MatchList, EndsEachRecordWithATab) {
    MatchList list;
    EXPECT_EQ(list.text(), QString());
    list.add(0, 12, 3);
    list.add(7, 2'000'000'000'000, 0);
    EXPECT_EQ(list.text(), u"0,12,3\t7,2000000000000,0\t"_qs);
}

TEST(MatchList, TakesTheLargestNumbers) {
    MatchList list;
    list.add(std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min(), 0);
    EXPECT_EQ(list.text(), u"9223372036854775807,-9223372036854775808,0\t"_qs);
}
