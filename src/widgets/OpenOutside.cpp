#include "widgets/OpenOutside.h"

#include "platform/BackgroundWork.h"
#include "platform/SessionBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QUrl>

#include <memory>

namespace {

/// How long the bus may take to answer at all.
constexpr std::chrono::seconds LongestSilence(2);
/// Milliseconds that a file manager may take to start.
constexpr int LongestStart = 20'000;

/// Asks the file manager of the desktop for a window. Where it does not answer, or says no, the desktop opens the
/// folder.
void askFileManager(const QUrl& address) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_qs, u"/org/freedesktop/FileManager1"_qs,
                                       u"org.freedesktop.FileManager1"_qs, u"ShowFolders"_qs);
    call << QStringList(address.toString(QUrl::FullyEncoded)) << QString();
    const QDBusPendingCall answer = QDBusConnection::sessionBus().asyncCall(call, LongestStart);
    auto* watcher = new QDBusPendingCallWatcher(answer, QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, address] {
        watcher->deleteLater();
        if (watcher->isError())
            OpenOutside::address(address);
    });
}

}  // namespace

void OpenOutside::address(const QUrl& address) {
    QDesktopServices::openUrl(address);
}

void OpenOutside::folder(const QString& path) {
    const QUrl address = QUrl::fromLocalFile(path);
    const auto answers = std::make_shared<bool>(false);
    auto* work =
        new BackgroundWork([answers](const std::atomic<bool>&) { *answers = sessionBusAnswers(LongestSilence); },
                           QCoreApplication::instance());
    QObject::connect(work, &BackgroundWork::finished, work, [work, address, answers] {
        work->deleteLater();
        if (*answers)
            askFileManager(address);
        else
            OpenOutside::address(address);
    });
}
