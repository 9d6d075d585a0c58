#include "hex/bytes/HexPaging.h"

#include <gtest/gtest.h>

#include <random>

namespace {

HexPaging paging(qint64 length, qint64 pointer = 1) {
    HexPaging pages;
    pages.open(length);
    pages.setFilePointer(FilePosition(pointer));
    return pages;
}

qint64 pointerOf(const HexPaging& pages) {
    return pages.FilePointer().number();
}

}  // namespace

TEST(APage, OfAShortFileHasTwoRowsOrOneMoreThanItsFullOnes) {
    EXPECT_EQ(paging(1).rows(), 2);
    EXPECT_EQ(paging(5).rows(), 2);
    EXPECT_EQ(paging(15).rows(), 2);
    EXPECT_EQ(paging(16).rows(), 2);
    EXPECT_EQ(paging(17).rows(), 2);
    EXPECT_EQ(paging(32).rows(), 2);
    EXPECT_EQ(paging(33).rows(), 3);
    EXPECT_EQ(paging(319).rows(), 20);
    EXPECT_EQ(paging(320).rows(), 20);
    EXPECT_EQ(paging(321).rows(), 20);
    EXPECT_EQ(paging(2147483647).rows(), 20);
    EXPECT_EQ(paging(320, 321).rows(), 2);
}

TEST(APage, IsNamedByACountFromTheEnd) {
    EXPECT_EQ(paging(1).PageCaption(), u"1/1"_qs);
    EXPECT_EQ(paging(320).PageCaption(), u"1/1"_qs);
    EXPECT_EQ(paging(321).PageCaption(), u"1/2"_qs);
    EXPECT_EQ(paging(321, 17).PageCaption(), u"2/2"_qs);
    EXPECT_EQ(paging(321, 321).PageCaption(), u"2/2"_qs);
    EXPECT_EQ(paging(640).PageCaption(), u"1/2"_qs);
    EXPECT_EQ(paging(640, 321).PageCaption(), u"2/2"_qs);
    EXPECT_EQ(paging(640, 641).PageCaption(), u"3/2"_qs);
    EXPECT_EQ(paging(2147483647).PageCaption(), u"1/6710887"_qs);
}

TEST(APage, KnowsWhereTheFileEnds) {
    const HexPaging pages = paging(5);
    EXPECT_FALSE(pages.IsPastEnd({0, 4}));
    EXPECT_TRUE(pages.IsPastEnd({0, 5}));
    EXPECT_TRUE(pages.IsPastEnd({1, 0}));
    EXPECT_EQ(paging(2147483647, 2147483633).positionOf({0, 14}).number(), 2147483647);
    EXPECT_TRUE(paging(2147483647, 2147483633).IsPastEnd({0, 15}));
}

TEST(AMove, ToTheTopFillsThePageInAnyCase) {
    HexPaging pages = paging(640, 321);
    EXPECT_TRUE(pages.MoveFirstPage());
    EXPECT_TRUE(pages.MoveFirstPage());
    EXPECT_EQ(pointerOf(pages), 1);
}

TEST(AMove, UpStopsAtTheTop) {
    HexPaging pages = paging(1000, 337);
    EXPECT_TRUE(pages.MovePreviousPage());
    EXPECT_EQ(pointerOf(pages), 17);
    EXPECT_TRUE(pages.MovePreviousPage());
    EXPECT_EQ(pointerOf(pages), 1);
    EXPECT_FALSE(pages.MovePreviousPage());
    EXPECT_TRUE(pages.MovePreviousLine());
    EXPECT_EQ(pointerOf(pages), 1);
    pages.setFilePointer(FilePosition(33));
    EXPECT_TRUE(pages.MovePreviousLine());
    EXPECT_EQ(pointerOf(pages), 17);
}

TEST(AMove, DownInAFileOfOnePageDoesNothing) {
    for (const qint64 length : {1, 15, 16, 17, 319, 320}) {
        HexPaging pages = paging(length);
        EXPECT_FALSE(pages.MoveNextLine());
        EXPECT_FALSE(pages.MoveNextPage());
        EXPECT_FALSE(pages.hasNextRow());
        EXPECT_EQ(pointerOf(pages), 1);
    }
}

