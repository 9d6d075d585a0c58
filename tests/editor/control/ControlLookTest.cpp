#include "editor/Editor.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlBraces.h"
#include "editor/control/ControlClipboard.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlMouse.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/RichText.h"
#include "editor/control/TextControl.h"
#include "editor/held/Margins.h"
#include "editor/held/ScintillaColour.h"
#include "editor/language/BraceScan.h"
#include "widgets/Contrast.h"
#include "widgets/StoredColour.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

#include <memory>

namespace {

struct Control : testing::Test {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;

    Control() {
        control.resize(600, 400);
        control.show();
    }
    void put(const QString& text, qint64 at) {
        control.setText(text);
        control.setSelection(at, at);
        control.SendScintilla(TextControl::SCI_EMPTYUNDOBUFFER);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&control, key, modifiers); }
    long ask(unsigned message, unsigned long first = 0) const { return control.SendScintilla(message, first, 0L); }
    QString marginText(unsigned long line) const {
        QByteArray text(ask(TextControl::SCI_MARGINGETTEXT, line), '\0');
        control.SendScintilla(TextControl::SCI_MARGINGETTEXT, line, text.data());
        return QString::fromLatin1(text);
    }
    void paint() { control.grab(); }
};

using TextControlOptions = Control;
using TextControlAutoIndent = Control;
using TextControlBraces = Control;
using TextControlCarets = Control;
using TextControlDragging = Control;
using TextControlRichText = Control;

/// Colour of a pixel of the control in the middle of a margin.
QColor marginColour(TextControl& control, int x) {
    return control.grab().toImage().pixelColor(x, control.height() - 8);
}

}  // namespace

TEST_F(TextControlOptions, BeginAsStated) {
    EXPECT_TRUE(control.look().DisplayLeftMargin());
    EXPECT_FALSE(control.look().DisplayWhitespace());
    EXPECT_TRUE(control.look().VScrollVisible());
    EXPECT_TRUE(control.look().HScrollVisible());
    EXPECT_TRUE(control.mouse().DragDrop());
    EXPECT_TRUE(control.braces().BraceMatching());
    EXPECT_TRUE(control.typing().AutoIndent());
    EXPECT_FALSE(control.look().WordWrap());
    EXPECT_EQ(control.typing().TabWidth(), 4);
    EXPECT_FALSE(control.typing().BlanksForTabs());
    EXPECT_EQ(control.lineNumbers().LineNumberStart(), 1);
}

TEST_F(TextControlOptions, AreWhatTheyWereSetTo) {
    control.look().setDisplayWhitespace(true);
    control.look().setVScrollVisible(false);
    control.look().setHScrollVisible(false);
    control.look().setWordWrap(true);
    EXPECT_TRUE(control.look().DisplayWhitespace());
    EXPECT_FALSE(control.look().VScrollVisible());
    EXPECT_FALSE(control.look().HScrollVisible());
    EXPECT_TRUE(control.look().WordWrap());
    control.typing().setTabWidth(0);
    EXPECT_EQ(control.typing().TabWidth(), 1);
    control.typing().setTabWidth(1000);
    EXPECT_EQ(control.typing().TabWidth(), 64);
}

