#include "document/DocumentFixture.h"
#include "document/rtCM.h"
#include "editor/control/ControlLook.h"
#include "editor/control/TextControl.h"
#include "editor/language/LanguageDefinition.h"

#include <QImage>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPixmap>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <array>
#include <functional>
#include <random>
#include <utility>
#include <vector>

using Sci = QsciScintillaBase;

namespace {

/// Gathers what of a widget is painted.
class PaintedArea : public QObject {
 public:
    explicit PaintedArea(QWidget& widget) { widget.installEventFilter(this); }
    QRegion take() { return std::exchange(m_area, {}); }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            m_area += static_cast<QPaintEvent*>(event)->region();
        return QObject::eventFilter(watched, event);
    }

 private:
    QRegion m_area;
};

LanguageDefinition likeC() {
    LanguageDefinition language;
    language.lexer = "cpp";
    language.keywords[0] = "int return";
    language.brackets = "(){}";
    for (const int style : {1, 2})
        language.classOfStyle[style] = TokenClass::Comment;
    language.classOfStyle[5] = TokenClass::Keyword;
    return language;
}

/// A view on the screen, with more lines than it shows, whose caret does not blink.
class PaintedTextView : public testing::Test {
 protected:
    PaintedTextView() {
        m_view.resize(700, 500);
        m_view.show();
        m_view.activateWindow();
        m_view.control().setFocus();
        ask(Sci::SCI_SETCARETPERIOD, 0);
    }

    void put(const QString& line, int lines = 400) {
        m_view.setText(line.repeated(lines));
        m_view.control().setSelection(0, 0);
        settle();
    }
    void settle() {
        // Colouring that is left for idle moments is done too.
        for (int round = 0; round < 20; ++round)
            QCoreApplication::processEvents();
        m_painted.take();
    }

    long ask(unsigned message, unsigned long first = 0) const { return m_view.control().SendScintilla(message, first); }
    int rowHeight() const { return static_cast<int>(ask(Sci::SCI_TEXTHEIGHT)); }
    /// The row on the page that a line of the text has.
    QRect row(qint64 line, qint64 rows = 1) const {
        const auto top = static_cast<int>(line - ask(Sci::SCI_GETFIRSTVISIBLELINE));
        return {0, top * rowHeight(), viewport().width(), static_cast<int>(rows) * rowHeight()};
    }
    QWidget& viewport() const { return *m_view.control().viewport(); }

    QRegion paintedBy(Qt::Key key, const QString& text = {}) {
        m_painted.take();
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&m_view.control(), &press);
        QCoreApplication::processEvents();
        return m_painted.take();
    }
    QRegion paintedByWheel(int steps) {
        m_painted.take();
        const QPoint at = viewport().rect().center();
        QWheelEvent event(at, viewport().mapToGlobal(at), {}, {0, -steps * QWheelEvent::DefaultDeltasPerStep},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&viewport(), &event);
        QCoreApplication::processEvents();
        return m_painted.take();
    }
    static bool isWithin(const QRegion& painted, const QRect& allowed) {
        return !painted.isEmpty() && QRegion(painted - QRegion(allowed)).isEmpty();
    }

    /// What stands on the screen is what painting the whole page anew gives.
    bool isUpToDate() const {
        const QWidget& window = *viewport().window();
        const QRect place(viewport().mapTo(&window, QPoint()), viewport().size());
        const QPixmap shown =
            window.screen()->grabWindow(window.winId(), place.x(), place.y(), place.width(), place.height());
        return sameFormat(shown) == sameFormat(viewport().grab());
    }
    static QImage sameFormat(const QPixmap& picture) { return picture.toImage().convertToFormat(QImage::Format_RGB32); }

    ScriptedServices m_given;
    rtCM m_view{m_given.all};
    LanguageDefinition m_language = likeC();
    PaintedArea m_painted{viewport()};
};

}  // namespace

TEST_F(PaintedTextView, ATypedLetterPaintsItsLineAlone) {
    put(u"a line of text\n"_qs);
    m_view.GotoTextLine(8);
    settle();
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_X, u"x"_qs), row(8)));
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_Y, u"y"_qs), row(8)));
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_Backspace), row(8)));
    EXPECT_TRUE(isUpToDate());
}

