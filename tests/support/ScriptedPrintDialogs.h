#pragma once

#include "editor/print/PrintDialogs.h"

#include <QPageLayout>
#include <QPrinter>

#include <functional>

/// Answers the dialogs of printing and records what they were shown. Shows nothing and does not run the event loop.
class ScriptedPrintDialogs : public PrintDialogs {
 public:
    /// What is chosen in the dialog for printers; none: it is cancelled.
    std::function<void(QPrinter& printer)> choosePrinter;
    /// What is chosen in the dialog for the page; none: it is cancelled.
    std::function<void(QPageLayout& layout)> choosePage;

    int printersAsked = 0;
    int pagesAsked = 0;
    bool offeredSelection = false;
    QString proposedFile;
    QPageLayout proposedPage;  ///< what the last of the two dialogs was shown

    bool askPrinter(QWidget*, QPrinter& printer, bool hasSelection) override {
        ++printersAsked;
        offeredSelection = hasSelection;
        proposedFile = printer.outputFileName();
        proposedPage = printer.pageLayout();
        if (choosePrinter)
            choosePrinter(printer);
        return choosePrinter != nullptr;
    }

    bool askPage(QWidget*, QPageLayout& layout) override {
        ++pagesAsked;
        proposedPage = layout;
        if (choosePage)
            choosePage(layout);
        return choosePage != nullptr;
    }
};
