#include "platform/BackgroundWork.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>
#include <semaphore>

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::minutes Long{1};

using Gate = std::binary_semaphore;

TEST(BackgroundWork, AResultThatComesAtOnceIsThereWithoutTheEventLoop) {
    const auto result = std::make_shared<int>(0);
    const BackgroundWork work([result](const std::atomic<bool>&) { *result = 7; });
    ASSERT_TRUE(work.waitFor(Long));
    EXPECT_TRUE(work.isDone());
    EXPECT_EQ(*result, 7);
}

TEST(BackgroundWork, WaitingForWorkThatStandsStillEndsAtTheLimit) {
    const auto gate = std::make_shared<Gate>(0);
    const BackgroundWork work([gate](const std::atomic<bool>&) { gate->acquire(); });
    EXPECT_FALSE(work.waitFor(1ms));
    EXPECT_FALSE(work.isDone());
    gate->release();
    EXPECT_TRUE(work.waitFor(Long));
}

TEST(BackgroundWork, ItsEndIsReportedFromTheEventLoop) {
    BackgroundWork work([](const std::atomic<bool>&) {});
    const QSignalSpy finished(&work, &BackgroundWork::finished);
    ASSERT_TRUE(work.waitFor(Long));
    EXPECT_EQ(finished.count(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(finished.count(), 1);
}

TEST(BackgroundWork, WhileItIsWaitedForAliveEventsAreProcessed) {
    const auto gate = std::make_shared<Gate>(0);
    BackgroundWork work([gate](const std::atomic<bool>&) { gate->acquire(); });
    bool isProcessed = false;
    QTimer::singleShot(0, [&] {
        isProcessed = true;
        gate->release();
    });
    EXPECT_TRUE(work.waitAlive(Long));
    EXPECT_TRUE(isProcessed);
}

TEST(BackgroundWork, WaitingAliveEndsAtTheLimit) {
    const auto gate = std::make_shared<Gate>(0);
    BackgroundWork work([gate](const std::atomic<bool>&) { gate->acquire(); });
    EXPECT_FALSE(work.waitAlive(80ms));
    gate->release();
}

TEST(BackgroundWork, WaitingAliveEndsWhenTheWorkIsDestroyed) {
    const auto gate = std::make_shared<Gate>(0);
    auto work = std::make_unique<BackgroundWork>([gate](const std::atomic<bool>&) { gate->acquire(); });
    QTimer::singleShot(0, [&] { work.reset(); });
    EXPECT_FALSE(work->waitAlive(Long));
    EXPECT_EQ(work, nullptr);
    gate->release();
}

TEST(BackgroundWork, DestroyingItCancelsItWithoutWaitingForIt) {
    const auto gate = std::make_shared<Gate>(0);
    const auto ended = std::make_shared<Gate>(0);
    const auto wasCancelled = std::make_shared<bool>(false);
    {
        const BackgroundWork work([=](const std::atomic<bool>& cancelled) {
            gate->acquire();
            *wasCancelled = cancelled;
            ended->release();
        });
    }
    gate->release();
    ASSERT_TRUE(ended->try_acquire_for(Long));
    EXPECT_TRUE(*wasCancelled);
}

}  // namespace
