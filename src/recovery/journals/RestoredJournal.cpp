#include "recovery/journals/RestoredJournal.h"

#include "platform/Paths.h"
#include "recovery/journals/HexEntryVisitor.h"
#include "recovery/journals/JournalFile.h"
#include "recovery/saves/SaveRecord.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xxhash.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace {

constexpr qint64 ReadSize = 4LL * 1024 * 1024;
/// No text that the program can hold is larger.
constexpr qint64 LargestBase = qint64(1) << 33;

QByteArray nameOf(const QString& path) {
    return localName(path).value_or(QByteArray());
}

/// Whether a path that cannot be examined, for this reason, leads to nothing. Otherwise perhaps not at this moment.
bool isNothingThere(int error) {
    return error == ENOENT || error == ENOTDIR;
}

/// A regular file, open for reading; closed when the object is destroyed.
class ReadFile {
 public:
    enum class Whose { Anybody, Own };

    ReadFile(FileSystemCalls& calls, const QString& path, Whose whose) : m_calls(calls) {
        if (!open(path, whose) && !isNothingThere(errno) && errno != ELOOP)  // a link that is not followed
            m_error = SystemError::fromErrno(errno);
    }
    ~ReadFile() { close(); }
    Q_DISABLE_COPY_MOVE(ReadFile)

    bool isOpen() const { return m_handle >= 0; }
    int handle() const { return m_handle; }
    qint64 size() const { return m_size; }
    /// Why it could not be opened. Nothing: it is open, is not there, or is not a file to be read.
    const SystemError& error() const { return m_error; }

 private:
    /// False: a call failed. Otherwise it may be a file of another kind, which is not opened.
    bool open(const QString& path, Whose whose) {
        const QByteArray name = nameOf(path);
        struct stat status {};
        if (m_calls.stat(name.constData(), &status) != 0)
            return false;
        if (!S_ISREG(status.st_mode))
            return true;
        const int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | (whose == Whose::Own ? O_NOFOLLOW : 0);
        m_handle = uninterrupted([&] { return m_calls.open(name.constData(), flags); });
        if (m_handle < 0)
            return false;
        const bool isFit = m_calls.fstat(m_handle, &status) == 0 && S_ISREG(status.st_mode) &&
                           (whose == Whose::Anybody || (status.st_uid == ::geteuid() && status.st_nlink == 1));
        m_size = status.st_size;
        if (!isFit)
            close();
        return true;
    }
    void close() {
        if (m_handle >= 0)
            m_calls.close(m_handle);
        m_handle = -1;
    }

    FileSystemCalls& m_calls;
    int m_handle = -1;
    qint64 m_size = 0;
    SystemError m_error;
};

/// Reads a file from its first byte to its end, and adds up its checksum. Keeps the bytes where `keep` has room.
class HashedRead {
 public:
    HashedRead() : m_state(XXH3_createState()) { XXH3_128bits_reset(m_state); }
    ~HashedRead() { XXH3_freeState(m_state); }
    Q_DISABLE_COPY_MOVE(HashedRead)

    SystemError run(FileSystemCalls& calls, const ReadFile& file, char* keep) {
        std::vector<char> buffer(keep == nullptr ? static_cast<std::size_t>(std::min(ReadSize, file.size())) : 0);
        for (qint64 at = 0; at < file.size(); at += ReadSize) {
            const qint64 part = std::min(ReadSize, file.size() - at);
            char* to = keep == nullptr ? buffer.data() : keep + at;
            if (SystemError error = readExactly(calls, file.handle(), to, part, at))
                return error;
            XXH3_128bits_update(m_state, to, static_cast<std::size_t>(part));
        }
        return {};
    }
    bool is(const BaseHash& hash) const {
        XXH128_canonical_t sum;
        XXH128_canonicalFromHash(&sum, XXH3_128bits_digest(m_state));
        return std::memcmp(sum.digest, hash.data(), hash.size()) == 0;
    }

 private:
    XXH3_state_t* m_state;
};

/// Compares a file with pieces of bytes, one after the other.
class Comparison {
 public:
    Comparison(FileSystemCalls& calls, const ReadFile& file) : m_calls(calls), m_file(file) {}

    bool continuesWith(std::string_view piece) {
        while (!piece.empty()) {
            if (m_rest.empty() && !readOn())
                return false;
            const std::size_t count = std::min(piece.size(), m_rest.size());
            if (piece.substr(0, count) != m_rest.substr(0, count))
                return false;
            piece.remove_prefix(count);
            m_rest.remove_prefix(count);
        }
        return true;
    }

 private:
    bool readOn() {
        const qint64 count = std::min(ReadSize, m_file.size() - m_at);
        m_buffer.resize(static_cast<std::size_t>(count));
        if (count == 0 || readExactly(m_calls, m_file.handle(), m_buffer.data(), count, m_at))
            return false;
        m_at += count;
        m_rest = {m_buffer.data(), m_buffer.size()};
        return true;
    }

    FileSystemCalls& m_calls;
    const ReadFile& m_file;
    std::vector<char> m_buffer;
    std::string_view m_rest;
    qint64 m_at = 0;
};

