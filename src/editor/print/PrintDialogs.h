#pragma once

class QPageLayout;
class QPrinter;
class QWidget;

/// The dialogs of printing. Both are modal and run the event loop until they are answered: the parent may be destroyed
/// meanwhile. Tests pass scripted ones.
class PrintDialogs {
 public:
    virtual ~PrintDialogs() = default;

    /// Asks for the printer, the pages and the copies. False: cancelled.
    virtual bool askPrinter(QWidget* parent, QPrinter& printer, bool hasSelection) = 0;
    /// Asks for paper, orientation and margins. False: cancelled, and the layout is unchanged.
    virtual bool askPage(QWidget* parent, QPageLayout& layout) = 0;

    /// The ones that the program shows.
    static PrintDialogs& shown();
};
