#include "document/DocumentFixture.h"
#include "document/frmCountAll.h"
#include "editor/control/TextControl.h"
#include "text/lines/LineOperations.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <Qsci/qsciscintillabase.h>

namespace {

/// A document with a text, of which a part is selected.
struct DocumentCommands : DocumentFixture {
    void put(const QString& text, qint64 anchor, qint64 caret) {
        view().setText(text);
        select(anchor, caret);
        ask(QsciScintillaBase::SCI_EMPTYUNDOBUFFER);
    }
    void putSelected(const QString& text) { put(text, 0, text.size()); }
    /// Selects the rectangle between two places of the text.
    void putRectangle(const QString& text, qint64 anchor, qint64 caret) {
        put(text, 0, 0);
        ask(QsciScintillaBase::SCI_SETRECTANGULARSELECTIONANCHOR, anchor);
        ask(QsciScintillaBase::SCI_SETRECTANGULARSELECTIONCARET, caret);
        ASSERT_NE(ask(QsciScintillaBase::SCI_SELECTIONISRECTANGLE), 0);
    }
    /// Selects one range more; the first time, the first one.
    void addRange(qint64 caret, qint64 anchor) {
        const bool first = ask(QsciScintillaBase::SCI_GETSELECTIONEMPTY) != 0;
        ask(first ? QsciScintillaBase::SCI_SETSELECTION : QsciScintillaBase::SCI_ADDSELECTION, caret, anchor);
    }
    QStringList selectionCounts() {
        QStringList shown;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<frmCountAll*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            for (const char* name : {"lbSelW", "lbSelL", "lbSelC", "lbSelCN"})
                shown << box->findChild<QLabel*>(QString::fromLatin1(name))->text();
            box->close();
        });
        m_document.CountAll();
        return shown;
    }
    QString textAfter(void (frmDocument::*operation)()) {
        (m_document.*operation)();
        return view().Text();
    }
    void setHexMode(bool hex) { view().setVisible(!hex); }
};

using Operation = void (frmDocument::*)();

constexpr Operation OfLines[] = {&frmDocument::TrimTailed, &frmDocument::AlignLeft, &frmDocument::AlignRight,
                                 &frmDocument::AlignCenter};

constexpr Operation Edits[] = {
    &frmDocument::TrimTailed,        &frmDocument::AlignLeft,         &frmDocument::AlignRight,
    &frmDocument::AlignCenter,       &frmDocument::SortLineAscending, &frmDocument::SortLineDescending,
    &frmDocument::LineCut,           &frmDocument::LineDelete,        &frmDocument::LineDeleteToEnd,
    &frmDocument::LineDeleteToStart, &frmDocument::SpacesToTabs,      &frmDocument::TabsToSpaces,
    &frmDocument::ToUppercase,       &frmDocument::ToLowercase,       &frmDocument::ToCapitalize,
    &frmDocument::ToUppercaseSel,    &frmDocument::ToLowercaseSel,    &frmDocument::Indent,
    &frmDocument::Unindent};

}  // namespace

TEST_F(DocumentCommands, ChangeTheSelectedLines) {
    struct Row {
        Operation operation;
        const char* expected;
    };
    constexpr Row Rows[] = {{&frmDocument::TrimTailed, " b\na\n"},
                            {&frmDocument::AlignLeft, "b \na\n"},
                            {&frmDocument::AlignRight, "  b\n  a\n   "},
                            {&frmDocument::AlignCenter, " b \n a \n    "},
                            {&frmDocument::SortLineAscending, " b \na\n"},
                            {&frmDocument::SortLineDescending, "a\n b \n"},
                            {&frmDocument::SpacesToTabs, "\tb\t\na\n"},
                            {&frmDocument::ToUppercaseSel, " B \nA\n"},
                            {&frmDocument::Indent, "\t b \n\ta\n"},
                            {&frmDocument::Unindent, "b \na\n"},
                            {&frmDocument::LineCut, ""},
                            {&frmDocument::LineDelete, ""}};
    for (const Row& row : Rows) {
        putSelected(u" b \na\n"_qs);
        EXPECT_EQ(textAfter(row.operation), QString::fromLatin1(row.expected));
        m_document.Undo();
        EXPECT_EQ(view().Text(), u" b \na\n"_qs) << row.expected;
        EXPECT_FALSE(canUndo()) << row.expected;
    }
}