TEST_F(PaintedTextView, AStepOfTheCaretPaintsTheLineItLeavesAndTheOneItReaches) {
    put(u"a line of text\n"_qs);
    m_view.GotoTextLine(8);
    settle();
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_Right), row(8)));
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_Down), row(8, 2)));
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_Up), row(8, 2)));
    EXPECT_TRUE(isUpToDate());
}

TEST_F(PaintedTextView, AClickPaintsNoMoreThanTheLinesBetween) {
    put(u"a line of text\n"_qs);
    m_view.GotoTextLine(8);
    settle();
    QTest::mouseClick(&viewport(), Qt::LeftButton, {}, QPoint(120, row(10).center().y()));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_view.CurrentLine(), 10);
    EXPECT_TRUE(isWithin(m_painted.take(), row(8, 3)));
    EXPECT_TRUE(isUpToDate());
}

TEST_F(PaintedTextView, ReturnPaintsNothingAboveItsLine) {
    put(u"a line of text\n"_qs);
    m_view.GotoTextLine(8);
    settle();
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_Return), row(8, 1000)));
    EXPECT_EQ(m_view.TotalLines(), 402);
    EXPECT_TRUE(isUpToDate());
}

TEST_F(PaintedTextView, AReturnThatWidensTheLineNumbersPaintsAll) {
    put(u"a line of text\n"_qs, 998);
    m_view.GotoTextLine(8);
    settle();
    const long before = ask(Sci::SCI_GETMARGINWIDTHN, 1);
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_Return), viewport().rect()));
    ASSERT_GT(ask(Sci::SCI_GETMARGINWIDTHN, 1), before);
    EXPECT_TRUE(isUpToDate());
}

TEST_F(PaintedTextView, AStepOfTheWheelPaintsWhatComesIn) {
    put(u"a line of text\n"_qs);
    const QRegion painted = paintedByWheel(1);
    const auto rows = static_cast<int>(ask(Sci::SCI_GETFIRSTVISIBLELINE));
    ASSERT_GT(rows, 0);
    const int height = rows * rowHeight();
    EXPECT_TRUE(isWithin(painted, QRect(0, viewport().height() - height, viewport().width(), height)));
    EXPECT_TRUE(isUpToDate());
    EXPECT_TRUE(isWithin(paintedByWheel(-1), QRect(0, 0, viewport().width(), height)));
    EXPECT_EQ(ask(Sci::SCI_GETFIRSTVISIBLELINE), 0);
    EXPECT_TRUE(isUpToDate());
}

TEST_F(PaintedTextView, AStepOverTheEdgeOfThePagePaintsTheLinesThatChanged) {
    put(u"a line of text\n"_qs);
    const long last = ask(Sci::SCI_LINESONSCREEN) - 1;
    m_view.control().setSelection(15 * last, 15 * last);
    settle();
    ASSERT_EQ(ask(Sci::SCI_GETFIRSTVISIBLELINE), 0);
    const QRegion painted = paintedBy(Qt::Key_Down);
    ASSERT_EQ(ask(Sci::SCI_GETFIRSTVISIBLELINE), 1);
    EXPECT_TRUE(isWithin(painted, row(last, 3)));
    EXPECT_TRUE(isUpToDate());
}

TEST_F(PaintedTextView, TheSameHoldsInColouredText) {
    m_view.control().look().setLanguage(&m_language);
    put(u"int one = two(three); // four\n"_qs);
    m_view.GotoTextLine(8);
    settle();
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_X, u"x"_qs), row(8)));
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_Right), row(8)));
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_Return), row(8, 1000)));
    EXPECT_TRUE(isUpToDate());
    const QRegion painted = paintedByWheel(-1);
    EXPECT_TRUE(painted.isEmpty() || !painted.contains(viewport().rect().center()));
    EXPECT_TRUE(isUpToDate());
}

