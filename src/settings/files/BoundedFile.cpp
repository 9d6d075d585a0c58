#include "settings/files/BoundedFile.h"

#include "platform/FileErrors.h"
#include "platform/FileReader.h"

BoundedFile readBounded(const QString& path, qsizetype most) {
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
        if (bytes.size() > most)
            return {{}, FileErrors::reading(path, SystemError::fromErrno(EFBIG))};
        if (length < Part)
            return {bytes, {}};
    }
}
