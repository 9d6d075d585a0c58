#include "shell/documents/MdiArrange.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

const QRect room(10, 20, 301, 200);

}  // namespace

TEST(MdiGeometry, BandsShareTheHeightOverTheFullWidth) {
    const QList<QRect> rects = MdiArrange::bands(room, 3);
    ASSERT_EQ(rects.size(), 3);
    int next = room.top();
    for (const QRect& rect : rects) {
        EXPECT_EQ(rect.left(), room.left());
        EXPECT_EQ(rect.width(), room.width());
        EXPECT_EQ(rect.top(), next);
        next = rect.bottom() + 1;
    }
    EXPECT_EQ(next, room.bottom() + 1);
}

TEST(MdiGeometry, ColumnsShareTheWidthOverTheFullHeight) {
    const QList<QRect> rects = MdiArrange::columns(room, 4);
    ASSERT_EQ(rects.size(), 4);
    int next = room.left();
    for (const QRect& rect : rects) {
        EXPECT_EQ(rect.top(), room.top());
        EXPECT_EQ(rect.height(), room.height());
        EXPECT_EQ(rect.left(), next);
        next = rect.right() + 1;
    }
    EXPECT_EQ(next, room.right() + 1);
}

TEST(MdiGeometry, CascadeStepsAndStaysInside) {
    const QList<QRect> rects = MdiArrange::cascade(room, 20, 24);
    ASSERT_EQ(rects.size(), 20);
    EXPECT_EQ(rects[0].topLeft(), room.topLeft());
    EXPECT_EQ(rects[1].topLeft(), room.topLeft() + QPoint(24, 24));
    for (const QRect& rect : rects) {
        EXPECT_TRUE(room.contains(rect));
        EXPECT_EQ(rect.size(), rects[0].size());
    }
}

TEST(MdiGeometry, CascadeInNoRoomAtAllStillPlacesEachWindow) {
    EXPECT_EQ(MdiArrange::cascade(QRect(0, 0, 0, 0), 5, 24).size(), 5);
}

TEST(MdiGeometry, NothingIsArrangedIntoNothing) {
    EXPECT_TRUE(MdiArrange::bands(room, 0).isEmpty());
    EXPECT_TRUE(MdiArrange::columns(room, 0).isEmpty());
    EXPECT_TRUE(MdiArrange::cascade(room, 0, 24).isEmpty());
    EXPECT_TRUE(MdiArrange::iconCorners(room, 0, QSize(100, 30)).isEmpty());
}

TEST(MdiGeometry, IconsFillRowsFromTheLowerEdgeUp) {
    const QList<QPoint> corners = MdiArrange::iconCorners(room, 4, QSize(100, 30));
    EXPECT_EQ(corners, QList<QPoint>({{10, 190}, {110, 190}, {210, 190}, {10, 160}}));
}