TEST_F(DocumentCommands, UseUpTheRepeatCount) {
    QList<Operation> operations(std::begin(Edits), std::end(Edits));
    operations << &frmDocument::Undo << &frmDocument::Redo << &frmDocument::Cut << &frmDocument::Copy
               << &frmDocument::Paste << &frmDocument::SelectAll << &frmDocument::SelectLine << &frmDocument::SelectWord
               << &frmDocument::SelectPara << &frmDocument::ToggleBookmark << &frmDocument::NextBookmark
               << &frmDocument::IncreaseFontSize << &frmDocument::DecreaseFontSize << &frmDocument::DefaultFontSize;
    for (const bool locked : {false, true}) {
        for (const Operation operation : operations) {
            for (const qint64 caret : {0, 5}) {
                m_document.setLocked(false);
                put(u" b \na\n"_qs, 0, caret);
                m_document.setLocked(locked);
                control().setRepeatCount(3);
                (m_document.*operation)();
                EXPECT_EQ(view().repeatCount(), 1) << operations.indexOf(operation) << " at " << caret;
            }
        }
    }
}

TEST_F(DocumentCommands, AreRepeatedAsOneStep) {
    struct Row {
        Operation operation;
        const char* text;
        const char* expected;
    };
    constexpr Row Rows[] = {{&frmDocument::LineDelete, "a\nb\nc\nd", "d"},
                            {&frmDocument::Unindent, "\t\t\t\ta", "\ta"},
                            {&frmDocument::Indent, "a", "\t\t\ta"},
                            {&frmDocument::TrimTailed, "a  \nb ", "a\nb"},
                            {&frmDocument::SpacesToTabs, "a  b", "a\t\tb"}};
    for (const Row& row : Rows) {
        const QString text = QString::fromLatin1(row.text);
        const bool lineOnly = row.operation == &frmDocument::LineDelete;
        put(text, 0, lineOnly ? 0 : text.size());
        control().setRepeatCount(3);
        EXPECT_EQ(textAfter(row.operation), QString::fromLatin1(row.expected));
        m_document.Undo();
        EXPECT_EQ(view().Text(), text) << row.expected;
        EXPECT_FALSE(canUndo()) << row.expected;
    }
}

TEST_F(DocumentCommands, AlignEachTimeWhatTheTimeBeforeHasMade) {
    const QString text = u"abcdefgh\nabcde\nabcdef\nabcdefg\nabcd"_qs;
    QString expected = text;
    for (int time = 0; time < 3; ++time)
        expected = LineOperations::AlignCenter(expected);
    ASSERT_NE(expected, LineOperations::AlignCenter(text));
    putSelected(text);
    control().setRepeatCount(3);
    EXPECT_EQ(textAfter(&frmDocument::AlignCenter), expected);
}

TEST_F(DocumentCommands, ChangeWhatIsAtTheCaret) {
    struct Row {
        Operation operation;
        const char* expected;
    };
    constexpr Row Rows[] = {
        {&frmDocument::ToUppercase, "one TWO\nx"},    {&frmDocument::ToLowercase, "one two\nx"},
        {&frmDocument::ToCapitalize, "one Two\nx"},   {&frmDocument::LineDeleteToStart, "O\nx"},
        {&frmDocument::LineDeleteToEnd, "one tw\nx"}, {&frmDocument::LineDelete, "x"},
        {&frmDocument::Indent, "\tone twO\nx"},
    };
    for (const Row& row : Rows) {
        put(u"one twO\nx"_qs, 6, 6);
        EXPECT_EQ(textAfter(row.operation), QString::fromLatin1(row.expected));
    }
}

TEST_F(DocumentCommands, SelectWhatIsAtTheCaret) {
    struct Row {
        Operation operation;
        const char* expected;
    };
    constexpr Row Rows[] = {{&frmDocument::SelectWord, "two"},
                            {&frmDocument::SelectLine, "one two\n"},
                            {&frmDocument::SelectPara, "zero\none two\n"},
                            {&frmDocument::SelectAll, "zero\none two\n\nthree"}};
    for (const Row& row : Rows) {
        put(u"zero\none two\n\nthree"_qs, 11, 11);
        (m_document.*row.operation)();
        EXPECT_EQ(view().SelText(), QString::fromLatin1(row.expected));
    }
}

TEST_F(DocumentCommands, OnLinesWithoutASelectionDoNothing) {
    QSignalSpy changes(&m_document, &frmDocument::DocChange);
    for (const Operation operation : OfLines) {
        put(u"  a  "_qs, 2, 2);
        changes.clear();
        EXPECT_EQ(textAfter(operation), u"  a  "_qs);
        EXPECT_EQ(changes.count(), 0);
    }
}

