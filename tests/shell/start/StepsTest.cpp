#include "shell/documents/SystemClose.h"
#include "shell/start/FrameSteps.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

struct Owner {
    QString done;
    void first() { done += u'1'; }
    void fails() { throw std::runtime_error("no"); }
    void last() { done += u'3'; }
};

constexpr FrameStep<Owner> Steps[] = {{"first", &Owner::first}, {"fails", &Owner::fails}, {"last", &Owner::last}};

}  // namespace

TEST(FrameSteps, AFailingStepDoesNotStopTheNext) {
    Owner owner;
    QStringList names;
    runSteps<Owner>(Steps, owner, [&](const char* name) { names << QString::fromLatin1(name); });
    EXPECT_EQ(owner.done, u"13"_qs);
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