TEST_F(TextControlOptions, OutlastALoad) {
    QTemporaryDir folder;
    QFile file(folder.filePath(u"a"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a\n");
    file.close();
    control.typing().setTabWidth(3);
    control.typing().setBlanksForTabs(true);
    control.look().setDisplayWhitespace(true);
    ASSERT_FALSE(control.file().OpenFile(file.fileName()));
    EXPECT_EQ(ask(TextControl::SCI_GETTABWIDTH), 3);
    EXPECT_EQ(ask(TextControl::SCI_GETUSETABS), 0);
    EXPECT_TRUE(control.look().DisplayWhitespace());
}

TEST_F(TextControlOptions, TheLeftMarginCanBeHidden) {
    control.look().setDisplayLeftMargin(false);
    EXPECT_EQ(ask(TextControl::SCI_GETMARGINWIDTHN, Margins::Bookmarks), 0);
    control.look().setDisplayLeftMargin(true);
    EXPECT_EQ(ask(TextControl::SCI_GETMARGINWIDTHN, Margins::Bookmarks), Margins::BookmarksWidth);
}

TEST_F(TextControlOptions, LinesAreNumberedFromWhereTheyStart) {
    put(u"a\nb\nc"_qs, 0);
    control.lineNumbers().setLineNumbering(true);
    control.lineNumbers().setLineNumberStart(998);
    paint();
    EXPECT_EQ(marginText(0), u"998"_qs);
    EXPECT_EQ(marginText(2), u"1000"_qs);
    const long wide = ask(TextControl::SCI_GETMARGINWIDTHN, Margins::Numbers);
    control.lineNumbers().setLineNumberStart(1);
    paint();
    EXPECT_LT(ask(TextControl::SCI_GETMARGINWIDTHN, Margins::Numbers), wide);
    EXPECT_EQ(ask(TextControl::SCI_GETMARGINTYPEN, Margins::Numbers), TextControl::SC_MARGIN_NUMBER);
}

TEST_F(TextControlOptions, ElementsTakeAColourOfTheirOwn) {
    EXPECT_FALSE(control.look().elementColour(ControlLook::BackgroundElement).isValid());
    control.look().setElementColour(ControlLook::BackgroundElement, QColor(10, 200, 30));
    control.look().setElementColour(ControlLook::LeftMarginElement, QColor(50, 50, 200));
    EXPECT_EQ(marginColour(control, 300), QColor(10, 200, 30));
    EXPECT_EQ(marginColour(control, 10), QColor(50, 50, 200));
    control.look().setElementColour(ControlLook::BackgroundElement, {});
    EXPECT_EQ(marginColour(control, 300), control.palette().color(QPalette::Base));
}

TEST_F(TextControlOptions, NumbersFollowTheZoom) {
    control.lineNumbers().setLineNumbering(true);
    const long before = ask(TextControl::SCI_GETMARGINWIDTHN, Margins::Numbers);
    for (int step = 0; step < 5; ++step)
        key(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(ask(TextControl::SCI_GETMARGINWIDTHN, Margins::Numbers), before);
    key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(ask(TextControl::SCI_GETMARGINWIDTHN, Margins::Numbers), before);
}

TEST_F(TextControlOptions, PlusZoomsWhereverTheKeyboardHasIt) {
    key(Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(ask(TextControl::SCI_GETZOOM), 1);
    key(Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_EQ(ask(TextControl::SCI_GETZOOM), 2);
    control.look().resetZoom();
    EXPECT_EQ(ask(TextControl::SCI_GETZOOM), 0);
}

TEST_F(TextControlOptions, TextCanBeReadOnABackgroundOfItsOwn) {
    for (const QColor& ground : {QColor(10, 10, 40), QColor(250, 250, 240), QColor(120, 120, 120)}) {
        control.look().setElementColour(ControlLook::BackgroundElement, ground);
        const long shown = ask(TextControl::SCI_STYLEGETFORE, TextControl::STYLE_DEFAULT);
        const QColor text(shown & 0xFF, shown >> 8 & 0xFF, shown >> 16 & 0xFF);
        EXPECT_GE(Contrast::between(ground, text), 4.5) << ground.name().toStdString();
    }
    control.look().setElementColour(ControlLook::BackgroundElement, {});
    EXPECT_EQ(ask(TextControl::SCI_STYLEGETFORE, TextControl::STYLE_DEFAULT),
              ScintillaColour::number(control.palette().color(QPalette::Text)));
}

TEST_F(TextControlOptions, OnlyAHighlightThatAdaptsIsTurnedOnDarkGround) {
    const QColor pale(205, 215, 231);
    control.look().setElementColour(ControlLook::BackgroundElement, QColor(10, 10, 40));
    control.look().setLineHighlight(0, pale);
    EXPECT_EQ(ask(TextControl::SCI_GETCARETLINEBACK), ScintillaColour::number(pale));
    control.look().setLineHighlight(0, pale, ControlLook::HighlightColour::Adapts);
    EXPECT_NE(ask(TextControl::SCI_GETCARETLINEBACK), ScintillaColour::number(pale));
    control.look().setElementColour(ControlLook::RowHighlightElement, QColor(1, 2, 3));
    control.look().setElementColour(ControlLook::BackgroundElement, Qt::white);
    EXPECT_EQ(ask(TextControl::SCI_GETCARETLINEBACK), ScintillaColour::number(QColor(1, 2, 3)));
}

TEST_F(TextControlOptions, TextCanBeReadOnAHighlightThatAdapts) {
    for (const QColor& ground : {QColor(250, 200, 0), QColor(10, 10, 40), QColor(120, 120, 120), QColor(90, 90, 90)}) {
        control.look().setElementColour(ControlLook::BackgroundElement, ground);
        control.look().setLineHighlight(0, QColor(205, 215, 231), ControlLook::HighlightColour::Adapts);
        const QColor text = StoredColour::colourOf(ask(TextControl::SCI_STYLEGETFORE, TextControl::STYLE_DEFAULT));
        const QColor row = StoredColour::colourOf(ask(TextControl::SCI_GETCARETLINEBACK));
        EXPECT_GE(Contrast::between(row, text), Contrast::Enough) << ground.name().toStdString();
    }
}

TEST_F(TextControlOptions, CtrlAndTheWheelZoom) {
    const int size = control.look().FontSize();
    const auto turn = [this](int angle, Qt::KeyboardModifiers held) {
        const QPointF at(100, 100);
        QWheelEvent event(at, control.viewport()->mapToGlobal(at), {}, QPoint(0, angle), Qt::NoButton, held,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(control.viewport(), &event);
    };
    turn(120, Qt::ControlModifier);
    EXPECT_EQ(ask(TextControl::SCI_GETZOOM), 1);
    turn(-120, Qt::ControlModifier);
    turn(-120, Qt::ControlModifier);
    EXPECT_EQ(ask(TextControl::SCI_GETZOOM), -1);
    turn(-120, {});
    EXPECT_EQ(ask(TextControl::SCI_GETZOOM), -1);
    EXPECT_EQ(control.look().FontSize(), size);
    turn(60, Qt::ControlModifier);
    EXPECT_EQ(ask(TextControl::SCI_GETZOOM), -1);
    turn(60, Qt::ControlModifier);
    EXPECT_EQ(ask(TextControl::SCI_GETZOOM), 0);
}

TEST_F(TextControlAutoIndent, ANewLineTakesTheBlanksOfTheOneAbove) {
    put(u"\t  a"_qs, 4);
    key(Qt::Key_Return);
    EXPECT_EQ(control.Text(), u"\t  a\n\t  "_qs);
    EXPECT_EQ(control.SelStart(), 8);
    control.Undo();
    EXPECT_EQ(control.Text(), u"\t  a"_qs);
    EXPECT_FALSE(control.CanUndo());
}

TEST_F(TextControlAutoIndent, TakesOnlyTheBlanksInFrontOfTheCaret) {
    put(u"    a"_qs, 2);
    key(Qt::Key_Return);
    EXPECT_EQ(control.Text(), u"  \n    a"_qs);
    put(u"    a"_qs, 0);
    key(Qt::Key_Return);
    EXPECT_EQ(control.Text(), u"\n    a"_qs);
}

TEST_F(TextControlAutoIndent, GivesEachOfSeveralCaretsItsOwn) {
    put(u"  one\n\ttwo\nthree"_qs, 5);
    control.SendScintilla(TextControl::SCI_ADDSELECTION, 10UL, 10L);
    control.SendScintilla(TextControl::SCI_ADDSELECTION, 13UL, 13L);
    key(Qt::Key_Return);
    control.typing().type(u"-"_qs);
    EXPECT_EQ(control.Text(), u"  one\n  -\n\ttwo\n\t-\nth\n-ree"_qs);
    control.Undo();
    control.Undo();
    EXPECT_EQ(control.Text(), u"  one\n\ttwo\nthree"_qs);
    EXPECT_FALSE(control.CanUndo());
}

TEST_F(TextControlAutoIndent, CanBeSwitchedOff) {
    control.typing().setAutoIndent(false);
    put(u"  a"_qs, 3);
    key(Qt::Key_Return);
    EXPECT_EQ(control.Text(), u"  a\n"_qs);
}

TEST_F(TextControlAutoIndent, KeepsStillWhileLocked) {
    put(u"  a"_qs, 3);
    control.setLocked(true);
    key(Qt::Key_Return);
    EXPECT_EQ(control.Text(), u"  a"_qs);
}

TEST_F(TextControlBraces, AreShownOnEitherSideOfTheCaret) {
    put(u"a (b) c"_qs, 0);
    const auto changesThePicture = [this](qint64 caret) {
        control.setSelection(caret, caret);
        control.braces().setBraceMatching(true);
        const QImage on = control.grab().toImage();
        control.braces().setBraceMatching(false);
        return control.grab().toImage() != on;
    };
    for (const qint64 caret : {2, 3, 4, 5}) {
        EXPECT_TRUE(changesThePicture(caret)) << caret;
    }
    for (const qint64 caret : {0, 1, 6, 7}) {
        EXPECT_FALSE(changesThePicture(caret)) << caret;
    }
}

TEST_F(TextControlCarets, SeveralTakeWhatIsTyped) {
    put(u"one\ntwo"_qs, 0);
    control.SendScintilla(TextControl::SCI_ADDSELECTION, 4UL, 4L);
    key(Qt::Key_X);
    EXPECT_EQ(control.Text(), u"xone\nxtwo"_qs);
    control.typing().type(QString(100, u'y'));
    EXPECT_EQ(control.Text().count(u'y'), 200);
    key(Qt::Key_Backspace);
    EXPECT_EQ(control.Text().count(u'y'), 198);
    key(Qt::Key_Escape);
    EXPECT_EQ(ask(TextControl::SCI_GETSELECTIONS), 1);
}

TEST_F(TextControlCarets, ARectangleTakesWhatIsTyped) {
    put(u"one\ntwo\nthree"_qs, 0);
    key(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    control.typing().type(u"-"_qs);
    EXPECT_EQ(control.Text(), u"-one\n-two\n-three"_qs);
}

TEST_F(TextControlCarets, NoCommandEditsOrStandsOutsideARectangle) {
    const QStringList before{u"alpha beta"_qs, u"gamma del"_qs, u"zeta eta x"_qs, QString()};
    for (const int steps : {0, 1, 3}) {
        for (const bool typed : {false, true}) {
            for (const Command::Info& row : Command::all()) {
                if (row.kind != Command::Kind::Keyed && row.kind != Command::Kind::Edits &&
                    row.kind != Command::Kind::EditsOnce)
                    continue;
                put(before.join(u'\n'), 6);
                key(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
                for (int step = 0; step < steps; ++step)
                    key(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
                if (typed)
                    control.typing().type(u"-"_qs);
                // Like a font of another size, this makes Scintilla measure its styles again at the next edit.
                control.SendScintilla(TextControl::SCI_STYLESETSIZE, 40UL, 10L + row.number % 2);
                control.ExecuteCmd(row.number);
                EXPECT_TRUE(control.Text().endsWith(before[2] + u'\n')) << row.caption;
                QList<qint64> carets;
                for (qint64 range = 0; range < ask(TextControl::SCI_GETSELECTIONS); ++range)
                    carets << ask(TextControl::SCI_GETSELECTIONNCARET, range);
                EXPECT_TRUE(carets.contains(ask(TextControl::SCI_GETCURRENTPOS))) << row.caption;
            }
        }
    }
}

TEST_F(TextControlCarets, WordsAreDeletedInEachLineOfARectangle) {
    put(u"alpha beta\ngamma del\nzeta eta"_qs, 6);
    key(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    control.typing().type(u"x"_qs);
    control.typing().type(u"y "_qs);
    key(Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_EQ(control.Text(), u"alpha beta\ngamma del\nzeta eta"_qs);
    EXPECT_EQ(control.selected().CaretPosition(), 17);
    control.typing().type(u"-"_qs);
    EXPECT_EQ(control.Text(), u"alpha -beta\ngamma -del\nzeta eta"_qs);
    key(Qt::Key_Return);
    EXPECT_EQ(control.Text(), u"alpha -\nbeta\ngamma -\ndel\nzeta eta"_qs);
}

TEST_F(TextControlCarets, GoingUpAndDownKeepsToTheColumnThatTheCaretWasPlacedIn) {
    const QString lines = u"one two three\none two three\nx\none two three"_qs;
    put(lines, 0);
    control.setSelection(8, 8);
    key(Qt::Key_Down);
    EXPECT_EQ(control.selected().CaretPosition(), 22);
    key(Qt::Key_Down);
    EXPECT_EQ(control.selected().CaretPosition(), 29);
    key(Qt::Key_Down);
    EXPECT_EQ(control.selected().CaretPosition(), 38) << "through the short line";
    put(lines, 0);
    QGuiApplication::clipboard()->setText(u"pasted "_qs);
    control.clipboard().Paste();
    key(Qt::Key_Down);
    EXPECT_EQ(control.selected().EndColNo(), 7);
    put(lines, 0);
    control.search().setSearchText(u"two"_qs);
    control.search().findNext();
    key(Qt::Key_Down);
    EXPECT_EQ(control.selected().EndColNo(), 7);
    control.ExecuteCmd(159);
    key(Qt::Key_Up);
    EXPECT_EQ(control.selected().EndColNo(), 7);
}

TEST_F(TextControlCarets, AltAndTheMouseSelectARectangle) {
    put(u"aaaa\nbbbb\ncccc"_qs, 0);
    const auto place = [this](qint64 byte) {
        return QPoint(static_cast<int>(control.SendScintilla(TextControl::SCI_POINTXFROMPOSITION, 0UL, byte)),
                      static_cast<int>(control.SendScintilla(TextControl::SCI_POINTYFROMPOSITION, 0UL, byte)) + 3);
    };
    const QPoint from = place(1);
    const QPoint to = place(13);
    QTest::mousePress(control.viewport(), Qt::LeftButton, Qt::AltModifier, from);
    QMouseEvent move(QEvent::MouseMove, to, control.viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::AltModifier);
    QCoreApplication::sendEvent(control.viewport(), &move);
    QTest::mouseRelease(control.viewport(), Qt::LeftButton, Qt::AltModifier, to);
    EXPECT_NE(ask(TextControl::SCI_SELECTIONISRECTANGLE), 0);
    EXPECT_EQ(ask(TextControl::SCI_GETSELECTIONS), 3);
    control.typing().type(u"-"_qs);
    EXPECT_EQ(control.Text(), u"a-a\nb-b\nc-c"_qs);
}

TEST_F(TextControlCarets, CtrlAndAClickAddACaret) {
    put(u"aaaa\nbbbb"_qs, 0);
    const QPoint at(static_cast<int>(control.SendScintilla(TextControl::SCI_POINTXFROMPOSITION, 0UL, 7L)),
                    static_cast<int>(control.SendScintilla(TextControl::SCI_POINTYFROMPOSITION, 0UL, 7L)) + 3);
    QTest::mouseClick(control.viewport(), Qt::LeftButton, Qt::ControlModifier, at);
    EXPECT_EQ(ask(TextControl::SCI_GETSELECTIONS), 2);
    control.typing().type(u"-"_qs);
    EXPECT_EQ(control.Text(), u"-aaaa\nbb-bb"_qs);
}

TEST_F(TextControlDragging, OffRefusesTextAndTakesFiles) {
    QMimeData text;
    text.setText(u"text"_qs);
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(u"/a"_qs)});
    const auto enters = [this](const QMimeData& data) {
        QDragEnterEvent event(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(control.viewport(), &event);
        return event.isAccepted();
    };
    EXPECT_TRUE(enters(text));
    control.mouse().setDragDrop(false);
    EXPECT_FALSE(enters(text));
    EXPECT_TRUE(enters(files));
    put(u"a"_qs, 0);
    QDropEvent drop(QPointF(50, 5), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control.viewport(), &drop);
    EXPECT_EQ(control.Text(), u"a"_qs);
}

TEST_F(TextControlDragging, OffAPressIntoTheSelectionEndsIt) {
    put(u"word"_qs, 0);
    control.mouse().setDragDrop(false);
    control.SelectAll();
    const auto x = static_cast<int>(control.SendScintilla(TextControl::SCI_POINTXFROMPOSITION, 0UL, 2L));
    QTest::mousePress(control.viewport(), Qt::LeftButton, {}, QPoint(x, 4));
    EXPECT_EQ(control.SelStart(), control.SelEnd());
}

TEST_F(TextControlRichText, HoldsTheTextOrTheSelection) {
    put(u"a{b}\nc"_qs, 0);
    EXPECT_TRUE(RichText::ofText(control).startsWith("{\\rtf1"));
    EXPECT_TRUE(RichText::ofText(control).contains(" a\\{b\\}\\par\nc}"));
    EXPECT_FALSE(RichText::ofSelection(control).contains("\\{b"));
    control.setSelection(4, 1);
    EXPECT_TRUE(RichText::ofSelection(control).contains(" \\{b\\}}"));
}

TEST_F(TextControlRichText, HasNoJoints) {
    put(QString(100'000, u'w'), 0);
    ASSERT_FALSE(control.map().joints().empty());
    const QByteArray rtf = RichText::ofText(control);
    EXPECT_FALSE(rtf.contains("\\par"));
    EXPECT_TRUE(rtf.contains(QByteArray(100'000, 'w')));
}
