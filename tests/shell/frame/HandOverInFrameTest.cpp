#include "platform/InstanceLock.h"
#include "platform/LocalSocket.h"
#include "shell/FrameFixture.h"
#include "shell/start/HandOverEndpoint.h"
#include "shell/start/HandOverMessage.h"

#include <QDir>

#include <unistd.h>

using Answer = InstanceLock::Answer;
using Reached = LocalSocket::Reached;

namespace {

/// A frame that other instances find, in a session of its own.
class HandOverInFrame : public FrameFixture {
 protected:
    void startAsInstance(const QString& tail = {}, const QStringList& arguments = {}) {
        FrameServices services{m_prompts,     m_registry,  m_makePanel, tail, {}, m_programFolder.path(),
                               m_shareFolder, m_fileExists};
        services.arguments = arguments;
        services.instanceLock = &m_lock;
        m_frame = std::make_unique<frmMain>(services);
        m_frame->resize(900, 600);
        m_frame->Load();
        m_frame->show();
        QCoreApplication::processEvents();
    }
    void TearDown() override { m_frame.reset(); }

    Reached reach() { return LocalSocket().connectTo(m_socket); }
    void handOver(const QString& path) { send(HandOverMessage::of(path)); }
    void send(const QByteArray& bytes) {
        LocalSocket socket;
        ASSERT_EQ(socket.connectTo(m_socket), Reached::Yes);
        EXPECT_TRUE(socket.sendAll(bytes));
    }
    /// The queue holds so many paths that are not opened yet.
    bool queued(qsizetype count) {
        return QTest::qWaitFor([&] { return house().queue.PendingOpenFiles().count(u'\t') == count; });
    }
    bool shown(const QString& file) {
        return QTest::qWaitFor([&] { return active() != nullptr && active()->filename == file; });
    }

    QTemporaryDir m_session;
    QString m_socket = HandOverEndpoint::socketIn(m_session.path());
    InstanceLock m_lock{HandOverEndpoint::lockIn(m_session.path())};
};

}  // namespace

TEST_F(HandOverInFrame, APathThatArrivesIsQueuedAndOpenedAMomentLater) {
    startAsInstance();
    const QString file = fileOf("1", u"a b.xyz"_qs);
    handOver(file);
    ASSERT_TRUE(queued(1));
    EXPECT_EQ(house().queue.PendingOpenFiles(), u'\t' + file);
    EXPECT_TRUE(active()->isNew);
    ASSERT_TRUE(shown(file));
    EXPECT_EQ(tabs(), QStringList(u"a b.xyz"_qs));
    EXPECT_TRUE(house().children.windowOf(active())->isMaximized());
    EXPECT_TRUE(house().queue.PendingOpenFiles().isEmpty());
}

TEST_F(HandOverInFrame, PathsOpenInTheOrderOfTheirArrival) {
    startAsInstance();
    QStringList names;
    for (int i = 0; i < 4; ++i) {
        names << u"%1.txt"_qs.arg(i);
        handOver(fileOf("1", names.last()));
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return documents().size() == 4; }));
    EXPECT_EQ(tabs(), names);
}

TEST_F(HandOverInFrame, AFileThatIsOpenComesToTheFrontUnread) {
    startAsInstance();
    const QString file = fileOf("1");
    open(file);
    type(u"mine "_qs);
    run("mnuFileNew");
    handOver(file);
    ASSERT_TRUE(shown(file));
    EXPECT_EQ(text(), u"mine 1"_qs);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(HandOverInFrame, WhatIsMissingIsReportedHereAndAFolderByItsOwnText) {
    startAsInstance();
    handOver(path(u"gone.txt"_qs));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_prompts.messages.size() == 1; }));
    EXPECT_EQ(m_prompts.messages.last(), path(u"gone.txt"_qs) + QLatin1String("\nFile not found!"));
    handOver(m_folder.path());
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_prompts.messages.size() == 2; }));
    EXPECT_EQ(m_prompts.messages.last(), QLatin1String("Directory search : ") + m_folder.path());
    EXPECT_EQ(tabs(), QStringList(u"Document1"_qs));
}

TEST_F(HandOverInFrame, AProjectThatArrivesIsADocument) {
    startAsInstance();
    const QString file = fileOf("1", u"work.qmp"_qs);
    handOver(file);
    ASSERT_TRUE(shown(file));
    EXPECT_TRUE(m_frame->ProjectFilename.isEmpty());
}

