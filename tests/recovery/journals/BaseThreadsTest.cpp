// Work on the files of documents, of which one may never answer.

#include "recovery/journals/BaseThreads.h"

#include <QtGlobal>

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Clock = BaseThreads::Clock;
using namespace std::chrono_literals;

Clock::time_point longFromNow() {
    return Clock::now() + 60s;
}

TEST(BaseThreads, WorkOfADeviceIsDoneInItsOrder) {
    BaseThreads threads;
    std::vector<int> done;
    for (int i = 0; i < 1'000; ++i) {
        EXPECT_TRUE(threads.start(7, [&done, i] { done.push_back(i); }));
    }
    ASSERT_TRUE(threads.wait(longFromNow()));
    ASSERT_EQ(done.size(), 1'000u);
    for (int i = 0; i < 1'000; ++i) {
        EXPECT_EQ(done[static_cast<std::size_t>(i)], i);
    }
}

TEST(BaseThreads, ADeviceThatDoesNotAnswerStopsNoOther) {
    BaseThreads threads;
    std::promise<void> answer;
    std::promise<void> isDone;
    EXPECT_TRUE(threads.start(1, [waiting = answer.get_future().share()] { waiting.wait(); }));
    EXPECT_TRUE(threads.start(2, [&isDone] { isDone.set_value(); }));
    isDone.get_future().wait();
    EXPECT_FALSE(threads.wait(Clock::now() + 1ms));
    answer.set_value();
    EXPECT_TRUE(threads.wait(longFromNow()));
}

TEST(BaseThreads, WorkGoesOnInAnotherThreadOnceADeviceHadNone) {
    BaseThreads threads;
    int done = 0;
    for (int i = 1; i <= 100; ++i) {
        EXPECT_TRUE(threads.start(1, [&done] { ++done; }));
        ASSERT_TRUE(threads.wait(longFromNow()));
        EXPECT_EQ(done, i);
    }
}

TEST(BaseThreads, WorkOutlivesThem) {
    std::promise<void> answer;
    std::promise<std::thread::id> isDone;
    {
        BaseThreads threads;
        EXPECT_TRUE(threads.start(1, [waiting = answer.get_future().share(), &isDone] {
            waiting.wait();
            isDone.set_value(std::this_thread::get_id());
        }));
    }
    answer.set_value();
    EXPECT_NE(isDone.get_future().get(), std::this_thread::get_id());
}

TEST(BaseThreads, WhatWorkOwnsIsGoneOnceItIsWaitedFor) {
    BaseThreads threads;
    auto owned = std::make_shared<int>(1);
    const std::weak_ptr<int> rest = owned;
    EXPECT_TRUE(threads.start(1, [owned = std::move(owned)] { EXPECT_EQ(*owned, 1); }));
    ASSERT_TRUE(threads.wait(longFromNow()));
    EXPECT_TRUE(rest.expired());
}

}  // namespace
