#include "recovery/saves/OverwrittenBytes.h"

#include "platform/WriteWitness.h"
#include "recovery/saves/FolderFlush.h"
#include "recovery/saves/RecordStore.h"
#include "recovery/saves/SaveRecord.h"
#include "recovery/saves/SaveRecordWriter.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <xxhash.h>

#include <cerrno>

namespace {

constexpr mode_t RecordMode = 0600;

SystemError lastError() {
    return SystemError::fromErrno(errno);
}

/// An open file that is closed again.
class Handle {
 public:
    Handle(FileSystemCalls& calls, const QByteArray& name, int flags)
        : m_calls(calls), m_number(uninterrupted([&] {
              return calls.open(name.constData(), flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, RecordMode);
          })) {}
    ~Handle() {
        if (m_number >= 0)
            m_calls.close(m_number);
    }
    Q_DISABLE_COPY_MOVE(Handle)
    int number() const { return m_number; }

 private:
    FileSystemCalls& m_calls;
    int m_number;
};

/// The bytes are all at hand.
class NoSource : public ByteSource {
 public:
    qint64 length() const override { return 0; }
    SystemError next(BytePieces& /*pieces*/) override { return SystemError::fromErrno(ENODATA); }
};

SystemError writeRecord(FileSystemCalls& calls, const QByteArray& name, const PlannedWrite& contents) {
    const Handle handle(calls, name, O_RDWR | O_CREAT | O_TRUNC);
    if (handle.number() < 0)
        return lastError();
    SaveRecordWriter writer(calls, handle.number(), 0, RecordStore::nextSequence());
    const SystemError error = writer.add(contents);
    return error ? error : writer.finish();
}

}  // namespace

/// The name says what is in it, so that a second attempt replaces the first.
SystemError keepOverwrittenBytes(FileSystemCalls& calls, const QByteArray& record, const QByteArray& target) {
    struct stat status {};
    const Handle handle(calls, target, O_RDONLY);
    if (handle.number() < 0 || calls.fstat(handle.number(), &status) != 0)
        return lastError();
    if (static_cast<quint64>(status.st_size) > MostOverwrittenBytes)
        return SystemError::fromErrno(EFBIG);
    QByteArray bytes(static_cast<qsizetype>(status.st_size), Qt::Uninitialized);
    SystemError error = readExactly(calls, handle.number(), bytes.data(), bytes.size(), 0);
    if (error)
        return error;
    const std::string_view piece(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    const quint64 hash = XXH3_64bits_withSeed(piece.data(), piece.size(), status.st_ino);
    const QByteArray stem = record.left(record.lastIndexOf('.')) + "-was-" + QByteArray::number(hash, 36);
    NoSource none;
    error = writeRecord(calls, stem + ".new",
                        {.name = target,
                         .before = status,
                         .length = status.st_size,
                         .cuts = true,
                         .pieces = {&piece, 1},
                         .source = none});
    if (!error && calls.rename((stem + ".new").constData(), (stem + ".save.aside").constData()) != 0)
        error = lastError();
    if (error)
        calls.unlink((stem + ".new").constData());
    else
        flushFolder(calls, QFile::decodeName(record.left(record.lastIndexOf('/'))));
    return error;
}
