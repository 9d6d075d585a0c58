#include "editor/Editor.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "editor/language/LanguageDefinition.h"
#include "editor/print/PrintJob.h"
#include "support/PdfText.h"

#include <QFile>
#include <QPageSize>
#include <QPalette>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <set>

namespace {

using Outcome = PrintJob::Outcome;

/// A device that takes no more than so many pages.
class FullDevice : public QPdfWriter {
 public:
    FullDevice(const QString& path, int pages) : QPdfWriter(path), m_left(pages) {}
    bool newPage() override { return --m_left > 0 && QPdfWriter::newPage(); }

 private:
    int m_left;
};

const LanguageDefinition& cpp() {
    static const LanguageDefinition definition = [] {
        LanguageDefinition made;
        made.lexer = "cpp";
        made.keywords[0] = "int return";
        made.classOfStyle[5] = TokenClass::Keyword;
        made.classOfStyle[1] = made.classOfStyle[2] = TokenClass::Comment;
        return made;
    }();
    return definition;
}

QString numbered(int lines, const QString& word = u"line"_qs) {
    QString text;
    for (int i = 1; i <= lines; ++i)
        text += u"%1 %2\n"_qs.arg(word).arg(i);
    return text;
}

struct PrintedControl : testing::Test {
    QTemporaryDir folder;
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    QString path = folder.filePath(u"out.pdf"_qs);
    QPageLayout page{QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15),
                     QPageLayout::Millimeter};
    PrintOrder order{u"name.txt"_qs, {}, {}, PaperLook::Ink::Colours};
    int pageCount = 0;

    Outcome print(QPdfWriter& device, const PrintJob::Watch& watch) {
        device.setPageLayout(page);
        if (order.ranges.empty())
            order.ranges = {{0, control.heldText().length()}};
        PrintJob job(control, device, order);
        const Outcome outcome = job.run(watch);
        pageCount = job.pageCount();
        return outcome;
    }
    Outcome print() {
        QPdfWriter device(path);
        return print(device, [](const PrintProgress&) { return true; });
    }
    QStringList rows() { return print() == Outcome::Printed ? PdfText::rows(path) : QStringList{u"not printed"_qs}; }
    QStringList headers() const {
        QStringList headers;
        for (const QStringList& rows : PdfText::pages(path))
            headers << rows.value(0).simplified();
        return headers;
    }
    void load(const QByteArray& bytes) {
        QFile file(folder.filePath(u"in.txt"_qs));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        ASSERT_FALSE(control.file().OpenFileAs(file.fileName(), 0));
    }
    /// The rows without what separates them: the text of a long line as it was before it was wrapped.
    static QString joined(const QStringList& rows) { return rows.join(QString()).remove(u' '); }
    /// The colours of a page of paper that are not greys.
    std::set<QRgb> colours() const {
        const QImage image = PdfText::picture(path, 1, 200);
        std::set<QRgb> seen;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                seen.insert(image.pixel(x, y) & 0xFFFFFFU);
        }
        return seen;
    }
    static bool isGrey(QRgb colour) { return qRed(colour) == qGreen(colour) && qGreen(colour) == qBlue(colour); }
};

using PrintJobText = PrintedControl;
using PrintJobLongLines = PrintedControl;
using PrintJobPages = PrintedControl;
using PrintJobLook = PrintedControl;
using PrintJobEnds = PrintedControl;

}  // namespace

TEST_F(PrintJobText, EveryLineAppearsOnceAndInOrder) {
    control.setText(numbered(500));
    QStringList expected;
    for (int i = 1; i <= 500; ++i)
        expected << u"line %1"_qs.arg(i);
    EXPECT_EQ(rows(), expected);
    EXPECT_GT(pageCount, 5);
}

TEST_F(PrintJobText, AnEmptyTextHasOnePageWithAHeader) {
    EXPECT_EQ(print(), Outcome::Printed);
    EXPECT_EQ(headers(), QStringList(u"name.txt Page 1 of 1"_qs));
    EXPECT_EQ(rows(), QStringList());
}

TEST_F(PrintJobText, TheHeaderSaysNamePageAndNumberOfPages) {
    control.setText(numbered(200));
    order.name = u"Ünïcode & more.cpp"_qs;
    ASSERT_EQ(print(), Outcome::Printed);
    const QStringList all = headers();
    ASSERT_EQ(all.size(), pageCount);
    for (int i = 0; i < pageCount; ++i) {
        EXPECT_EQ(all[i], u"Ünïcode & more.cpp Page %1 of %2"_qs.arg(i + 1).arg(pageCount));
    }
}