TEST(AMove, DownDoesNothingWhenTheRowBelowIsNotFull) {
    for (const qint64 length : {321, 322, 335}) {
        HexPaging pages = paging(length);
        EXPECT_FALSE(pages.MoveNextLine());
        EXPECT_FALSE(pages.MoveNextPage());
    }
    HexPaging full = paging(336);
    EXPECT_TRUE(full.MoveNextLine());
    EXPECT_EQ(pointerOf(full), 17);
    EXPECT_FALSE(full.MoveNextLine());
    full = paging(336);
    EXPECT_TRUE(full.MoveNextPage());
    EXPECT_EQ(pointerOf(full), 321);
}

TEST(AMove, ToTheEndShowsAPartialRow) {
    const std::pair<qint64, qint64> ends[] = {{1, 1},     {304, 1},   {319, 1},   {320, 17},
                                              {321, 17},  {335, 17},  {336, 33},  {640, 337},
                                              {641, 337}, {650, 337}, {656, 353}, {2147483647, 2147483329}};
    for (const auto& [length, end] : ends) {
        HexPaging pages = paging(length);
        EXPECT_TRUE(pages.MoveLastPage());
        EXPECT_EQ(pointerOf(pages), end) << length;
        EXPECT_FALSE(pages.IsPastEnd({0, 0}));
    }
}

TEST(AMove, ByPagesRestsWithAPartialRowBelowTheScreen) {
    HexPaging pages = paging(640);
    EXPECT_TRUE(pages.MoveNextPage());
    EXPECT_EQ(pointerOf(pages), 321);
    EXPECT_EQ(pages.rows(), 20);
    EXPECT_FALSE(pages.MoveNextPage());
    EXPECT_TRUE(pages.MoveLastPage());
    EXPECT_EQ(pointerOf(pages), 337);
    EXPECT_EQ(pages.rows(), 19);

    HexPaging partial = paging(650);
    EXPECT_TRUE(partial.MoveNextPage());
    EXPECT_FALSE(partial.MoveNextPage());
    EXPECT_EQ(pointerOf(partial), 321);
    EXPECT_TRUE(partial.MoveLastPage());
    EXPECT_EQ(pointerOf(partial), 337);
}

TEST(AMove, NeverOverflowsAtTheLastPosition) {
    HexPaging pages = paging(2147483647, 2147483329);
    EXPECT_FALSE(pages.MoveNextPage());
    EXPECT_FALSE(pages.MoveNextLine());
    EXPECT_FALSE(pages.hasNextRow());
    pages.SetOffsetPosition(100);
    EXPECT_EQ(pointerOf(pages), 2147483329);
}

TEST(AMove, ByAPushNeedsMoreThanOneByteBelow) {
    EXPECT_FALSE(paging(321).hasNextRow());
    EXPECT_TRUE(paging(322).hasNextRow());
    EXPECT_FALSE(paging(640, 337).hasNextRow());
}

TEST(TheScrollBar, IsOffForOnePage) {
    EXPECT_FALSE(paging(320).scrolls());
    EXPECT_TRUE(paging(321).scrolls());
}

TEST(TheScrollBar, StandsAtAPercentageOfTheFile) {
    EXPECT_EQ(paging(321).scrollPosition(), 0);
    EXPECT_EQ(paging(335, 17).scrollPosition(), 0);
    EXPECT_EQ(paging(336, 17).scrollPosition(), 100);
    EXPECT_EQ(paging(640).scrollPosition(), 0);
    EXPECT_EQ(paging(640, 17).scrollPosition(), 5);
    EXPECT_EQ(paging(640, 161).scrollPosition(), 50);
    EXPECT_EQ(paging(640, 321).scrollPosition(), 100);
    EXPECT_EQ(paging(640, 337).scrollPosition(), 100);
    EXPECT_EQ(paging(2147483647, 1073741825).scrollPosition(), 50);
}

TEST(TheScrollBar, MovesToARowByItsValue) {
    HexPaging pages = paging(640);
    const std::pair<int, qint64> places[] = {{0, 1}, {1, 1}, {5, 17}, {10, 33}, {50, 161}, {99, 305}, {100, 321}};
    for (const auto& [value, pointer] : places) {
        pages.SetOffsetPosition(value);
        EXPECT_EQ(pointerOf(pages), pointer) << value;
    }
    pages = paging(321);
    pages.SetOffsetPosition(100);
    EXPECT_EQ(pointerOf(pages), 17);
    pages = paging(2147483647);
    pages.SetOffsetPosition(50);
    EXPECT_EQ(pointerOf(pages), 1073741665);
}

