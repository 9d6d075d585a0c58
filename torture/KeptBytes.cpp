#include "KeptBytes.h"

#include "recovery/saves/RecordedBytes.h"
#include "recovery/saves/SaveRecord.h"
#include "recovery/saves/SaveRecovery.h"

#include <fcntl.h>
#include <unistd.h>

std::optional<KeptBytes> KeptBytes::read(const QByteArray& name) {
    const QByteArray suffix = QByteArray(SaveRecovery::RecordSuffix) + SaveRecovery::AsideSuffix;
    if (!name.endsWith(suffix) || !name.contains("-was-"))
        return {};
    FileSystemCalls& calls = FileSystemCalls::system();
    const int handle = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
    SystemError error;
    const std::optional<SaveRecord> record = SaveRecord::read(calls, handle, error);
    std::optional<KeptBytes> kept;
    if (record && record->files().size() == 1 && record->files().front().isWhole()) {
        const RecordedFile& file = record->files().front();
        QByteArray contents(static_cast<qsizetype>(file.newSize), '\0');
        if (contents.isEmpty() ||
            !readExactly(calls, handle, contents.data(), contents.size(), file.ranges.front().inRecord))
            kept = KeptBytes{file.path, contents};
    }
    ::close(handle);
    return kept;
}