TEST_F(PrintJobText, ANameThatIsTooLongLosesItsMiddle) {
    order.name = QString(300, u'a') + u".cpp"_qs;
    ASSERT_EQ(print(), Outcome::Printed);
    const QString header = headers().value(0);
    EXPECT_TRUE(header.startsWith(u"aaaa"_qs)) << qPrintable(header);
    EXPECT_TRUE(header.contains(u"…"_qs)) << qPrintable(header);
    EXPECT_TRUE(header.endsWith(u"aaa.cpp Page 1 of 1"_qs)) << qPrintable(header);
}

TEST_F(PrintJobText, LineEndsOfAllKindsEndLines) {
    load("one\r\ntwo\nthree\rfour");
    EXPECT_EQ(rows(), QStringList({u"one"_qs, u"two"_qs, u"three"_qs, u"four"_qs}));
}

TEST_F(PrintJobText, ControlCharactersAreShownByTheirNames) {
    load(
        QByteArray("a\0b\x01"
                   "c\x7F"
                   "d",
                   7));
    EXPECT_EQ(rows(), QStringList(u"aNULbSOHcDELd"_qs));
}

TEST_F(PrintJobText, SeparatorsOfUnicodeDoNotBreakTheRow) {
    control.setText(u"a\u2028b\u2029c\u0085d"_qs);
    EXPECT_EQ(rows(), QStringList(u"a2028b2029c85d"_qs));
}

TEST_F(PrintJobText, AFormFeedBeginsAPage) {
    control.setText(u"one\n\f\ntwo\nthree\ffour\n\f\f\nfive\n\f"_qs);
    ASSERT_EQ(print(), Outcome::Printed);
    QList<QStringList> pages = PdfText::pages(path);
    ASSERT_EQ(pages.size(), 4);
    EXPECT_EQ(pages[0].mid(1), QStringList(u"one"_qs));
    EXPECT_EQ(pages[1].mid(1), QStringList({u"two"_qs, u"three"_qs}));
    EXPECT_EQ(pages[2].mid(1), QStringList(u"four"_qs));
    EXPECT_EQ(pages[3].mid(1), QStringList(u"five"_qs));
}

TEST_F(PrintJobText, TabsLeadToTheNextStop) {
    control.lineNumbers().setLineNumbering(false);
    control.typing().setTabWidth(8);
    control.setText(u"x\ty\n        y\n1234567\ty\n"_qs);
    ASSERT_EQ(print(), Outcome::Printed);
    const QByteArray boxes = PdfText::outputOf(u"pdftotext"_qs, {u"-bbox"_qs, path, u"-"_qs});
    QList<int> places;  // in tenths of a point
    for (const QByteArray& row : boxes.split('\n')) {
        if (row.contains(">y<"))
            places << qRound(10 * row.mid(row.indexOf('"') + 1).split('"').front().toDouble());
    }
    ASSERT_EQ(places.size(), 3);
    EXPECT_EQ(places[0], places[1]);
    EXPECT_EQ(places[0], places[2]);
}

TEST_F(PrintJobText, TextsOfOtherScriptsAreWhole) {
    const QString text = u"Ärger naïve Ελλάδα Привет\nשלום עולם\n中文文本\n😀\n"_qs;
    control.setText(text);
    ASSERT_EQ(print(), Outcome::Printed);
    const QString read = QString::fromUtf8(PdfText::outputOf(u"pdftotext"_qs, {path, u"-"_qs}));
    EXPECT_TRUE(read.contains(u"Ärger naïve Ελλάδα Привет"_qs)) << qPrintable(read);
    EXPECT_TRUE(read.contains(u"שלום"_qs) || read.contains(u"םולש"_qs)) << qPrintable(read);
}

