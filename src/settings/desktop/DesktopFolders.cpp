#include "settings/desktop/DesktopFolders.h"

#include "platform/SpecialFolders.h"

#include <QFile>
#include <QStandardPaths>

namespace {

constexpr int DesktopCode = 0;

}  // namespace

DesktopFolders DesktopFolders::ofUser() {
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QStringList data = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    const QString own = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    QStringList shared = data;
    shared.removeAll(own);
    return {
        .program = QFile::symLinkTarget(u"/proc/self/exe"_qs),
        .applications = own + u"/applications"_qs,
        .mime = own + u"/mime"_qs,
        .mimeAppsList = config + u"/mimeapps.list"_qs,
        .autostart = config + u"/autostart"_qs,
        .desktop = specialFolder(DesktopCode),
        .sharedFolders = shared,
    };
}
