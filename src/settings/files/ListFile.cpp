#include "settings/files/ListFile.h"

#include "platform/Folders.h"
#include "text/codec/TextCodec.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

QString ListFile::path(const QString& name) {
    return ProgramFolder() + u'/' + name;
}

QStringList ListFile::read(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    const DecodedText text = decodeText({bytes.constData(), static_cast<size_t>(bytes.size())});
    QStringList lines =
        QString::fromStdString(text.utf8).replace(QLatin1String("\r\n"), QLatin1String("\n")).split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

void ListFile::write(const QString& path, const QStringList& lines) {
    makeFolder(QFileInfo(path).path());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    for (const QString& line : lines) {
        if (!line.contains(u'\n') && !line.contains(u'\r'))
            file.write(line.toUtf8() + "\r\n");
    }
    file.commit();
}