TEST_F(PrintJobText, NumbersStandBesideTheLinesWhenTheMarginShowsThem) {
    control.lineNumbers().setLineNumbering(true);
    control.setText(u"first\n\nthird\n"_qs);
    EXPECT_EQ(rows().replaceInStrings(QRegularExpression(u" +"_qs), u" "_qs),
              QStringList({u"1 first"_qs, u"2"_qs, u"3 third"_qs}));
    control.lineNumbers().setLineNumberStart(100);
    EXPECT_EQ(rows().replaceInStrings(QRegularExpression(u" +"_qs), u" "_qs),
              QStringList({u"100 first"_qs, u"101"_qs, u"102 third"_qs}));
}

TEST_F(PrintJobText, PartsOfTheTextArePrintedWithTheNumbersOfTheirLines) {
    control.lineNumbers().setLineNumbering(true);
    control.setText(u"abcdef\nghijkl\nmnopqr\n"_qs);
    order.ranges = {{2, 4}, {9, 16}, {18, 18}};
    EXPECT_EQ(rows().replaceInStrings(QRegularExpression(u" +"_qs), u" "_qs),
              QStringList({u"1 cd"_qs, u"2 ijkl"_qs, u"3 mn"_qs}));
}

TEST_F(PrintJobLongLines, AreWrappedAndNotCutOff) {
    QString line;
    for (int i = 0; i < 400; ++i)
        line += u"word%1 "_qs.arg(i);
    control.lineNumbers().setLineNumbering(true);
    control.setText(line + u"\nend\n"_qs);
    const QStringList printed = rows();
    EXPECT_EQ(joined(printed), u"1"_qs + line.remove(u' ') + u"2end"_qs);
    EXPECT_GT(printed.size(), 20);
}

TEST_F(PrintJobLongLines, AWordLongerThanTheRowIsBroken) {
    const QString word(1000, u'x');
    control.setText(word);
    const QStringList printed = rows();
    EXPECT_EQ(joined(printed), word);
    EXPECT_EQ(printed.front().size(), printed[printed.size() - 2].size());
}

/// A line held in pieces: no row is shorter because of a joint, and no line is counted twice.
TEST_F(PrintJobLongLines, JointsDoNotShow) {
    QByteArray line;
    for (int i = 0; line.size() < 200000; ++i)
        line += QByteArray::number(i) + ',';
    load("first\n" + line + "\nlast\n");
    ASSERT_FALSE(control.map().joints().empty());
    control.lineNumbers().setLineNumbering(true);
    ASSERT_EQ(print(), Outcome::Printed);
    const QStringList printed = PdfText::rows(path);
    QStringList texts = printed;
    EXPECT_EQ(texts.front().simplified(), u"1 first"_qs);
    EXPECT_EQ(texts.back().simplified(), u"3 last"_qs);
    const QString whole = joined(texts.mid(1, texts.size() - 2));
    ASSERT_TRUE(whole.startsWith(u"20,1,2,3,"_qs));
    EXPECT_EQ(whole.mid(1), QString::fromLatin1(line));
    std::set<qsizetype> lengths;
    for (const QString& row : printed.mid(2, printed.size() - 4))
        lengths.insert(row.size());
    EXPECT_EQ(lengths.size(), 1U) << "all rows are full";
}

TEST_F(PrintJobLongLines, ALineOfAMegabyteWithoutBlanksIsWhole) {
    QByteArray line;
    for (int i = 0; line.size() < 1000000; ++i)
        line += "abcdefghijklmnopqrstuvwxyz"[i % 26];
    load(line);
    ASSERT_EQ(print(), Outcome::Printed);
    EXPECT_EQ(joined(PdfText::rows(path)), QString::fromLatin1(line));
}

TEST_F(PrintJobLongLines, ALongLineOfWideCharactersIsWhole) {
    QString line;
    for (int i = 0; i < 20000; ++i)
        line += QChar(0x0410 + i % 32);
    control.setText(line);
    ASSERT_EQ(print(), Outcome::Printed);
    EXPECT_EQ(joined(PdfText::rows(path)), line);
}

TEST_F(PrintJobPages, OnlyThoseOfTheRangesArePrinted) {
    control.setText(numbered(500));
    order.pages.ranges = QPageRanges::fromString(u"2-3,5"_qs);
    ASSERT_EQ(print(), Outcome::Printed);
    EXPECT_EQ(headers(),
              QStringList({u"name.txt Page 2 of %1"_qs.arg(pageCount), u"name.txt Page 3 of %1"_qs.arg(pageCount),
                           u"name.txt Page 5 of %1"_qs.arg(pageCount)}));
}

