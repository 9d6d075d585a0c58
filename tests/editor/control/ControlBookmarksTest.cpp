#include "editor/Editor.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "text/held/Joints.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace {

struct Bookmarks : testing::Test {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    QSignalSpy failures{&control, &TextControl::CommandFailed};

    void lines(int count) {
        QString text;
        for (int line = 0; line < count; ++line)
            text += u"line %1\n"_qs.arg(line);
        control.setText(text);
    }
    void mark(std::initializer_list<qint64> marked) {
        for (const qint64 line : marked)
            control.bookmarks().setBookmarkAt(line, true);
    }
    /// A text, marks at some of its lines, and an empty undo history.
    void hold(const QString& text, std::initializer_list<qint64> lines) {
        control.setText(text);
        control.bookmarks().ClearAllBookmarks();
        mark(lines);
        control.SendScintilla(TextControl::SCI_EMPTYUNDOBUFFER);
    }
    void run(int command, qint64 anchor, qint64 caret) {
        control.setSelection(anchor, caret);
        control.ExecuteCmd(command);
    }
    std::vector<qint64> marked() const {
        std::vector<qint64> found;
        for (qint64 line = 0; line < control.TotalLines(); ++line) {
            if (control.bookmarks().BookmarkAt(line))
                found.push_back(line);
        }
        return found;
    }
};

using Lines = std::vector<qint64>;

}  // namespace

TEST_F(Bookmarks, AreSetAndTakenLineByLine) {
    lines(5);
    mark({1, 3, 3});
    EXPECT_EQ(marked(), (Lines{1, 3}));
    control.bookmarks().setBookmarkAt(3, false);
    control.bookmarks().setBookmarkAt(4, false);
    EXPECT_EQ(marked(), Lines{1});
    control.bookmarks().setBookmarkAt(-1, true);
    control.bookmarks().setBookmarkAt(99, true);
    EXPECT_EQ(marked(), Lines{1});
    EXPECT_FALSE(control.bookmarks().BookmarkAt(-1));
    EXPECT_FALSE(control.bookmarks().BookmarkAt(99));
}

TEST_F(Bookmarks, AreToggledAtTheCaret) {
    lines(5);
    control.GotoTextLine(2);
    control.bookmarks().ToggleBookmark();
    EXPECT_EQ(marked(), Lines{2});
    control.bookmarks().ToggleBookmark();
    EXPECT_EQ(marked(), Lines());
}

TEST_F(Bookmarks, AreGoneThroughAroundTheEnds) {
    lines(10);
    mark({2, 5, 8});
    Lines visited;
    for (int step = 0; step < 4; ++step) {
        control.bookmarks().NextBookmark();
        visited.push_back(control.CurrentLine());
    }
    EXPECT_EQ(visited, (Lines{2, 5, 8, 2}));
    visited.clear();
    for (int step = 0; step < 4; ++step) {
        control.bookmarks().PrevBookmark();
        visited.push_back(control.CurrentLine());
    }
    EXPECT_EQ(visited, (Lines{8, 5, 2, 8}));
    control.bookmarks().FirstBookmark();
    EXPECT_EQ(control.CurrentLine(), 2);
    control.bookmarks().LastBookmark();
    EXPECT_EQ(control.CurrentLine(), 8);
    EXPECT_EQ(failures.count(), 0);
}

TEST_F(Bookmarks, AtBothEndsOfTheTextAreReached) {
    lines(3);
    mark({0, 3});
    control.GotoTextLine(3);
    control.bookmarks().NextBookmark();
    EXPECT_EQ(control.CurrentLine(), 0);
    control.bookmarks().PrevBookmark();
    EXPECT_EQ(control.CurrentLine(), 3);
}

TEST_F(Bookmarks, ThatAreNotThereLeaveTheCaret) {
    lines(5);
    control.setSelection(9, 12);
    for (const auto jump : {&ControlBookmarks::FirstBookmark, &ControlBookmarks::LastBookmark,
                            &ControlBookmarks::NextBookmark, &ControlBookmarks::PrevBookmark})
        (control.bookmarks().*jump)();
    EXPECT_EQ(failures.count(), 4);
    EXPECT_EQ(control.SelStart(), 9);
    EXPECT_EQ(control.SelEnd(), 12);
}