TEST_F(DocumentCommands, ABackwardSelectionWorksAndEndsForward) {
    put(u"x\n  a \n b"_qs, 9, 2);
    m_document.TrimTailed();
    EXPECT_EQ(view().Text(), u"x\n  a\n b"_qs);
    EXPECT_EQ(view().SelText(), u"  a\n b"_qs);
    qint64 first = -1;
    qint64 last = -1;
    view().GetSelStartEnd(first, last);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(last, 2);
}

TEST_F(DocumentCommands, ASelectionThatEndsInALineEndKeepsIt) {
    put(u"a \nb"_qs, 0, 3);
    m_document.TrimTailed();
    EXPECT_EQ(view().Text(), u"a\nb"_qs);
    EXPECT_EQ(view().SelText(), u"a\n"_qs);
}

TEST_F(DocumentCommands, AreOneChangeForTheDocument) {
    putSelected(u"a \nb "_qs);
    QSignalSpy changes(&m_document, &frmDocument::DocChange);
    m_document.TrimTailed();
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(m_document.isChange);
}

TEST_F(DocumentCommands, LeaveTheRowHighlightWithTheCaret) {
    putSelected(u"a \nb \nc"_qs);
    m_document.TrimTailed();
    EXPECT_EQ(view().LastHighlightLine(), 2);
    EXPECT_NE(ask(QsciScintillaBase::SCI_GETCARETLINEVISIBLE), 0);
    put(u"a\nb\nc"_qs, 5, 2);
    m_document.LineDelete();
    EXPECT_EQ(view().Text(), u"a\n"_qs);
    EXPECT_EQ(view().LastHighlightLine(), 1);
    EXPECT_NE(ask(QsciScintillaBase::SCI_GETCARETLINEVISIBLE), 0);
}

