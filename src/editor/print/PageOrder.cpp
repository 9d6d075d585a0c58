#include "editor/print/PageOrder.h"

#include <QPrinter>

#include <algorithm>

namespace {

std::vector<int> repeatedPages(const std::vector<int>& pages, int times) {
    std::vector<int> repeated;
    for (const int page : pages)
        repeated.insert(repeated.end(), static_cast<std::size_t>(times), page);
    return repeated;
}

std::vector<int> repeatedWhole(const std::vector<int>& pages, int times) {
    std::vector<int> repeated;
    for (int copy = 0; copy < times; ++copy)
        repeated.insert(repeated.end(), pages.begin(), pages.end());
    return repeated;
}

}  // namespace

PageOrder PageOrder::of(const QPrinter& printer) {
    PageOrder order;
    if (printer.printRange() == QPrinter::PageRange)
        order.ranges = printer.pageRanges();
    order.copies = printer.supportsMultipleCopies() ? 1 : std::max(1, printer.copyCount());
    order.collated = printer.collateCopies();
    order.lastFirst = printer.pageOrder() == QPrinter::LastPageFirst;
    return order;
}

std::vector<int> PageOrder::pagesOf(int pages) const {
    std::vector<int> once;
    for (int page = 1; page <= pages; ++page) {
        if (ranges.isEmpty() || ranges.contains(page))
            once.push_back(page);
    }
    if (lastFirst)
        std::reverse(once.begin(), once.end());
    return collated ? repeatedWhole(once, copies) : repeatedPages(once, copies);
}
