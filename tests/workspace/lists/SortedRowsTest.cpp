#include "workspace/lists/SortedRows.h"

#include <QHeaderView>
#include <QStandardItemModel>

#include <gtest/gtest.h>

namespace {

QStringList sorted(const QStringList& cells, ColumnType type, Qt::SortOrder order = Qt::AscendingOrder) {
    QStringList result;
    for (const int row : sortedRows(cells, type, order))
        result.append(cells.at(row));
    return result;
}

TEST(SortedRows, NumbersFollowTextsNegativesByFallingAbsoluteValueThenPositives) {
    EXPECT_EQ(
        sorted({u"10"_qs, u"-2"_qs, u"text"_qs, u"0"_qs, u"9"_qs, u"-10"_qs, QString(), u"2.5"_qs}, ColumnType::Number),
        QStringList({u"text"_qs, QString(), u"-10"_qs, u"-2"_qs, u"0"_qs, u"2.5"_qs, u"9"_qs, u"10"_qs}));
}

TEST(SortedRows, NumbersMayBeGroupedAndOfAnySize) {
    EXPECT_EQ(sorted({u"12,345,678,901"_qs, u"9999999999"_qs, u"1,234"_qs, u"-99999999999"_qs, u" 7 "_qs},
                     ColumnType::Number),
              QStringList({u"-99999999999"_qs, u" 7 "_qs, u"1,234"_qs, u"9999999999"_qs, u"12,345,678,901"_qs}));
}

TEST(SortedRows, WordsThatStandForNoNumberAreTexts) {
    EXPECT_EQ(sorted({u"-1"_qs, u"nan"_qs, u"1"_qs, u"inf"_qs, u"-inf"_qs, u"0x10"_qs, u"-"_qs}, ColumnType::Number),
              QStringList({u"nan"_qs, u"inf"_qs, u"-inf"_qs, u"0x10"_qs, u"-"_qs, u"-1"_qs, u"1"_qs}));
}

TEST(SortedRows, ACellThatIsNoDateComesFirst) {
    EXPECT_EQ(sorted({u"2024/03/05 10:00:00"_qs, u"2024/03/05 09:59:59"_qs, u"soon"_qs, u"1999/12/31"_qs,
                      u"2024/13/01 00:00:00"_qs},
                     ColumnType::Date),
              QStringList({u"soon"_qs, u"2024/13/01 00:00:00"_qs, u"1999/12/31"_qs, u"2024/03/05 09:59:59"_qs,
                           u"2024/03/05 10:00:00"_qs}));
}

TEST(SortedRows, DatesBeforeAllTimesOfFilesFollowCellsThatAreNone) {
    EXPECT_EQ(sorted({u"1601/01/01 00:00:00"_qs, u"x"_qs}, ColumnType::Date),
              QStringList({u"x"_qs, u"1601/01/01 00:00:00"_qs}));
}

TEST(SortedRows, TextsAreSortedByCodePoints) {
    EXPECT_EQ(sorted({u"b"_qs, u"a"_qs, u"B"_qs, u"10"_qs, u"9"_qs, u"ä"_qs}, ColumnType::Text),
              QStringList({u"10"_qs, u"9"_qs, u"B"_qs, u"a"_qs, u"b"_qs, u"ä"_qs}));
    EXPECT_EQ(sorted({u"😀"_qs, u"\uFB01"_qs}, ColumnType::Text), QStringList({u"\uFB01"_qs, u"😀"_qs}));
}

TEST(SortedRows, DescendingTurnsTheOrderRoundAndEqualCellsKeepTheirs) {
    EXPECT_EQ(sorted({u"1"_qs, u"x"_qs, u"2"_qs}, ColumnType::Number, Qt::DescendingOrder),
              QStringList({u"2"_qs, u"1"_qs, u"x"_qs}));
    EXPECT_EQ(sorted({u"1"_qs, u"1.0"_qs, u"1.00"_qs}, ColumnType::Number, Qt::DescendingOrder),
              QStringList({u"1"_qs, u"1.0"_qs, u"1.00"_qs}));
}

TEST(SortedRows, CodePointsAreComparedToTheEnd) {
    EXPECT_EQ(compareByCodePoints(u"ab", u"ab"), 0);
    EXPECT_LT(compareByCodePoints(u"a", u"ab"), 0);
    EXPECT_GT(compareByCodePoints(u"ab", u"a"), 0);
    EXPECT_LT(compareByCodePoints(u"", u"a"), 0);
    EXPECT_LT(compareByCodePoints(u"\uFFFF", u"\U00010000"), 0);
    EXPECT_GT(compareByCodePoints(u"\U00010001", u"\U00010000"), 0);
}

TEST(SortedRows, TagsOfHeadersStandForTypes) {
    EXPECT_EQ(columnType(0), ColumnType::Text);
    EXPECT_EQ(columnType(1), ColumnType::Number);
    EXPECT_EQ(columnType(2), ColumnType::Date);
    EXPECT_EQ(columnType(17), ColumnType::Date);
}

TEST(SortDirections, EachColumnTurnsItsOwnDirectionAtEachClick) {
    SortDirections directions;
    EXPECT_EQ(directions.click(0), Qt::AscendingOrder);
    EXPECT_EQ(directions.click(1), Qt::AscendingOrder);
    EXPECT_EQ(directions.click(0), Qt::DescendingOrder);
    EXPECT_EQ(directions.click(1), Qt::DescendingOrder);
    EXPECT_EQ(directions.click(0), Qt::AscendingOrder);
}

TEST(ShowSortIcon, TheArrowStandsInOneColumn) {
    QStandardItemModel model(1, 3);
    QHeaderView header(Qt::Horizontal);
    header.setModel(&model);
    EXPECT_FALSE(header.isSortIndicatorShown());
    ShowSortIcon(header, 2, Qt::DescendingOrder);
    EXPECT_TRUE(header.isSortIndicatorShown());
    EXPECT_EQ(header.sortIndicatorSection(), 2);
    EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
}

}  // namespace
