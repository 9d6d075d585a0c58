#include "recovery/saves/FolderFlush.h"

#include "platform/Paths.h"

#include <fcntl.h>

#include <cerrno>

namespace {

bool flush(FileSystemCalls& calls, const QString& folder, int flags) {
    const QByteArray name = localName(folder).value_or(QByteArray());
    const int handle =
        uninterrupted([&] { return calls.open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags); });
    if (handle < 0)
        return false;
    // Some file systems have nothing to flush for a folder, and say so.
    const bool done = uninterrupted([&] { return calls.fsync(handle); }) == 0 || errno == EINVAL || errno == EROFS;
    calls.close(handle);
    return done;
}

}  // namespace

bool flushFolder(FileSystemCalls& calls, const QString& folder) {
    return flush(calls, folder, O_NOFOLLOW);
}

void flushFoldersAbove(FileSystemCalls& calls, const QString& folder) {
    qsizetype end = folder.lastIndexOf(u'/');
    while (end > 0 && flush(calls, folder.left(end), 0))
        end = folder.lastIndexOf(u'/', end - 1);
}