TEST_F(Bookmarks, AreAllCleared) {
    lines(5);
    mark({0, 4});
    control.bookmarks().ClearAllBookmarks();
    EXPECT_EQ(marked(), Lines());
}

TEST_F(Bookmarks, StayWithTheirLines) {
    lines(5);
    mark({3});
    control.setSelection(0, 0);
    control.typing().type(u"\n"_qs);
    EXPECT_EQ(marked(), Lines{4});
    control.Undo();
    EXPECT_EQ(marked(), Lines{3});
}

TEST_F(Bookmarks, MayBeSetInALockedDocument) {
    lines(5);
    control.setLocked(true);
    mark({3});
    EXPECT_EQ(marked(), Lines{3});
}

TEST_F(Bookmarks, OfAMillionLinesAreGoneThrough) {
    control.setText(QString(1'000'000, u'\n'));
    for (qint64 line = 0; line < 1'000'000; ++line)
        control.bookmarks().setBookmarkAt(line, true);
    control.bookmarks().LastBookmark();
    EXPECT_EQ(control.CurrentLine(), 999'999);
    control.bookmarks().NextBookmark();
    EXPECT_EQ(control.CurrentLine(), 0);
    control.bookmarks().ClearAllBookmarks();
    control.bookmarks().NextBookmark();
    EXPECT_EQ(failures.count(), 1);
}

TEST_F(Bookmarks, OfALineInPiecesAreOne) {
    QTemporaryDir folder;
    QFile file(folder.filePath(u"text"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("first\n" + QByteArray(100'000, 'x') + "\nthird\n");
    file.close();
    ASSERT_FALSE(control.file().OpenFile(file.fileName()));
    ASSERT_FALSE(control.map().joints().empty());
    control.setSelection(50'000, 50'000);
    control.bookmarks().ToggleBookmark();
    EXPECT_EQ(marked(), Lines{1});
    control.bookmarks().NextBookmark();
    EXPECT_EQ(control.SelStart(), 6);
    mark({0, 2});
    control.bookmarks().PrevBookmark();
    EXPECT_EQ(control.CurrentLine(), 0);
    control.bookmarks().NextBookmark();
    control.bookmarks().NextBookmark();
    EXPECT_EQ(control.CurrentLine(), 2);
    control.setSelection(90'000, 90'000);
    control.bookmarks().ToggleBookmark();
    EXPECT_EQ(marked(), (Lines{0, 2}));
}

TEST_F(Bookmarks, OfJoinedLinesBecomeOne) {
    QTemporaryDir folder;
    QFile file(folder.filePath(u"text"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(100'000, 'x') + "\nsecond\n");
    file.close();
    ASSERT_FALSE(control.file().OpenFile(file.fileName()));
    mark({1});
    control.setSelection(100'000, 100'001);
    control.setSelText(QString());
    EXPECT_EQ(marked(), Lines{0});
    control.GotoTextLine(0);
    control.bookmarks().ToggleBookmark();
    EXPECT_EQ(marked(), Lines());
}

TEST_F(Bookmarks, DisappearWithADeletedLineAndComeBackByUndo) {
    struct Row {
        const char* text;
        std::initializer_list<qint64> marks;
        qint64 anchor;
        qint64 caret;
        Lines left;
    };
    const Row rows[] = {
        {"a\nb\nc", {1}, 2, 2, {}},
        {"a\nb\nc", {2}, 2, 2, {1}},
        {"a\nb\nc", {0, 1, 2}, 2, 2, {0, 1}},
        {"a\nb\nc\nd", {0, 1, 2}, 1, 3, {0}},
        {"a\r\nb\r\nc", {1}, 3, 3, {}},
        {"a\nb", {1}, 2, 2, {}},
        {"a\n\nb", {1}, 2, 2, {}},
        {"a\n\nb", {2}, 2, 2, {1}},
        {"a", {0}, 0, 0, {}},
        {"a\n", {1}, 2, 2, {1}},
    };
    for (const Row& row : rows) {
        for (const int command : {int{Command::DeleteLine}, int{Command::CutLine}}) {
            hold(QString::fromLatin1(row.text), row.marks);
            const Lines before = marked();
            run(command, row.anchor, row.caret);
            EXPECT_EQ(marked(), row.left) << row.text;
            if (!control.CanUndo())
                continue;
            control.Undo();
            EXPECT_EQ(marked(), before) << row.text;
            control.Redo();
            EXPECT_EQ(marked(), row.left) << row.text;
            control.Undo();
            EXPECT_EQ(marked(), before) << row.text;
        }
    }
}

TEST_F(Bookmarks, StayWithWhatIsLeftOfTheirLines) {
    struct Row {
        const char* text;
        std::initializer_list<qint64> marks;
        qint64 from;
        qint64 to;
        Lines left;
    };
    const Row rows[] = {
        {"one\ntwo\nsix", {1}, 3, 4, {0}},  // joined, with text of both
        {"one\ntwo\nsix", {0}, 3, 4, {0}},
        {"one\ntwo\nsix", {2}, 3, 4, {1}},
        {"one\n\nsix", {2}, 4, 5, {1}},  // an empty line in front is deleted
        {"one\n\nsix", {1}, 4, 5, {}},
        {"one\n\nsix", {1}, 3, 4, {}},
        {"one\ntwo\nsix", {0, 1}, 0, 5, {0}},  // what is left is of the second line
        {"one\ntwo\nsix", {0}, 0, 5, {}},
        {"one\ntwo\nsix", {0, 1}, 2, 7, {0}},
        {"one\ntwo\nsix", {1}, 2, 7, {}},  // what is left is of the first
        {"one\ntwo\nsix", {1}, 1, 10, {}},
        {"one\ntwo\nsix", {1}, 5, 6, {1}},
        {"one\ntwo\nsix", {1}, 4, 7, {1}},  // within a line
        {"one\r\ntwo\r\nsix", {1}, 3, 5, {0}},
        {"one\r\ntwo\r\nsix", {1, 2}, 5, 10, {1}},
        {"one\r\ntwo\r\nsix", {1, 2}, 4, 9, {1}},  // half of a line end
        {"one\ntwo\nsix", {0, 1, 2}, 0, 11, {}},
    };
    for (const Row& row : rows) {
        hold(QString::fromLatin1(row.text), row.marks);
        const Lines before = marked();
        control.setSelection(row.from, row.to);
        control.runCommand(TextControl::SCI_CLEAR);
        EXPECT_EQ(marked(), row.left) << row.text << row.from << row.to;
        control.Undo();
        EXPECT_EQ(marked(), before) << row.text << row.from << row.to;
        control.Redo();
        EXPECT_EQ(marked(), row.left) << row.text << row.from << row.to;
    }
}

TEST_F(Bookmarks, OfAJoiningBackspaceKeepTheirPlaceAfterUndo) {
    hold(u"one\ntwo\nsix"_qs, {1});
    control.setSelection(4, 4);
    control.runCommand(TextControl::SCI_DELETEBACK);
    EXPECT_EQ(control.Text(), u"onetwo\nsix"_qs);
    EXPECT_EQ(marked(), Lines{0});
    control.Undo();
    EXPECT_EQ(marked(), Lines{1});
    control.Redo();
    EXPECT_EQ(marked(), Lines{0});
}

TEST_F(Bookmarks, OfSeveralCaretsKeepTheirPlacesAfterUndo) {
    hold(u"a\nb\nc\nd\ne"_qs, {1, 2, 4});
    control.SendScintilla(TextControl::SCI_SETSELECTION, 2UL, 2L);
    control.SendScintilla(TextControl::SCI_ADDSELECTION, 8UL, 8L);
    control.runCommand(TextControl::SCI_DELETEBACK);
    EXPECT_EQ(control.Text(), u"ab\nc\nde"_qs);
    EXPECT_EQ(marked(), (Lines{0, 1, 2}));
    control.Undo();
    EXPECT_EQ(control.Text(), u"a\nb\nc\nd\ne"_qs);
    EXPECT_EQ(marked(), (Lines{1, 2, 4}));
    control.SendScintilla(TextControl::SCI_SETSELECTION, 2UL, 2L);
    control.SendScintilla(TextControl::SCI_ADDSELECTION, 8UL, 8L);
    control.ExecuteCmd(Command::DeleteLine);
    EXPECT_EQ(control.Text(), u"a\nc\nd\n"_qs);
    EXPECT_EQ(marked(), Lines{1});
    control.Undo();
    EXPECT_EQ(marked(), (Lines{1, 2, 4}));
}

TEST_F(Bookmarks, AreSortedWithTheirLines) {
    const QString text = u"x\nd\nb\nd\na\ny"_qs;
    hold(text, {1, 2, 5});
    run(Command::SortLinesAscending, 2, 9);
    EXPECT_EQ(control.Text(), u"x\na\nb\nd\nd\ny"_qs);
    EXPECT_EQ(marked(), (Lines{2, 3, 5}));
    control.Undo();
    EXPECT_EQ(control.Text(), text);
    EXPECT_EQ(marked(), (Lines{1, 2, 5}));
    control.Redo();
    EXPECT_EQ(marked(), (Lines{2, 3, 5}));
    control.Undo();
    run(Command::SortLinesDescending, 0, text.size());
    EXPECT_EQ(control.Text(), u"y\nx\nd\nd\nb\na"_qs);
    EXPECT_EQ(marked(), (Lines{0, 2, 4}));
    control.Undo();
    EXPECT_EQ(marked(), (Lines{1, 2, 5}));
}

TEST_F(Bookmarks, ThatWereSetSinceCountMoreThanUndo) {
    hold(u"a\nb\nc"_qs, {1});
    run(Command::DeleteLine, 2, 2);
    mark({0, 1});
    control.Undo();
    EXPECT_EQ(marked(), (Lines{0, 1, 2})) << "the deleted line has its own again, the next line the new one";

    hold(u"one\ntwo\nsix"_qs, {1});
    control.setSelection(3, 4);
    control.runCommand(TextControl::SCI_CLEAR);
    control.bookmarks().setBookmarkAt(0, false);
    control.Undo();
    EXPECT_EQ(marked(), Lines()) << "the line that was joined has lost it";

    hold(u"a\nb\nc"_qs, {1});
    run(Command::DeleteLine, 2, 2);
    control.bookmarks().ClearAllBookmarks();
    control.Undo();
    EXPECT_EQ(marked(), Lines()) << "all were cleared";
}

TEST_F(Bookmarks, OfInsertedLinesAreBackAfterUndoAndRedo) {
    hold(u"a\nb"_qs, {});
    control.setSelection(2, 2);
    control.setSelText(u"1\n2\n3\n"_qs);
    mark({2, 4});
    control.Undo();
    EXPECT_EQ(marked(), Lines{1});
    control.Redo();
    EXPECT_EQ(marked(), (Lines{2, 4}));
}

TEST_F(Bookmarks, OfALineInPiecesComeBackToIt) {
    const QString line = QString(150'000, u'x');
    const QString text = u"first\n"_qs + line + u"\nlast"_qs;
    hold(text, {1, 2});
    ASSERT_FALSE(control.map().joints().empty());
    run(Command::DeleteLine, 80'000, 80'000);
    EXPECT_EQ(marked(), Lines{1});
    control.Undo();
    EXPECT_EQ(marked(), (Lines{1, 2}));
    // Its first pieces, and then as many words of it as make it short.
    for (const qint64 end : {20'000, 149'990}) {
        control.setSelection(6, end);
        control.runCommand(TextControl::SCI_CLEAR);
        EXPECT_EQ(marked(), (Lines{1, 2})) << end;
        control.Undo();
        EXPECT_EQ(marked(), (Lines{1, 2})) << end;
    }
    control.setSelection(6, 6);
    control.typing().type(u"\n"_qs);
    EXPECT_EQ(marked(), (Lines{2, 3}));
    control.Undo();
    EXPECT_EQ(marked(), (Lines{1, 2}));
    control.setSelection(100'000, 100'000);
    control.typing().type(u"\n"_qs);
    EXPECT_EQ(marked(), (Lines{1, 3}));
    control.Undo();
    EXPECT_EQ(marked(), (Lines{1, 2}));
    control.setSelection(5, 6);
    control.runCommand(TextControl::SCI_CLEAR);
    EXPECT_EQ(marked(), (Lines{0, 1}));
    control.Undo();
    EXPECT_EQ(marked(), (Lines{1, 2}));
    EXPECT_TRUE(control.Text() == text);
}

TEST_F(Bookmarks, OfAnotherTextAreNotBroughtBack) {
    QTemporaryDir folder;
    QFile file(folder.filePath(u"text"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a\nb\nc\nd\n");
    file.close();
    hold(u"a\nb\nc"_qs, {1});
    run(Command::DeleteLine, 2, 2);
    ASSERT_FALSE(control.file().OpenFile(file.fileName()));
    EXPECT_EQ(marked(), Lines());
    run(Command::DeleteLine, 2, 2);
    control.Undo();
    EXPECT_EQ(marked(), Lines());
}

/// Whatever is edited: each step back brings the marks of before, and each step onward those of after.
TEST_F(Bookmarks, FollowAnyEditsBackAndForth) {
    const QStringList pieces[] = {{u"a"_qs, u"\n"_qs, u"\n\n"_qs, u"b\nc"_qs, u"\nd\n"_qs},
                                  {u"a"_qs, u"\r\n"_qs, u"\r\n\r\n"_qs, u"b\r\nc"_qs, u"\r\nd\r\n"_qs},
                                  {u"a"_qs, u"\r"_qs, u"\n"_qs, u"\r\n"_qs, u"b\rc"_qs, u"\nd\r"_qs}};
    for (unsigned seed = 0; seed < 150; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&random](qint64 end) { return static_cast<qint64>(random() % static_cast<quint64>(end)); };
        const QStringList& pool = pieces[seed % 3];
        QString text;
        while (text.size() < 40)
            text += pool[below(pool.size())];
        hold(text, {});
        for (qint64 line = 0; line < control.TotalLines(); ++line)
            control.bookmarks().setBookmarkAt(line, below(2) == 0);
        std::vector<Lines> states{marked()};
        std::vector<QString> texts{control.Text()};
        quint64 changes = control.changeCount();
        for (int edit = 0; edit < 12; ++edit) {
            control.setSelection(below(texts.back().size() + 1), below(texts.back().size() + 1));
            switch (below(5)) {
                case 0:
                    control.runCommand(TextControl::SCI_DELETEBACK);
                    break;
                case 1:
                    control.ExecuteCmd(below(2) == 0 ? Command::DeleteLine : Command::SortLinesAscending);
                    break;
                case 2:
                    control.setSelText(pool[below(pool.size())] + pool[below(pool.size())]);
                    break;
                case 3:
                    control.setSelection(control.SelStart(), control.SelStart());
                    control.setSelText(pool[below(pool.size())]);
                    break;
                default:
                    control.runCommand(TextControl::SCI_CLEAR);
            }
            control.breakUndo();
            if (std::exchange(changes, control.changeCount()) == control.changeCount())
                continue;
            states.push_back(marked());
            texts.push_back(control.Text());
        }
        for (int round = 0; round < 2; ++round) {
            for (std::size_t step = states.size(); step-- > 1;) {
                control.Undo();
                ASSERT_EQ(control.Text(), texts[step - 1]) << seed << " " << step;
                EXPECT_EQ(marked(), states[step - 1]) << seed << " back " << step;
            }
            for (std::size_t step = 1; step < states.size(); ++step) {
                control.Redo();
                ASSERT_EQ(control.Text(), texts[step]) << seed << " " << step;
                EXPECT_EQ(marked(), states[step]) << seed << " onward " << step;
            }
        }
    }
}
