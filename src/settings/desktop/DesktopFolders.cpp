#include "settings/desktop/DesktopFolders.h"

#include "platform/Folders.h"
#include "platform/SpecialFolders.h"

#include <QFile>
#include <QStandardPaths>

namespace {

constexpr int DesktopCode = 0;

}  // namespace

DesktopFolders DesktopFolders::ofUser() {
    const QString config = userConfigFolder();
    const QString own = userDataFolder();
    QStringList shared = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    shared.removeAll(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
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
