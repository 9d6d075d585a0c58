#include "platform/UserFileWriter.h"

#include "platform/FileErrors.h"
#include "platform/Paths.h"

#include <QByteArray>

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <vector>

namespace {

constexpr int OpenFlags = O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
constexpr mode_t NewFileMode = 0666;
constexpr mode_t AnyWriteBit = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr std::size_t PartsAtOnce = IOV_MAX;
constexpr std::size_t PageSize = 4096;
/// Large contents are written in several calls, so that the disk works while the next bytes are copied.
constexpr std::size_t BytesAtOnce = 4 * 1024 * 1024;
static_assert(BytesAtOnce % PageSize == 0);
constexpr ssize_t BytesToStartWith = 1024 * 1024;
/// The maximum number of links in a row, the same as in the system.
constexpr int LinksToFollow = 40;

WriteWitness* witnessOfProcess = nullptr;

SystemError lastError() {
    return SystemError::fromErrno(errno);
}

/// Reports whether the error means that the file system does not support the request. Such an error does not stop the
/// write.
bool isUnsupported(int number) {
    return number == EOPNOTSUPP || number == ENOSYS || number == EINVAL;
}

SystemError refusal(const struct stat& status) {
    if (SystemError cause = FileErrors::unlessRegular(status.st_mode))
        return cause;
    return (status.st_mode & AnyWriteBit) == 0 ? SystemError::fromErrno(EACCES) : SystemError();
}

off_t lengthOf(BytePieces pieces) {
    std::size_t length = 0;
    for (const std::string_view piece : pieces)
        length += piece.size();
    return static_cast<off_t>(length);
}

/// Pieces that are all in memory, supplied in one call.
class PiecesAtHand : public ByteSource {
 public:
    explicit PiecesAtHand(BytePieces pieces) : m_pieces(pieces) {}

    qint64 length() const override { return lengthOf(m_pieces); }
    SystemError next(BytePieces& pieces) override {
        pieces = m_pieces;
        return {};
    }
    bool rewind(Reading /*next*/) override { return true; }

 private:
    BytePieces m_pieces;
};

/// Turns the pieces into arguments of pwritev(), beginning where the last write ended.
class PieceQueue {
 public:
    explicit PieceQueue(BytePieces pieces) : m_rest(pieces) { m_parts.reserve(PartsAtOnce); }

    /// Returns the next parts, which are to be written at this offset; empty at the end. If not all are for one call,
    /// they end where a page of the file does: a write that is interrupted between two calls leaves no page that is
    /// partly old and partly new.
    const std::vector<iovec>& next(off_t at) {
        m_parts.clear();
        std::size_t skip = m_taken;
        std::size_t total = 0;
        bool isCut = false;
        for (const std::string_view piece : m_rest) {
            if (m_parts.size() == PartsAtOnce || total >= BytesAtOnce) {
                isCut = true;
                break;
            }
            const std::size_t length = std::min(piece.size() - skip, BytesAtOnce - total);
            if (length > 0)
                m_parts.push_back({const_cast<char*>(piece.data()) + skip, length});
            total += length;
            isCut = skip + length < piece.size();
            if (isCut)
                break;
            skip = 0;
        }
        if (isCut)
            endAtPage(static_cast<std::size_t>(at), total);
        return m_parts;
    }

    void take(std::size_t bytes) {
        m_taken += bytes;
        while (!m_rest.empty() && m_taken >= m_rest.front().size()) {
            m_taken -= m_rest.front().size();
            m_rest = m_rest.subspan(1);
        }
    }

 private:
    /// Takes back what is after the last whole page, unless that is everything.
    void endAtPage(std::size_t at, std::size_t total) {
        std::size_t excess = (at + total) % PageSize;
        if (excess >= total)
            return;
        while (excess >= m_parts.back().iov_len) {
            excess -= m_parts.back().iov_len;
            m_parts.pop_back();
        }
        m_parts.back().iov_len -= excess;
    }