TEST(GoingToAnOffset, BringsItsRowToTheTop) {
    HexPaging pages = paging(1000);
    EXPECT_EQ(pages.goTo(Offset(0)), (HexCell{0, 0}));
    EXPECT_EQ(pointerOf(pages), 1);
    EXPECT_EQ(pages.goTo(Offset(31)), (HexCell{0, 15}));
    EXPECT_EQ(pointerOf(pages), 17);
    EXPECT_EQ(pages.goTo(Offset(999)), (HexCell{0, 7}));
    EXPECT_EQ(pointerOf(pages), 993);
}

TEST(GoingToATypedOffset, LandsOneByteBehindIt) {
    HexPaging pages = paging(1000);
    EXPECT_EQ(pages.goToTyped(Offset(0)), (HexCell{0, 1}));
    EXPECT_EQ(pointerOf(pages), 1);
    EXPECT_EQ(pages.goToTyped(Offset(15)), (HexCell{0, 0}));
    EXPECT_EQ(pointerOf(pages), 17);
    EXPECT_EQ(pages.goToTyped(Offset(-7)), (HexCell{0, 1}));
    EXPECT_EQ(pointerOf(pages), 1);
}

TEST(GoingToATypedOffset, BehindTheEndTakesTheColumnFromTheLength) {
    HexPaging pages = paging(1000);
    EXPECT_EQ(pages.goToTyped(Offset(5000)), (HexCell{0, 8}));
    EXPECT_EQ(pointerOf(pages), 993);
    pages = paging(16);
    EXPECT_EQ(pages.goToTyped(Offset(15)), (HexCell{0, 0}));
    EXPECT_EQ(pointerOf(pages), 17);
}

TEST(GoingToAPage, KnowsOneMoreThanThereAreWhenTheLastIsFull) {
    EXPECT_EQ(paging(319).typedPages(), 1);
    EXPECT_EQ(paging(320).typedPages(), 2);
    HexPaging pages = paging(640);
    EXPECT_EQ(pages.typedPages(), 3);
    pages.goToPage(1);
    EXPECT_EQ(pointerOf(pages), 1);
    pages.goToPage(2);
    EXPECT_EQ(pointerOf(pages), 321);
    pages.goToPage(99);
    EXPECT_EQ(pointerOf(pages), 641);
    EXPECT_TRUE(pages.IsPastEnd({0, 0}));
}

TEST(AnyMoves, KeepTheTopRowAlignedAndOnTheFile) {
    std::mt19937 random(20240611);
    const auto below = [&](int number) { return static_cast<int>(random() % static_cast<unsigned>(number)); };
    for (int run = 0; run < 300; ++run) {
        HexPaging pages = paging(1 + below(run % 3 == 0 ? 400 : 3000));
        for (int step = 0; step < 60; ++step) {
            switch (below(9)) {
                case 0:
                    pages.MoveFirstPage();
                    break;
                case 1:
                    pages.MovePreviousPage();
                    break;
                case 2:
                    pages.MovePreviousLine();
                    break;
                case 3:
                case 4:
                    pages.MoveNextLine();
                    break;
                case 5:
                    pages.MoveNextPage();
                    break;
                case 6:
                    pages.MoveLastPage();
                    break;
                case 7:
                    pages.goTo(Offset(below(static_cast<int>(pages.length()))));
                    break;
                default:
                    if (pages.scrolls())
                        pages.SetOffsetPosition(below(101));
            }
            ASSERT_EQ(pointerOf(pages) % 16, 1);
            ASSERT_GE(pointerOf(pages), 1);
            ASSERT_LE(pointerOf(pages), pages.length());
            ASSERT_GE(pages.rows(), 2);
            ASSERT_LE(pages.rows(), 20);
            ASSERT_GE(pages.scrollPosition(), 0);
            ASSERT_LE(pages.scrollPosition(), 100);
        }
    }
}
