#include "widgets/DialogPlace.h"

#include <gtest/gtest.h>

namespace {

constexpr QRect Screen(0, 0, 1000, 800);
constexpr QSize Dialog(300, 200);

QRect at(int x, int y) {
    return {QPoint(x, y), Dialog};
}

}  // namespace

TEST(DialogPlace, IsTheUpperRightCornerOfTheText) {
    const QRect text(100, 50, 600, 500);
    const QRect place(DialogPlace::cornerOf(text, Dialog, Screen), Dialog);
    EXPECT_TRUE(text.contains(place));
    EXPECT_GT(place.center().x(), text.center().x());
    EXPECT_LT(place.bottom(), text.center().y());
}

TEST(DialogPlace, IsOnTheScreen) {
    EXPECT_TRUE(Screen.contains(QRect(DialogPlace::cornerOf({900, 700, 600, 500}, Dialog, Screen), Dialog)));
    EXPECT_TRUE(Screen.contains(QRect(DialogPlace::cornerOf({-500, -300, 600, 500}, Dialog, Screen), Dialog)));
}

TEST(DialogPlace, StaysWhereItCoversNoMatch) {
    EXPECT_EQ(DialogPlace::besideMatch({10, 10, 50, 20}, at(200, 100), Screen), QPoint(200, 100));
}

TEST(DialogPlace, IsBelowAMatchThatWouldBeCovered) {
    const QRect match(250, 150, 50, 20);
    const QRect place(DialogPlace::besideMatch(match, at(200, 100), Screen), Dialog);
    EXPECT_FALSE(place.intersects(match));
    EXPECT_GT(place.top(), match.bottom());
    EXPECT_EQ(place.left(), 200);
}

TEST(DialogPlace, IsAboveAMatchWithNoRoomBelow) {
    const QRect match(250, 700, 50, 20);
    const QRect place(DialogPlace::besideMatch(match, at(200, 590), Screen), Dialog);
    EXPECT_LT(place.bottom(), match.top());
}
