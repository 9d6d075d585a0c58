#pragma once

#include "editor/print/PageOrder.h"
#include "editor/print/PaperLook.h"
#include "editor/print/PrintPages.h"
#include "editor/print/PrintedText.h"

#include <QPainter>
#include <QPointer>
#include <QString>

#include <functional>
#include <vector>

class QPagedPaintDevice;
class TextControl;

/// What is printed, and how.
struct PrintOrder {
    QString name;                   ///< for the header
    std::vector<TextMatch> ranges;  ///< of the text, from the top; held bytes
    PageOrder pages;
    PaperLook::Ink ink = PaperLook::Ink::Colours;
};

/// How far a print has come.
struct PrintProgress {
    int page = 0;  ///< the page being printed, counted along the pages to print; 0: the pages are being counted
    int pages = 0;
    int percent = 0;
};

/// Prints a text: counts the pages, then paints those wanted one after the other. Used for one print and owned by the
/// code that prints. Besides the page that is being painted, it keeps only the first place of each page.
///
/// It paints from run() until it is destroyed, so that a device can be told in between that the print is incomplete.
///
/// It does not run the event loop, but its watch may: if the control is destroyed or its text changes meanwhile, the
/// print ends.
class PrintJob {
 public:
    enum class Outcome {
        Printed,
        NoSuchPage,     ///< the text does not have the pages wanted
        Cancelled,      ///< by the watch
        TextChanged,    ///< or the control was destroyed
        DeviceRefused,  ///< the device does not begin, or takes no further page
    };
    /// Called before each page. Returning false ends the print.
    using Watch = std::function<bool(const PrintProgress& progress)>;

    /// The device outlives the job. The pages are on it when run() has returned Printed.
    PrintJob(TextControl& control, QPagedPaintDevice& device, PrintOrder order);

    Outcome run(const Watch& watch);
    /// The number of pages of the text, as far as they were counted.
    int pageCount() const { return static_cast<int>(m_starts.size()); }

 private:
    Outcome countPages(const Watch& watch);
    Outcome paintPages(const std::vector<int>& pages, const Watch& watch);
    Outcome askWatch(const Watch& watch, const PrintProgress& progress);

    QPointer<TextControl> m_control;
    QPagedPaintDevice& m_device;
    PageOrder m_order;
    PrintedText m_text;
    PrintPages m_layout;
    quint64 m_change;                  ///< the control's count of changes
    std::vector<PrintPlace> m_starts;  ///< of the pages
    QPainter m_painter;
};
