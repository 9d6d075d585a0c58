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

constexpr FrameStep<Owner> steps[] = {{"first", &Owner::first}, {"fails", &Owner::fails}, {"last", &Owner::last}};

}  // namespace

TEST(FrameSteps, AFailingStepDoesNotStopTheNext) {
    Owner owner;
    QStringList names;
    runSteps<Owner>(steps, owner, [&](const char* name) { names << QString::fromLatin1(name); });
    EXPECT_EQ(owner.done, QStringLiteral("13"));
    EXPECT_EQ(names, QStringList({QStringLiteral("first"), QStringLiteral("fails"), QStringLiteral("last")}));
}

TEST(SystemClose, WhatComesWhileGreyedRunsAfterwardsAndInOrder) {
    SystemClose close;
    QString done;
    close.whenFree([&] { done += u'a'; });
    EXPECT_EQ(done, QStringLiteral("a"));
    close.enable(false);
    close.whenFree([&] { done += u'b'; });
    close.whenFree([&] { done += u'c'; });
    QCoreApplication::processEvents();
    EXPECT_EQ(done, QStringLiteral("a"));
    close.enable(true);
    EXPECT_EQ(done, QStringLiteral("a"));
    QCoreApplication::processEvents();
    EXPECT_EQ(done, QStringLiteral("abc"));
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
    EXPECT_EQ(done, QStringLiteral("a"));
    close.enable(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(done, QStringLiteral("ab"));
}
