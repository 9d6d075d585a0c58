#include "spelling/check/Corrections.h"

#include <gtest/gtest.h>

TEST(Corrections, WithoutAnyTheTextIsAsItWas) {
    const Corrections none;
    EXPECT_EQ(none.appliedTo(u"one\r\ntwo\n"), u"one\r\ntwo\n"_qs);
    EXPECT_EQ(none.appliedTo(u""), QString());
    EXPECT_EQ(none.movedPosition(7), 7);
}

TEST(Corrections, NothingButTheWordsChanges) {
    Corrections corrections;
    corrections.add(0, 3, u"the"_qs);
    corrections.add(5, 2, u""_qs);
    corrections.add(9, 1, u"longer"_qs);
    EXPECT_EQ(corrections.appliedTo(u"teh\r\nab\r\nx"), u"the\r\n\r\nlonger"_qs);
    EXPECT_EQ(corrections.appliedTo(u"teh\r\nab\r\nx", 4, 8), u"\n\r"_qs);
}

TEST(Corrections, TheLastCanBeTakenBack) {
    Corrections corrections;
    corrections.add(0, 1, u"one"_qs);
    corrections.add(2, 1, u"two"_qs);
    corrections.shortenTo(1);
    EXPECT_EQ(corrections.count(), 1U);
    EXPECT_EQ(corrections.appliedTo(u"a b"), u"one b"_qs);
}

TEST(Corrections, PositionsMoveWithTheText) {
    Corrections corrections;
    corrections.add(2, 3, u"longer"_qs);
    corrections.add(8, 4, u"x"_qs);
    EXPECT_EQ(corrections.movedPosition(0), 0);
    EXPECT_EQ(corrections.movedPosition(2), 2);
    EXPECT_EQ(corrections.movedPosition(4), 4);
    EXPECT_EQ(corrections.movedPosition(5), 8);
    EXPECT_EQ(corrections.movedPosition(8), 11);
    EXPECT_EQ(corrections.movedPosition(11), 12);
    EXPECT_EQ(corrections.movedPosition(12), 12);
    EXPECT_EQ(corrections.movedPosition(20), 20);
}
