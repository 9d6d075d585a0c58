#include "platform/Yield.h"

#include <QTimer>

#include <gtest/gtest.h>

TEST(Yield, RunsWhatWaitsInTheEventLoop) {
    int runs = 0;
    QObject context;
    QTimer::singleShot(0, &context, [&] { ++runs; });
    EXPECT_EQ(runs, 0);
    yieldOnce();
    EXPECT_EQ(runs, 1);
}
