#include "editor/Editor.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/TextControl.h"
#include "editor/print/Printing.h"
#include "platform/Folders.h"
#include "settings/registry/MemoryRegistry.h"
#include "support/PdfText.h"
#include "support/ScriptedPrintDialogs.h"
#include "support/ScriptedPrompts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <memory>

namespace {

struct PrintingOfAText : testing::Test {
    ScriptedPrompts prompts;
    MemoryRegistry store;
    ScriptedPrintDialogs dialogs;
    Printing printing{prompts, store, dialogs};
    QTemporaryDir folder;
    std::unique_ptr<TextControl> control{makeEditor()};
    QString pdf = folder.filePath(u"out.pdf"_qs);

    PrintingOfAText() {
        qputenv("CUPS_SERVER", "/nowhere");  // whatever printers the machine has
        control->setText(u"one\ntwo\nthree\n"_qs);
        choose([](QPrinter&) {});
    }
    /// The dialog for printers prints to the PDF file, and what else is chosen.
    void choose(std::function<void(QPrinter& printer)> more) {
        dialogs.choosePrinter = [this, more = std::move(more)](QPrinter& printer) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(pdf);
            more(printer);
        };
    }
    bool print(const QString& path = u"/texts/text.txt"_qs) { return printing.PrintContent(*control, path); }
    void writePdf(const QByteArray& bytes) const {
        QFile file(pdf);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray readPdf() const {
        QFile file(pdf);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QStringList filesLeft() { return QDir(temporaryFolder()).entryList(QDir::Files); }
};

}  // namespace

TEST_F(PrintingOfAText, WritesAPdfFile) {
    EXPECT_TRUE(print());
    EXPECT_EQ(PdfText::rows(pdf), QStringList({u"one"_qs, u"two"_qs, u"three"_qs}));
    EXPECT_EQ(PdfText::pages(pdf).front().front().simplified(), u"text.txt Page 1 of 1"_qs);
    const QString info = QString::fromUtf8(PdfText::outputOf(u"pdfinfo"_qs, {pdf}));
    EXPECT_TRUE(info.contains(QRegularExpression(u"Title: +text.txt"_qs))) << qPrintable(info);
    EXPECT_TRUE(info.contains(QRegularExpression(u"Creator: +Quillmark"_qs))) << qPrintable(info);
    EXPECT_EQ(filesLeft(), QStringList());
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST_F(PrintingOfAText, DoesNothingWhenTheDialogIsCancelled) {
    dialogs.choosePrinter = nullptr;
    EXPECT_FALSE(print());
    EXPECT_EQ(dialogs.printersAsked, 1);
    EXPECT_FALSE(QFile::exists(pdf));
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST_F(PrintingOfAText, OffersAPdfFileBesideTheTextWithoutAPrinter) {
    dialogs.choosePrinter = nullptr;
    print(u"/texts/text.txt"_qs);
    EXPECT_EQ(dialogs.proposedFile, u"/texts/text.txt.pdf"_qs);
    print(u"Document1"_qs);
    EXPECT_EQ(dialogs.proposedFile, QDir::homePath() + u"/Document1.pdf"_qs);
}

TEST_F(PrintingOfAText, PrintsWhatIsSelectedWhenThatIsChosen) {
    print();
    EXPECT_FALSE(dialogs.offeredSelection);
    control->setSelection(4, 9);
    choose([](QPrinter& printer) { printer.setPrintRange(QPrinter::Selection); });
    EXPECT_TRUE(print());
    EXPECT_TRUE(dialogs.offeredSelection);
    EXPECT_EQ(PdfText::rows(pdf), QStringList({u"two"_qs, u"t"_qs}));
    choose([](QPrinter&) {});
    EXPECT_TRUE(print());
    EXPECT_EQ(PdfText::rows(pdf).size(), 3) << "all of it, though a part is selected";
}

TEST_F(PrintingOfAText, PrintsThePartsOfARectangle) {
    control->send(TextControl::SCI_SETRECTANGULARSELECTIONANCHOR, 0);
    control->send(TextControl::SCI_SETRECTANGULARSELECTIONCARET, 10);  // two columns of three lines
    choose([](QPrinter& printer) { printer.setPrintRange(QPrinter::Selection); });
    EXPECT_TRUE(print());
    EXPECT_EQ(PdfText::rows(pdf), QStringList({u"on"_qs, u"tw"_qs, u"th"_qs}));
}

TEST_F(PrintingOfAText, PrintsThePagesAndCopiesChosen) {
    QString text;
    for (int i = 0; i < 300; ++i)
        text += u"line %1\n"_qs.arg(i);
    control->setText(text);
    choose([](QPrinter& printer) {
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 2);
        printer.setCopyCount(2);
    });
    EXPECT_TRUE(print());
    const QList<QStringList> pages = PdfText::pages(pdf);
    ASSERT_EQ(pages.size(), 2);
    EXPECT_EQ(pages[0], pages[1]);
    EXPECT_TRUE(pages[0].front().contains(u"Page 2 of"_qs));
}

TEST_F(PrintingOfAText, SaysThatTheTextHasNoSuchPage) {
    writePdf("older");
    choose([](QPrinter& printer) {
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(7, 9);
    });
    EXPECT_FALSE(print());
    EXPECT_EQ(prompts.messages,
              QStringList(u"Nothing was printed, because the text has no such page. It has 1 page."_qs));
    EXPECT_EQ(readPdf(), "older");
}

TEST_F(PrintingOfAText, ReplacesAnOlderFileInPlace) {
    writePdf(QByteArray(1000000, 'x'));
    const QString link = folder.filePath(u"link.pdf"_qs);
    ASSERT_TRUE(QFile::link(pdf, link));
    pdf = link;
    EXPECT_TRUE(print());
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_LT(readPdf().size(), 100000);
    EXPECT_EQ(PdfText::rows(folder.filePath(u"out.pdf"_qs)).size(), 3);
}

TEST_F(PrintingOfAText, SaysThatTheFileCannotBeWritten) {
    pdf = folder.filePath(u"missing/out.pdf"_qs);
    EXPECT_FALSE(print());
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_TRUE(prompts.messages.front().contains(u"out.pdf"_qs)) << qPrintable(prompts.messages.front());
    EXPECT_TRUE(prompts.messages.front().contains(u"No such file or directory"_qs));
    EXPECT_EQ(filesLeft(), QStringList());
}

TEST_F(PrintingOfAText, LeavesAFileThatMayNotBeWritten) {
    writePdf("precious");
    ASSERT_EQ(chmod(qPrintable(pdf), 0444), 0);
    EXPECT_FALSE(print());
    EXPECT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(readPdf(), "precious");
}

TEST_F(PrintingOfAText, SaysThatThereIsNoRoomForThePages) {
    const QByteArray before = qgetenv("TMPDIR");
    writePdf("older");
    // Nothing can be made there.
    qputenv("TMPDIR", "/proc");
    EXPECT_FALSE(print());
    qputenv("TMPDIR", before);
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_TRUE(prompts.messages.front().startsWith(u"Nothing was printed"_qs));
    EXPECT_EQ(readPdf(), "older");
}

TEST_F(PrintingOfAText, EndsWhenTheControlIsDestroyedByTheDialog) {
    choose([this](QPrinter&) { control.reset(); });
    EXPECT_FALSE(print());
    EXPECT_FALSE(QFile::exists(pdf));
}

TEST_F(PrintingOfAText, IsNotBegunTwiceAtATime) {
    bool inside = true;
    choose([&](QPrinter&) { inside = print(); });
    EXPECT_TRUE(print());
    EXPECT_FALSE(inside);
    EXPECT_EQ(dialogs.printersAsked, 1);
    choose([](QPrinter&) {});
    EXPECT_TRUE(print()) << "the next one begins";
}

TEST_F(PrintingOfAText, UsesAndKeepsThePageSetup) {
    dialogs.choosePage = [](QPageLayout& layout) { layout.setOrientation(QPageLayout::Landscape); };
    printing.PrintSetup(nullptr);
    EXPECT_EQ(dialogs.proposedPage, PageSetup::defaultLayout());
    EXPECT_TRUE(print());
    EXPECT_EQ(dialogs.proposedPage.orientation(), QPageLayout::Landscape);
    const QImage image = PdfText::picture(pdf, 1, 20);
    EXPECT_GT(image.width(), image.height());
    Printing later(prompts, store, dialogs);
    dialogs.choosePage = nullptr;
    later.PrintSetup(nullptr);
    EXPECT_EQ(dialogs.proposedPage.orientation(), QPageLayout::Landscape) << "in the next run too";
}

TEST_F(PrintingOfAText, KeepsThePageSetInThePrintDialog) {
    choose([](QPrinter& printer) { printer.setPageSize(QPageSize(QPageSize::A5)); });
    EXPECT_TRUE(print());
    EXPECT_EQ(printing.pageSetup().layout().pageSize().id(), QPageSize::A5);
    EXPECT_EQ(PageSetup(store).layout().pageSize().id(), QPageSize::A5);
}

TEST_F(PrintingOfAText, ACancelledPageSetupChangesNothing) {
    printing.PrintSetup(nullptr);
    EXPECT_EQ(dialogs.pagesAsked, 1);
    EXPECT_EQ(printing.pageSetup().layout(), PageSetup::defaultLayout());
    EXPECT_EQ(PageSetup(store).layout(), PageSetup::defaultLayout());
}
