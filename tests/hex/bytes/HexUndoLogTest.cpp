#include "hex/bytes/HexUndoLog.h"

#include <gtest/gtest.h>

#include <deque>
#include <random>

namespace {

HexUndoEntry entry(int number) {
    return {FilePosition(1 + 16 * number), {number % 20, number % 16}, static_cast<quint8>(number)};
}

}  // namespace

TEST(TheUndoLog, GivesTheNewestFirst) {
    HexUndoLog log;
    log.add(entry(1));
    log.add(entry(2));
    EXPECT_EQ(log.take(), entry(2));
    EXPECT_EQ(log.take(), entry(1));
    EXPECT_EQ(log.take(), std::nullopt);
}

TEST(TheUndoLog, ForgetsTheOldestOfThirtyTwo) {
    HexUndoLog log;
    for (int i = 1; i <= 32; ++i)
        log.add(entry(i));
    for (int i = 32; i >= 2; --i) {
        EXPECT_EQ(log.take(), entry(i));
    }
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(log.take(), std::nullopt);
}

TEST(TheUndoLog, IsEmptyAfterALoad) {
    HexUndoLog log;
    log.add(entry(1));
    log.clear();
    EXPECT_EQ(log.take(), std::nullopt);
    log.add(entry(2));
    EXPECT_EQ(log.take(), entry(2));
}

TEST(TheUndoLog, AgreesWithAQueueOfThirtyOne) {
    HexUndoLog log;
    std::deque<HexUndoEntry> model;
    std::mt19937 random(7);
    for (int i = 0; i < 5000; ++i) {
        if (random() % 3 != 0) {
            log.add(entry(i));
            model.push_back(entry(i));
            if (model.size() > 31)
                model.pop_front();
            continue;
        }
        const auto taken = log.take();
        ASSERT_EQ(taken.has_value(), !model.empty());
        if (taken) {
            ASSERT_EQ(*taken, model.back());
            model.pop_back();
        }
    }
}