    BytePieces m_rest;
    std::size_t m_taken = 0;  ///< bytes already taken from the first piece of m_rest
    std::vector<iovec> m_parts;
};

}  // namespace

/// The file that is being written.
struct UserFileWriter::Target {
    QString path;
    QByteArray name;
    int handle = -1;
    bool created = false;
    bool mayBeUnnamed = false;  ///< a new file may be written before it has its name
    bool isUnnamed = false;
    bool isNameRefused = false;  ///< it is whole, and could not get its name
    bool reserved = false;
    bool touched = false;
    off_t length = 0;  ///< of the new contents, in bytes
    off_t at = 0;      ///< offset of the next new byte
    struct stat before {};
    std::unique_ptr<WatchedWrite> watched;
};

WriteWitness* WriteWitness::ofProcess() {
    return witnessOfProcess;
}

void WriteWitness::setOfProcess(WriteWitness* witness) {
    witnessOfProcess = witness;
}

void WriteWitness::settleFile(const QString& path) {
    const auto name = localName(path);
    if (witnessOfProcess != nullptr && name)
        witnessOfProcess->aboutToUse(*name);
}

WriteResult UserFileWriter::write(const QString& path, BytePieces pieces, Tail tail) {
    PiecesAtHand source(pieces);
    return writeWhole(path, pieces, source, tail);
}

WriteResult UserFileWriter::write(const QString& path, ByteSource& source, Tail tail) {
    return writeWhole(path, {}, source, tail);
}

WriteResult UserFileWriter::writeWhole(const QString& path, BytePieces atHand, ByteSource& source, Tail tail) {
    const auto name = localName(path);
    if (m_witness != nullptr && name)
        m_witness->aboutToUse(*name);
    // A new file that cannot get its name, or whose name was taken meanwhile, is written once more.
    if (source.rewind(ByteSource::Reading::ToWrite)) {
        Target target;
        target.path = path;
        target.mayBeUnnamed = true;
        WriteResult result = writeTo(target, atHand, source, tail);
        if (!target.isNameRefused)
            return result;
        source.rewind(ByteSource::Reading::ToWrite);
    }
    Target target;
    target.path = path;
    return writeTo(target, atHand, source, tail);
}

WriteResult UserFileWriter::writeTo(Target& target, BytePieces atHand, ByteSource& source, Tail tail) {
    target.length = source.length();
    SystemError cause = openTarget(target.path, target);
    if (!cause)
        cause = fill(atHand, source, tail, target);
    if (cause)
        giveBack(target);
    const SystemError closing = close(target);
    if (!cause)
        cause = closing;
    if (cause && (target.isUnnamed || (target.created && m_calls.unlink(target.name.constData()) == 0)))
        target.touched = false;
    if (target.watched != nullptr)
        target.watched->ended(!cause, target.touched);
    return {cause ? FileErrors::writing(target.path, cause) : SystemError(), target.touched};
}

/// Examines the file before it is opened, because opening a device or FIFO can already have an effect. If the name
/// changes its meaning in between, the check of the handle or another round finds that out. The name becomes absolute:
/// its folder is flushed, and a record of the write is read in another working folder.
SystemError UserFileWriter::openTarget(const QString& path, Target& target) {
    const auto name = localName(absolutePath(path));
    if (!name)
        return SystemError::fromErrno(ENOENT);
    target.name = *name;
    for (int i = 0; i < LinksToFollow; ++i) {
        if (uninterrupted([&] { return m_calls.stat(target.name.constData(), &target.before); }) == 0) {
            SystemError cause = openExisting(target);
            if (target.handle >= 0 || cause.number != ENOENT)
                return cause;
            continue;
        }
        if (errno != ENOENT)
            return lastError();
        const QByteArray link = target.name;
        SystemError cause = target.mayBeUnnamed ? followLink(target) : SystemError();
        if (!cause && target.name != link)
            continue;
        if (!cause && !openUnnamed(target))
            cause = create(target);
        if (target.handle >= 0)
            return m_calls.fstat(target.handle, &target.before) == 0 ? SystemError() : lastError();
        if (cause.number != EEXIST)
            return cause;
        if ((cause = followLink(target)))
            return cause;
    }
    return SystemError::fromErrno(ELOOP);
}

