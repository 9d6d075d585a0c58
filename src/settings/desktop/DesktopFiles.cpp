#include "settings/desktop/DesktopFiles.h"

#include "platform/FileReplacement.h"
#include "platform/Folders.h"
#include "settings/files/OwnTextFile.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <cerrno>

namespace {

constexpr int MostWait = 5000;  // milliseconds

}  // namespace

std::optional<QByteArray> DesktopFiles::read(const QString& path) {
    OwnTextFile::Content content = OwnTextFile::read(path, OwnTextFile::MostListBytes);
    if (content.error && content.error.number != ENOENT)
        return std::nullopt;
    return content.bytes;
}

bool DesktopFiles::replace(const QString& path, const QByteArray& bytes) {
    makeFolder(QFileInfo(path).path());
    return !replaceFile(path, bytes);
}

void DesktopFiles::makeExecutable(const QString& path) {
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner | QFile::ExeUser);
}

void DesktopFiles::runTool(const QString& name, const QStringList& arguments) {
    const QString program = QStandardPaths::findExecutable(name);
    if (program.isEmpty())
        return;
    QProcess tool;
    tool.setStandardInputFile(QProcess::nullDevice());
    tool.setStandardOutputFile(QProcess::nullDevice());
    tool.setStandardErrorFile(QProcess::nullDevice());
    tool.start(program, arguments);
    if (!tool.waitForFinished(MostWait)) {
        tool.kill();
        tool.waitForFinished(MostWait);
    }
}
