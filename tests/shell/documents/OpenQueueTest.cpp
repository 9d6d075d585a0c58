#include "shell/FrameFixture.h"

using OpenQueueOfTheFrame = FrameFixture;

TEST_F(OpenQueueOfTheFrame, NothingOpensBeforeTheTimerHasRun) {
    start();
    m_frame->OpenFileFromCmd(fileOf("1"));
    EXPECT_EQ(tabs(), QStringList(QStringLiteral("Document1")));
    QCoreApplication::processEvents();
    EXPECT_EQ(active()->filename, QString());
    EXPECT_TRUE(QTest::qWaitFor([&] { return active()->filename == path(QStringLiteral("a.txt")); }));
}

TEST_F(OpenQueueOfTheFrame, APathThatComesDuringARoundWaitsForTheNext) {
    start();
    const QString first = fileOf("1", QStringLiteral("1.txt"));
    const QString second = fileOf("2", QStringLiteral("2.txt"));
    m_prompts.whileShown([&] {
        m_frame->OpenFileFromCmd(second);
        EXPECT_TRUE(active()->isNew);
    });
    m_frame->OpenFileFromCmd(path(QString()));
    m_frame->OpenFileFromCmd(first);
    ASSERT_TRUE(QTest::qWaitFor([&] { return active()->filename == first; }));
    EXPECT_EQ(documents().size(), 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return documents().size() == 2; }));
    EXPECT_EQ(tabs(), QStringList({QStringLiteral("1.txt"), QStringLiteral("2.txt")}));
}

TEST_F(OpenQueueOfTheFrame, AFileThatIsOpenComesToTheFrontAsItIs) {
    start();
    const QString file = fileOf("1");
    open(file);
    type(QStringLiteral("mine "));
    run("mnuFileNew");
    fileOf("changed by others");
    m_frame->OpenFileFromCmd(file);
    ASSERT_TRUE(QTest::qWaitFor([&] { return active()->filename == file; }));
    EXPECT_EQ(active()->GetEditor()->Text(), QStringLiteral("mine 1"));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_EQ(documents().size(), 2);
}

TEST_F(OpenQueueOfTheFrame, AProjectIsADocumentLikeAnyOther) {
    start();
    const QString file = fileOf("1", QStringLiteral("work.qmp"));
    m_frame->OpenFileFromCmd(file);
    ASSERT_TRUE(QTest::qWaitFor([&] { return active()->filename == file; }));
    EXPECT_EQ(m_rooms.calls.filter(QStringLiteral("OpenProject")), QStringList());
}

TEST_F(OpenQueueOfTheFrame, WhatCannotBeOpenedLeavesTheActiveDocumentMaximised) {
    start();
    run("mnuFileNew");
    run("mnuWindowCascade");
    ASSERT_FALSE(parts().children->windowOf(active())->isMaximized());
    m_frame->OpenFileFromCmd(path(QStringLiteral("gone.txt")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_prompts.messages.isEmpty(); }));
    EXPECT_TRUE(m_prompts.messages.first().endsWith(QLatin1String("\nFile not found!")));
    EXPECT_TRUE(parts().children->windowOf(active())->isMaximized());
    EXPECT_EQ(active()->Caption(), QStringLiteral("Document2"));
}
