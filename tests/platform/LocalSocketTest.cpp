#include "platform/LocalListener.h"
#include "platform/LocalSocket.h"
#include "support/AnotherUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <memory>

using Reached = LocalSocket::Reached;

namespace {

class LocalSockets : public testing::Test {
 protected:
    LocalSocket accept() {
        LocalListener::Failure failure{};
        LocalSocket socket = m_listener->accept(failure);
        EXPECT_EQ(failure, LocalListener::Failure::None);
        return socket;
    }
    void listen() { m_listener = std::make_unique<LocalListener>(m_path); }
    mode_t modeOf(const QString& path) {
        struct stat status {};
        EXPECT_EQ(::lstat(QFile::encodeName(path).constData(), &status), 0);
        return status.st_mode;
    }

    QTemporaryDir m_folder{u"/var/tmp/quillmark-XXXXXX"_qs};  // other users reach it once it is opened to them
    QString m_path = m_folder.filePath(u"socket"_qs);
    std::unique_ptr<LocalListener> m_listener;
};

QStringList namesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
}

}  // namespace

TEST_F(LocalSockets, WhatOneSideSendsTheOtherReads) {
    listen();
    LocalSocket sender;
    ASSERT_EQ(sender.connectTo(m_path), Reached::Yes);
    LocalSocket receiver = accept();
    ASSERT_TRUE(receiver.isOpen());
    QByteArray got;
    EXPECT_TRUE(receiver.read(got, 10));
    EXPECT_TRUE(got.isEmpty());
    EXPECT_TRUE(sender.sendAll("hello"));
    EXPECT_TRUE(receiver.read(got, 2));
    EXPECT_EQ(got, "he");
    EXPECT_TRUE(receiver.read(got, 10));
    EXPECT_EQ(got, "hello");
    sender.close();
    EXPECT_FALSE(receiver.read(got, 10));
    EXPECT_EQ(got, "hello");
}

TEST_F(LocalSockets, SendingToASideThatIsGoneFailsWithoutASignal) {
    listen();
    LocalSocket sender;
    ASSERT_EQ(sender.connectTo(m_path), Reached::Yes);
    accept().close();
    EXPECT_FALSE(sender.sendAll("hello"));
}

TEST_F(LocalSockets, TheOtherSideIsKnownByItsUserAndItsProcess) {
    listen();
    LocalSocket sender;
    ASSERT_EQ(sender.connectTo(m_path), Reached::Yes);
    const LocalSocket receiver = accept();
    EXPECT_TRUE(receiver.isOfThisUser());
    EXPECT_TRUE(sender.isOfThisUser());
    EXPECT_EQ(receiver.process(), ::getpid());
    EXPECT_FALSE(LocalSocket().isOfThisUser());
}

TEST_F(LocalSockets, AnotherUserIsKnownToBeOne) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can be another user too";
    listen();
    ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
    EXPECT_FALSE(asSomebodyElse([this] { return LocalSocket().connectTo(m_path) == Reached::Yes; }));
    ASSERT_EQ(::chmod(QFile::encodeName(m_path).constData(), 0666), 0);
    EXPECT_TRUE(asSomebodyElse([this] {
        LocalSocket socket;
        return socket.connectTo(m_path) == Reached::Yes && !socket.isOfThisUser();
    }));
    const LocalSocket receiver = accept();
    ASSERT_TRUE(receiver.isOpen());
    EXPECT_FALSE(receiver.isOfThisUser());
}

TEST_F(LocalSockets, TheFileIsForItsOwnerAlone) {
    const mode_t before = ::umask(0);
    listen();
    ::umask(before);
    ASSERT_TRUE(m_listener->isListening());
    EXPECT_EQ(modeOf(m_path), static_cast<mode_t>(S_IFSOCK | 0600));
    EXPECT_EQ(namesIn(m_folder.path()), QStringList(u"socket"_qs));
}

TEST_F(LocalSockets, NobodyListensWhereNothingIs) {
    QFile(m_path).open(QIODevice::WriteOnly);
    for (const QString& path :
         {m_path, m_folder.path(), m_folder.filePath(u"none"_qs), u"/none/at/all"_qs, QString()}) {
        LocalSocket socket;
        EXPECT_EQ(socket.connectTo(path), Reached::Nobody) << path.toStdString();
        EXPECT_FALSE(socket.isOpen());
    }
}

TEST_F(LocalSockets, TheFileGoesWithTheListenerUnlessItIsKept) {
    listen();
    m_listener.reset();
    EXPECT_TRUE(namesIn(m_folder.path()).isEmpty());
    listen();
    m_listener->keepFile();
    m_listener.reset();
    EXPECT_EQ(namesIn(m_folder.path()), QStringList(u"socket"_qs));
    EXPECT_EQ(LocalSocket().connectTo(m_path), Reached::Nobody);
}

TEST_F(LocalSockets, AFileThatWasLeftBehindIsReplaced) {
    listen();
    m_listener->keepFile();
    listen();
    ASSERT_TRUE(m_listener->isListening());
    EXPECT_EQ(LocalSocket().connectTo(m_path), Reached::Yes);
    EXPECT_EQ(namesIn(m_folder.path()), QStringList(u"socket"_qs));
}

TEST_F(LocalSockets, AListenerThatWasReplacedLeavesTheFileOfItsSuccessor) {
    listen();
    LocalListener successor(m_path);
    m_listener.reset();
    LocalSocket sender;
    EXPECT_EQ(sender.connectTo(m_path), Reached::Yes);
    LocalListener::Failure failure{};
    EXPECT_TRUE(successor.accept(failure).isOpen());
}

TEST_F(LocalSockets, APathLongerThanAnAddressIsReached) {
    const QString folder = m_folder.filePath(QString(200, u'x'));
    ASSERT_TRUE(QDir().mkpath(folder));
    m_path = folder + u"/socket"_qs;
    listen();
    ASSERT_TRUE(m_listener->isListening());
    EXPECT_EQ(namesIn(folder), QStringList(u"socket"_qs));
    LocalSocket sender;
    EXPECT_EQ(sender.connectTo(m_path), Reached::Yes);
    EXPECT_TRUE(accept().isOpen());
    m_listener.reset();
    EXPECT_TRUE(namesIn(folder).isEmpty());
}

TEST_F(LocalSockets, WhereNoFileCanBeThereIsNoListener) {
    ASSERT_TRUE(QDir().mkpath(m_path));
    for (const QString& path : {m_path, m_folder.filePath(u"none/socket"_qs), u"/proc/socket"_qs, QString()}) {
        const LocalListener listener(path);
        EXPECT_FALSE(listener.isListening()) << path.toStdString();
    }
    EXPECT_EQ(namesIn(m_folder.path()), QStringList(u"socket"_qs));
}

TEST_F(LocalSockets, NoConnectionWaitsAndSoNoneIsAccepted) {
    listen();
    EXPECT_FALSE(accept().isOpen());
}
