#include "widgets/DialogPlace.h"

#include <gtest/gtest.h>

namespace {

constexpr QRect screen(0, 0, 1000, 800);
constexpr QSize dialog(300, 200);

QRect at(int x, int y) {
    return {QPoint(x, y), dialog};
}

}  // namespace

TEST(DialogPlace, IsTheUpperRightCornerOfTheText) {
    const QRect text(100, 50, 600, 500);
    const QRect place(DialogPlace::cornerOf(text, dialog, screen), dialog);
    EXPECT_TRUE(text.contains(place));
    EXPECT_GT(place.center().x(), text.center().x());
    EXPECT_LT(place.bottom(), text.center().y());
}

TEST(DialogPlace, IsOnTheScreen) {
    EXPECT_TRUE(screen.contains(QRect(DialogPlace::cornerOf({900, 700, 600, 500}, dialog, screen), dialog)));
    EXPECT_TRUE(screen.contains(QRect(DialogPlace::cornerOf({-500, -300, 600, 500}, dialog, screen), dialog)));
}

TEST(DialogPlace, StaysWhereItCoversNoMatch) {
    EXPECT_EQ(DialogPlace::besideMatch({10, 10, 50, 20}, at(200, 100), screen), QPoint(200, 100));
}

TEST(DialogPlace, IsBelowAMatchThatWouldBeCovered) {
    const QRect match(250, 150, 50, 20);
    const QRect place(DialogPlace::besideMatch(match, at(200, 100), screen), dialog);
    EXPECT_FALSE(place.intersects(match));
    EXPECT_GT(place.top(), match.bottom());
    EXPECT_EQ(place.left(), 200);
}

TEST(DialogPlace, IsAboveAMatchWithNoRoomBelow) {
    const QRect match(250, 700, 50, 20);
    const QRect place(DialogPlace::besideMatch(match, at(200, 590), screen), dialog);
    EXPECT_LT(place.bottom(), match.top());
}