SystemError UserFileWriter::create(Target& target) {
    target.handle =
        uninterrupted([&] { return m_calls.open(target.name.constData(), OpenFlags | O_CREAT | O_EXCL, NewFileMode); });
    target.created = target.handle >= 0;
    return target.created ? SystemError() : lastError();
}

/// Whatever is the matter when this fails, creating the file under its name fails for the same reason, or does not.
bool UserFileWriter::openUnnamed(Target& target) {
    if (!target.mayBeUnnamed)
        return false;
    const QByteArray folder = target.name.left(target.name.lastIndexOf('/') + 1);
    target.handle = uninterrupted([&] { return m_calls.open(folder.constData(), OpenFlags | O_TMPFILE, NewFileMode); });
    target.isUnnamed = target.handle >= 0;
    return target.isUnnamed;
}

SystemError UserFileWriter::openExisting(Target& target) {
    if (SystemError cause = refusal(target.before))
        return cause;
    target.handle = uninterrupted([&] { return m_calls.open(target.name.constData(), OpenFlags); });
    if (target.handle < 0 || m_calls.fstat(target.handle, &target.before) != 0)
        return lastError();
    return refusal(target.before);
}

/// The name is a link whose target doesn't exist. The target is created under its own name, so that it can be deleted
/// if the write fails.
SystemError UserFileWriter::followLink(Target& target) {
    std::array<char, PATH_MAX> buffer;
    const ssize_t length = m_calls.readlink(target.name.constData(), buffer.data(), buffer.size());
    if (length < 0)  // it is not a link (any more): another file has this name now
        return errno == EINVAL || errno == ENOENT ? SystemError() : lastError();
    const QByteArray pointed(buffer.data(), length);
    const QByteArray folder = target.name.left(target.name.lastIndexOf('/') + 1);
    target.name = pointed.startsWith('/') ? pointed : folder + pointed;
    return {};
}

SystemError UserFileWriter::fill(BytePieces atHand, ByteSource& source, Tail tail, Target& target) {
    SystemError cause = reserve(target);
    if (!cause) {
        letWitness(tail == Tail::Cut, atHand, source, target);
        cause = writeAll(source, target);
    }
    if (!cause && tail == Tail::Cut)
        cause = cut(target);
    if (cause)
        return cause;
    struct stat now {};
    if (m_calls.fstat(target.handle, &now) == 0) {
        if (target.watched != nullptr)
            target.watched->aboutToFlush(now);
        restoreMode(target, now);
    }
    const SystemError error = flush(target);
    return error || !target.isUnnamed ? error : giveName(target);
}

void UserFileWriter::letWitness(bool cuts, BytePieces atHand, ByteSource& source, Target& target) {
    if (m_witness == nullptr)
        return;
    target.watched =
        m_witness->aboutToWrite({target.name, target.before, target.length, cuts, atHand, source, target.isUnnamed});
}

SystemError UserFileWriter::reserve(Target& target) {
    if (static_cast<quint64>(target.length) > m_calls.sizeLimit())
        return SystemError::fromErrno(EFBIG);
    if (target.length == 0)
        return {};
    target.reserved = true;
    const auto call = [&] { return m_calls.fallocate(target.handle, FALLOC_FL_KEEP_SIZE, 0, target.length); };
    bool isDone = uninterrupted(call) == 0;
    if (!isDone && (errno == ENOSPC || errno == EDQUOT)) {
        SystemError cause = lastError();
        if (m_witness == nullptr || !m_witness->giveSpaceBack())
            return cause;
        isDone = uninterrupted(call) == 0;
    }
    return isDone || isUnsupported(errno) ? SystemError() : lastError();
}

