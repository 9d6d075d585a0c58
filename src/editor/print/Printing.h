#pragma once

#include "editor/print/PageSetup.h"

class Prompts;
class PrintDialogs;
class QPrinter;
class QString;
class QWidget;
class RegistryStore;
class TextControl;
struct PrintOrder;

/// Prints the texts of controls, on a printer or into a PDF file, and keeps the page set-up. One for all controls of
/// the program; owned by the code that owns what they share.
///
/// Failures are reported to the user. A PDF file is written only when all its pages are ready, so that a print that is
/// cancelled or fails leaves an existing file as it was.
class Printing {
 public:
    /// All three outlive this object.
    Printing(Prompts& prompts, RegistryStore& store, PrintDialogs& dialogs);

    /// Asks for the printer and prints. `path` is the text's file, or the name of a text without one. Runs the event
    /// loop; the control may be destroyed when it returns. False: nothing was printed.
    bool PrintContent(TextControl& control, const QString& path);
    /// Asks for paper, orientation and margins. Runs the event loop.
    void PrintSetup(QWidget* parent);

    PageSetup& pageSetup() { return m_setup; }

 private:
    void prepare(QPrinter& printer, const QString& path);
    bool printInto(QPrinter& printer, TextControl& control, const PrintOrder& order);
    bool writePdf(QPrinter& printer, TextControl& control, const PrintOrder& order);
    bool runJob(QPrinter& printer, TextControl& control, const PrintOrder& order);
    bool report(QWidget* parent, const QString& problem);

    Prompts& m_prompts;
    PrintDialogs& m_dialogs;
    PageSetup m_setup;
    bool m_isPrinting = false;
};
