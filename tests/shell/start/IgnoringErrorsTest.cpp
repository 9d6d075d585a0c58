#include "shell/start/IgnoringErrors.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

QStringList* lines = nullptr;

void takeLine(QtMsgType type, const QMessageLogContext&, const QString& text) {
    lines->append((type == QtWarningMsg ? u"warning: "_qs : u"other: "_qs) + text);
}

}  // namespace

/// Which errors are ignored, and what is reported of them.
class IgnoringErrors : public testing::Test {
 protected:
    void SetUp() override {
        lines = &m_lines;
        m_before = qInstallMessageHandler(takeLine);
    }
    void TearDown() override { qInstallMessageHandler(m_before); }

    QStringList m_lines;
    QtMessageHandler m_before = nullptr;
};

TEST_F(IgnoringErrors, ACallThatSucceedsLeavesNoLine) {
    bool ran = false;
    ignoringErrors("OpenFile", [&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_TRUE(m_lines.isEmpty());
}

TEST_F(IgnoringErrors, AnExceptionLeavesOneLineWithItsStepAndReason) {
    ignoringErrors("OpenFile", [] { throw std::runtime_error("the disk is 100% full"); });
    EXPECT_EQ(m_lines, QStringList(u"warning: OpenFile was given up: the disk is 100% full"_qs));
}

TEST_F(IgnoringErrors, WhatIsNoExceptionIsSteppedOverToo) {
    ignoringErrors("loadLists", [] { throw 1; });
    EXPECT_EQ(m_lines, QStringList(u"warning: loadLists was given up: unknown error"_qs));
}
