#include "hex/HexFixture.h"
#include "hex/bytes/HexChanges.h"
#include "hex/grid/HexColours.h"
#include "widgets/Contrast.h"

#include <QPalette>

namespace {

using MarksOfChanges = HexFixture;

constexpr FilePosition Place(7);

QPalette paletteOf(const QColor& text, const QColor& base) {
    QPalette palette;
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Base, base);
    return palette;
}

}  // namespace

TEST(Changes, AreTypedBytesThatDiffer) {
    HexChanges changes;
    EXPECT_FALSE(changes.isMarked(Place, 1));
    changes.type(Place, 1, 2);
    EXPECT_TRUE(changes.isMarked(Place, 2));
    EXPECT_FALSE(changes.isMarked(Place + 1, 2));
    changes.type(Place, 2, 3);
    EXPECT_TRUE(changes.isMarked(Place, 3));
    EXPECT_EQ(changes.count(), 1);
}

TEST(Changes, EndWhereAByteIsItsOldSelfAgain) {
    HexChanges changes;
    changes.type(Place, 1, 1);
    EXPECT_EQ(changes.count(), 0);
    changes.type(Place, 1, 2);
    changes.type(Place, 2, 1);
    EXPECT_EQ(changes.count(), 0);
    changes.type(Place, 1, 2);
    changes.type(Place, 2, 3);
    changes.restore(Place, 2);
    EXPECT_TRUE(changes.isMarked(Place, 2));
    changes.restore(Place, 1);
    EXPECT_EQ(changes.count(), 0);
    changes.restore(Place + 1, 9);
    EXPECT_EQ(changes.count(), 0);
}

TEST(Changes, LookAtTheByteThatIsThereNow) {
    HexChanges changes;
    changes.type(Place, 1, 2);
    EXPECT_FALSE(changes.isMarked(Place, 1));
    EXPECT_TRUE(changes.isMarked(Place, 4));
}

TEST(Colours, OfChangesCanBeReadInEveryTheme) {
    for (int grey = 0; grey <= 255; grey += 5) {
        const QColor base(grey, grey, grey);
        const QPalette palette = paletteOf(grey > 127 ? Qt::black : Qt::white, base);
        const QColor changed = HexColours::changedText(palette);
        EXPECT_GE(Contrast::between(changed, HexColours::changedBase(palette)), 4.5) << grey;
        if (grey < 64 || grey > 192) {
            EXPECT_NE(changed.rgb(), palette.color(QPalette::Text).rgb()) << grey;
        }
    }
    const QPalette light = paletteOf(Qt::black, Qt::white);
    EXPECT_GE(Contrast::between(HexColours::changedText(light), Qt::white), 4.5);
}

TEST_F(MarksOfChanges, TellTypedBytesApartInBothPanes) {
    open(someBytes(400));
    const auto marked = [this](int row, int col) {
        EXPECT_EQ(pane(1)->isMarked({row, col}), pane(2)->isMarked({row, col}));
        return pane(1)->isMarked({row, col});
    };
    select(1, 2);
    type(u"f"_qs);
    EXPECT_FALSE(marked(1, 2));
    type(u"f"_qs);
    EXPECT_TRUE(marked(1, 2));
    EXPECT_FALSE(marked(1, 3));
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    type(u"q"_qs);
    EXPECT_TRUE(marked(1, 3));
    m_hex->MoveNextLine();
    EXPECT_TRUE(marked(0, 2));
    EXPECT_FALSE(marked(1, 2));
    m_hex->cmdUndo();
    EXPECT_FALSE(marked(1, 3));
    EXPECT_TRUE(marked(1, 2));
    m_hex->cmdUndo();
    EXPECT_FALSE(marked(1, 2));
}

TEST_F(MarksOfChanges, EndWithASaveAndWithALoad) {
    open(someBytes(400));
    type(u"ff"_qs);
    EXPECT_FALSE(m_hex->SaveFile(at(u"none/file"_qs), false));
    EXPECT_TRUE(pane(1)->isMarked({0, 0}));
    EXPECT_TRUE(m_hex->SaveFile(at(u"file"_qs), false));
    EXPECT_FALSE(pane(1)->isMarked({0, 0}));
    m_hex->cmdUndo();
    EXPECT_FALSE(pane(1)->isMarked({0, 0}));
    type(u"ee"_qs);
    EXPECT_TRUE(pane(1)->isMarked({0, 0}));
    open(someBytes(300));
    EXPECT_FALSE(pane(1)->isMarked({0, 0}));
}

TEST_F(MarksOfChanges, AreNotMadeByReplacingAndFilling) {
    open("abcabc");
    EXPECT_EQ(m_hex->ReplaceAll(u"a"_qs, u"7A "_qs, 2), 2);
    m_hex->ReplaceBytes(u"79 "_qs, 2);
    m_hex->fillBlock(Offset(2), Offset(2), 0x78);
    expectShown("zyxzbc");
    for (int col = 0; col < 6; ++col) {
        EXPECT_FALSE(pane(1)->isMarked({0, col})) << col;
    }
}

TEST_F(MarksOfChanges, ArePaintedInTheirColour) {
    open(someBytes(400));
    select(5, 5);
    const auto hasColour = [this](int number, const QColor& colour) {
        const QImage picture = pane(number)->grab(pane(number)->cellRect({2, 2})).toImage();
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixel(x, y) == colour.rgb())
                    return true;
            }
        }
        return false;
    };
    for (const int number : {1, 2}) {
        EXPECT_FALSE(hasColour(number, HexColours::changedBase(pane(number)->palette())));
    }
    select(2, 2);
    type(u"ff"_qs);
    select(5, 5);
    for (const int number : {1, 2}) {
        EXPECT_TRUE(hasColour(number, HexColours::changedBase(pane(number)->palette())));
    }
}