TEST_F(DocumentCommands, ThatWouldFillTheMemoryLeaveTheTextQuietly) {
    const QString text = QString(2'000'000, u'x') + QString(1'000, u'\n');
    putSelected(text);
    m_document.AlignRight();
    m_document.AlignCenter();
    EXPECT_TRUE(view().Text() == text);
    EXPECT_FALSE(canUndo());
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(DocumentCommands, ThatEditKeepStillInALockedDocument) {
    const QString text = u"  b \t\n a b "_qs;
    put(text, 10, 1);
    m_document.setLocked(true);
    for (const Operation operation : Edits) {
        EXPECT_EQ(textAfter(operation), text);
        EXPECT_EQ(view().SelText(), text.sliced(1, 9));
    }
    EXPECT_FALSE(canUndo());
}

TEST_F(DocumentCommands, TakeAnEmptyDocument) {
    for (const Operation operation : Edits) {
        put(QString(), 0, 0);
        EXPECT_EQ(textAfter(operation), operation == &frmDocument::Indent ? u"\t"_qs : QString());
    }
}

TEST_F(DocumentCommands, ChangeOnlyWhatIsInARectangle) {
    struct Row {
        Operation operation;
        const char* expected;
    };
    // The second to the fifth column of three lines, of which the second line is too short.
    constexpr Row Rows[] = {{&frmDocument::TrimTailed, "  a \n \n  b\n"},
                            {&frmDocument::AlignLeft, " a   \n \n b  \n"},
                            {&frmDocument::AlignRight, "    a \n \n    b\n"},
                            {&frmDocument::AlignCenter, "   a   \n \n   b  \n"},
                            {&frmDocument::SpacesToTabs, " \ta\t\t \n \n \tb\t\t\n"},
                            {&frmDocument::ToUppercaseSel, "  A   \n \n  B  \n"}};
    const QString text = u"  a   \n \n  b  \n"_qs;
    for (const Row& row : Rows) {
        putRectangle(text, 1, 14);
        EXPECT_EQ(textAfter(row.operation), QString::fromLatin1(row.expected));
        EXPECT_NE(ask(QsciScintillaBase::SCI_SELECTIONISRECTANGLE), 0);
        m_document.Undo();
        EXPECT_EQ(view().Text(), text);
        EXPECT_FALSE(canUndo());
    }
}

TEST_F(DocumentCommands, LeaveARectangleSelected) {
    putRectangle(u"xa yy\nx\nxb yy"_qs, 1, 11);
    m_document.SpacesToTabs();
    EXPECT_EQ(view().Text(), u"xa\tyy\nx\nxb\tyy"_qs);
    m_document.TabsToSpaces();
    EXPECT_EQ(view().Text(), u"xa yy\nx\nxb yy"_qs);
    m_document.ToUppercaseSel();
    EXPECT_EQ(view().Text(), u"xA yy\nx\nxB yy"_qs);
}

TEST_F(DocumentCommands, ChangeEachOfSeveralRangesAndLeaveThemSelected) {
    const QString text = u"a b c d e f\n g \n  h"_qs;
    put(text, 0, 0);
    addRange(4, 0);
    addRange(6, 9);
    addRange(11, 15);
    m_document.SpacesToTabs();
    EXPECT_EQ(view().Text(), u"a\tb\tc d\te f\n\tg\t\n  h"_qs);
    m_document.TabsToSpaces();
    EXPECT_EQ(view().Text(), text) << "all are selected still";
    m_document.TrimTailed();
    EXPECT_EQ(view().Text(), u"a bc d e f\n g\n  h"_qs);
    m_document.Undo();
    m_document.Undo();
    m_document.Undo();
    EXPECT_EQ(view().Text(), text);
    EXPECT_FALSE(canUndo());
}

TEST_F(DocumentCommands, OnLinesNeedARangeWithTextButNotTheMainOne) {
    put(u" a\n b"_qs, 0, 2);
    ask(QsciScintillaBase::SCI_ADDSELECTION, 4, 4);
    ASSERT_EQ(view().SelLength(), 0);
    m_document.AlignLeft();
    EXPECT_EQ(view().Text(), u"a\n b"_qs);
}

TEST_F(DocumentCommands, OnARectangleKeepTheBookmarksOfItsLines) {
    putRectangle(u"a b\nc d\ne f"_qs, 0, 11);
    view().EnableBookmarkAt(2, true);
    m_document.SpacesToTabs();
    EXPECT_TRUE(isBookmarked(1));
    m_document.Undo();
    EXPECT_TRUE(isBookmarked(1));
    EXPECT_FALSE(isBookmarked(0));
    EXPECT_FALSE(isBookmarked(2));
}

TEST_F(DocumentCommands, OnLinesReachALineHeldInPieces) {
    const QString line = QString(100'000, u'y');
    putSelected(line + u"  \n z"_qs);
    ASSERT_TRUE(isInPieces());
    m_document.TrimTailed();
    EXPECT_TRUE(view().Text() == line + u"\n z"_qs);
    m_document.AlignLeft();
    EXPECT_TRUE(view().Text() == line + u"\nz"_qs);
    m_document.AlignRight();
    EXPECT_TRUE(view().Text() == line + u'\n' + QString(99'999, u' ') + u'z');
    EXPECT_EQ(view().SelLength(), 200'001);
}

TEST_F(DocumentCommands, OfTextAloneDoNothingInHexMode) {
    constexpr Operation TextAlone[] = {
        &frmDocument::TrimTailed,        &frmDocument::AlignLeft,         &frmDocument::AlignRight,
        &frmDocument::AlignCenter,       &frmDocument::SortLineAscending, &frmDocument::SortLineDescending,
        &frmDocument::LineCut,           &frmDocument::LineDelete,        &frmDocument::LineDeleteToEnd,
        &frmDocument::LineDeleteToStart, &frmDocument::IncreaseFontSize,  &frmDocument::DecreaseFontSize,
        &frmDocument::DefaultFontSize,   &frmDocument::CountAll};
    putSelected(u"b \n a"_qs);
    const int size = view().FontSize();
    setHexMode(true);
    for (const Operation operation : TextAlone) {
        EXPECT_EQ(textAfter(operation), u"b \n a"_qs);
    }
    EXPECT_EQ(view().FontSize(), size);
}

TEST_F(DocumentCommands, ForBothModesReachTheHiddenText) {
    struct Row {
        Operation operation;
        const char* expected;
    };
    constexpr Row Rows[] = {{&frmDocument::SpacesToTabs, "b\ta"},  {&frmDocument::ToUppercaseSel, "B A"},
                            {&frmDocument::ToLowercaseSel, "b a"}, {&frmDocument::ToUppercase, "b A"},
                            {&frmDocument::ToCapitalize, "b A"},   {&frmDocument::Indent, "\tb a"}};
    setHexMode(true);
    for (const Row& row : Rows) {
        putSelected(u"b a"_qs);
        EXPECT_EQ(textAfter(row.operation), QString::fromLatin1(row.expected));
    }
    put(u"b a"_qs, 3, 3);
    m_document.SelectWord();
    EXPECT_EQ(view().SelText(), u"a"_qs);
    m_document.SelectAll();
    EXPECT_EQ(view().SelText(), u"b a"_qs);
}

TEST_F(DocumentCommands, OfTheHexViewDoNothingToText) {
    put(u"b a"_qs, 1, 2);
    for (const Operation operation : {&frmDocument::SelectBlock, &frmDocument::GotoPage, &frmDocument::GotoOffset}) {
        EXPECT_EQ(textAfter(operation), u"b a"_qs);
        EXPECT_EQ(view().SelText(), u" "_qs);
    }
}

TEST_F(DocumentCommands, SpacesAndTabsAreReplacedOneByOne) {
    put(u"x  y\tz  "_qs, 1, 6);
    m_document.SpacesToTabs();
    EXPECT_EQ(view().Text(), u"x\t\ty\tz  "_qs);
    EXPECT_EQ(view().SelText(), u"\t\ty\tz"_qs);
    m_document.TabsToSpaces();
    EXPECT_EQ(view().Text(), u"x  y z  "_qs);
    m_document.Undo();
    m_document.Undo();
    EXPECT_EQ(view().Text(), u"x  y\tz  "_qs);
}

TEST_F(DocumentCommands, TogglesReachTheTextView) {
    m_document.setRowHighlight(false);
    EXPECT_FALSE(view().gMyHighlight);
    EXPECT_EQ(ask(QsciScintillaBase::SCI_GETCARETLINEVISIBLE), 0);
    m_document.setProperty("RowHighlight", true);
    EXPECT_TRUE(m_document.RowHighlight());
    EXPECT_NE(ask(QsciScintillaBase::SCI_GETCARETLINEVISIBLE), 0);
    for (const char* name : {"LineNumbering", "DisplayLeftMargin", "DisplayWhitespace", "BraceMatching"}) {
        const bool before = m_document.property(name).toBool();
        m_document.setProperty(name, !before);
        EXPECT_EQ(m_document.property(name).toBool(), !before) << name;
    }
}

TEST_F(DocumentCommands, StatisticsShowTheWholeTextAndTheSelection) {
    put(u"one two\n\tthree\n"_qs, 0, 3);
    QStringList shown;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<frmCountAll*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        for (const char* name : {"lbW", "lbL", "lbC", "lbCN", "lbSelW", "lbSelL", "lbSelC", "lbSelCN"})
            shown << box->findChild<QLabel*>(QString::fromLatin1(name))->text();
        box->findChild<QPushButton*>(u"cmdClose"_qs)->click();
    });
    m_document.CountAll();
    EXPECT_EQ(shown, QStringList({u"3"_qs, u"3"_qs, u"15"_qs, u"11"_qs, u"1"_qs, u"1"_qs, u"3"_qs, u"3"_qs}));
}

TEST_F(DocumentCommands, StatisticsWithoutASelectionShowZeros) {
    put(u"one"_qs, 2, 2);
    QStringList shown;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<frmCountAll*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        for (const char* name : {"lbSelW", "lbSelL", "lbSelC", "lbSelCN"})
            shown << box->findChild<QLabel*>(QString::fromLatin1(name))->text();
        box->close();
    });
    m_document.CountAll();
    EXPECT_EQ(shown, QStringList(4, u"0"_qs));
}

TEST_F(DocumentCommands, StatisticsOfARectangleCountWhatIsInIt) {
    putRectangle(u"one two\nx\nthree four"_qs, 1, 16);
    EXPECT_EQ(selectionCounts(), QStringList({u"3"_qs, u"3"_qs, u"10"_qs, u"8"_qs}));
    putRectangle(u"one\ntwo"_qs, 1, 5);
    EXPECT_EQ(selectionCounts(), QStringList(4, u"0"_qs)) << "it has no width";
}

TEST_F(DocumentCommands, StatisticsOfSeveralRangesCountEachOfThem) {
    put(u"one two\nthree\nfour\nfive six"_qs, 0, 0);
    addRange(3, 0);
    addRange(7, 6);
    addRange(13, 8);
    addRange(19, 24);
    ask(QsciScintillaBase::SCI_ADDSELECTION, 27, 27);
    EXPECT_EQ(selectionCounts(), QStringList({u"4"_qs, u"3"_qs, u"14"_qs, u"13"_qs}));
}

TEST_F(DocumentCommands, StatisticsOutliveTheirDocument) {
    auto* document = new frmDocument(&m_host, m_services);
    QTimer::singleShot(0, [&] { delete document; });
    document->CountAll();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}
