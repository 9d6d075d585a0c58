#include "editor/Editor.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "text/held/Joints.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

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
