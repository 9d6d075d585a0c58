#include "hex/bytes/WorkingCopy.h"

#include "hex/bytes/WorkingCopyFile.h"
#include "platform/FileReader.h"
#include "platform/Folders.h"
#include "platform/OwnFile.h"
#include "platform/Paths.h"
#include "platform/UserFileWriter.h"

#include <QByteArray>
#include <QDir>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace {

constexpr int SecondsOfADay = 86'400;
/// Bytes read and written at once within a block, few enough to stay in the processor's cache.
constexpr qint64 PieceSize = 65'536;

SystemError systemError(int number) {
    return SystemError::fromErrno(number);
}

/// The private one, created if it does not exist.
SystemError GetTempFolder(QString& folder) {
    folder = temporaryFolder();
    return makePrivateFolder(folder);
}

QString MakeTempFileName(const QString& folder, QTime time) {
    return folder + u"/~hextemp"_qs + time.toString(u"hhmmss"_qs) + u".tmp"_qs;
}

void removeUnlessLocked(FileSystemCalls& calls, const QByteArray& name) {
    int handle = -1;
    if (lockOwnFile(calls, name, handle) != OwnFileLock::Done)
        return;
    calls.unlink(name.constData());
    calls.close(handle);
}

}  // namespace

/// The bytes of a working copy in blocks, for the writer of users' files: as they are when this is made, although bytes
/// may be typed while it runs the event loop. The writer reads them twice, and both times they must be the same.
class WorkingCopy::Source : public ByteSource {
 public:
    Source(std::shared_ptr<WorkingCopyFile> file, qint64 blockSize, const CopyProgress& progress)
        : m_file(std::move(file)), m_blockSize(blockSize), m_progress(progress) {
        m_file->beginSave();
    }
    ~Source() override { m_file->endSave(); }
    Q_DISABLE_COPY_MOVE(Source)

    qint64 length() const override { return m_file->length(); }

    SystemError next(BytePieces& pieces) override {
        report();
        m_buffer.resize(
            static_cast<qsizetype>(std::min({PieceSize, m_blockSize - m_at % m_blockSize, length() - m_at})));
        const qint64 count = m_file->readForSave(m_at, m_buffer.data(), m_buffer.size());
        if (count != m_buffer.size())
            return systemError(count < 0 ? errno : EIO);
        m_at += count;
        m_piece[0] = std::string_view(m_buffer.constData(), static_cast<std::size_t>(count));
        pieces = m_piece;
        return {};
    }

    bool rewind(Reading next) override {
        m_at = 0;
        m_isExamined = next == Reading::ToExamine;
        return true;
    }

    /// Writes the pieces given so far and reports after each block. The save continues when the view is destroyed
    /// meanwhile. While the bytes are only examined, nothing is done yet.
    void report() {
        const bool isBlock = m_at > 0 && (m_at % m_blockSize == 0 || m_at == length());
        if (isBlock && m_isWatched)
            m_isWatched = m_progress(m_isExamined ? 0 : percentDone(m_at, length(), m_blockSize));
    }
    bool isWatched() const { return m_isWatched; }

 private:
    std::shared_ptr<WorkingCopyFile> m_file;
    qint64 m_blockSize;
    const CopyProgress& m_progress;
    bool m_isWatched = true;
    bool m_isExamined = false;
    qint64 m_at = 0;
    QByteArray m_buffer;
    std::array<std::string_view, 1> m_piece;
};

WorkingCopy::WorkingCopy(FileSystemCalls& calls, qint64 blockSize, Clock clock)
    : m_calls(calls), m_blockSize(blockSize), m_clock(std::move(clock)) {}

WorkingCopy::~WorkingCopy() = default;

SystemError WorkingCopy::load(const QString& source, const CopyProgress& progress) {
    FileReader reader(m_calls);
    if (const SystemError error = reader.open(source))
        return systemError(error.number);
    if (reader.size() == 0)
        return systemError(ENODATA);
    if (reader.size() > MostBytes)
        return systemError(EFBIG);
    return CopyToTempFile(reader, progress);
}

SystemError WorkingCopy::CopyToTempFile(const FileReader& source, const CopyProgress& progress) {
    m_file.reset();
    std::shared_ptr<WorkingCopyFile> file;
    if (SystemError error = MakeTempFile(file))
        return error;
    SystemError error = copyFile(m_calls, source.handle(), file->handle(), source.size(), m_blockSize, progress);
    if (error.number == ECANCELED)
        return error;  // this object may be destroyed
    if (!error)
        error = file->measure();
    if (!error && file->length() == 0)
        error = systemError(ENODATA);
    if (!error && file->length() > MostBytes)
        error = systemError(EFBIG);
    if (!error)
        m_file = std::move(file);
    return error;
}

SystemError WorkingCopy::MakeTempFile(std::shared_ptr<WorkingCopyFile>& file) {
    QString folder;
    if (SystemError error = GetTempFolder(folder))
        return error;
    SystemError error = systemError(EEXIST);
    if (!m_name.isEmpty())
        file = WorkingCopyFile::make(m_calls, m_name, error);
    QTime time = m_clock();
    for (int i = 0; error.number == EEXIST && i < SecondsOfADay; ++i) {
        const QString name = MakeTempFileName(folder, time);
        file = WorkingCopyFile::make(m_calls, name, error);
        if (file != nullptr)
            m_name = name;
        time = time.addSecs(1);
    }
    return error;
}

SystemError WorkingCopy::save(const QString& target, const CopyProgress& progress) {
    if (m_file == nullptr)
        return systemError(EBADF);
    UserFileWriter writer(m_calls);
    Source source(m_file, m_blockSize, progress);
    const WriteResult result = writer.write(target, source, UserFileWriter::Tail::Keep);
    if (!result.error)
        source.report();
    if (!source.isWatched())
        return systemError(ECANCELED);
    return result.error ? systemError(result.error.number) : SystemError();
}

int WorkingCopy::handle() const {
    return m_file == nullptr ? -1 : m_file->handle();
}

qint64 WorkingCopy::length() const {
    return m_file == nullptr ? 0 : m_file->length();
}

qint64 WorkingCopy::read(FilePosition from, char* buffer, qint64 count) const {
    if (m_file == nullptr)
        return -1;
    const qint64 at = from.number() - 1;
    return m_file->read(at, buffer, std::clamp<qint64>(length() - at, 0, count));
}

SystemError WorkingCopy::write(FilePosition from, std::string_view bytes) {
    if (m_file == nullptr)
        return systemError(EBADF);
    const qint64 at = from.number() - 1;
    const qint64 room = std::max<qint64>(length() - at, 0);
    return m_file->write(at, bytes.substr(0, static_cast<std::size_t>(room)));
}

void WorkingCopy::removeAbandoned(FileSystemCalls& calls) {
    const QDir folder(temporaryFolder());
    const QStringList names = folder.entryList({u"~hextemp*.tmp"_qs}, QDir::Files | QDir::System);
    for (const QString& name : names)
        removeUnlessLocked(calls, localName(folder.filePath(name)).value_or(QByteArray()));
}