/// Whether the entry is one of a hex document and lies within a file of this size.
bool fits(const JournalEntry& entry, qint64 size) {
    switch (entry.kind) {
        case EntryKind::Type:
        case EntryKind::TakeBack:
        case EntryKind::Base:
            return true;
        case EntryKind::Overwrite:
        case EntryKind::Fill:
            return entry.at <= size && entry.length <= size - entry.at;
        default:
            return false;
    }
}

bool pass(const JournalEntry& entry, HexEntryVisitor& visitor) {
    switch (entry.kind) {
        case EntryKind::Type:
            return visitor.typed(entry.at, entry.row, entry.col, entry.byte);
        case EntryKind::TakeBack:
            return visitor.tookBack();
        case EntryKind::Overwrite:
            return visitor.overwrote(entry.at, entry.bytes);
        case EntryKind::Fill:
            return visitor.filled(entry.at, entry.length, entry.byte);
        default:
            return true;
    }
}

}  // namespace

RestoredJournal::RestoredJournal(FileSystemCalls& calls, int handle, QString stemPath)
    : m_calls(calls), m_handle(handle), m_stemPath(std::move(stemPath)) {}

RestoredJournal::~RestoredJournal() = default;

JournalOutcome RestoredJournal::restore() {
    const JournalOutcome outcome = replay();
    m_file = lookAtFile();
    if (outcome != JournalOutcome::Restored)
        return outcome;
    const bool isEmpty = base().path.isEmpty() && base().view == JournalBase::View::Text && m_text.length() == 0;
    const bool isSame =
        !m_contents.hasEdits() || isEmpty || (base().view == JournalBase::View::Text && hasSameTextAsFile());
    if (!isSame)
        return JournalOutcome::Restored;
    // What was left out may be what differed.
    return m_isPartial ? JournalOutcome::Lost : JournalOutcome::SameAsFile;
}

JournalOutcome RestoredJournal::replay() {
    const JournalContents::Reading reading = m_contents.readEntries(m_calls, m_handle);
    if (reading != JournalContents::Reading::Done)
        return reading == JournalContents::Reading::Damaged ? JournalOutcome::Lost : JournalOutcome::Failed;
    return base().view == JournalBase::View::Text ? restoreText() : restoreBytes();
}

bool RestoredJournal::isBaseUnchanged() const {
    const std::optional<FileState> now = FileState::of(m_basePath);
    return m_basePath.isEmpty() || (now && m_baseState && now->hasSameBytesAs(*m_baseState));
}

bool RestoredJournal::visit(HexEntryVisitor& visitor) const {
    bool isWhole = true;
    qint64 left = m_entriesThatFit;
    m_contents.forEachEntry([&](const JournalEntry& entry) {
        isWhole = left-- <= 0 || pass(entry, visitor);
        return isWhole && left > 0;
    });
    return isWhole;
}

void RestoredJournal::forgetText() {
    m_text = {};
    m_baseBytes.reset();
    m_baseText = {};
}

JournalOutcome RestoredJournal::restoreText() {
    if (!m_contents.hasWhole()) {
        const JournalOutcome outcome = takeBase();
        if (outcome != JournalOutcome::Restored)
            return outcome;
    }
    m_isPartial = !m_contents.forEachEntry([this](const JournalEntry& entry) { return m_text.apply(entry); });
    return JournalOutcome::Restored;
}

JournalOutcome RestoredJournal::takeBase() {
    if (base().state) {
        const JournalOutcome outcome = loadBase();
        if (outcome != JournalOutcome::Restored)
            return outcome;
        m_text = ReplayedText(m_baseText.empty() ? std::string_view(m_baseBytes.get(), std::size_t(m_baseSize))
                                                 : std::string_view(m_baseText));
    }
    const bool isOfItsLength = base().textLength < 0 || base().textLength == m_text.length();
    return isOfItsLength ? JournalOutcome::Restored : JournalOutcome::Lost;
}

/// Plain UTF-8 without a mark is used as it is.
JournalOutcome RestoredJournal::loadBase() {
    const JournalOutcome outcome = findBase();
    if (outcome != JournalOutcome::Restored)
        return outcome;
    const std::string_view bytes(m_baseBytes.get(), static_cast<std::size_t>(m_baseSize));
    if (base().format == TextFormat())
        return JournalOutcome::Restored;
    DecodedText decoded = decodeText(bytes, base().format);
    if (!(decoded.format == base().format))
        return JournalOutcome::Lost;
    m_baseText = std::move(decoded.utf8);
    m_baseBytes.reset();
    m_baseSize = 0;
    return JournalOutcome::Restored;
}

/// The copy if there is one, otherwise the file itself, which may be on a disk that is not mounted now.
JournalOutcome RestoredJournal::findBase() {
    const bool keeps = base().view == JournalBase::View::Text;
    const std::optional<StoredBase>& stored = m_contents.storedBase();
    SystemError error;
    if (stored && stored->hasCopy && holdsBase(JournalFile::basePath(m_stemPath, stored->number), true, keeps, error))
        return JournalOutcome::Restored;
    const bool isReplaced = stored && stored->replaces;
    const bool asksFile = !error && !isReplaced && !base().path.isEmpty();
    if (asksFile && holdsBase(base().path, false, keeps, error))
        return JournalOutcome::Restored;
    const bool mayComeBack = asksFile && lookAtFile() == JournalFileNow::Unreachable;
    return error || mayComeBack ? JournalOutcome::Failed : JournalOutcome::Lost;
}

