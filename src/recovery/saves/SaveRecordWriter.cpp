#include "recovery/saves/SaveRecordWriter.h"

#include "recovery/saves/RecordFormat.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <future>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

using namespace RecordFormat;

namespace {

constexpr qint64 ReadSize = 1'048'576;
constexpr qint64 NanosecondsOfASecond = 1'000'000'000;
/// A file that must grow for a record grows by so much, since bytes of a file that has them already are flushed sooner.
constexpr qint64 GrowthSize = 65'536;
/// Old files from this size on are read in a thread of their own.
constexpr qint64 SizeForThread = 2LL * 1024 * 1024;

SystemError lastError() {
    return SystemError::fromErrno(errno);
}

qint64 nanoseconds(const timespec& time) {
    return time.tv_sec * NanosecondsOfASecond + time.tv_nsec;
}

/// With the links in it resolved, so that the same file is found later whatever becomes of the links.
QByteArray resolved(const QByteArray& name) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(name.constData(), nullptr), &std::free);
    return real == nullptr ? name : QByteArray(real.get());
}

}  // namespace

/// The bytes of the file as they are before the write, as far as they are needed, and the hashes of their blocks, which
/// collect as it is read.
class SaveRecordWriter::OldFile {
 public:
    OldFile(FileSystemCalls& calls, const PlannedWrite& write)
        : m_calls(calls),
          m_before(write.before),
          m_size(static_cast<qint64>(
              hashedSizeOf(static_cast<quint64>(write.before.st_size), static_cast<quint64>(write.length)))),
          m_buffer(std::min(ReadSize, m_size), Qt::Uninitialized) {
        m_hashes.reserve(blocksOf(static_cast<quint64>(m_size)));
    }
    ~OldFile() {
        if (m_handle >= 0)
            m_calls.close(m_handle);
    }
    Q_DISABLE_COPY_MOVE(OldFile)

    SystemError open(const PlannedWrite& write) {
        struct stat now {};
        if (SystemError error = m_size == 0 ? examine(write, now) : open(write, now))
            return error;
        m_recordedTime = nanoseconds(now.st_mtim);
        return keyOf(now) == keyOf(write.before) ? SystemError() : SystemError::fromErrno(ESTALE);
    }

    /// What is read of it. The rest, if there is any, is far behind the new bytes.
    qint64 size() const { return m_size; }
    /// Of the last change, in nanoseconds; the reservation of space may be one.
    qint64 recordedTime() const { return m_recordedTime; }
    bool atEnd() const { return m_at == m_size; }

    /// The next bytes, in whole blocks up to size(); empty after an error or at the end.
    std::string_view next(SystemError& error) {
        const qint64 wanted = std::min<qint64>(m_buffer.size(), m_size - m_at);
        qint64 got = 0;
        while (got < wanted) {
            const ssize_t count = uninterrupted([&] {
                return m_calls.pread(m_handle, m_buffer.data() + got, static_cast<std::size_t>(wanted - got),
                                     m_at + got);
            });
            if (count <= 0) {
                error = count < 0 ? lastError() : SystemError::fromErrno(ESTALE);
                return {};
            }
            got += count;
        }
        m_at += got;
        for (qint64 at = 0; at < got; at += BlockSize)
            m_hashes.push_back(blockHash(m_buffer.constData() + at, std::min(BlockSize, got - at)));
        return {m_buffer.constData(), static_cast<std::size_t>(got)};
    }

    /// Before space was reserved in it.
    const struct stat& before() const { return m_before; }

    SystemError readToEnd() {
        SystemError error;
        while (!error && !atEnd())
            next(error);
        return error;
    }

    /// Its bytes were recorded; it can only be flushed then.
    void release() {
        m_buffer = {};
        m_hashes = {};
    }
    SystemError flush() const {
        const bool done = m_handle < 0 || uninterrupted([&] { return m_calls.fsync(m_handle); }) == 0;
        return done || errno == EINVAL ? SystemError() : lastError();
    }

    void writeHashes(RecordOutput& output) const {
        output.write({reinterpret_cast<const char*>(m_hashes.data()), m_hashes.size() * sizeof(quint32)});
    }

 private:
    SystemError open(const PlannedWrite& write, struct stat& now) {
        m_handle = uninterrupted(
            [&] { return m_calls.open(write.name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); });
        return m_handle >= 0 && m_calls.fstat(m_handle, &now) == 0 ? SystemError() : lastError();
    }
    /// A file without bytes need not be readable.
    SystemError examine(const PlannedWrite& write, struct stat& now) const {
        const auto call = [&] { return m_calls.stat(write.name.constData(), &now); };
        return uninterrupted(call) == 0 ? SystemError() : lastError();
    }

    FileSystemCalls& m_calls;
    int m_handle = -1;
    const struct stat m_before;
    const qint64 m_size;
    qint64 m_recordedTime = 0;
    qint64 m_at = 0;
    QByteArray m_buffer;
    std::vector<quint32> m_hashes;
};

/// Compares new bytes, in order, with those of the old file, and writes the blocks that differ, neighbours as one
/// range of limited length.
class SaveRecordWriter::Comparison {
 public:
    /// `cuts`: a last block of which the old bytes are cut off differs.
    Comparison(OldFile& old, bool cuts, RecordOutput& output) : m_old(old), m_cuts(cuts), m_output(output) {}

    SystemError take(std::string_view bytes) {
        SystemError error;
        while (!error && !bytes.empty()) {
            const std::size_t part = std::min(bytes.size(), static_cast<std::size_t>(BlockSize) - m_block.size());
            m_block.append(bytes.substr(0, part));
            bytes.remove_prefix(part);
            if (m_block.size() == BlockSize)
                error = endBlock();
        }
        return error;
    }

