#include "editor/control/ControlClipboard.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "editor/held/LoadedControl.h"
#include "editor/held/TextLoader.h"
#include "text/held/Joints.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

#include <random>

namespace {

QString longLine(qint64 length) {
    QString line;
    line.reserve(length);
    for (qint64 i = 0; i < length; ++i)
        line += i % 7 == 6 ? u' ' : QChar(u'a' + static_cast<char16_t>(i % 26));
    return line;
}

struct LoadedLongLine : LoadedControl {
    QByteArray saved() {
        EXPECT_FALSE(control.file().SaveFile(path(), SaveFlags::AsLoaded));
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    qint64 heldLines() const { return control.heldText().lineCount(); }
    qint64 longestHeldLine() const {
        qint64 longest = 0;
        for (qint64 line = 0; line < heldLines(); ++line) {
            const bool last = line + 1 == heldLines();
            const qint64 end = last ? control.heldText().length() : control.heldText().lineStart(line + 1);
            longest = std::max(longest, end - control.heldText().lineStart(line));
        }
        return longest;
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&control, key, modifiers); }
};

}  // namespace

TEST_F(LoadedLongLine, IsHeldInPiecesThatNobodySees) {
    const QString line = longLine(200'000);
    load((line + u"\nsecond\n"_qs).toUtf8());
    EXPECT_GT(heldLines(), 40);
    EXPECT_LE(longestHeldLine(), LongLine);
    EXPECT_EQ(control.TotalLines(), 3);
    EXPECT_EQ(control.GetLine(0), line);
    EXPECT_EQ(control.GetLine(1), u"second"_qs);
    EXPECT_EQ(control.Text(), line + u"\nsecond\n"_qs);
    control.setSelection(150'000, 200'003);
    EXPECT_EQ(control.SelStart(), 150'000);
    EXPECT_EQ(control.SelEnd(), 200'003);
    EXPECT_EQ(control.CurrentLine(), 1);
    EXPECT_EQ(control.CurrentColumn(), 2);
    EXPECT_EQ(control.SelText(), line.mid(150'000) + u"\nse"_qs);
}

TEST_F(LoadedLongLine, IsSavedAsItWas) {
    const QByteArray bytes = longLine(300'000).toUtf8() + "\r\nx\r\n" + longLine(100'000).toUtf8();
    load(bytes);
    EXPECT_GT(heldLines(), 60);
    EXPECT_EQ(saved(), bytes);
}

TEST_F(LoadedLongLine, SaysWhatIsDifferentWithIt) {
    load(longLine(100'000).toUtf8());
    EXPECT_FALSE(control.file().limitations().isEmpty());
    load("short\n");
    EXPECT_TRUE(control.file().limitations().isEmpty());
}

TEST_F(LoadedLongLine, IsCountedInUnitsWithOtherCharacters) {
    QString line;
    while (line.size() < 150'000)
        line += QString::fromUtf8("größe 漢字 \U0001F600 ");
    load(line.toUtf8());
    EXPECT_EQ(control.TotalLines(), 1);
    const qint64 at = line.indexOf(u'g', 120'000);
    control.setSelection(at, at + 5);
    EXPECT_EQ(control.SelText(), QString::fromUtf8("größe"));
    EXPECT_EQ(control.CurrentColumn(), at + 5);
}

TEST_F(LoadedLongLine, IsSearchedAcrossItsJoints) {
    QString line;
    for (int word = 0; line.size() < 100'000; ++word)
        line += QString::number(word * 7919) + u' ';
    load(line.toUtf8());
    const qint64 joint = control.map().joints().offsets().at(3) - 3;
    control.search().setSearchText(line.mid(joint - 2000, 4000));
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Found);
    EXPECT_EQ(control.SelStart(), joint - 2000);
    EXPECT_EQ(control.SelEnd(), joint + 2000);
    control.search().setSearchText(u"\r"_qs);
    EXPECT_EQ(control.search().findNext(), SearchOutcome::Failed);
}

TEST_F(LoadedLongLine, IsCopiedWithoutJoints) {
    const QString line = longLine(100'000);
    load(line.toUtf8());
    control.SelectAll();
    control.clipboard().Copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), line);
}

TEST_F(LoadedLongLine, IsSteppedThroughWithoutAStopAtAJoint) {
    load(longLine(100'000).toUtf8());
    const qint64 joint = control.map().joints().offsets().front();
    control.setSelection(joint - 3, joint - 3);
    for (int step = -2; step < 4; ++step) {
        key(Qt::Key_Right);
        EXPECT_EQ(control.SelStart(), joint + step);
    }
    for (int step = 2; step > -4; --step) {
        key(Qt::Key_Left);
        EXPECT_EQ(control.SelStart(), joint + step);
    }
}

TEST_F(LoadedLongLine, LosesOneCharacterPerDeletionAtAJoint) {
    const QString line = longLine(100'000);
    load(line.toUtf8());
    const qint64 joint = control.map().joints().offsets().front();
    control.setSelection(joint, joint);
    key(Qt::Key_Delete);
    QString expected = line;
    expected.remove(joint, 1);
    EXPECT_EQ(control.Text(), expected);
    control.setSelection(joint + 1, joint + 1);
    key(Qt::Key_Left);
    key(Qt::Key_Backspace);
    expected.remove(joint - 1, 1);
    EXPECT_EQ(control.Text(), expected);
    key(Qt::Key_Delete);
    key(Qt::Key_Backspace);
    expected.remove(joint - 1, 1).remove(joint - 2, 1);
    EXPECT_EQ(control.Text(), expected);
}

TEST_F(LoadedLongLine, HasOneStartAndOneEnd) {
    const QString line = u"  "_qs + longLine(100'000);
    load((line + u"\nx"_qs).toUtf8());
    control.setSelection(50'000, 50'000);
    key(Qt::Key_End);
    EXPECT_EQ(control.SelStart(), line.size());
    key(Qt::Key_Home);
    EXPECT_EQ(control.SelStart(), 2);
    key(Qt::Key_Home);
    EXPECT_EQ(control.SelStart(), 0);
    key(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(control.SelText(), line);
}

TEST_F(LoadedLongLine, IsDeletedAsAWhole) {
    load("a\n" + longLine(100'000).toUtf8() + "\nb\n");
    control.GotoTextLine(1);
    control.ExecuteCmd(160);
    EXPECT_EQ(control.Text(), u"a\nb\n"_qs);
    control.Undo();
    EXPECT_EQ(control.TotalLines(), 4);
    control.setSelection(40'000, 40'000);
    key(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(control.GetLine(1).size(), 40'000 - 2);
}

TEST_F(LoadedLongLine, KeepsNoJointBesideALineEnd) {
    const QByteArray bytes = longLine(100'000).toUtf8() + "\nsecond";
    load(bytes);
    const qint64 joint = control.map().joints().offsets().back() - (control.map().joints().offsets().size() - 1);
    control.setSelection(joint, 100'000);
    key(Qt::Key_Delete);
    EXPECT_EQ(control.TotalLines(), 2);
    EXPECT_EQ(control.GetLine(1), u"second"_qs);
    EXPECT_EQ(saved(), bytes.left(joint) + "\nsecond");
    control.Undo();
    EXPECT_EQ(saved(), bytes);
}

TEST_F(LoadedLongLine, TakesAReturnAtAJoint) {
    const QString line = longLine(100'000);
    load(line.toUtf8());
    const qint64 joint = control.map().joints().offsets().front();
    control.setSelection(joint, joint);
    key(Qt::Key_Return);
    EXPECT_EQ(control.TotalLines(), 2);
    EXPECT_EQ(control.GetLine(0), line.left(joint));
    EXPECT_EQ(control.GetLine(1), line.mid(joint));
    control.Undo();
    EXPECT_EQ(control.Text(), line);
}

TEST_F(LoadedLongLine, StaysLockedWhereAJointCouldBeTakenForALineEnd) {
    const QByteArray bytes = "one\r\ntwo\n" + longLine(TextLoader::UncutLine).toUtf8() + "\rthree\r\n";
    load(bytes);
    EXPECT_TRUE(control.Locked());
    EXPECT_LE(longestHeldLine(), LongLine);
    control.setLocked(false);
    EXPECT_TRUE(control.Locked());
    EXPECT_EQ(control.TotalLines(), 5);
    EXPECT_EQ(control.Text(), QString::fromUtf8(bytes));
    EXPECT_EQ(saved(), bytes);
}

TEST_F(LoadedLongLine, IsLockedFromItsFullLengthOn) {
    const QByteArray line = longLine(TextLoader::UncutLine - 1).toUtf8();
    load("one\r\n" + line + "\ntwo");
    EXPECT_FALSE(control.Locked());
    EXPECT_EQ(heldLines(), 3);
    load("one\r\n" + line + "x\ntwo");
    EXPECT_TRUE(control.Locked());
}

TEST_F(LoadedLongLine, StaysWholeAndCanBeEditedWhereNoJointCanStand) {
    const QByteArray bytes = "one\r\ntwo\n" + longLine(100'000).toUtf8() + "\rthree\r\n";
    load(bytes);
    EXPECT_FALSE(control.Locked());
    EXPECT_EQ(heldLines(), 5);
    EXPECT_EQ(control.TotalLines(), 5);
    EXPECT_EQ(control.Text(), QString::fromUtf8(bytes));
    EXPECT_EQ(saved(), bytes);
    control.setSelection(50'000, 50'000);
    control.typing().type(u"x"_qs);
    key(Qt::Key_Return);
    key(Qt::Key_Backspace);
    key(Qt::Key_Delete);
    control.setSelection(100'000, 100'000);
    control.setSelText(longLine(70'000));
    EXPECT_EQ(heldLines(), 5);
    EXPECT_EQ(saved(),
              bytes.left(50'000) + 'x' + bytes.mid(50'001, 49'999) + longLine(70'000).toUtf8() + bytes.mid(100'000));
    while (control.CanUndo())
        control.Undo();
    EXPECT_EQ(saved(), bytes);
    while (control.CanRedo())
        control.Redo();
    EXPECT_EQ(saved().size(), bytes.size() + 70'000);
}

TEST_F(LoadedLongLine, IsCutOnceItsTextHasOneLineEnd) {
    const QByteArray bytes = "one\r\ntwo\n" + longLine(100'000).toUtf8();
    load(bytes);
    control.setSelection(50'000, 50'000);
    control.typing().type(u"x"_qs);
    ASSERT_EQ(heldLines(), 3);
    ASSERT_TRUE(control.file().canConvertLineEnds());
    control.file().convertLineEnds(QsciScintillaBase::SC_EOL_LF);
    control.typing().type(u"y"_qs);
    EXPECT_GT(heldLines(), 3);
    EXPECT_LE(longestHeldLine(), LongLine);
    EXPECT_EQ(saved(), "one\ntwo\n" + longLine(100'000).toUtf8().insert(50'000 - 9, "xy"));
}

TEST_F(LoadedLongLine, CanBeEditedInATextWithOnlyCr) {
    const QByteArray bytes = longLine(100'000).toUtf8() + "\rtwo\rthree";
    load(bytes);
    EXPECT_FALSE(control.Locked());
    EXPECT_EQ(control.TotalLines(), 3);
    control.setSelection(0, 0);
    control.typing().type(u"x"_qs);
    EXPECT_EQ(saved(), "x" + bytes);
}

TEST_F(LoadedLongLine, TakesPastedLinesInItsOwnForm) {
    const QString line = longLine(100'000);
    load((line + u"\r\nend"_qs).toUtf8());
    QGuiApplication::clipboard()->setText(u"1\n2\r3\r\n"_qs);
    control.setSelection(0, 0);
    control.clipboard().Paste();
    EXPECT_EQ(control.Text(), u"1\r\n2\r\n3\r\n"_qs + line + u"\r\nend"_qs);
    EXPECT_EQ(control.TotalLines(), 5);
}

TEST_F(LoadedLongLine, IsCutWhenItIsPasted) {
    const QString line = longLine(500'000);
    QGuiApplication::clipboard()->setText(line);
    control.clipboard().Paste();
    EXPECT_LE(longestHeldLine(), LongLine);
    EXPECT_EQ(control.TotalLines(), 1);
    EXPECT_EQ(control.Text(), line);
    control.Undo();
    EXPECT_EQ(control.Text(), QString());
    control.Redo();
    EXPECT_EQ(control.Text(), line);
    EXPECT_EQ(control.TotalLines(), 1);
}

TEST_F(LoadedLongLine, IsCutWhenItGrowsByTyping) {
    control.setText(longLine(LongLine - 1));
    control.setSelection(10, 10);
    EXPECT_EQ(heldLines(), 1);
    for (int i = 0; i < 5; ++i)
        control.typing().type(u"y"_qs);
    EXPECT_GT(heldLines(), 1);
    EXPECT_EQ(control.TotalLines(), 1);
    EXPECT_EQ(control.Text().size(), LongLine + 4);
    while (control.CanUndo())
        control.Undo();
    EXPECT_EQ(control.Text(), QString());
}

TEST_F(LoadedLongLine, TellsOfOneChangeWhenPasted) {
    QGuiApplication::clipboard()->setText(longLine(200'000));
    QSignalSpy changes(&control, &TextControl::Change);
    control.clipboard().Paste();
    EXPECT_EQ(changes.count(), 1);
}

/// Keys and clicks at random on the control, and the same on a plain text.
TEST_F(LoadedLongLine, AgreesWithAPlainTextThroughRandomEdits) {
    control.typing().setAutoIndent(false);
    for (const unsigned seed : {1U, 2U}) {
        std::mt19937 random(seed);
        const QString lineEnd = seed % 2 != 0 ? u"\n"_qs : u"\r\n"_qs;
        QString model = longLine(70'000) + lineEnd + longLine(90'000) + lineEnd + u"end"_qs;
        const QString first = model;
        load(model.toUtf8());
        // Each step lays out a line of some 64 KB, which is nearly all it takes.
        for (int step = 0; step < 70; ++step) {
            const auto& joints = control.map().joints().offsets();
            // Half of the places lie at a joint, where it is hard.
            qint64 at = static_cast<qint64>(random() % static_cast<unsigned>(model.size()));
            if (!joints.empty() && random() % 2 == 0)
                at = control.map().positionOf(joints[random() % joints.size()]) + static_cast<qint64>(random() % 3) - 1;
            at = std::clamp<qint64>(at, 0, model.size());
            const auto insideLineEnd = [&](qint64 place) {
                return place > 0 && place < model.size() && model[place] == u'\n' && model[place - 1] == u'\r';
            };
            if (insideLineEnd(at))
                ++at;
            qint64 to = std::min<qint64>(model.size(), at + static_cast<qint64>(random() % 6000));
            if (insideLineEnd(to))
                ++to;
            control.setSelection(at, at);
            switch (random() % 6) {
                case 0:
                    control.typing().type(u"xyz"_qs);
                    model.insert(at, u"xyz"_qs);
                    break;
                case 1:
                    key(Qt::Key_Backspace);
                    if (at > 0)
                        model.remove(at - (insideLineEnd(at - 1) ? 2 : 1), insideLineEnd(at - 1) ? 2 : 1);
                    break;
                case 2:
                    key(Qt::Key_Delete);
                    model.remove(at, insideLineEnd(at + 1) ? 2 : 1);
                    break;
                case 3:
                    key(Qt::Key_Return);
                    model.insert(at, lineEnd);
                    break;
                case 4:
                    control.setSelection(at, to);
                    key(Qt::Key_Delete);
                    if (to > at)
                        model.remove(at, to - at);
                    else
                        model.remove(at, insideLineEnd(at + 1) ? 2 : 1);
                    break;
                default:
                    control.setSelection(at, to);
                    control.setSelText(longLine(static_cast<qint64>(random() % 80'000)));
                    model.replace(at, to - at, control.Text().mid(at, control.SelStart() - at));
                    break;
            }
            ASSERT_EQ(control.Text(), model) << "seed " << seed << " step " << step;
            ASSERT_EQ(control.TotalLines(), model.count(u'\n') + 1) << "seed " << seed << " step " << step;
            ASSERT_LE(longestHeldLine(), LongLine + 2) << "seed " << seed << " step " << step;
            if (model.size() > 400'000) {
                control.setSelection(0, 200'000);
                if (insideLineEnd(200'000))
                    control.setSelection(0, 200'001);
                const qint64 removed = control.SelEnd();
                key(Qt::Key_Delete);
                model.remove(0, removed);
            }
        }
        const QString last = model;
        while (control.CanUndo())
            control.Undo();
        EXPECT_EQ(control.Text(), first);
        while (control.CanRedo())
            control.Redo();
        EXPECT_EQ(control.Text(), last);
        EXPECT_EQ(saved(), last.toUtf8());
    }
}
