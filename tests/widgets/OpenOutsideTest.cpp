#include "support/PrivateBus.h"
#include "widgets/OpenOutside.h"

#include <QApplication>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// Stands for the desktop's opener.
class Opener : public QObject {
    Q_OBJECT

 public:
    Opener() { QDesktopServices::setUrlHandler(u"file"_qs, this, "open"); }
    ~Opener() override { QDesktopServices::unsetUrlHandler(u"file"_qs); }
    Q_DISABLE_COPY_MOVE(Opener)

 public Q_SLOTS:
    void open(const QUrl& address) { Q_EMIT opened(address); }

 Q_SIGNALS:
    void opened(const QUrl& address);
};

/// A socket that takes connections and never says a word.
class SilentSocket {
 public:
    SilentSocket() : m_handle(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un place{};
        place.sun_family = AF_UNIX;
        qstrncpy(place.sun_path, path().constData(), sizeof place.sun_path);
        EXPECT_EQ(bind(m_handle, reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
        EXPECT_EQ(listen(m_handle, 1), 0);
    }
    ~SilentSocket() { close(m_handle); }
    Q_DISABLE_COPY_MOVE(SilentSocket)

    QByteArray path() const { return QFile::encodeName(m_folder.filePath(u"bus"_qs)); }
    bool isCalled() const {
        constexpr int Milliseconds = 20'000;
        pollfd waiting{m_handle, POLLIN, 0};
        return poll(&waiting, 1, Milliseconds) == 1;
    }

 private:
    QTemporaryDir m_folder;
    int m_handle;
};

const QString Folder = u"/home/u/a folder"_qs;
const QString FolderAddress = u"file:///home/u/a%20folder"_qs;

}  // namespace

// Each of these needs a process of its own, because the connection to the bus is made once in a process.

TEST(OpenOutside, TheFileManagerOnTheBusIsAskedForAWindow) {
    const PrivateBus bus;
    const Opener opener;
    const QSignalSpy opened(&opener, &Opener::opened);
    const FakeFileManager manager(bus);
    OpenOutside::folder(Folder);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, QStringList(FolderAddress));
    EXPECT_TRUE(QTest::qWaitFor([] { return qApp->findChildren<QDBusPendingCallWatcher*>().isEmpty(); }));
    EXPECT_EQ(opened.count(), 0);
}

TEST(OpenOutside, WithoutAFileManagerOnTheBusTheDesktopOpensTheFolder) {
    const PrivateBus bus;
    const Opener opener;
    QSignalSpy opened(&opener, &Opener::opened);
    OpenOutside::folder(Folder);
    ASSERT_TRUE(opened.wait());
    EXPECT_EQ(opened.takeFirst().first().toUrl().toLocalFile(), Folder);
}

TEST(OpenOutside, WhereTheFileManagerRefusesTheDesktopOpensTheFolder) {
    const PrivateBus bus;
    const Opener opener;
    QSignalSpy opened(&opener, &Opener::opened);
    FakeFileManager manager(bus);
    manager.refuses = true;
    OpenOutside::folder(Folder);
    ASSERT_TRUE(opened.wait());
    EXPECT_EQ(manager.shown, QStringList(FolderAddress));
    EXPECT_EQ(opened.takeFirst().first().toUrl().toLocalFile(), Folder);
}

TEST(OpenOutside, WithoutABusTheDesktopOpensTheFolder) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    const Opener opener;
    QSignalSpy opened(&opener, &Opener::opened);
    OpenOutside::folder(u"/home/u/a folder%41#1"_qs);
    ASSERT_TRUE(opened.wait());
    EXPECT_EQ(opened.takeFirst().first().toUrl().toLocalFile(), u"/home/u/a folder%41#1"_qs);
}

/// Neither the call nor the end of the program waits for it; so the socket outlives the test.
TEST(OpenOutside, ABusThatNeverAnswersHoldsNothingUp) {
    static const SilentSocket dead;
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + dead.path());
    const Opener opener;
    QSignalSpy opened(&opener, &Opener::opened);
    OpenOutside::folder(Folder);
    EXPECT_EQ(opened.count(), 0);
    ASSERT_TRUE(opened.wait(20'000));
    EXPECT_TRUE(dead.isCalled());
    EXPECT_EQ(opened.takeFirst().first().toUrl().toLocalFile(), Folder);
}

TEST(OpenOutside, AnAddressIsOpenedByTheDesktop) {
    const Opener opener;
    const QSignalSpy opened(&opener, &Opener::opened);
    OpenOutside::address(QUrl(u"file:///a.html#part"_qs));
    ASSERT_EQ(opened.count(), 1);
    EXPECT_EQ(opened.first().first().toUrl(), QUrl(u"file:///a.html#part"_qs));
}

#include "OpenOutsideTest.moc"
