#include "shell/FrameFixture.h"

#include <QPageLayout>
#include <QPrinter>
#include <QProcess>

namespace {

using PrintCommands = FrameFixture;

QString textOf(const QString& pdf) {
    QProcess reader;
    reader.start(u"pdftotext"_qs, {u"-layout"_qs, pdf, u"-"_qs});
    EXPECT_TRUE(reader.waitForFinished());
    return QString::fromUtf8(reader.readAllStandardOutput()).simplified();
}

}  // namespace

TEST_F(PrintCommands, PrintPrintsTheActiveDocumentUnderItsName) {
    start();
    open(fileOf("one\ntwo\n", u"other.txt"_qs));
    open(fileOf("three\n", u"active.txt"_qs));
    const QString pdf = path(u"out.pdf"_qs);
    m_printDialogs.choosePrinter = [&pdf](QPrinter& printer) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
    };
    run("mnuFilePrint");
    EXPECT_EQ(textOf(pdf), u"active.txt Page 1 of 1 1 three"_qs);
    button("Print")->trigger();
    EXPECT_EQ(m_printDialogs.printersAsked, 2);
    EXPECT_FALSE(active()->isChange);
}

TEST_F(PrintCommands, AnUntitledDocumentIsPrintedUnderItsTitle) {
    start();
    run("mnuFileNew");
    type(u"text"_qs);
    const QString pdf = path(u"out.pdf"_qs);
    m_printDialogs.choosePrinter = [&pdf](QPrinter& printer) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
    };
    run("mnuFilePrint");
    EXPECT_EQ(textOf(pdf), active()->Caption() + u" Page 1 of 1 1 text"_qs);
}

TEST_F(PrintCommands, PrintDoesNothingWithoutADocument) {
    start();
    run("mnuAllFileClose");
    ASSERT_EQ(active(), nullptr);
    run("mnuFilePrint");
    button("Print")->trigger();
    EXPECT_EQ(m_printDialogs.printersAsked, 0);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(PrintCommands, PageSetupIsForAllDocumentsAndNeedsNone) {
    start();
    run("mnuAllFileClose");
    m_printDialogs.choosePage = [](QPageLayout& layout) { layout.setOrientation(QPageLayout::Landscape); };
    run("mnuFilePageSetup");
    EXPECT_EQ(m_printDialogs.pagesAsked, 1);
    run("mnuFileNew");
    active()->PrintSetup();
    EXPECT_EQ(m_printDialogs.pagesAsked, 2);
    EXPECT_EQ(m_printDialogs.proposedPage.orientation(), QPageLayout::Landscape);
}

TEST_F(PrintCommands, ThePreviewIsHiddenAndSaysThatItIsMissing) {
    start();
    EXPECT_FALSE(entry("mnuFilePrintPreview")->isVisible());
    run("mnuFilePrintPreview");
    EXPECT_EQ(m_prompts.messages, QStringList(u"Add 'mnuFilePrintPreview_Click' code."_qs));
}
