#include "editor/Editor.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/ControlReplace.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/ControlTyping.h"
#include "keys/MacroFixture.h"

#include <QFile>
#include <QSignalSpy>
#include <QTimer>

#include <cerrno>
#include <random>

namespace {

using Sci = QsciScintillaBase;

class MacroPlaying : public MacroFixture {
 protected:
    void saveBytes(const char* name, const QByteArray& bytes) const {
        QDir().mkpath(home.filePath(u"macros"_qs));
        QFile file(home.filePath(u"macros/"_qs + QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    /// A macro that would play for hours: 9999 times, it plays 9999 times the macro that types "x".
    void putEndless() {
        put(1, {command(187, u"9999"_qs), command(215)});
        put(2, {text(u"x"_qs)});
        control.setRepeatCount(9999);
    }
    void sendLater(Qt::Key key, const QString& typed = {}) {
        QTimer::singleShot(0, &control, [this, key, typed] {
            QKeyEvent press(QEvent::KeyPress, key, {}, typed);
            QCoreApplication::sendEvent(&control, &press);
        });
    }
};

}  // namespace

TEST_F(MacroPlaying, EachOfTheTenHasItsNumber) {
    for (int n = 1; n <= 10; ++n)
        put(n, {text(QString::number(n) + u' ')});
    for (int n = 1; n <= 10; ++n)
        play(n);
    EXPECT_EQ(control.Text(), u"1 2 3 4 5 6 7 8 9 10 "_qs);
}

TEST_F(MacroPlaying, AnEmptySlotPlaysNothing) {
    const QSignalSpy changed(&control, &TextControl::Change);
    play(7);
    EXPECT_TRUE(changed.isEmpty());
    EXPECT_FALSE(control.CanUndo());
}

TEST_F(MacroPlaying, IsOneUndoStepHoweverOftenItIsRepeated) {
    control.setText(u"one\ntwo\nthree\nfour\n"_qs);
    control.setSelection(0, 0);
    control.SendScintilla(Sci::SCI_EMPTYUNDOBUFFER);
    put(1, {text(u"- "_qs), command(Sci::SCI_LINEEND), command(Sci::SCI_DELETEBACK), command(Sci::SCI_LINEDOWN),
            command(Sci::SCI_VCHOME)});
    const QSignalSpy changed(&control, &TextControl::Change);
    control.setRepeatCount(3);
    play(1);
    EXPECT_EQ(control.Text(), u"- on\n- tw\n- thre\nfour\n"_qs);
    EXPECT_EQ(control.repeatCount(), 1);
    EXPECT_EQ(changed.size(), 1);
    control.Undo();
    EXPECT_EQ(control.Text(), u"one\ntwo\nthree\nfour\n"_qs);
    EXPECT_FALSE(control.CanUndo());
}

TEST_F(MacroPlaying, WhatIsTypedAfterItIsAStepOfItsOwn) {
    put(1, {text(u"a"_qs)});
    play(1);
    type("b");
    control.Undo();
    EXPECT_EQ(control.Text(), u"a"_qs);
}

TEST_F(MacroPlaying, TypesOverWhereThatIsOn) {
    control.setText(u"abcdef"_qs);
    control.setSelection(0, 0);
    control.SendScintilla(Sci::SCI_SETOVERTYPE, 1UL);
    put(1, {text(u"xy"_qs)});
    play(1);
    EXPECT_EQ(control.Text(), u"xycdef"_qs);
}

TEST_F(MacroPlaying, OneThatRunsIntoItselfEndsWithAMessage) {
    put(3, {text(u"x"_qs), command(216)});
    play(3);
    EXPECT_EQ(control.Text(), u"x"_qs);
    EXPECT_EQ(toldInABox(), u"Macro 3 runs into itself. It was stopped."_qs);
    EXPECT_FALSE(control.state().isPlaying());
}

TEST_F(MacroPlaying, OneThatRunsIntoItselfByAnotherEndsToo) {
    put(1, {text(u"a"_qs), command(215)});
    put(2, {text(u"b"_qs), command(214)});
    control.setRepeatCount(50);
    play(1);
    EXPECT_EQ(control.Text(), u"ab"_qs);
    EXPECT_EQ(toldInABox(), u"Macro 1 runs into itself. It was stopped."_qs);
}

TEST_F(MacroPlaying, OneMayPlayAnotherSeveralTimes) {
    put(1, {command(187, u"3"_qs), command(215), text(u"."_qs), command(215)});
    put(2, {text(u"b"_qs)});
    play(1);
    EXPECT_EQ(control.Text(), u"bbb.b"_qs);
}

TEST_F(MacroPlaying, ChangesNothingInALockedText) {
    control.setText(u"one two"_qs);
    control.setLocked(true);
    put(1, {text(u"x"_qs), command(160), command(Sci::SCI_DELETEBACK), command(Sci::SCI_PASTE),
            command(Sci::SCI_NEWLINE), command(Sci::SCI_TAB), command(179, u"one"_qs), command(180, u"1"_qs),
            command(Sci::SCI_CUT), command(137), command(125)});
    control.setRepeatCount(3);
    play(1);
    EXPECT_EQ(control.Text(), u"one two"_qs);
    EXPECT_TRUE(control.Locked());
    EXPECT_EQ(control.SelText(), u"one two"_qs);
}

TEST_F(MacroPlaying, DamagedAndForeignFilesPlayNothing) {
    QByteArray damaged = Macro(Steps{text(u"x"_qs)}).toBytes();
    damaged[damaged.size() - 1] = 'y';
    saveBytes("0.dem", damaged);
    saveBytes("1.dem", "\x01\x02 something else");
    QByteArray oversized("something else");
    oversized.resize(Macro::MostBytes + 1);
    saveBytes("2.dem", oversized);
    saveBytes("3.dem", Macro(Steps{text(u"good"_qs)}).toBytes());
    store.LoadMacros();
    control.setRepeatCount(100);
    for (int n = 1; n <= 3; ++n)
        play(n);
    EXPECT_EQ(control.Text(), QString());
    play(4);
    EXPECT_EQ(control.Text(), u"good"_qs);
}

TEST_F(MacroPlaying, StepsThatStandForNothingOrAskSomebodyArePassedOver) {
    put(1,
        {command(0), command(-1), command(2358), command(Sci::SCI_CLEARALL), command(Sci::SCI_SETDOCPOINTER),
         command(178), command(187), command(192), command(224), command(213), command(Sci::SCI_UNDO), text(u"x"_qs)});
    play(1);
    EXPECT_EQ(control.Text(), u"x"_qs);
    EXPECT_FALSE(recording());
    EXPECT_TRUE(control.findChildren<QDialog*>().isEmpty());
}

TEST_F(MacroPlaying, ASearchThatFindsNothingEndsIt) {
    control.setText(u"a b a b a"_qs);
    control.setSelection(0, 0);
    put(1, {command(179, u"a"_qs), command(231), command(233), command(237), command(176), text(u"x"_qs)});
    QSignalSpy told(&control, &TextControl::Notice);
    control.setRepeatCount(100);
    play(1);
    EXPECT_EQ(control.Text(), u"x b x b x"_qs);
    EXPECT_EQ(told.last()[0].toString(), u"The macro has ended: \"a\" was not found."_qs);
    control.Undo();
    EXPECT_EQ(control.Text(), u"a b a b a"_qs);
}

TEST_F(MacroPlaying, ReplacesWithWhatWasRecorded) {
    control.setText(u"one two one"_qs);
    control.ExecuteCmd(Record);
    control.search().setSearchText(u"one"_qs);
    control.search().setReplacementText(u"1"_qs);
    control.replacing().replaceAll();
    keepAs(Qt::Key_M);
    control.setText(u"one\none"_qs);
    control.search().setSearchText(u"other"_qs);
    control.search().setReplacementText(u"?"_qs);
    play(1);
    EXPECT_EQ(control.Text(), u"1\n1"_qs);
}

TEST_F(MacroPlaying, EscapeStopsAndUndoTakesBackWhatWasPlayed) {
    putEndless();
    QSignalSpy told(&control, &TextControl::Notice);
    sendLater(Qt::Key_Escape);
    play(1);
    EXPECT_FALSE(control.state().isPlaying());
    EXPECT_GT(control.Text().size(), 0);
    EXPECT_EQ(told.first()[0].toString(), u"Playing a macro. Esc stops it."_qs);
    EXPECT_EQ(told.last()[0].toString(), u"The macro was stopped."_qs);
    EXPECT_TRUE(control.updatesEnabled());
    control.Undo();
    EXPECT_EQ(control.Text(), QString());
}

TEST_F(MacroPlaying, EscapeStopsASearchThatTakesLong) {
    const QString slow = u"aaaaaaaaaaaaaaaaaaaaaa!\n"_qs.repeated(3000);
    control.setText(slow);
    control.setSelection(0, 0);
    put(1, {text(u"x"_qs), command(179, u"(a|aa)+$"_qs), command(230), command(176), text(u"y"_qs)});
    QSignalSpy told(&control, &TextControl::Notice);
    sendLater(Qt::Key_A, u"a"_qs);
    sendLater(Qt::Key_Escape);
    play(1);
    EXPECT_FALSE(control.state().isPlaying());
    EXPECT_EQ(told.first()[0].toString(), u"Playing a macro. Esc stops it."_qs);
    EXPECT_EQ(told.last()[0].toString(), u"The macro was stopped."_qs);
    EXPECT_EQ(control.Text(), u'x' + slow);
    EXPECT_TRUE(control.updatesEnabled());
    control.Undo();
    EXPECT_EQ(control.Text(), slow);
}

TEST_F(MacroPlaying, NothingIsTypedLoadedOrClosedMeanwhile) {
    putEndless();
    const QString file = home.filePath(u"other.txt"_qs);
    {
        QFile made(file);
        ASSERT_TRUE(made.open(QIODevice::WriteOnly));
    }
    int loaded = 0;
    bool closed = true;
    sendLater(Qt::Key_A, u"a"_qs);
    QTimer::singleShot(0, &control, [&] {
        loaded = control.file().OpenFile(file).number;
        closed = control.close();
    });
    sendLater(Qt::Key_Escape);
    play(1);
    EXPECT_EQ(loaded, EBUSY);
    EXPECT_FALSE(closed);
    EXPECT_TRUE(control.isVisible());
    EXPECT_EQ(control.Text().count(u'x'), control.Text().size());
    type("a");
    EXPECT_TRUE(control.Text().endsWith(u'a'));
}

TEST_F(MacroPlaying, AControlThatGoesMeanwhileTakesThePlayWithIt) {
    auto* other = makeEditor();
    other->macros().setGlobals(globals);
    other->show();
    put(1, {command(187, u"9999"_qs), command(215)});
    put(2, {text(u"x"_qs)});
    other->setRepeatCount(9999);
    QTimer::singleShot(0, other, [other] { delete other; });
    const QPointer<TextControl> alive(other);
    other->ExecuteCmd(214);
    EXPECT_TRUE(alive.isNull());
}

// Playing a random recording again on the same text gives the same text

namespace {

class AnySteps {
 public:
    AnySteps(TextControl& control, unsigned seed) : m_control(control), m_random(seed) {}

    void doOne() {
        if (below(6) == 0)
            m_control.setRepeatCount(1 + below(3));
        switch (below(4)) {
            case 0:
                return m_control.typing().type(anyText());
            case 1:
                return search();
            default:
                return m_control.ExecuteCmd(anyCommand());
        }
    }

 private:
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    QString anyText() {
        static const QStringList texts{u"a"_qs,  u"word "_qs, u"größe"_qs, u"😀"_qs,
                                       u"\n"_qs, u"  "_qs,    u"\t"_qs,    u"{"_qs};
        return texts[below(static_cast<int>(texts.size()))];
    }

    void search() {
        m_control.search().setSearchText(below(2) == 0 ? u"o"_qs : u"[a-m]+"_qs);
        m_control.setSearchRegExp(below(2) == 0);
        m_control.setSearchCaseSensitive(below(2) == 0);
        m_control.search().setReplacementText(u"R"_qs);
        static constexpr int Searches[] = {176, 176, 174, 170, 171, 172, 173};
        m_control.ExecuteCmd(Searches[below(std::size(Searches))]);
    }

    /// Any command except those that show a question, undo, or record or play a macro.
    int anyCommand() {
        using Command::Kind;
        const auto all = Command::all();
        for (;;) {
            const Command::Info& row = all[static_cast<std::size_t>(below(static_cast<int>(all.size())))];
            if (Command::canBePlayed(row, {}) && row.kind != Kind::Plays && row.kind != Kind::Sets)
                return row.number;
        }
    }

    TextControl& m_control;
    std::mt19937 m_random;
};

}  // namespace

TEST_F(MacroPlaying, WhatWasRecordedMakesTheSameTextAgain) {
    const QString before = u"int main() {\n\treturn größe; // one two\n}\n\nzeta\nalpha beta\n  gamma\n"_qs;
    const auto begin = [&] {
        control.setText(before);
        control.bookmarks().ClearAllBookmarks();
        control.SendScintilla(Sci::SCI_SETOVERTYPE, 0UL);
        control.setSelection(20, 20);
        control.SendScintilla(Sci::SCI_EMPTYUNDOBUFFER);
        QGuiApplication::clipboard()->setText(u"clip\nboard"_qs);
    };
    for (unsigned seed = 0; seed < 150; ++seed) {
        begin();
        control.ExecuteCmd(Record);
        AnySteps any(control, seed);
        for (int step = 0; step < 40; ++step)
            any.doOne();
        control.setRepeatCount(1);
        const QString after = control.Text();
        const qint64 caret = control.selected().CaretPosition();
        const Steps steps = globals.recorder().finish();
        ASSERT_FALSE(steps.isEmpty());
        put(1, Macro::fromBytes(Macro(steps).toBytes())->steps());

        begin();
        play(1);
        ASSERT_EQ(control.Text(), after) << "seed " << seed;
        EXPECT_EQ(control.selected().CaretPosition(), caret) << "seed " << seed;
        if (control.CanUndo())
            control.Undo();
        ASSERT_EQ(control.Text(), before) << "seed " << seed;
        EXPECT_FALSE(control.CanUndo()) << "seed " << seed;
    }
}
