#include "document/DocumentFixture.h"
#include "document/rtCM.h"
#include "editor/control/ControlBraces.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlMouse.h"
#include "editor/control/TextControl.h"

#include <QCheckBox>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputDialog>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

using documenttest::readFailure;
using documenttest::readFile;
using documenttest::typeInto;
using documenttest::writeFailure;
using documenttest::writeFile;

class TextView : public testing::Test {
 protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QString fileOf(const QByteArray& bytes, const QString& name = u"a.txt"_qs) const {
        writeFile(path(name), bytes);
        return path(name);
    }

    void type(const QString& text) { typeInto(m_view.control(), text); }

    void select(qint64 from, qint64 to) { m_view.control().setSelection(from, to); }

    void showLarge() {
        m_view.resize(300, 200);
        m_view.show();
    }

    /// A mouse event at a place of the view.
    void mouse(QEvent::Type type, Qt::MouseButton button, QPoint place) {
        QWidget* surface = m_view.control().viewport();
        const QPointF at = surface->mapFrom(&m_view, place);
        const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? button : Qt::NoButton;
        QMouseEvent event(type, at, surface->mapToGlobal(at), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(surface, &event);
    }

    /// The highlight as the control shows it.
    bool highlightShown() { return m_view.control().SendScintilla(QsciScintillaBase::SCI_GETCARETLINEVISIBLE) != 0; }

    QTemporaryDir m_folder;
    ScriptedServices m_given;
    Options& m_options = m_given.options;
    ScriptedPrompts& m_prompts = m_given.prompts;
    const DocumentServices& m_services = m_given.all;
    rtCM m_view{m_services};
};

TEST_F(TextView, BeginsByTheSettings) {
    EXPECT_TRUE(m_view.gMyHighlight);
    EXPECT_TRUE(m_view.ClickLeftMarginBookmark);
    EXPECT_TRUE(m_view.LineNumbering());
    EXPECT_FALSE(m_view.IgnoreCmdFailure);
    EXPECT_FALSE(m_view.FileChanged);
    EXPECT_EQ(m_view.LastHighlightLine(), -1);
    EXPECT_EQ(m_view.GetLang(), QString());
    m_options.RowHighlight = false;
    EXPECT_FALSE(rtCM(m_services).gMyHighlight);
}

TEST_F(TextView, ItsFlagsCanBeReadFromOutside) {
    type(u"a"_qs);
    EXPECT_TRUE(m_view.property("FileChanged").toBool());
    EXPECT_TRUE(m_view.property("gMyHighlight").toBool());
    EXPECT_TRUE(m_view.property("ClickLeftMarginBookmark").toBool());
    EXPECT_FALSE(m_view.property("IgnoreCmdFailure").toBool());
}

// Loading and saving

TEST_F(TextView, TheChangedFlagFollowsEditsLoadsAndSaves) {
    const QString file = fileOf("one");
    type(u"a"_qs);
    EXPECT_TRUE(m_view.FileChanged);
    EXPECT_TRUE(m_view.OpenFile(file));
    EXPECT_FALSE(m_view.FileChanged);
    type(u"a"_qs);
    EXPECT_TRUE(m_view.ReloadFile(file));
    EXPECT_FALSE(m_view.FileChanged);
    type(u"a"_qs);
    EXPECT_TRUE(m_view.SaveFile(file, 1));
    EXPECT_FALSE(m_view.FileChanged);
    type(u"a"_qs);
    EXPECT_TRUE(m_view.SaveToTmp(path(u"tmp"_qs)));
    EXPECT_FALSE(m_view.FileChanged);
    type(u"a"_qs);
    EXPECT_TRUE(m_view.LoadFromTmp(path(u"tmp"_qs)));
    EXPECT_FALSE(m_view.FileChanged);
}

TEST_F(TextView, AFailureLeavesTheChangedFlag) {
    const QString missing = path(u"missing/a"_qs);
    for (const bool changed : {false, true}) {
        m_view.FileChanged = changed;
        EXPECT_FALSE(m_view.OpenFile(missing));
        EXPECT_FALSE(m_view.ReloadFile(missing));
        EXPECT_FALSE(m_view.SaveFile(missing, 1));
        EXPECT_FALSE(m_view.SaveToTmp(missing));
        EXPECT_FALSE(m_view.LoadFromTmp(missing));
        EXPECT_EQ(m_view.FileChanged, changed);
    }
}

TEST_F(TextView, LoadsAndSavesThatFailAreToldByTheirDescription) {
    const QString missing = path(u"missing/a"_qs);
    EXPECT_FALSE(m_view.OpenFile(missing));
    EXPECT_FALSE(m_view.ReloadFile(missing));
    EXPECT_FALSE(m_view.SaveFile(missing, 1));
    EXPECT_EQ(m_prompts.messages,
              QStringList({readFailure(missing, ENOENT), readFailure(missing, ENOENT), writeFailure(missing, ENOENT)}));
    EXPECT_EQ(m_prompts.titles, QStringList({QString(), QString(), QString()}));
}

TEST_F(TextView, LoadsThatAreToIgnoreErrorsTellNobody) {
    const QString missing = path(u"missing"_qs);
    EXPECT_FALSE(m_view.OpenFile(missing, true));
    EXPECT_FALSE(m_view.ReloadFile(missing, true));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(TextView, TemporaryCopiesThatFailTellNobody) {
    EXPECT_FALSE(m_view.SaveToTmp(path(u"missing/a"_qs)));
    EXPECT_FALSE(m_view.LoadFromTmp(path(u"missing/a"_qs)));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(TextView, ATemporaryCopyIsUnicodeAndComesBack) {
    m_view.setText(u"\u00e4"_qs);
    const QString copy = path(u"tmp"_qs);
    ASSERT_TRUE(m_view.SaveToTmp(copy));
    EXPECT_EQ(readFile(copy), QByteArray("\xFF\xFE\xE4\0", 4));
    m_view.setText(QString());
    ASSERT_TRUE(m_view.LoadFromTmp(copy));
    EXPECT_EQ(m_view.Text(), u"\u00e4"_qs);
}

TEST_F(TextView, TheLanguageIsPickedByLoadsAndSavesButNotByReloads) {
    m_given.globals.languages.LoadLanguageIndex();
    const QString page = fileOf("a", u"a.html"_qs);
    const QString code = path(u"a.cpp"_qs);
    EXPECT_TRUE(m_view.OpenFile(page));
    EXPECT_EQ(m_view.GetLang(), u"HTML"_qs);
    EXPECT_TRUE(m_view.SaveFile(code, 1));
    EXPECT_EQ(m_view.GetLang(), u"C++"_qs);
    EXPECT_TRUE(m_view.ReloadFile(page));
    EXPECT_EQ(m_view.GetLang(), u"C++"_qs);
    EXPECT_TRUE(m_view.SaveToTmp(path(u"tmp.py"_qs)));
    EXPECT_TRUE(m_view.LoadFromTmp(path(u"tmp.py"_qs)));
    EXPECT_EQ(m_view.GetLang(), u"C++"_qs);
    EXPECT_FALSE(m_view.OpenFile(path(u"missing.py"_qs), true));
    EXPECT_EQ(m_view.GetLang(), u"C++"_qs);
}

TEST_F(TextView, ASaveUnderTheSameNameKeepsAChosenLanguage) {
    m_given.globals.languages.LoadLanguageIndex();
    const QString page = fileOf("a", u"a.html"_qs);
    EXPECT_TRUE(m_view.OpenFile(page));
    m_view.SetLang(u"C++"_qs);
    EXPECT_TRUE(m_view.SaveFile(page, 1));
    EXPECT_EQ(m_view.GetLang(), u"C++"_qs);
    EXPECT_TRUE(m_view.ReloadFile(page));
    EXPECT_TRUE(m_view.SaveToTmp(path(u"tmp"_qs)));
    EXPECT_TRUE(m_view.LoadFromTmp(path(u"tmp"_qs)));
    EXPECT_TRUE(m_view.SaveFile(page, 3));
    EXPECT_EQ(m_view.GetLang(), u"C++"_qs);
    const QString other = path(u"b.html"_qs);
    EXPECT_FALSE(m_view.SaveFile(path(u"missing/b.py"_qs), 1));
    EXPECT_EQ(m_view.GetLang(), u"C++"_qs);
    EXPECT_TRUE(m_view.SaveFile(other, 1));
    EXPECT_EQ(m_view.GetLang(), u"HTML"_qs);
    m_view.SetLang(u"C++"_qs);
    EXPECT_TRUE(m_view.OpenFile(other));
    EXPECT_EQ(m_view.GetLang(), u"HTML"_qs) << "a load picks it in any case";
}

TEST_F(TextView, TheFirstSaveOfAnUntitledTextPicksTheLanguage) {
    m_given.globals.languages.LoadLanguageIndex();
    m_view.SetLang(u"C++"_qs);
    EXPECT_TRUE(m_view.SaveFile(path(u"notes"_qs), 1));
    EXPECT_EQ(m_view.GetLang(), u"C++"_qs) << "no language claims the file";
    EXPECT_TRUE(m_view.SaveFile(path(u"a.html"_qs), 1));
    EXPECT_EQ(m_view.GetLang(), u"HTML"_qs);
}

TEST_F(TextView, AReloadWithAFormatDoesNotGuess) {
    const QString file = fileOf("\xC3\xA4");
    EXPECT_TRUE(m_view.ReloadFile(file));
    EXPECT_EQ(m_view.Text(), u"\u00e4"_qs);
    EXPECT_TRUE(m_view.ReloadFile(file, false, SaveFormats::Ansi));
    EXPECT_EQ(m_view.Text(), u"\u00c3\u00a4"_qs);
}

// Events

TEST_F(TextView, TheChangedFlagIsSetBeforeTheChangeIsTold) {
    int told = 0;
    QObject::connect(&m_view, &rtCM::Change, [&] {
        ++told;
        EXPECT_TRUE(m_view.FileChanged);
    });
    type(u"a"_qs);
    EXPECT_EQ(told, 1);
    m_view.Undo();
    EXPECT_EQ(told, 2);
}

TEST_F(TextView, ALoadTellsNoChange) {
    int told = 0;
    QObject::connect(&m_view, &rtCM::Change, [&] { ++told; });
    EXPECT_TRUE(m_view.OpenFile(fileOf("one\ntwo")));
    EXPECT_TRUE(m_view.ReloadFile(fileOf("three")));
    EXPECT_EQ(told, 0);
}

TEST_F(TextView, TheHighlightHasFollowedWhenAMoveIsTold) {
    ASSERT_TRUE(m_view.OpenFile(fileOf("one\ntwo\nthree")));
    int told = 0;
    QObject::connect(&m_view, &rtCM::SelChange, [&] {
        ++told;
        EXPECT_EQ(m_view.LastHighlightLine(), m_view.CurrentLine());
    });
    m_view.GotoTextLine(2);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(m_view.LastHighlightLine(), 2);
}

TEST_F(TextView, AnyMouseButtonIsTold) {
    showLarge();
    QList<Qt::MouseButton> buttons;
    QObject::connect(&m_view, &rtCM::MouseDown, [&](Qt::MouseButton button, int x, int y) {
        buttons.append(button);
        EXPECT_EQ(QPoint(x, y), QPoint(120, 30));
    });
    const QList<Qt::MouseButton> pressed{Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};
    for (const Qt::MouseButton button : pressed) {
        mouse(QEvent::MouseButtonPress, button, QPoint(120, 30));
        mouse(QEvent::MouseButtonRelease, button, QPoint(120, 30));
    }
    EXPECT_EQ(buttons, pressed);
}

TEST_F(TextView, TheMenuIsAskedForWhereTheRightButtonComesUp) {
    showLarge();
    QList<QPoint> asked;
    QObject::connect(&m_view, &rtCM::ShowMenu, [&](int x, int y) { asked.append(QPoint(x, y)); });
    mouse(QEvent::MouseButtonPress, Qt::RightButton, QPoint(10, 30));
    EXPECT_TRUE(asked.isEmpty());
    mouse(QEvent::MouseButtonRelease, Qt::RightButton, QPoint(120, 40));
    mouse(QEvent::MouseButtonPress, Qt::LeftButton, QPoint(120, 40));
    mouse(QEvent::MouseButtonRelease, Qt::LeftButton, QPoint(120, 40));
    EXPECT_EQ(asked, QList<QPoint>({QPoint(120, 40)}));
}

TEST_F(TextView, TheMenuKeyAsksForTheMenuToo) {
    showLarge();
    int asked = 0;
    QObject::connect(&m_view, &rtCM::ShowMenu, [&] { ++asked; });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(20, 20), QPoint(20, 20));
    QCoreApplication::sendEvent(m_view.control().viewport(), &event);
    EXPECT_EQ(asked, 1);
}

TEST_F(TextView, EachDroppedFileIsToldByItself) {
    showLarge();
    QStringList dropped;
    QObject::connect(&m_view, &rtCM::DropFile, [&](const QString& file) { dropped.append(file); });
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(u"/home/u/a b.txt"_qs), QUrl::fromLocalFile(u"/b"_qs)});
    QWidget* surface = m_view.control().viewport();
    QDragEnterEvent enter(QPoint(100, 30), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(surface, &enter);
    QDropEvent drop(QPointF(100, 30), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(surface, &drop);
    EXPECT_EQ(dropped, QStringList({u"/home/u/a b.txt"_qs, u"/b"_qs}));
    EXPECT_EQ(m_view.Text(), QString());
}

// Text and selection

TEST_F(TextView, TheSelectionLengthIsTheDistanceOfItsEnds) {
    m_view.setText(u"one two"_qs);
    m_view.setSelStart(4);
    m_view.setSelEnd(4);
    EXPECT_EQ(m_view.SelLength(), 0);
    m_view.setSelLength(3);
    EXPECT_EQ(m_view.SelEnd(), 7);
    EXPECT_EQ(m_view.SelText(), u"two"_qs);
    EXPECT_EQ(m_view.SelLength(), 3);
}

TEST_F(TextView, TheTextCanBeReadAndWrittenByLineAndSelection) {
    m_view.setText(u"one\ntwo"_qs);
    EXPECT_EQ(m_view.TotalLines(), 2);
    EXPECT_EQ(m_view.GetLine(1), u"two"_qs);
    m_view.SelectAll();
    m_view.setSelText(u"three"_qs);
    EXPECT_EQ(m_view.Text(), u"three"_qs);
    m_view.AddText(u" four"_qs);
    EXPECT_EQ(m_view.Text(), u"three four"_qs);
    EXPECT_TRUE(m_view.FileChanged);
}

TEST_F(TextView, CaretAndSelectedLinesAreGivenInTheOrderOfTheSelection) {
    m_view.setText(u"one\ntwo\nthree"_qs);
    select(9, 1);
    EXPECT_EQ(m_view.CurrentLine(), 0);
    EXPECT_EQ(m_view.CurrentColumn(), 1);
    qint64 start = -1;
    qint64 end = -1;
    m_view.GetSelStartEnd(start, end);
    EXPECT_EQ(start, 2);
    EXPECT_EQ(end, 0);
}

TEST_F(TextView, SelectedLinesAreCountedInBothDirections) {
    m_view.setText(u"one\ntwo\nthree"_qs);
    select(2, 2);
    EXPECT_EQ(m_view.SelTotalLines(), 0);
    select(0, 2);
    EXPECT_EQ(m_view.SelTotalLines(), 1);
    select(1, 9);
    EXPECT_EQ(m_view.SelTotalLines(), 3);
    select(9, 1);
    EXPECT_EQ(m_view.SelTotalLines(), 3);
}

TEST_F(TextView, CountsCoverTheWholeTextOrTheSelection) {
    m_view.setText(u"one two\r\n\tthree "_qs);
    EXPECT_EQ(m_view.TotalWords(), 3);
    EXPECT_EQ(m_view.TotalChars(), 16);
    EXPECT_EQ(m_view.TotalCharsNoSpace(), 11);
    select(0, 0);
    EXPECT_EQ(m_view.SelTotalWords(), 0);
    EXPECT_EQ(m_view.SelTotalChars(), 0);
    EXPECT_EQ(m_view.SelTotalCharsNoSpace(), 0);
    select(2, 12);
    EXPECT_EQ(m_view.SelTotalWords(), 3);
    EXPECT_EQ(m_view.SelTotalChars(), 10);
    EXPECT_EQ(m_view.SelTotalCharsNoSpace(), 6);
}

TEST_F(TextView, ATextOfBlanksHasNoWords) {
    m_view.setText(u" \t\n "_qs);
    EXPECT_EQ(m_view.TotalWords(), 0);
    m_view.SelectAll();
    EXPECT_EQ(m_view.SelTotalWords(), 0);
}

TEST_F(TextView, BlanksBecomeTabsAndTabsBlanksInOneStepEach) {
    m_view.setText(u"a b  c"_qs);
    m_view.SelectAll();
    m_view.SpacesToTabs();
    EXPECT_EQ(m_view.Text(), u"a\tb\t\tc"_qs);
    m_view.Undo();
    EXPECT_EQ(m_view.Text(), u"a b  c"_qs);
    m_view.Redo();
    m_view.SelectAll();
    m_view.TabsToSpaces();
    EXPECT_EQ(m_view.Text(), u"a b  c"_qs);
    m_view.Undo();
    EXPECT_EQ(m_view.Text(), u"a\tb\t\tc"_qs);
}

// Row highlight

TEST_F(TextView, AFreshlyLoadedTextHasItsFirstLineHighlighted) {
    ASSERT_TRUE(m_view.OpenFile(fileOf("one\ntwo")));
    EXPECT_EQ(m_view.LastHighlightLine(), 0);
    EXPECT_TRUE(highlightShown());
}

TEST_F(TextView, TheHighlightHasTheColourOfTheSetting) {
    m_options.RowHighlightColor = 255;
    m_view.HighLightLine();
    EXPECT_EQ(m_view.control().SendScintilla(QsciScintillaBase::SCI_GETCARETLINEBACK), 255);
}

TEST_F(TextView, WithTheHighlightOffNoLineIsRemembered) {
    m_view.setText(u"one\ntwo"_qs);
    m_view.GotoTextLine(1);
    ASSERT_TRUE(highlightShown());
    m_view.gMyHighlight = false;
    m_view.HighLightLine();
    EXPECT_EQ(m_view.LastHighlightLine(), -1);
    EXPECT_FALSE(highlightShown());
    m_view.GotoTextLine(0);
    EXPECT_EQ(m_view.LastHighlightLine(), -1);
    EXPECT_FALSE(highlightShown());
    m_view.gMyHighlight = true;
    m_view.HighLightLine();
    EXPECT_EQ(m_view.LastHighlightLine(), 0);
    EXPECT_TRUE(highlightShown());
}

TEST_F(TextView, DeletingTheHighlightedLineMovesTheHighlightToTheCaret) {
    m_view.setText(u"one\ntwo\nthree"_qs);
    m_view.GotoTextLine(2);
    ASSERT_EQ(m_view.LastHighlightLine(), 2);
    select(3, 13);
    m_view.setSelText(QString());
    EXPECT_EQ(m_view.TotalLines(), 1);
    EXPECT_EQ(m_view.LastHighlightLine(), 0);
    EXPECT_TRUE(highlightShown());
}

TEST_F(TextView, OnlyTheHighlightedLineLosesItsHighlight) {
    m_view.setText(u"one\ntwo"_qs);
    m_view.GotoTextLine(1);
    m_view.UnHighLightLine(0);
    EXPECT_TRUE(highlightShown());
    m_view.UnHighLightLine(1);
    EXPECT_FALSE(highlightShown());
}

// Font

TEST_F(TextView, FontStepsStopOnlyAtTheExactSizes) {
    struct Step {
        int from;
        int larger;
        int smaller;
    };
    for (const Step& step : {Step{10, 12, 8}, Step{70, 70, 68}, Step{69, 71, 67}, Step{71, 73, 69}, Step{5, 7, 5},
                             Step{7, 9, 5}, Step{6, 8, 4}, Step{3, 5, 1}, Step{2, 4, 2}, Step{1, 3, 1}}) {
        m_view.setTextFont(m_view.FontName(), step.from);
        m_view.IncreaseFontSize();
        EXPECT_EQ(m_view.FontSize(), step.larger);
        m_view.setTextFont(m_view.FontName(), step.from);
        m_view.DecreaseFontSize();
        EXPECT_EQ(m_view.FontSize(), step.smaller);
    }
}

TEST_F(TextView, AFontRefusesSizesBelowOne) {
    m_view.setTextFont(u"serif"_qs, 1);
    for (const int refused : {0, -1, -100}) {
        m_view.setTextFont(u"monospace"_qs, refused);
        EXPECT_EQ(m_view.FontSize(), 1);
        EXPECT_EQ(m_view.FontName(), u"monospace"_qs);
        EXPECT_EQ(m_view.control().SendScintilla(QsciScintillaBase::SCI_STYLEGETSIZE,
                                                 static_cast<unsigned long>(QsciScintillaBase::STYLE_DEFAULT)),
                  1);
    }
    m_options.FontSize = 0;
    m_view.DefaultFontSize();
    EXPECT_EQ(m_view.FontSize(), 1);
}

TEST_F(TextView, FontStepsAreRepeatedAsFarAsTheyGo) {
    struct Row {
        int from;
        int times;
        void (rtCM::*step)();
        int size;
    };
    for (const Row& row : {Row{10, 3, &rtCM::IncreaseFontSize, 16}, Row{66, 9, &rtCM::IncreaseFontSize, 70},
                           Row{69, 3, &rtCM::IncreaseFontSize, 75}, Row{9, 9, &rtCM::DecreaseFontSize, 5},
                           Row{10, 9999, &rtCM::DecreaseFontSize, 2}}) {
        m_view.setTextFont(m_view.FontName(), row.from);
        m_view.control().setRepeatCount(row.times);
        (m_view.*row.step)();
        EXPECT_EQ(m_view.FontSize(), row.size);
        EXPECT_EQ(m_view.repeatCount(), 1);
    }
}

TEST_F(TextView, TheDefaultFontSizeIsThatOfTheSettings) {
    m_options.FontSize = 13;
    const QString name = m_view.FontName();
    m_view.IncreaseFontSize();
    m_view.control().runCommand(QsciScintillaBase::SCI_ZOOMIN);
    m_view.DefaultFontSize();
    EXPECT_EQ(m_view.FontSize(), 13);
    EXPECT_EQ(m_view.control().SendScintilla(QsciScintillaBase::SCI_GETZOOM), 0);
    EXPECT_EQ(m_view.FontName(), name);
}

// Properties passed on

TEST_F(TextView, HandsItsPropertiesToTheControl) {
    TextControl& control = m_view.control();
    for (const bool on : {true, false}) {
        m_view.setDisplayLeftMargin(on);
        m_view.setDisplayWhitespace(on);
        m_view.setBraceMatching(on);
        m_view.setVScrollVisible(on);
        m_view.setHScrollVisible(on);
        m_view.setDragDrop(on);
        m_view.ShowLineNumber(on);
        for (const bool shown :
             {control.look().DisplayLeftMargin(), control.look().DisplayWhitespace(), control.braces().BraceMatching(),
              control.look().VScrollVisible(), control.look().HScrollVisible(), control.mouse().DragDrop(),
              control.lineNumbers().LineNumbering(), m_view.DisplayLeftMargin(), m_view.DisplayWhitespace(),
              m_view.BraceMatching(), m_view.VScrollVisible(), m_view.HScrollVisible(), m_view.DragDrop(),
              m_view.LineNumbering()}) {
            EXPECT_EQ(shown, on);
        }
    }
    m_view.setLineNumberStart(10);
    EXPECT_EQ(control.lineNumbers().LineNumberStart(), 10);
    EXPECT_EQ(m_view.LineNumberStart(), 10);
}

TEST_F(TextView, HandsItsFontToTheControl) {
    m_view.setProperty("font", QFont(u"monospace"_qs, 17));
    EXPECT_EQ(m_view.control().look().FontName(), u"monospace"_qs);
    EXPECT_EQ(m_view.control().look().FontSize(), 17);
    EXPECT_EQ(m_view.property("font").value<QFont>().pointSize(), 17);
    QFont inPixels(u"serif"_qs);
    inPixels.setPixelSize(30);
    m_view.setProperty("font", inPixels);
    EXPECT_EQ(m_view.FontName(), u"serif"_qs);
    EXPECT_EQ(m_view.FontSize(), 17);
}

TEST_F(TextView, HandsOnWhetherItIsEnabledAndItsWindow) {
    showLarge();
    EXPECT_NE(m_view.property("hwnd").toULongLong(), 0U);
    EXPECT_EQ(m_view.property("hwnd").toULongLong(), m_view.control().effectiveWinId());
    EXPECT_TRUE(m_view.property("Enabled").toBool());
    m_view.setProperty("Enabled", false);
    EXPECT_FALSE(m_view.control().isEnabled());
    m_view.setProperty("Enabled", true);
    EXPECT_TRUE(m_view.control().isEnabled());
}

TEST_F(TextView, OnlyTheUnchosenColourOfTheHighlightAdaptsToADarkGround) {
    const auto shown = [&] { return m_view.control().SendScintilla(QsciScintillaBase::SCI_GETCARETLINEBACK); };
    m_view.setBackColor(QColor(10, 10, 40));
    m_view.HighLightLine();
    EXPECT_NE(shown(), Options().RowHighlightColor);
    m_options.RowHighlightColor = 15194062;
    m_view.HighLightLine();
    EXPECT_EQ(shown(), 15194062);
}

TEST_F(TextView, ColoursItsMargins) {
    TextControl& control = m_view.control();
    m_view.SetActiveMargin();
    EXPECT_EQ(control.look().elementColour(ControlLook::LeftMarginElement), QColor(50, 50, 200));
    m_view.SetActiveMargin(QColor(1, 2, 3));
    EXPECT_EQ(control.look().elementColour(ControlLook::LeftMarginElement), QColor(1, 2, 3));
    m_view.SetInactiveMargin();
    EXPECT_EQ(control.look().elementColour(ControlLook::LeftMarginElement), QColor(220, 220, 220));
    m_view.setBackColor(QColor(4, 5, 6));
    EXPECT_EQ(m_view.BackColor(), QColor(4, 5, 6));
    EXPECT_EQ(control.look().elementColour(ControlLook::BackgroundElement), QColor(4, 5, 6));
}

TEST_F(TextView, GivesItsTextInRichText) {
    m_view.setText(u"a\nb"_qs);
    select(0, 1);
    EXPECT_TRUE(m_view.TextRTF().contains(u" a\\par\nb}"_qs));
    EXPECT_TRUE(m_view.SelRTF().contains(u" a}"_qs));
}

TEST_F(TextView, TakesThePlainTextOfRichText) {
    EXPECT_TRUE(m_view.setTextRTF(u"{\\rtf1 one\\par two}"_qs));
    EXPECT_EQ(m_view.Text(), u"one\ntwo"_qs);
    select(0, 3);
    EXPECT_TRUE(m_view.setSelRTF(u"{\\rtf1 {\\b 1}}"_qs));
    EXPECT_EQ(m_view.Text(), u"1\ntwo"_qs);
    EXPECT_FALSE(m_view.setTextRTF(u"one"_qs));
    EXPECT_FALSE(m_view.setSelRTF(u"{\\rtf1 one"_qs));
    EXPECT_EQ(m_view.Text(), u"1\ntwo"_qs);
}

TEST_F(TextView, ShowsAPictureAtItsBookmarks) {
    EXPECT_TRUE(m_view.hImageList().isEmpty());
    QPixmap red(10, 10);
    red.fill(QColor(255, 0, 0));
    m_view.setText(u"a\nb"_qs);
    showLarge();
    m_view.EnableBookmarkAt(1, true);
    const auto hasRed = [&] {
        const QImage margin = m_view.control().viewport()->grab(QRect(0, 0, 25, 20)).toImage();
        for (int x = 0; x < margin.width(); ++x) {
            if (margin.pixelColor(x, margin.height() / 2) == QColor(255, 0, 0))
                return true;
        }
        return false;
    };
    EXPECT_FALSE(hasRed());
    m_view.setHImageList({red});
    EXPECT_TRUE(hasRed());
    EXPECT_EQ(m_view.hImageList().size(), 1);
    m_view.setHImageList({});
    EXPECT_FALSE(hasRed());
}

TEST_F(TextView, BeginsAsThePropertiesOfAnotherWereLeft) {
    m_view.Properties();
    auto* dialog = m_view.findChild<QDialog*>(u"ControlProperties"_qs);
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QCheckBox*>(u"chkWordWrap"_qs)->click();
    dialog->accept();
    rtCM present(m_services);
    EXPECT_FALSE(present.control().look().WordWrap());
    present.PropertiesLoad();
    EXPECT_TRUE(present.control().look().WordWrap());
    EXPECT_TRUE(present.LineNumbering());

    EditorGlobals ofNextRun(m_given.prompts, m_given.registry, m_given.programFolder.path(), {});
    rtCM later({m_prompts, m_options, ofNextRun, m_given.hexFind});
    later.PropertiesLoad();
    EXPECT_TRUE(later.control().look().WordWrap());
}

TEST_F(TextView, AsksForALineAndGoesThere) {
    m_view.setText(u"a\nb\nc"_qs);
    showLarge();
    m_view.GotoLine();
    auto* prompt = m_view.findChild<QInputDialog*>(u"GotoLine"_qs);
    ASSERT_NE(prompt, nullptr);
    prompt->setIntValue(3);
    prompt->accept();
    EXPECT_EQ(m_view.CurrentLine(), 2);
}

TEST_F(TextView, AsksForARepeatCount) {
    showLarge();
    m_view.SetRepeatCount();
    auto* prompt = m_view.findChild<QInputDialog*>(u"RepeatCount"_qs);
    ASSERT_NE(prompt, nullptr);
    prompt->setIntValue(3);
    prompt->accept();
    type(u"a"_qs);
    EXPECT_EQ(m_view.Text(), u"aaa"_qs);
}

TEST_F(TextView, TheClipboardCommandsOfMenusAreRepeatedAsOneStep) {
    showLarge();
    QGuiApplication::clipboard()->setText(u"ab"_qs);
    m_view.control().setRepeatCount(3);
    m_view.Paste();
    EXPECT_EQ(m_view.Text(), u"ababab"_qs);
    type(u"q"_qs);
    EXPECT_EQ(m_view.Text(), u"abababq"_qs);
    m_view.Undo();
    m_view.Undo();
    EXPECT_EQ(m_view.Text(), QString());
    m_view.setText(u"one two"_qs);
    for (void (rtCM::*command)() : {&rtCM::Copy, &rtCM::Cut}) {
        select(0, 3);
        m_view.control().setRepeatCount(3);
        (m_view.*command)();
        EXPECT_EQ(m_view.repeatCount(), 1);
        EXPECT_EQ(QGuiApplication::clipboard()->text(), u"one"_qs);
    }
    EXPECT_EQ(m_view.Text(), u" two"_qs);
}

TEST_F(TextView, UndoAndRedoOfMenusAreRepeated) {
    showLarge();
    for (const QChar each : u"abcd"_qs) {
        type(QString(each));
        m_view.SelectWord();  // ends the step of what was typed
        select(m_view.Text().size(), m_view.Text().size());
    }
    m_view.control().setRepeatCount(3);
    m_view.Undo();
    EXPECT_EQ(m_view.Text(), u"a"_qs);
    m_view.control().setRepeatCount(2);
    m_view.Redo();
    EXPECT_EQ(m_view.Text(), u"abc"_qs);
    EXPECT_EQ(m_view.repeatCount(), 1);
}

TEST_F(TextView, MacrosOutsideTheirNumbersDoNothing) {
    m_view.setText(u"a"_qs);
    for (const int number : {-1, 0, 1, 10, 11})
        m_view.ExecMacro(number);
    m_view.RecordMacro();
    EXPECT_EQ(m_view.Text(), u"a"_qs);
}

TEST_F(TextView, PlaysTheTenMacrosByTheirNumbersAndNoOther) {
    for (int n = 1; n <= 10; ++n) {
        Macro macro;
        macro.addText(QString::number(n) + u' ');
        ASSERT_TRUE(m_services.globals.macros.setMacro(n - 1, macro));
    }
    for (int n = -1; n <= 12; ++n)
        m_view.ExecMacro(n);
    EXPECT_EQ(m_view.Text(), u"1 2 3 4 5 6 7 8 9 10 "_qs);
}
