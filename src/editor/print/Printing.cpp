#include "editor/print/Printing.h"

#include "editor/control/ControlSelection.h"
#include "editor/control/TextControl.h"
#include "editor/print/PrintDialogs.h"
#include "editor/print/PrintJob.h"
#include "editor/print/PrintWindow.h"
#include "editor/print/PrinterQueue.h"
#include "platform/FileReader.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "platform/UserFileWriter.h"
#include "widgets/Prompts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QPrinter>
#include <QScopedValueRollback>
#include <QTemporaryFile>

#include <string_view>
#include <utility>

namespace {

using Outcome = PrintJob::Outcome;

QString sentence(const char* text) {
    return QCoreApplication::translate("Printing", text);
}

/// The bytes of a finished PDF file.
class FileBytes : public ByteSource {
 public:
    SystemError open(const QString& path) { return m_reader.open(path); }
    qint64 length() const override { return m_reader.size(); }

    SystemError next(BytePieces& pieces) override {
        const qint64 read = m_reader.read(m_block.data(), m_block.size());
        if (read <= 0)
            return read < 0 ? m_reader.error() : SystemError::fromErrno(EIO);
        m_piece = {m_block.constData(), static_cast<std::size_t>(read)};
        pieces = {&m_piece, 1};
        return {};
    }

 private:
    static constexpr qsizetype BlockSize = 256 * 1024;

    FileReader m_reader;
    QByteArray m_block{BlockSize, '\0'};
    std::string_view m_piece;
};

/// Qt does not report that a PDF file could not be written to its end.
bool isWhole(const QString& path) {
    constexpr qint64 LongestTail = 32;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(std::max<qint64>(0, file.size() - LongestTail)))
        return false;
    return file.readAll().trimmed().endsWith("%%EOF");
}

SystemError copyInto(const QString& target, const QString& pdf) {
    FileBytes bytes;
    if (SystemError error = bytes.open(pdf))
        return error;
    return UserFileWriter().write(target, bytes).error;
}

/// Beside the text's file, otherwise in the home folder.
QString proposedPdf(const QString& path) {
    return (path.startsWith(u'/') ? path : QDir::homePath() + u'/' + path) + u".pdf"_qs;
}

QString problemOf(Outcome outcome, const QPrinter& printer, int pages) {
    switch (outcome) {
        case Outcome::NoSuchPage:
            return sentence("Nothing was printed, because the text has no such page. It has %1.")
                .arg(pages == 1 ? sentence("1 page") : sentence("%1 pages").arg(pages));
        case Outcome::TextChanged:
            return sentence("Nothing was printed, because the text has changed meanwhile.");
        case Outcome::DeviceRefused:
            return printer.outputFormat() == QPrinter::PdfFormat
                       ? sentence("Nothing was printed, because the pages could not be written to \"%1\".")
                             .arg(printer.outputFileName())
                       : sentence("The printer \"%1\" did not accept the pages.").arg(printer.printerName());
        case Outcome::Printed:
        case Outcome::Cancelled:
            break;
    }
    return {};
}

}  // namespace

Printing::Printing(Prompts& prompts, RegistryStore& store, PrintDialogs& dialogs)
    : m_prompts(prompts), m_dialogs(dialogs), m_setup(store) {}

void Printing::PrintSetup(QWidget* parent) {
    QPageLayout layout = m_setup.layout();
    if (m_dialogs.askPage(parent, layout))
        m_setup.setLayout(layout);
}

bool Printing::report(QWidget* parent, const QString& problem) {
    if (!problem.isEmpty())
        m_prompts.message(parent, problem);
    return false;
}

void Printing::prepare(QPrinter& printer, const QString& path) {
    printer.setDocName(FileNameOf(path));
    printer.setCreator(u"Quillmark"_qs);
    printer.setPageLayout(m_setup.layout());
    // Without a printer on the system.
    if (printer.outputFormat() == QPrinter::PdfFormat)
        printer.setOutputFileName(proposedPdf(path));
}

bool Printing::PrintContent(TextControl& control, const QString& path) {
    if (m_isPrinting)
        return false;
    const QScopedValueRollback<bool> printing(m_isPrinting, true);
    const QPointer<TextControl> alive(&control);
    QPrinter printer(QPrinter::HighResolution);
    prepare(printer, path);
    const QPageLayout before = printer.pageLayout();
    std::vector<TextMatch> selected = control.selected().selectedRanges();
    if (!m_dialogs.askPrinter(&control, printer, !selected.front().empty()) || !alive)
        return false;
    // The print dialog sets up the page too.
    if (printer.pageLayout() != before)
        m_setup.setLayout(printer.pageLayout());
    const bool onlySelected = printer.printRange() == QPrinter::Selection;
    return printInto(printer, control,
                     {FileNameOf(path),
                      onlySelected ? std::move(selected) : std::vector<TextMatch>{{0, control.heldText().length()}},
                      PageOrder::of(printer),
                      printer.colorMode() == QPrinter::GrayScale ? PaperLook::Ink::Greys : PaperLook::Ink::Colours});
}

bool Printing::printInto(QPrinter& printer, TextControl& control, const PrintOrder& order) {
    return printer.outputFormat() == QPrinter::PdfFormat ? writePdf(printer, control, order)
                                                         : runJob(printer, control, order);
}

bool Printing::writePdf(QPrinter& printer, TextControl& control, const PrintOrder& order) {
    const QPointer<QWidget> window(control.window());
    const QString target = absolutePath(printer.outputFileName());
    const SystemError noFolder = makePrivateFolder(temporaryFolder());
    QTemporaryFile file(temporaryFolder() + u"/print-XXXXXX.pdf"_qs);
    if (noFolder || !file.open()) {
        const QString problem = sentence("Nothing was printed, because there is no room for the pages in \"%1\".");
        return report(window, problem.arg(temporaryFolder()));
    }
    printer.setOutputFileName(file.fileName());
    if (!runJob(printer, control, order))
        return false;
    if (!isWhole(file.fileName()))
        return report(window, problemOf(Outcome::DeviceRefused, printer, 0));
    const SystemError error = copyInto(target, file.fileName());
    return !error || report(window, error.description);
}

bool Printing::runJob(QPrinter& printer, TextControl& control, const PrintOrder& order) {
    const QPointer<QWidget> window(control.window());
    const QPointer<PrintWindow> progress(new PrintWindow(order.name, window));
    PrintJob job(control, printer, order);
    const Outcome outcome =
        job.run([&progress](const PrintProgress& reached) { return progress && progress->report(reached); });
    delete progress;
    const bool isQueued = printer.outputFormat() == QPrinter::NativeFormat;
    if (outcome != Outcome::Printed) {
        if (isQueued)
            PrinterQueue::withdraw(printer);
        return report(window, problemOf(outcome, printer, job.pageCount()));
    }
    const QString refusal = isQueued ? PrinterQueue::refusal() : QString();
    if (refusal.isEmpty())
        return true;
    return report(window, problemOf(Outcome::DeviceRefused, printer, 0) + u'\n' + refusal);
}
