#include "platform/BackgroundWork.h"
#include "widgets/OpenOutside.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDesktopServices>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

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

/// Stands for the file manager.
class FileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

 public Q_SLOTS:
    void ShowFolders(const QStringList& addresses, const QString&) { Q_EMIT shown(addresses); }

 Q_SIGNALS:
    void shown(const QStringList& addresses);
};

/// A bus of this test's own. It ends with the object.
class Bus {
 public:
    Bus() {
        m_daemon.start(u"dbus-daemon"_qs, {u"--session"_qs, u"--nofork"_qs, u"--print-address"_qs});
        m_daemon.waitForReadyRead();
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    ~Bus() {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Bus)

    const QString& address() const { return m_address; }

 private:
    QProcess m_daemon;
    QString m_address;
};

// The connection to the bus is made once in a process, so this test is the first.
TEST(OpenOutside, TheFileManagerOnTheBusIsAskedForAWindow) {
    const Bus bus;
    ASSERT_FALSE(bus.address().isEmpty());
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    const Opener opener;
    const QSignalSpy opened(&opener, &Opener::opened);
    FileManager manager;
    QDBusConnection service = QDBusConnection::connectToBus(bus.address(), u"service"_qs);
    ASSERT_TRUE(service.registerObject(u"/org/freedesktop/FileManager1"_qs, &manager, QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(service.registerService(u"org.freedesktop.FileManager1"_qs));
    QSignalSpy shown(&manager, &FileManager::shown);
    OpenOutside::folder(u"/home/u/a folder"_qs);
    ASSERT_TRUE(shown.wait());
    EXPECT_EQ(shown.takeFirst().first().toStringList(), QStringList(u"file:///home/u/a%20folder"_qs));
    EXPECT_TRUE(QTest::qWaitFor([] { return qApp->findChildren<BackgroundWork*>().isEmpty(); }));
    EXPECT_EQ(opened.count(), 0);
    QDBusConnection::disconnectFromBus(u"service"_qs);
}

TEST(OpenOutside, WithoutAFileManagerOnTheBusTheDesktopOpensTheFolder) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    const Opener opener;
    QSignalSpy opened(&opener, &Opener::opened);
    OpenOutside::folder(u"/home/u/a folder%41#1"_qs);
    ASSERT_TRUE(opened.wait());
    EXPECT_EQ(opened.takeFirst().first().toUrl().toLocalFile(), u"/home/u/a folder%41#1"_qs);
}

}  // namespace

#include "OpenOutsideTest.moc"