TEST_F(PaintedTextView, MarkedBracesPaintTheirLinesAlone) {
    put(u"(a line\n of text)\n\n"_qs);
    m_view.GotoTextLine(9);
    settle();
    // Beside the opening brace, behind it, and away from it.
    EXPECT_TRUE(isUpToDate());
    for (int step = 0; step < 2; ++step) {
        EXPECT_TRUE(isWithin(paintedBy(Qt::Key_Right), row(9, 2)));
        EXPECT_TRUE(isUpToDate());
    }
}

TEST_F(PaintedTextView, AHighlightThatIsSetAgainPaintsNothing) {
    put(u"a line of text\n"_qs);
    m_view.HighLightLine();
    settle();
    m_view.HighLightLine();
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_painted.take().isEmpty());
}

TEST_F(PaintedTextView, AnOpenedCommentIsSeenOnAllLinesBelow) {
    m_view.control().look().setLanguage(&m_language);
    put(u"int one = two(three);\n"_qs);
    m_view.GotoTextLine(3);
    settle();
    paintedBy(Qt::Key_Slash, u"/"_qs);
    paintedBy(Qt::Key_Asterisk, u"*"_qs);
    settle();
    EXPECT_TRUE(isUpToDate());
    EXPECT_TRUE(isWithin(paintedByWheel(1), viewport().rect()));
    settle();
    EXPECT_TRUE(isUpToDate());
}

/// What follows a bracket is an expression to this lexer, and there a "/" begins one of another kind.
TEST_F(PaintedTextView, AChangedColourOfALineBelowIsSeenAtOnce) {
    m_view.control().look().setLanguage(&m_language);
    put(u"one\n\n\n/ two; // three\n"_qs, 3);
    m_view.control().setSelection(3, 3);
    settle();
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_ParenLeft, u"("_qs), row(0, 5)));
    EXPECT_TRUE(isUpToDate());
}

TEST_F(PaintedTextView, ReturnOverASelectionClearsWhatStoodBelowTheText) {
    put(u"a line of text\n"_qs, 6);
    m_view.control().setSelection(30, m_view.TotalChars());
    settle();
    EXPECT_TRUE(isWithin(paintedBy(Qt::Key_Return), row(2, 1000)));
    EXPECT_EQ(m_view.TotalLines(), 4);
    EXPECT_TRUE(isUpToDate());
}

/// Whatever is done, the screen shows what a fresh painting shows.
TEST_F(PaintedTextView, TheScreenIsUpToDateAfterAnyRunOfKeysClicksAndWheelSteps) {
    constexpr auto Keys =
        std::to_array({Qt::Key_Down, Qt::Key_Up, Qt::Key_Left, Qt::Key_Right, Qt::Key_Return, Qt::Key_End,
                       Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_PageDown, Qt::Key_PageUp});
    // None of those that begin a comment, a text or an expression, whose colours depend on where the lexer began.
    constexpr QStringView Letters = u"(){}x ;";
    std::mt19937 random(7);
    const auto one = [&random](auto count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    const std::vector<std::function<void()>> actions = {
        [&] {
            QTest::keyClick(&m_view.control(), Keys[static_cast<std::size_t>(one(Keys.size()))],
                            one(4) == 0 ? Qt::ShiftModifier : Qt::NoModifier);
        },
        [&] { paintedBy(Qt::Key_unknown, Letters.at(one(Letters.size()))); },
        [&] { paintedByWheel(one(2) == 0 ? 1 : -1); },
        [&] {
            const QPoint place(one(viewport().width()), one(viewport().height()));
            QTest::mouseClick(&viewport(), Qt::LeftButton, one(3) == 0 ? Qt::ControlModifier : Qt::NoModifier, place);
        },
        [&] { m_view.Undo(); },
        [&] { m_view.control().look().setWordWrap(one(2) == 0); },
    };
    m_view.control().look().setLanguage(&m_language);
    put(u"int one = two(three); // {\n\treturn (four);\n}\n"_qs, 100);
    for (int step = 0; step < 400; ++step) {
        // The later in the list, the rarer.
        const int chosen = one(1 + one(static_cast<int>(actions.size())));
        actions[static_cast<std::size_t>(chosen)]();
        settle();
        ASSERT_TRUE(isUpToDate()) << "step " << step << ", action " << chosen;
    }
}