    SystemError end() {
        SystemError error = m_block.empty() ? SystemError() : endBlock();
        writeRange();
        return error;
    }

 private:
    static constexpr std::size_t LongestRange = 262'144;

    SystemError endBlock() {
        SystemError error;
        if (m_oldBytes.empty() && !m_old.atEnd())
            m_oldBytes = m_old.next(error);
        const std::string_view old = m_oldBytes.substr(0, static_cast<std::size_t>(BlockSize));
        m_oldBytes.remove_prefix(old.size());
        if ((m_cuts ? old : old.substr(0, m_block.size())) == m_block)
            writeRange();
        else
            m_range += m_block;
        m_at += m_block.size();
        m_block.clear();
        if (m_range.size() >= LongestRange)
            writeRange();
        return error;
    }

    /// The range ends where the next block begins.
    void writeRange() {
        if (m_range.empty())
            return;
        m_output.writePlain(RangeHead{m_at - m_range.size(), m_range.size()});
        m_output.write(m_range);
        m_range.clear();
    }

    OldFile& m_old;
    bool m_cuts;
    RecordOutput& m_output;
    std::string_view m_oldBytes;  ///< read, and not compared yet
    std::string m_block;          ///< new bytes of the block at m_at
    std::string m_range;          ///< differing bytes before m_at, not written yet
    quint64 m_at = 0;
};

SaveRecordWriter::SaveRecordWriter(FileSystemCalls& calls, int handle, qint64 size, quint64 sequence)
    : m_calls(calls), m_handle(handle), m_size(size), m_output(calls, handle) {
    m_output.writePlain(Magic);
    m_output.writePlain(sequence);
}

SaveRecordWriter::~SaveRecordWriter() = default;

SystemError SaveRecordWriter::flushOldFiles(const FlushedFiles& flushed) {
    for (const auto& old : m_oldFiles) {
        SystemError error = flushed.contains(old->before()) ? SystemError() : old->flush();
        if (error)
            return error;
    }
    return {};
}

SystemError SaveRecordWriter::add(const PlannedWrite& write) {
    OldFile& old = *m_oldFiles.emplace_back(std::make_unique<OldFile>(m_calls, write));
    SystemError error = old.open(write);
    if (error)
        return error;
    writeHead(write, old);
    error = write.pieces.empty() ? addDifferences(write, old) : addAll(write, old);
    m_output.writePlain(RangeHead{LastRange, 0});
    old.writeHashes(m_output);
    old.release();
    ++m_entries;
    return error ? error : m_output.error();
}

void SaveRecordWriter::writeHead(const PlannedWrite& write, const OldFile& old) {
    const QByteArray path = resolved(write.name);
    m_output.writePlain(EntryHead{EntryTag, write.cuts ? quint32(Cuts) : 0, write.before.st_dev, write.before.st_ino,
                                  static_cast<quint64>(write.before.st_size), static_cast<quint64>(write.length),
                                  static_cast<quint64>(old.size()), nanoseconds(write.before.st_mtim),
                                  old.recordedTime(), static_cast<quint32>(path.size()),
                                  write.before.st_mode & ALLPERMS});
    m_output.write({path.constData(), static_cast<std::size_t>(path.size())});
}

/// A large old file is read and hashed meanwhile.
SystemError SaveRecordWriter::addAll(const PlannedWrite& write, OldFile& old) {
    std::future<SystemError> reading;
    try {
        if (old.size() >= SizeForThread)
            reading = std::async(std::launch::async, [&old] { return old.readToEnd(); });
    } catch (const std::system_error&) {
        // Without another thread it is read afterwards.
    }
    if (write.length > 0)
        m_output.writePlain(RangeHead{0, static_cast<quint64>(write.length)});
    for (const std::string_view piece : write.pieces)
        m_output.write(piece);
    const SystemError error = reading.valid() ? reading.get() : old.readToEnd();
    return error ? error : m_output.error();
}

/// Reads the whole source once before it is written.
SystemError SaveRecordWriter::addDifferences(const PlannedWrite& write, OldFile& old) {
    if (!write.source.rewind(ByteSource::Reading::ToExamine))
        return SystemError::fromErrno(ESPIPE);
    Comparison comparison(old, write.cuts, m_output);
    SystemError error;
    for (qint64 at = 0; !error && at < write.length;) {
        BytePieces pieces;
        error = write.source.next(pieces);
        const qint64 before = at;
        for (const std::string_view piece : error ? BytePieces() : pieces) {
            error = comparison.take(piece);
            at += static_cast<qint64>(piece.size());
        }
        if (!error && at == before)
            error = SystemError::fromErrno(EIO);
    }
    if (!error)
        error = comparison.end();
    write.source.rewind(ByteSource::Reading::ToWrite);
    if (!error)
        error = old.readToEnd();
    return error ? error : m_output.error();
}

SystemError SaveRecordWriter::finish() {
    m_output.writePlain(EndHead{EndTag, m_entries});
    const QByteArray sum = m_output.checksum();
    m_output.write({sum.constData(), static_cast<std::size_t>(sum.size())});
    m_output.writeOut();
    if (m_output.length() > m_size)
        m_output.fill(GrowthSize);
    if (m_output.error())
        return m_output.error();
    return uninterrupted([&] { return m_calls.fdatasync(m_handle); }) == 0 ? SystemError() : lastError();
}
