#include "editor/print/PageOrder.h"

#include <QPrinter>

#include <gtest/gtest.h>

namespace {

using Pages = std::vector<int>;

PageOrder pages(const char* ranges) {
    PageOrder order;
    order.ranges = QPageRanges::fromString(QString::fromLatin1(ranges));
    return order;
}

}  // namespace

TEST(PageOrder, IsAllPagesOnceUnlessSomethingElseIsChosen) {
    EXPECT_EQ(PageOrder().pagesOf(3), Pages({1, 2, 3}));
    EXPECT_EQ(PageOrder().pagesOf(0), Pages());
}

TEST(PageOrder, KeepsToTheRangesThatExist) {
    EXPECT_EQ(pages("2-3").pagesOf(5), Pages({2, 3}));
    EXPECT_EQ(pages("1,3,5-7").pagesOf(6), Pages({1, 3, 5, 6}));
    EXPECT_EQ(pages("4-9").pagesOf(3), Pages());
}

TEST(PageOrder, RepeatsTheWholeOrEachPage) {
    PageOrder order = pages("1-2");
    order.copies = 3;
    EXPECT_EQ(order.pagesOf(9), Pages({1, 2, 1, 2, 1, 2}));
    order.collated = false;
    EXPECT_EQ(order.pagesOf(9), Pages({1, 1, 1, 2, 2, 2}));
}

TEST(PageOrder, MayBeginWithTheLastPage) {
    PageOrder order = pages("2-4");
    order.lastFirst = true;
    EXPECT_EQ(order.pagesOf(9), Pages({4, 3, 2}));
}

TEST(PageOrder, IsWhatTheDialogLeftInThePrinter) {
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    EXPECT_TRUE(PageOrder::of(printer).ranges.isEmpty());
    EXPECT_EQ(PageOrder::of(printer).copies, 1);
    printer.setPrintRange(QPrinter::PageRange);
    printer.setFromTo(3, 4);
    printer.setCopyCount(2);
    printer.setCollateCopies(false);
    printer.setPageOrder(QPrinter::LastPageFirst);
    const PageOrder order = PageOrder::of(printer);
    EXPECT_EQ(order.pagesOf(9), Pages({4, 4, 3, 3}));
    // Ranges that are left over from another choice do not count.
    printer.setPrintRange(QPrinter::Selection);
    EXPECT_TRUE(PageOrder::of(printer).ranges.isEmpty());
}
