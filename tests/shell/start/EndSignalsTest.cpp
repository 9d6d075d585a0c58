#include "shell/start/EndSignals.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

using namespace std::chrono_literals;

namespace {

void write(const char* text) {
    std::fputs(text, stderr);
}

/// Ends the process with exit code 7 when nothing else has ended it.
void runForLong() {
    QEventLoop loop;
    QTimer::singleShot(30s, &loop, &QEventLoop::quit);
    loop.exec();
    std::_Exit(7);
}

void endWhenAsked(const EndSignals& endSignals) {
    QObject::connect(&endSignals, &EndSignals::requested, &endSignals, [](int signal) {
        write("asked ");
        EndSignals::endBy(signal);
    });
}

void busyForLong() {
    for (int i = 0; i < 30; ++i)
        sleep(1);
    std::_Exit(7);
}

void lastDuty() {
    write("last duty ");
}

/// The process gets these signals, one after the other, and then stays.
void takeSignals(EndSignals& endSignals, std::initializer_list<int> raised, void (*stay)()) {
    endWhenAsked(endSignals);
    for (const int signal : raised)
        std::raise(signal);
    stay();
}

}  // namespace

/// Each test's process is its own, which the signal ends.
class EndSignalsDeathTest : public testing::Test {
 protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(EndSignalsDeathTest, AreReportedInTheEventLoopAndEndTheProcessAsThatSignal) {
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        EXPECT_EXIT(
            {
                std::signal(signal, SIG_DFL);
                EndSignals endSignals({});
                endWhenAsked(endSignals);
                std::raise(signal);
                runForLong();
            },
            testing::KilledBySignal(signal), "^asked $");
    }
}

TEST_F(EndSignalsDeathTest, OfTwoTheFirstCounts) {
    EXPECT_EXIT(
        {
            EndSignals endSignals({});
            takeSignals(endSignals, {SIGTERM, SIGHUP, SIGTERM}, runForLong);
        },
        testing::KilledBySignal(SIGTERM), "^asked $");
}

TEST_F(EndSignalsDeathTest, EndABusyProcessAfterItsLastDuty) {
    EXPECT_EXIT(
        {
            EndSignals endSignals(lastDuty, 50ms);
            takeSignals(endSignals, {SIGHUP, SIGTERM}, busyForLong);
        },
        testing::KilledBySignal(SIGHUP), "^last duty $");
}

TEST_F(EndSignalsDeathTest, EndTheProcessThoughNobodyFollowsThem) {
    EXPECT_EXIT(
        {
            EndSignals endSignals(lastDuty, 50ms);
            std::raise(SIGTERM);
            runForLong();
        },
        testing::KilledBySignal(SIGTERM), "^last duty $");
}

TEST_F(EndSignalsDeathTest, ThatNoThreadTakesEndTheProcessToo) {
    EXPECT_EXIT(
        {
            sigset_t one;
            sigemptyset(&one);
            sigaddset(&one, SIGTERM);
            pthread_sigmask(SIG_BLOCK, &one, nullptr);  // the thread of the object has it blocked, too
            EndSignals endSignals(lastDuty, 50ms);
            kill(getpid(), SIGTERM);
            busyForLong();
        },
        testing::KilledBySignal(SIGTERM), "^last duty $");
}

TEST_F(EndSignalsDeathTest, DoWhatTheyDidBeforeOnceTheObjectIsDestroyed) {
    EXPECT_EXIT(
        {
            {
                EndSignals endSignals([] { write("last duty "); });
            }
            std::raise(SIGTERM);
            runForLong();
        },
        testing::KilledBySignal(SIGTERM), "^$");
}

TEST_F(EndSignalsDeathTest, WithoutASignalTheProcessEndsWithoutAFault) {
    EXPECT_EXIT(EndSignals::endBy(0), testing::ExitedWithCode(0), "^$");
}

TEST(EndSignals, ThatTheStarterWantedIgnoredStayIgnored) {
    const auto before = std::signal(SIGHUP, SIG_IGN);
    bool requested = false;
    {
        EndSignals endSignals({}, 50ms);
        QObject::connect(&endSignals, &EndSignals::requested, &endSignals, [&] { requested = true; });
        std::raise(SIGHUP);
        QEventLoop loop;
        QTimer::singleShot(200ms, &loop, &QEventLoop::quit);
        loop.exec();
    }
    struct sigaction after {};
    sigaction(SIGHUP, nullptr, &after);
    EXPECT_FALSE(requested);
    EXPECT_EQ(after.sa_handler, SIG_IGN);
    std::signal(SIGHUP, before);
}
