#include "shell/FrameFixture.h"

#include <QTimer>

using OpenQueueOfTheFrame = FrameFixture;

TEST_F(OpenQueueOfTheFrame, NothingOpensBeforeTheTimerHasRun) {
    start();
    m_frame->OpenFileFromCmd(fileOf("1"));
    EXPECT_EQ(tabs(), QStringList(u"Document1"_qs));
    QCoreApplication::processEvents();
    EXPECT_EQ(active()->filename, QString());
    EXPECT_TRUE(QTest::qWaitFor([&] { return active()->filename == path(u"a.txt"_qs); }));
}

TEST_F(OpenQueueOfTheFrame, APathThatComesDuringARoundWaitsForTheNext) {
    start();
    const QString first = fileOf("1", u"1.txt"_qs);
    const QString second = fileOf("2", u"2.txt"_qs);
    m_prompts.whileShown([&] {
        m_frame->OpenFileFromCmd(second);
        EXPECT_TRUE(active()->isNew);
    });
    m_frame->OpenFileFromCmd(path(QString()));
    m_frame->OpenFileFromCmd(first);
    ASSERT_TRUE(QTest::qWaitFor([&] { return active()->filename == first; }));
    EXPECT_EQ(documents().size(), 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return documents().size() == 2; }));
    EXPECT_EQ(tabs(), QStringList({u"1.txt"_qs, u"2.txt"_qs}));
}

TEST_F(OpenQueueOfTheFrame, AFileThatIsOpenComesToTheFrontAsItIs) {
    start();
    const QString file = fileOf("1");
    open(file);
    type(u"mine "_qs);
    run("mnuFileNew");
    fileOf("changed by others");
    m_frame->OpenFileFromCmd(file);
    ASSERT_TRUE(QTest::qWaitFor([&] { return active()->filename == file; }));
    EXPECT_EQ(active()->GetEditor()->Text(), u"mine 1"_qs);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_EQ(documents().size(), 2);
}

TEST_F(OpenQueueOfTheFrame, AProjectIsADocumentLikeAnyOther) {
    start();
    const QString file = fileOf("1", u"work.qmp"_qs);
    m_frame->OpenFileFromCmd(file);
    ASSERT_TRUE(QTest::qWaitFor([&] { return active()->filename == file; }));
    EXPECT_TRUE(m_frame->ProjectFilename.isEmpty());
}

TEST_F(OpenQueueOfTheFrame, WhatCannotBeOpenedLeavesTheActiveDocumentMaximised) {
    start();
    run("mnuFileNew");
    run("mnuWindowCascade");
    ASSERT_FALSE(house().children.windowOf(active())->isMaximized());
    m_frame->OpenFileFromCmd(path(u"gone.txt"_qs));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_prompts.messages.isEmpty(); }));
    EXPECT_TRUE(m_prompts.messages.first().endsWith(QLatin1String("\nFile not found!")));
    EXPECT_TRUE(house().children.windowOf(active())->isMaximized());
    EXPECT_EQ(active()->Caption(), u"Document2"_qs);
}

TEST_F(OpenQueueOfTheFrame, ItsTimerIsReachedFromOutside) {
    start();
    auto* timer = m_frame->findChild<QTimer*>(u"TimerOpen"_qs);
    ASSERT_NE(timer, nullptr);
    EXPECT_FALSE(timer->isActive());
    m_frame->OpenFileFromCmd(fileOf("1"));
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(timer->interval(), 100);
    timer->stop();
}

TEST_F(OpenQueueOfTheFrame, NothingOpensWhileADocumentAsksAboutItsChanges) {
    start();
    const QString first = fileOf("1", u"1.txt"_qs);
    const QString second = fileOf("2", u"2.txt"_qs);
    open(first);
    type(u"x"_qs);
    m_prompts.whileShown([&] {
        m_frame->OpenFileFromCmd(second);
        QTest::qWait(300);
        m_frame->OpenFile(second, 0, true, true);
        EXPECT_EQ(documents().size(), 1);
        EXPECT_EQ(active()->filename, first);
    });
    m_prompts.answerYes();
    run("mnuFileClose");
    EXPECT_EQ(bytesOf(first), "x1");
    ASSERT_TRUE(QTest::qWaitFor([&] { return active() != nullptr && active()->filename == second; }));
    EXPECT_EQ(tabs(), QStringList(u"2.txt"_qs));
}

TEST_F(OpenQueueOfTheFrame, AChangeOnDiskIsNotAskedAboutInTheMiddleOfThatQuestion) {
    start();
    open(fileOf("1"));
    type(u"x"_qs);
    active()->LastUpdate = active()->KnownUpdate = u"2000/01/01 00:00:00"_qs;
    m_prompts.whileShown([&] {
        m_frame->CheckFileUpdate();
        QCoreApplication::processEvents();
    });
    m_prompts.answerNo();
    run("mnuFileClose");
    QCoreApplication::processEvents();
    EXPECT_EQ(m_prompts.questions, QStringList(u"Save %1 ?"_qs.arg(path(u"a.txt"_qs))));
}