SystemError UserFileWriter::writeAll(ByteSource& source, Target& target) {
    while (target.at < target.length) {
        BytePieces pieces;
        SystemError cause = source.next(pieces);
        const off_t before = target.at;
        if (!cause)
            cause = writePieces(pieces, target);
        if (!cause && target.at == before)  // the source ended before length()
            cause = SystemError::fromErrno(EIO);
        if (cause)
            return cause;
    }
    return {};
}

SystemError UserFileWriter::writePieces(BytePieces pieces, Target& target) {
    PieceQueue queue(pieces);
    for (;;) {
        const std::vector<iovec>& parts = queue.next(target.at);
        if (parts.empty())
            return {};
        const ssize_t count = uninterrupted(
            [&] { return m_calls.pwritev(target.handle, parts.data(), static_cast<int>(parts.size()), target.at); });
        if (count < 0)
            return lastError();
        if (count == 0)
            return SystemError::fromErrno(EIO);
        target.touched = true;
        if (count >= BytesToStartWith)
            m_calls.startFlush(target.handle, target.at, count);
        target.at += count;
        queue.take(static_cast<std::size_t>(count));
    }
}

/// Also called when the old file was not longer: it may have grown meanwhile.
SystemError UserFileWriter::cut(Target& target) {
    if (uninterrupted([&] { return m_calls.ftruncate(target.handle, target.length); }) != 0)
        return lastError();
    target.touched = target.touched || target.before.st_size != target.length;
    return {};
}

/// The system clears the set-user and set-group bits of a file that is written; this sets them again. Errors are
/// ignored, because the bytes matter more.
void UserFileWriter::restoreMode(const Target& target, const struct stat& now) {
    if (now.st_mode != target.before.st_mode)
        m_calls.fchmod(target.handle, target.before.st_mode & ALLPERMS);
}

SystemError UserFileWriter::flush(const Target& target) {
    const auto call = [&] { return m_calls.fsync(target.handle); };
    if (uninterrupted(call) != 0 && !isUnsupported(errno))
        return lastError();
    return target.created ? flushName(target) : SystemError();
}

/// Some file systems flush no more than the bytes of a file without a name, so that it is flushed once more.
SystemError UserFileWriter::giveName(Target& target) {
    target.isNameRefused = uninterrupted([&] { return m_calls.nameFile(target.handle, target.name.constData()); }) != 0;
    if (target.isNameRefused)
        return lastError();
    target.isUnnamed = false;
    target.created = true;
    return flush(target);
}

/// The name of a new file is in its folder, which is flushed apart, unless it may be written but not be read.
SystemError UserFileWriter::flushName(const Target& target) {
    const QByteArray folder = target.name.left(target.name.lastIndexOf('/') + 1);
    const int handle =
        uninterrupted([&] { return m_calls.open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (handle < 0)
        return errno == EACCES ? SystemError() : lastError();
    const bool isFlushed = uninterrupted([&] { return m_calls.fsync(handle); }) == 0 || isUnsupported(errno);
    SystemError error = isFlushed ? SystemError() : lastError();
    if (m_calls.close(handle) != 0 && errno != EINTR && !error)
        error = lastError();
    return error;
}

/// Releases the space that was reserved beyond the end of an unchanged old file: ftruncate() to its own length does
/// that. It also sets the times of the file, so they are restored.
void UserFileWriter::giveBack(const Target& target) {
    struct stat now {};
    if (!target.reserved || target.created || target.isUnnamed || target.touched)
        return;
    if (m_calls.fstat(target.handle, &now) != 0 || now.st_size != target.before.st_size)
        return;
    const timespec times[] = {target.before.st_atim, target.before.st_mtim};
    m_calls.ftruncate(target.handle, target.before.st_size);
    m_calls.futimens(target.handle, times);
}

SystemError UserFileWriter::close(Target& target) {
    if (target.handle < 0)
        return {};
    // close() also closes when a signal interrupts it, and the bytes were flushed before.
    return m_calls.close(target.handle) == 0 || errno == EINTR ? SystemError() : lastError();
}
