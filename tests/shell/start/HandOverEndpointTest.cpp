#include "platform/LocalListener.h"
#include "shell/start/HandOverEndpoint.h"
#include "shell/start/HandOverFixture.h"

#include <QDir>
#include <QFile>

#include <memory>

using Kind = HandOverEndpoint::Kind;
using Answer = InstanceLock::Answer;
using Reached = LocalSocket::Reached;

namespace {

/// An instance without a window: its lock and its endpoint.
struct Instance {
    Instance(const QString& lockFile, Kind kind)
        : lock(lockFile), endpoint(std::make_unique<HandOverEndpoint>(lock, kind)) {}

    InstanceLock lock;
    std::unique_ptr<HandOverEndpoint> endpoint;
};

class HandOverEndpoints : public HandOverFixture {
 protected:
    std::unique_ptr<Instance> start(Kind kind = Kind::Takes) { return std::make_unique<Instance>(lockPath(), kind); }
    Reached reach() { return LocalSocket().connectTo(socketPath()); }
    bool arrivesAt(Instance& instance) {
        m_received.clear();
        note(*instance.endpoint);
        sendPath(u"/a"_qs);
        return arrive(1);
    }
};

bool takesTheLock(Instance& instance) {
    return QTest::qWaitFor([&] { return instance.endpoint->isListening(); }, 60'000);
}

}  // namespace

TEST_F(HandOverEndpoints, HasTheNamesThatOthersLookFor) {
    EXPECT_EQ(HandOverEndpoint::socketIn(u"/run/user/1"_qs), u"/run/user/1/QuillmarkOpen"_qs);
    EXPECT_EQ(HandOverEndpoint::lockIn(u"/run/user/1"_qs), u"/run/user/1/QuillmarkOpen.lock"_qs);
}

TEST_F(HandOverEndpoints, TheFirstInstanceReceives) {
    const auto first = start();
    EXPECT_TRUE(first->lock.isTaken());
    EXPECT_TRUE(arrivesAt(*first));
}

TEST_F(HandOverEndpoints, AFurtherInstanceLeavesThePathsToTheFirst) {
    const auto first = start();
    const auto further = start();
    EXPECT_FALSE(further->endpoint->isListening());
    EXPECT_TRUE(arrivesAt(*first));
}

TEST_F(HandOverEndpoints, AFurtherInstanceTakesThePlaceOfTheFirst) {
    auto first = start();
    const auto further = start();
    first.reset();
    ASSERT_TRUE(takesTheLock(*further));
    EXPECT_TRUE(further->lock.isTaken());
    EXPECT_TRUE(arrivesAt(*further));
}

TEST_F(HandOverEndpoints, OfSeveralThatWaitOneFollowsTheOther) {
    auto first = start();
    auto second = start();
    auto third = start();
    first.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return second->endpoint->isListening() || third->endpoint->isListening(); }));
    auto& next = second->endpoint->isListening() ? second : third;
    auto& last = second->endpoint->isListening() ? third : second;
    EXPECT_TRUE(arrivesAt(*next));
    EXPECT_FALSE(last->endpoint->isListening());
    next.reset();
    ASSERT_TRUE(takesTheLock(*last));
    EXPECT_TRUE(arrivesAt(*last));
}

TEST_F(HandOverEndpoints, AnInstanceThatEndsWhileItWaitsLeavesTheLock) {
    auto first = start();
    auto further = start();
    further.reset();
    first.reset();
    InstanceLock lock(lockPath());
    EXPECT_TRUE(QTest::qWaitFor([&] { return lock.tryToTake() == Answer::Taken; }, 60'000));
    EXPECT_EQ(reach(), Reached::Nobody);
}

TEST_F(HandOverEndpoints, AnInstanceThatEndsKeepsTheLockUntilItsProcessIsGone) {
    const auto first = start();
    first->endpoint.reset();
    EXPECT_FALSE(QFile::exists(socketPath()));
    EXPECT_EQ(InstanceLock(lockPath()).tryToTake(), Answer::HeldByAnother);
}

TEST_F(HandOverEndpoints, WhatAKilledInstanceLeftIsReplaced) {
    {
        LocalListener killed(socketPath());
        killed.keepFile();
    }
    const auto first = start();
    EXPECT_TRUE(arrivesAt(*first));
}

TEST_F(HandOverEndpoints, OneThatStaysApartHasTheSocketAndNotTheLock) {
    const auto apart = start(Kind::StaysApart);
    EXPECT_TRUE(apart->endpoint->isListening());
    EXPECT_FALSE(apart->lock.isTaken());
    EXPECT_EQ(reach(), Reached::Yes);
    EXPECT_EQ(InstanceLock(lockPath()).tryToTake(), Answer::Taken);
}

TEST_F(HandOverEndpoints, OneThatStaysApartGivesTheSocketToTheFirstThatTakesPaths) {
    auto apart = start(Kind::StaysApart);
    const auto first = start();
    EXPECT_TRUE(arrivesAt(*first));
    apart.reset();
    EXPECT_EQ(reach(), Reached::Yes);
    EXPECT_TRUE(arrivesAt(*first));
}

TEST_F(HandOverEndpoints, OneThatStaysApartLeavesTheSocketOfARunningInstance) {
    const auto first = start();
    auto apart = start(Kind::StaysApart);
    EXPECT_FALSE(apart->endpoint->isListening());
    EXPECT_TRUE(arrivesAt(*first));
    apart.reset();
    EXPECT_EQ(reach(), Reached::Yes);
}

TEST_F(HandOverEndpoints, OneThatStaysApartRemovesItsSocket) {
    start(Kind::StaysApart).reset();
    EXPECT_FALSE(QFile::exists(socketPath()));
    EXPECT_EQ(InstanceLock(lockPath()).tryToTake(), Answer::Taken);
}

TEST_F(HandOverEndpoints, WithoutASocketThereIsNoLockToWaitFor) {
    ASSERT_TRUE(QDir().mkpath(socketPath()));
    const auto first = start();
    EXPECT_FALSE(first->endpoint->isListening());
    EXPECT_EQ(InstanceLock(lockPath()).tryToTake(), Answer::Taken);
}

TEST_F(HandOverEndpoints, WithoutALockTheFirstToListenReceives) {
    ASSERT_TRUE(QDir().mkpath(lockPath()));
    const auto first = start();
    const auto further = start();
    EXPECT_TRUE(first->endpoint->isListening());
    EXPECT_FALSE(further->endpoint->isListening());
    EXPECT_TRUE(arrivesAt(*first));
}

TEST_F(HandOverEndpoints, WithoutAFolderThereIsNoneAndNothingFails) {
    const Instance first(HandOverEndpoint::lockIn(u"/none/at/all"_qs), Kind::Takes);
    EXPECT_FALSE(first.endpoint->isListening());
}
