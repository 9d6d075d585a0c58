#include "editor/Editor.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/TextControl.h"
#include "editor/windows/SearchRange.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace {

struct Chosen : testing::Test {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    SearchRange range{control, control.selected(), control.search()};

    Chosen() {
        control.setText(u"one two three four"_qs);
        control.setSelection(4, 13);
    }
    std::pair<qint64, qint64> places() const {
        const auto ranges = range.ranges().value_or(std::vector<TextMatch>());
        return ranges.size() == 1 ? std::pair(ranges[0].from, ranges[0].to) : std::pair<qint64, qint64>(-1, -1);
    }
    void insert(qint64 at, const char* text) {
        control.setSelection(at, at);
        control.setSelText(QString::fromUtf8(text));
    }
    void remove(qint64 from, qint64 to) {
        control.SendScintilla(TextControl::SCI_DELETERANGE, static_cast<unsigned long>(from),
                              static_cast<long>(to - from));
    }
};

using SearchRangeOfAControl = Chosen;
using Places = std::pair<qint64, qint64>;

}  // namespace

TEST_F(SearchRangeOfAControl, IsNothingBeforeSomethingIsSelected) {
    const SearchRange fresh(control, control.selected(), control.search());
    EXPECT_FALSE(fresh.ranges());
    EXPECT_EQ(places(), Places(4, 13));
}

TEST_F(SearchRangeOfAControl, IsWhatIsSelectedAnewButNoCaretAndNoMatch) {
    control.setSelection(2, 2);
    EXPECT_EQ(places(), Places(4, 13));
    control.search().setSearchText(u"four"_qs);
    control.search().findNext();
    EXPECT_EQ(control.SelText(), u"four"_qs);
    EXPECT_EQ(places(), Places(4, 13));
    control.setSelection(8, 2);
    EXPECT_EQ(places(), Places(2, 8));
    control.search().findNext();
    range.takeSelection();
    EXPECT_EQ(places(), Places(14, 18));
}

TEST_F(SearchRangeOfAControl, GoesAlongWithEdits) {
    insert(0, "ab");
    EXPECT_EQ(places(), Places(6, 15));
    insert(17, "ab");
    EXPECT_EQ(places(), Places(6, 15));
    insert(8, "ab");
    EXPECT_EQ(places(), Places(6, 17));
    remove(0, 2);
    EXPECT_EQ(places(), Places(4, 15));
    remove(2, 6);
    EXPECT_EQ(places(), Places(2, 11));
    remove(10, 13);
    EXPECT_EQ(places(), Places(2, 10));
    remove(0, 12);
    EXPECT_EQ(places(), Places(0, 0));
}

TEST_F(SearchRangeOfAControl, HoldsWhatIsPutInAtItsEnds) {
    insert(4, "a");
    EXPECT_EQ(places(), Places(4, 14));
    insert(14, "b");
    EXPECT_EQ(places(), Places(4, 15));
}

TEST_F(SearchRangeOfAControl, IsEachOfSeveralRangesUntilTheyAreJoined) {
    control.SendScintilla(TextControl::SCI_SETSELECTION, 7UL, 4L);
    control.SendScintilla(TextControl::SCI_ADDSELECTION, 18UL, 14L);
    range.takeSelection();
    EXPECT_EQ(range.ranges(), (std::vector<TextMatch>{{4, 7}, {14, 18}}));
    insert(9, "ab");
    EXPECT_EQ(range.ranges(), (std::vector<TextMatch>{{4, 7}, {16, 20}}));
    remove(6, 8);
    EXPECT_EQ(range.ranges(), (std::vector<TextMatch>{{4, 6}, {14, 18}}));
    remove(5, 15);
    EXPECT_FALSE(range.ranges());
}

TEST_F(SearchRangeOfAControl, EndsWithALoad) {
    QTemporaryDir folder;
    QFile file(folder.filePath(u"a"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("another text of some length");
    file.close();
    ASSERT_FALSE(control.file().OpenFile(file.fileName()));
    EXPECT_FALSE(range.ranges());
    insert(0, "a");
    EXPECT_FALSE(range.ranges());
}