/// Whether the file has the bytes of the base. Its checksum decides; where none was written, it must be the same file,
/// not written to since.
bool RestoredJournal::holdsBase(const QString& path, bool isCopy, bool keeps, SystemError& error) {
    const std::optional<StoredBase>& stored = m_contents.storedBase();
    const ReadFile file(m_calls, path, isCopy ? ReadFile::Whose::Own : ReadFile::Whose::Anybody);
    error = file.error();
    if (!file.isOpen() || file.size() > LargestBase)
        return false;
    const std::optional<FileState> before = FileState::of(file.handle());
    if (!before || (stored ? stored->size != before->size : !isTheLoadedFile(*before)))
        return false;
    std::unique_ptr<char[]> bytes;
    if (keeps) {
        bytes.reset(new (std::nothrow) char[static_cast<std::size_t>(file.size()) + 1]);
        error = bytes == nullptr ? SystemError::fromErrno(ENOMEM) : SystemError();
    }
    HashedRead read;
    // Without a checksum there is nothing to be found out by reading.
    if (!error && (keeps || stored))
        error = read.run(m_calls, file, bytes.get());
    if (error.number == ENODATA)
        error = {};
    const std::optional<FileState> after = FileState::of(file.handle());
    if (error || !after || !after->hasSameBytesAs(*before) || (stored && !read.is(stored->hash)))
        return false;
    m_baseBytes = std::move(bytes);
    m_baseSize = file.size();
    m_basePath = path;
    m_baseState = before;
    return true;
}

bool RestoredJournal::isTheLoadedFile(const FileState& state) const {
    return base().state && state.hasSameBytesAs(*base().state);
}

JournalOutcome RestoredJournal::restoreBytes() {
    if (base().state || (m_contents.storedBase() && m_contents.storedBase()->replaces)) {
        const JournalOutcome outcome = findBase();
        if (outcome != JournalOutcome::Restored)
            return outcome;
    }
    m_isPartial = !m_contents.forEachEntry([this](const JournalEntry& entry) {
        const bool isFit = fits(entry, m_baseSize);
        m_entriesThatFit += isFit ? 1 : 0;
        return isFit;
    });
    return JournalOutcome::Restored;
}

/// A file that was written anew with the same bytes is as it was.
JournalFileNow RestoredJournal::lookAtFile() {
    if (base().path.isEmpty() || !base().state)
        return base().path.isEmpty() || !fileExists(base().path) ? JournalFileNow::None : JournalFileNow::Changed;
    struct stat status {};
    if (m_calls.stat(nameOf(base().path).constData(), &status) != 0)
        return isNothingThere(errno) ? withoutFile() : JournalFileNow::Unreachable;
    const std::optional<FileState> now = FileState::of(base().path);
    if (!now)
        return JournalFileNow::Unreachable;
    const std::optional<StoredBase>& stored = m_contents.storedBase();
    if (isTheLoadedFile(*now) || (m_basePath == base().path && isBaseUnchanged()))
        return JournalFileNow::AsItWas;
    if (!stored || stored->replaces || stored->size != now->size)
        return JournalFileNow::Changed;
    const ReadFile file(m_calls, base().path, ReadFile::Whose::Anybody);
    HashedRead read;
    const bool isSame = file.isOpen() && !read.run(m_calls, file, nullptr) && read.is(stored->hash);
    return isSame ? JournalFileNow::AsItWas : JournalFileNow::Changed;
}

/// Without its folder, or in another file system than the one in which it was loaded, the file is perhaps only not
/// mounted.
JournalFileNow RestoredJournal::withoutFile() {
    const QString folder = base().path.left(std::max<qsizetype>(base().path.lastIndexOf(u'/'), 1));
    struct stat status {};
    const bool isThere =
        m_calls.stat(nameOf(folder).constData(), &status) == 0 && status.st_dev == base().state->device;
    return isThere ? JournalFileNow::Missing : JournalFileNow::Unreachable;
}

bool RestoredJournal::hasSameTextAsFile() {
    if (base().path.isEmpty())
        return false;
    const ReadFile file(m_calls, base().path, ReadFile::Whose::Anybody);
    const std::vector<std::string_view> pieces = m_text.pieces();
    const EncodedText encoded = file.isOpen() ? encodeText(pieces, base().format) : EncodedText();
    if (!file.isOpen() || encoded.failure)
        return false;
    qint64 length = 0;
    for (const std::string_view piece : encoded.pieces)
        length += static_cast<qint64>(piece.size());
    if (length != file.size())
        return false;
    Comparison comparison(m_calls, file);
    return std::all_of(encoded.pieces.begin(), encoded.pieces.end(),
                       [&](std::string_view piece) { return comparison.continuesWith(piece); });
}
