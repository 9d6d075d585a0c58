#include "shell/documents/SystemClose.h"
#include "shell/start/FrameSteps.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <stdexcept>

TEST(FrameSteps, AFailingStepDoesNotStopTheNext) {
    QString done;
    const FrameStep steps[] = {{"first", [&] { done += u'1'; }},
                               {"fails", [] { throw std::runtime_error("no"); }},
                               {"last", [&] { done += u'3'; }}};
    QStringList names;
    runSteps(steps, [&](const char* name) { names << QString::fromLatin1(name); });
    EXPECT_EQ(done, u"13"_qs);
    EXPECT_EQ(names, QStringList({u"first"_qs, u"fails"_qs, u"last"_qs}));
}

TEST(SystemClose, WhatComesWhileGreyedRunsAfterwardsAndInOrder) {
    SystemClose close;
    QString done;
    close.whenFree([&] { done += u'a'; });
    EXPECT_EQ(done, u"a"_qs);
    close.enable(false);
    close.whenFree([&] { done += u'b'; });
    close.whenFree([&] { done += u'c'; });
    QCoreApplication::processEvents();
    EXPECT_EQ(done, u"a"_qs);
    close.enable(true);
    EXPECT_EQ(done, u"a"_qs);
    QCoreApplication::processEvents();
    EXPECT_EQ(done, u"abc"_qs);
}

TEST(SystemClose, GreyingNests) {
    SystemClose close;
    close.enable(false);
    close.enable(false);
    close.enable(true);
    EXPECT_TRUE(close.isGreyed());
    close.enable(true);
    EXPECT_FALSE(close.isGreyed());
    close.enable(true);
    EXPECT_FALSE(close.isGreyed());
    close.enable(false);
    EXPECT_TRUE(close.isGreyed());
}

TEST(SystemClose, ATaskThatGreysAgainHoldsBackTheNext) {
    SystemClose close;
    QString done;
    close.enable(false);
    close.whenFree([&] {
        done += u'a';
        close.enable(false);
    });
    close.whenFree([&] { done += u'b'; });
    close.enable(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(done, u"a"_qs);
    close.enable(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(done, u"ab"_qs);
}