TEST_F(PrintJobPages, APageIsTheSameWhetherThoseBeforeItArePrintedOrNot) {
    control.setText(numbered(300) + QString(20000, u'w') + u'\n' + numbered(300));
    ASSERT_EQ(print(), Outcome::Printed);
    const QList<QStringList> all = PdfText::pages(path);
    order.pages.ranges = QPageRanges::fromString(u"6-8"_qs);
    ASSERT_EQ(print(), Outcome::Printed);
    EXPECT_EQ(PdfText::pages(path), all.mid(5, 3));
}

TEST_F(PrintJobPages, CopiesAndTheOrderAreThoseChosen) {
    control.setText(numbered(150));
    order.pages.copies = 2;
    order.pages.lastFirst = true;
    ASSERT_EQ(print(), Outcome::Printed);
    QStringList numbers;
    for (const QString& header : headers())
        numbers << header.section(u' ', 2, 2);
    ASSERT_EQ(pageCount, 3);
    EXPECT_EQ(numbers.join(QString()), u"321321"_qs);
}

TEST_F(PrintJobPages, ATextWithoutTheWantedPageIsNotPrinted) {
    control.setText(u"short"_qs);
    order.pages.ranges = QPageRanges::fromString(u"7-9"_qs);
    EXPECT_EQ(print(), Outcome::NoSuchPage);
    EXPECT_EQ(pageCount, 1);
}

TEST_F(PrintJobPages, ALandscapePageHoldsFewerAndLongerRows) {
    control.setText(numbered(100));
    ASSERT_EQ(print(), Outcome::Printed);
    const qsizetype upright = PdfText::pages(path).front().size();
    page.setOrientation(QPageLayout::Landscape);
    ASSERT_EQ(print(), Outcome::Printed);
    EXPECT_LT(PdfText::pages(path).front().size(), upright);
    const QImage image = PdfText::picture(path, 1, 20);
    EXPECT_GT(image.width(), image.height());
}

TEST_F(PrintJobPages, MarginsStayWhite) {
    page.setMargins(QMarginsF(50, 60, 40, 30));
    control.setText(QString(8000, u'M'));
    ASSERT_EQ(print(), Outcome::Printed);
    const QImage image = PdfText::picture(path, 1, 50);
    const qreal perMillimetre = 50 / 25.4;
    const QRect inner =
        QRectF(49 * perMillimetre, 59 * perMillimetre, 122 * perMillimetre, 209 * perMillimetre).toRect();
    int inked = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool isWhite = qGray(image.pixel(x, y)) > 250;
            inked += isWhite ? 0 : 1;
            ASSERT_TRUE(isWhite || inner.contains(x, y)) << x << ' ' << y;
        }
    }
    EXPECT_GT(inked, 1000);
}

/// A page on which not even one row has room: each row has a page.
TEST_F(PrintJobPages, APageThatIsTooSmallStillTakesARow) {
    page.setMargins(QMarginsF(100, 143, 100, 143));
    control.setText(u"a\nb\n"_qs);
    EXPECT_EQ(print(), Outcome::Printed);
    EXPECT_EQ(pageCount, 2);
}

/// A page that has room for no more than a letter of such a name.
TEST_F(PrintJobPages, NamesOfControlCharactersStopNoPage) {
    page.setMargins(QMarginsF(104, 143, 104, 143));
    load(QByteArray(5, '\0'));
    EXPECT_EQ(print(), Outcome::Printed);
    EXPECT_LE(pageCount, 5);
}

TEST_F(PrintJobLook, ColoursAreThoseOfTheLanguageOnALightGroundEvenOnADarkScreen) {
    control.look().setLanguage(&cpp());
    control.look().setElementColour(ControlLook::BackgroundElement, QColor(20, 20, 20));
    control.setText(u"int main() { return 0; } // done\n"_qs);
    ASSERT_EQ(print(), Outcome::Printed);
    const std::set<QRgb> seen = colours();
    const TokenLooks looks;
    const QColor paper(255, 255, 255);
    EXPECT_TRUE(seen.contains(looks.on(paper, TokenClass::Keyword).colour.rgb() & 0xFFFFFFU));
    EXPECT_TRUE(seen.contains(looks.on(paper, TokenClass::Text).colour.rgb() & 0xFFFFFFU));
    EXPECT_TRUE(seen.contains(0xFFFFFFU));
    EXPECT_FALSE(seen.contains(QColor(20, 20, 20).rgb() & 0xFFFFFFU)) << "no ground is printed";
}

