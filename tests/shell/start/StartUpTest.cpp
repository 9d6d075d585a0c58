#include "shell/start/StartUp.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

class NotedDuties : public StartDuties {
 public:
    bool previous = false;
    bool takes = false;
    QStringList calls;

    void RegisterShellExtension() override { calls << u"register"_qs; }
    void UnregisterShellExtension() override { calls << u"unregister"_qs; }
    bool previousInstanceRuns() override {
        calls << u"look"_qs;
        return previous;
    }
    bool handOver(const QStringList& paths) override {
        calls << u"give "_qs + paths.join(u'|');
        return takes;
    }
    int runFrame() override {
        calls << u"frame"_qs;
        return 7;
    }
};

class Main : public testing::Test {
 protected:
    int run(const char* tail) {
        const CommandLine::Surroundings around{[](const QString& path) { return path == QLatin1String("/src"); },
                                               u"/home/u"_qs};
        return runMain(QString::fromLatin1(tail), around, duties);
    }

    NotedDuties duties;
};

}  // namespace

TEST_F(Main, RegistersAndEndsWithoutAFrame) {
    EXPECT_EQ(run("-r"), 0);
    EXPECT_EQ(duties.calls, QStringList({u"register"_qs}));
}

TEST_F(Main, UnregistersAndEndsWithoutAFrame) {
    EXPECT_EQ(run("-u"), 0);
    EXPECT_EQ(duties.calls, QStringList({u"unregister"_qs}));
}

TEST_F(Main, ADocumentGoesToTheRunningInstanceAndTheProcessEnds) {
    duties.previous = true;
    duties.takes = true;
    EXPECT_EQ(run("\"x y.txt\""), 0);
    EXPECT_EQ(duties.calls, QStringList({u"look"_qs, u"give /home/u/x y.txt"_qs}));
}

TEST_F(Main, ADocumentThatNobodyTakesOpensHere) {
    duties.previous = true;
    EXPECT_EQ(run("/x"), 7);
    EXPECT_EQ(duties.calls, QStringList({u"look"_qs, u"give /x"_qs, u"frame"_qs}));
}

TEST_F(Main, WithoutARunningInstanceTheFrameComesUp) {
    EXPECT_EQ(run("-r "), 7);
    EXPECT_EQ(duties.calls, QStringList({u"look"_qs, u"frame"_qs}));
}

TEST_F(Main, FoldersListsProjectsAndTheSwitchNeverLookForARunningInstance) {
    duties.previous = true;
    duties.takes = true;
    for (const char* tail : {"", "  ", "-d", " -d ", "/src", "/a;/b", "/p.qmp", "\"\""}) {
        duties.calls.clear();
        EXPECT_EQ(run(tail), 7) << tail;
        EXPECT_EQ(duties.calls, QStringList({u"frame"_qs})) << tail;
    }
}
