#include "tools/quillmark-recover/ToolOutput.h"

#include "platform/FileSystemCalls.h"
#include "platform/Paths.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>

int ToolOutput::say(ExitCode code, const QString& text) {
    const QString hint = code == Misused ? u"Try quillmark-recover --help.\n"_qs : QString();
    const QByteArray bytes = u"quillmark-recover: %1\n%2"_qs.arg(text, hint).toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
    return code;
}

bool ToolOutput::print(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const bool written = std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout) ==
                         static_cast<size_t>(bytes.size());
    return std::fflush(stdout) == 0 && written;
}

QString ToolOutput::shown(const QString& text) {
    QString result;
    for (const QChar each : text) {
        const bool isPlain = each.isPrint() || each.isSurrogate();
        result += isPlain ? QString(each) : u"\\x%1"_qs.arg(each.unicode(), 2, 16, QLatin1Char('0'));
    }
    return result;
}

QByteArray ToolOutput::nameOf(const QString& path) {
    return localName(path).value_or(QByteArray());
}

SystemError ToolOutput::writeNew(const QString& path, ByteSource& source) {
    FileSystemCalls& calls = FileSystemCalls::system();
    const QByteArray name = nameOf(path);
    const int handle = calls.open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    SystemError error = handle < 0 ? SystemError::fromErrno(errno) : SystemError();
    if (error)
        return error;
    qint64 at = 0;
    while (!error && at < source.length()) {
        BytePieces pieces;
        error = source.next(pieces);
        std::string_view rest = error ? std::string_view() : pieces.front();
        while (!error && !rest.empty()) {
            const iovec part{const_cast<char*>(rest.data()), rest.size()};
            const ssize_t count = uninterrupted([&] { return calls.pwritev(handle, &part, 1, at); });
            if (count <= 0) {
                error = SystemError::fromErrno(count < 0 ? errno : EIO);
            } else {
                at += count;
                rest.remove_prefix(static_cast<std::size_t>(count));
            }
        }
    }
    if (!error && uninterrupted([&] { return calls.fsync(handle); }) != 0)
        error = SystemError::fromErrno(errno);
    if (calls.close(handle) != 0 && !error)
        error = SystemError::fromErrno(errno);
    if (error)
        calls.unlink(name.constData());
    return error;
}
