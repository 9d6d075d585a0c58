#include "settings/files/OwnTextFile.h"

#include "platform/FileErrors.h"
#include "platform/FileReader.h"
#include "platform/FileReplacement.h"
#include "platform/Folders.h"
#include "text/codec/TextCodec.h"

#include <QFileInfo>

#include <algorithm>

namespace {

/// Stops behind `most` bytes, so that a longer file has more of them.
OwnTextFile::Content readPast(const QString& path, qsizetype most) {
    FileReader reader;
    if (const SystemError error = reader.open(path))
        return {{}, error};
    constexpr qsizetype Part = 64 * 1024;
    QByteArray bytes;
    for (;;) {
        const qsizetype before = bytes.size();
        bytes.resize(before + Part);
        const qint64 length = reader.read(bytes.data() + before, Part);
        if (length < 0)
            return {{}, reader.error()};
        bytes.truncate(before + length);
        if (length < Part || bytes.size() > most)
            return {bytes, {}};
    }
}

}  // namespace

QString OwnTextFile::path(const QString& name) {
    return ProgramFolder() + u'/' + name;
}

OwnTextFile::Content OwnTextFile::read(const QString& path, qsizetype most) {
    Content content = readPast(path, most);
    if (content.bytes.size() > most)
        return {{}, FileErrors::reading(path, SystemError::fromErrno(EFBIG))};
    return content;
}

OwnTextFile::Content OwnTextFile::readHead(const QString& path, qsizetype most) {
    Content content = readPast(path, most);
    content.bytes.truncate(most);
    return content;
}

QStringList OwnTextFile::linesOf(QByteArrayView bytes) {
    const DecodedText text = decodeText({bytes.data(), static_cast<std::size_t>(bytes.size())});
    QStringList lines = QString::fromStdString(text.utf8).split(u'\n');
    for (QString& line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
    }
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

std::optional<QStringList> OwnTextFile::readLines(const QString& path, qsizetype most) {
    const Content content = read(path, most);
    return content.error ? std::nullopt : std::optional(linesOf(content.bytes));
}

bool OwnTextFile::isOneField(const QString& text) {
    return std::ranges::none_of(text, [](QChar each) { return QStringView(u"\t\r\n").contains(each); });
}

bool OwnTextFile::writeLines(const QString& path, const QStringList& lines) {
    makeFolder(QFileInfo(path).path());
    return !replace(path, lines);
}

QByteArray OwnTextFile::bytesOf(const QStringList& lines) {
    QByteArray bytes;
    for (const QString& line : lines) {
        if (!line.contains(u'\n') && !line.contains(u'\r'))
            bytes += line.toUtf8() + "\r\n";
    }
    return bytes;
}

SystemError OwnTextFile::replace(const QString& path, const QStringList& lines, FileSystemCalls& calls) {
    const SystemError cause = replaceFile(path, bytesOf(lines), calls);
    return cause ? FileErrors::writing(path, cause) : SystemError();
}