TEST_F(PrintJobLook, APrinterWithoutColoursGetsGreys) {
    control.look().setLanguage(&cpp());
    control.setText(u"int main() { return 0; } // done\n"_qs);
    ASSERT_EQ(print(), Outcome::Printed);
    bool hasColour = false;
    for (const QRgb colour : colours())
        hasColour = hasColour || !isGrey(colour);
    EXPECT_TRUE(hasColour);
    order.ink = PaperLook::Ink::Greys;
    ASSERT_EQ(print(), Outcome::Printed);
    for (const QRgb colour : colours()) {
        EXPECT_TRUE(isGrey(colour)) << std::hex << colour;
    }
}

TEST_F(PrintJobLook, SelectionBookmarksAndRowHighlightAreNotPrinted) {
    control.setText(u"alpha\nbeta\n"_qs);
    ASSERT_EQ(print(), Outcome::Printed);
    const QImage plain = PdfText::picture(path, 1, 60);
    control.setSelection(0, 8);
    control.bookmarks().setBookmarkAt(0, true);
    control.look().setLineHighlight(0, Qt::yellow);
    control.look().setDisplayWhitespace(true);
    ASSERT_EQ(print(), Outcome::Printed);
    EXPECT_EQ(PdfText::picture(path, 1, 60), plain);
}

TEST_F(PrintJobEnds, WhenItsWatchSaysSo) {
    control.setText(numbered(500));
    QPdfWriter device(path);
    int calls = 0;
    EXPECT_EQ(print(device, [&calls](const PrintProgress&) { return ++calls < 12; }), Outcome::Cancelled);
    EXPECT_EQ(calls, 12);
}

TEST_F(PrintJobEnds, ItsProgressGoesFromNothingToTheLastPage) {
    control.setText(numbered(500));
    QPdfWriter device(path);
    std::vector<PrintProgress> seen;
    EXPECT_EQ(print(device,
                    [&seen](const PrintProgress& progress) {
                        seen.push_back(progress);
                        return true;
                    }),
              Outcome::Printed);
    ASSERT_EQ(seen.size(), 2U * static_cast<std::size_t>(pageCount)) << "once for each page counted and painted";
    EXPECT_EQ(seen.front().page, 0);
    EXPECT_EQ(seen.back().page, pageCount);
    EXPECT_EQ(seen.back().pages, pageCount);
    for (std::size_t i = 1; i < seen.size(); ++i) {
        EXPECT_GE(seen[i].percent, seen[i - 1].percent);
    }
    EXPECT_LT(seen.back().percent, 100);
    EXPECT_GT(seen.back().percent, 80);
}

TEST_F(PrintJobEnds, WhenTheTextChanges) {
    control.setText(numbered(500));
    QPdfWriter device(path);
    int calls = 0;
    EXPECT_EQ(print(device,
                    [&](const PrintProgress&) {
                        if (++calls == 12)
                            control.setText(u"other"_qs);
                        return true;
                    }),
              Outcome::TextChanged);
    EXPECT_EQ(calls, 12);
}

TEST_F(PrintJobEnds, WhenTheControlIsDestroyed) {
    auto* other = makeEditor();
    other->setText(numbered(500));
    QPdfWriter device(path);
    PrintJob job(*other, device, {u"n"_qs, {{0, other->heldText().length()}}, {}, PaperLook::Ink::Colours});
    EXPECT_EQ(job.run([other, calls = 0](const PrintProgress&) mutable {
        if (++calls == 3)
            delete other;
        return true;
    }),
              Outcome::TextChanged);
}

TEST_F(PrintJobEnds, WhenTheDeviceTakesNoFurtherPage) {
    control.setText(numbered(500));
    FullDevice device(path, 3);
    EXPECT_EQ(print(device, [](const PrintProgress&) { return true; }), Outcome::DeviceRefused);
}

TEST_F(PrintJobEnds, WhenTheDeviceCannotBegin) {
    control.setText(u"text"_qs);
    QPdfWriter device(folder.filePath(u"missing/out.pdf"_qs));
    EXPECT_EQ(print(device, [](const PrintProgress&) { return true; }), Outcome::DeviceRefused);
}