TEST_F(HandOverInFrame, WhatIsNoMessageLeavesNoTrace) {
    startAsInstance();
    const QString file = fileOf("1");
    send(QByteArray(8, '\0'));
    send(HandOverMessage::of(file).chopped(1));
    send(QByteArray(HandOverMessage::of(file)).replace(0, 1, "\4"));
    QTest::qWait(300);
    EXPECT_TRUE(house().queue.PendingOpenFiles().isEmpty());
    EXPECT_TRUE(active()->isNew);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(HandOverInFrame, AnInstanceThatStaysApartIsFoundAndLosesThePath) {
    startAsInstance(u"-d"_qs, {u"-d"_qs});
    EXPECT_FALSE(m_lock.isTaken());
    handOver(fileOf("1"));
    QTest::qWait(300);
    EXPECT_TRUE(house().queue.PendingOpenFiles().isEmpty());
    EXPECT_TRUE(active()->isNew);
}

TEST_F(HandOverInFrame, ABlankBehindTheSwitchHooksAllTheSame) {
    startAsInstance(u"-d "_qs, {u"-d "_qs});
    EXPECT_TRUE(m_lock.isTaken());
    EXPECT_TRUE(house().openCheck->isHooked());
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_prompts.messages.size() == 1; }));
    EXPECT_TRUE(m_prompts.messages.first().endsWith(QLatin1String("/-d \nFile not found!")));
}

TEST_F(HandOverInFrame, AFrameWithoutALockHasNoEndpoint) {
    start();
    EXPECT_EQ(reach(), Reached::Nobody);
    EXPECT_TRUE(house().openCheck->isHooked());
}

TEST_F(HandOverInFrame, TheEndpointGoesWithTheFrameAndTheLockStays) {
    startAsInstance();
    EXPECT_EQ(reach(), Reached::Yes);
    m_frame->close();
    EXPECT_EQ(house().openCheck, nullptr);
    EXPECT_EQ(reach(), Reached::Nobody);
    EXPECT_EQ(QDir(m_session.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot),
              QStringList(u"QuillmarkOpen.lock"_qs));
    EXPECT_EQ(InstanceLock(m_lock.file()).tryToTake(), Answer::HeldByAnother);
}

TEST_F(HandOverInFrame, NothingIsTakenAnyMoreOnceTheFrameCloses) {
    startAsInstance();
    open(fileOf("1"));
    type(u"x"_qs);
    Reached whileAsking = Reached::Yes;
    m_prompts.whileShown([&] { whileAsking = reach(); });
    m_prompts.answerNo();
    m_frame->close();
    EXPECT_EQ(m_prompts.questions.size(), 1);
    EXPECT_EQ(whileAsking, Reached::Nobody);
}

TEST_F(HandOverInFrame, WhileADocumentAsksPathsAreTakenAndWait) {
    startAsInstance();
    open(fileOf("1"));
    type(u"x"_qs);
    const QString second = fileOf("2", u"2.txt"_qs);
    m_prompts.whileShown([&] {
        handOver(second);
        EXPECT_TRUE(queued(1));
        QTest::qWait(300);
        EXPECT_EQ(documents().size(), 1);
    });
    m_prompts.answerNo();
    run("mnuFileClose");
    EXPECT_TRUE(shown(second));
}

TEST_F(HandOverInFrame, SeveralFilesOfTheCommandLineOpenInOrder) {
    const QStringList files = {fileOf("2", u"2.txt"_qs), fileOf("1", u"1 a.txt"_qs), fileOf("3", u"3.txt"_qs)};
    startAsInstance(files.join(u' '), files);
    ASSERT_TRUE(QTest::qWaitFor([&] { return documents().size() == 3; }));
    EXPECT_EQ(tabs(), QStringList({u"2.txt"_qs, u"1 a.txt"_qs, u"3.txt"_qs}));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(HandOverInFrame, ManyPathsAtOnceAreAllOpened) {
    startAsInstance();
    QStringList names;
    for (int i = 0; i < 40; ++i) {
        names << u"%1.txt"_qs.arg(i);
        handOver(fileOf("1", names.last()));
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return documents().size() == 40; }, 60'000));
    EXPECT_EQ(tabs(), names);
}
