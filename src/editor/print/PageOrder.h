#pragma once

#include <QPageRanges>

#include <vector>

class QPrinter;

/// Which pages are printed, how often, and in which order. A plain value.
struct PageOrder {
    QPageRanges ranges;  ///< counted from 1; empty: all pages
    int copies = 1;      ///< those that the printer does not make itself
    bool collated = true;
    bool lastFirst = false;

    /// What was chosen in the print dialog.
    static PageOrder of(const QPrinter& printer);

    /// The pages in the order in which they are printed.
    std::vector<int> pagesOf(int pages) const;
};
