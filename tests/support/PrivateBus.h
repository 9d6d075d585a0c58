#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

/// A session bus of the test's own, which the program under test connects to. Create it before anything else of the
/// process asks for the session bus: that connection is made once. The bus ends with the object.
class PrivateBus {
 public:
    PrivateBus() {
        m_daemon.start(u"dbus-daemon"_qs, {u"--session"_qs, u"--nofork"_qs, u"--print-address"_qs});
        EXPECT_TRUE(m_daemon.waitForReadyRead());
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toUtf8());
    }
    ~PrivateBus() {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(PrivateBus)

    const QString& address() const { return m_address; }

 private:
    QProcess m_daemon;
    QString m_address;
};

/// Stands for the file manager of the desktop on a bus, and records the folders it is asked to show.
class FakeFileManager : public QDBusVirtualObject {
 public:
    explicit FakeFileManager(const PrivateBus& bus)
        : m_service(QDBusConnection::connectToBus(bus.address(), u"FakeFileManager"_qs)) {
        EXPECT_TRUE(m_service.registerVirtualObject(u"/org/freedesktop/FileManager1"_qs, this));
        EXPECT_TRUE(m_service.registerService(u"org.freedesktop.FileManager1"_qs));
    }
    ~FakeFileManager() override { QDBusConnection::disconnectFromBus(u"FakeFileManager"_qs); }
    Q_DISABLE_COPY_MOVE(FakeFileManager)

    bool refuses = false;  ///< answers every call with an error
    QStringList shown;

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() != QLatin1String("ShowFolders"))
            return false;
        shown << message.arguments().value(0).toStringList();
        return connection.send(refuses ? message.createErrorReply(QDBusError::Failed, u"no"_qs)
                                       : message.createReply());
    }

 private:
    QDBusConnection m_service;
};
