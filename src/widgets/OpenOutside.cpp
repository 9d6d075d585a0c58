#include "widgets/OpenOutside.h"

#include "platform/BackgroundWork.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QUrl>

#include <memory>

namespace {

/// Milliseconds that a file manager may take to start.
constexpr int LongestStart = 20'000;

/// Asks the file manager of the desktop for a window. Waits for its answer.
bool askFileManager(const QString& address) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return false;
    QDBusMessage call =
        QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_qs, u"/org/freedesktop/FileManager1"_qs,
                                       u"org.freedesktop.FileManager1"_qs, u"ShowFolders"_qs);
    call << QStringList(address) << QString();
    return bus.call(call, QDBus::Block, LongestStart).type() == QDBusMessage::ReplyMessage;
}

}  // namespace

void OpenOutside::folder(const QString& path) {
    const QUrl address = QUrl::fromLocalFile(path);
    const auto isShown = std::make_shared<bool>(false);
    auto* work = new BackgroundWork(
        [address, isShown](const std::atomic<bool>&) {
            *isShown = askFileManager(address.toString(QUrl::FullyEncoded));
        },
        QCoreApplication::instance());
    QObject::connect(work, &BackgroundWork::finished, work, [work, address, isShown] {
        work->deleteLater();
        if (!*isShown)
            QDesktopServices::openUrl(address);
    });
}
