#include "recovery/journals/BaseCopy.h"

#include "platform/Paths.h"
#include "recovery/journals/JournalFrame.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <xxhash.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <utility>

namespace {

constexpr mode_t FileMode = 0600;
constexpr qint64 StepSize = 4LL * 1024 * 1024;

QByteArray nameOf(const QString& path) {
    return localName(path).value_or(QByteArray());
}

}  // namespace

BaseCopy::BaseCopy(FileSystemCalls& calls, QString path, const FileState& state, QString target, qint64 mostCopied)
    : m_calls(calls),
      m_path(std::move(path)),
      m_state(state),
      m_targetPath(std::move(target)),
      m_mostCopied(mostCopied),
      m_hash(XXH3_createState()) {}

BaseCopy::BaseCopy(FileSystemCalls& calls, int source, QString target)
    : m_calls(calls),
      m_targetPath(std::move(target)),
      m_mostCopied(std::numeric_limits<qint64>::max()),
      m_source(source),
      m_hash(XXH3_createState()) {}

BaseCopy::~BaseCopy() {
    closeAll();
    XXH3_freeState(m_hash);
}

BaseCopy::Progress BaseCopy::step() {
    return m_isBegun ? readPart() : begin();
}

StoredBase BaseCopy::result() const {
    StoredBase stored;
    stored.hasCopy = m_target >= 0;
    stored.size = m_size;
    XXH128_canonical_t sum;
    XXH128_canonicalFromHash(&sum, XXH3_128bits_digest(m_hash));
    static_assert(sizeof sum.digest == sizeof(BaseHash));
    std::memcpy(stored.hash.data(), sum.digest, sizeof sum.digest);
    return stored;
}

void BaseCopy::discard() {
    giveUpTarget();
}

BaseCopy::Progress BaseCopy::begin() {
    m_isBegun = true;
    XXH3_128bits_reset(m_hash);
    if (m_source < 0 && !openSource())
        return Progress::Changed;
    const std::optional<FileState> now = FileState::of(m_source);
    if (!now || (m_state && !now->hasSameBytesAs(*m_state)))
        return Progress::Changed;
    m_size = now->size;
    openTarget();
    if (m_target < 0)
        return m_state ? Progress::More : Progress::Changed;
    m_isClone = m_calls.cloneFile(m_target, m_source) == 0;
    if (m_isClone && !isUnchanged()) {
        giveUpTarget();
        return Progress::Changed;
    }
    if (!m_isClone && (m_size > m_mostCopied || !reserve()))
        giveUpTarget();
    return m_target < 0 && !m_state ? Progress::Changed : Progress::More;
}

/// A full disk is found out before many bytes are written.
bool BaseCopy::reserve() {
    if (m_size == 0 || uninterrupted([&] { return m_calls.fallocate(m_target, FALLOC_FL_KEEP_SIZE, 0, m_size); }) == 0)
        return true;
    return errno != ENOSPC && errno != EDQUOT && errno != EFBIG;
}

/// A clone is read itself: it stays as it is, whatever becomes of the file.
BaseCopy::Progress BaseCopy::readPart() {
    if (m_at >= m_size)
        return finish();
    const qint64 part = std::min(StepSize, m_size - m_at);
    m_buffer.resize(static_cast<std::size_t>(part));
    const int from = m_isClone ? m_target : m_source;
    const ssize_t count = uninterrupted([&] { return m_calls.pread(from, m_buffer.data(), m_buffer.size(), m_at); });
    if (count <= 0) {
        giveUpTarget();
        return Progress::Changed;
    }
    const std::string_view bytes(m_buffer.data(), static_cast<std::size_t>(count));
    XXH3_128bits_update(m_hash, bytes.data(), bytes.size());
    if (m_target >= 0 && !m_isClone && writeExactly(m_calls, m_target, bytes, m_at))
        giveUpTarget();
    // Contents without a file of their own are of no use without the copy.
    if (m_target < 0 && !m_state)
        return Progress::Changed;
    m_at += count;
    return Progress::More;
}

BaseCopy::Progress BaseCopy::finish() {
    if (!m_isClone && !isUnchanged()) {
        giveUpTarget();
        return Progress::Changed;
    }
    if (m_target >= 0 && uninterrupted([&] { return m_calls.fsync(m_target); }) != 0)
        giveUpTarget();
    return m_target < 0 && !m_state ? Progress::Changed : Progress::Done;
}

bool BaseCopy::openSource() {
    const QByteArray name = nameOf(m_path);
    struct stat status {};
    if (m_calls.stat(name.constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    m_source =
        uninterrupted([&] { return m_calls.open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); });
    return m_source >= 0;
}

void BaseCopy::openTarget() {
    const QByteArray name = nameOf(m_targetPath);
    m_calls.unlink(name.constData());
    m_target = uninterrupted(
        [&] { return m_calls.open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, FileMode); });
}

bool BaseCopy::isUnchanged() const {
    const std::optional<FileState> now = FileState::of(m_source);
    return !m_state || (now && now->hasSameBytesAs(*m_state));
}

void BaseCopy::giveUpTarget() {
    if (m_target < 0)
        return;
    m_calls.unlink(nameOf(m_targetPath).constData());
    m_calls.close(m_target);
    m_target = -1;
}

void BaseCopy::closeAll() {
    if (m_source >= 0)
        m_calls.close(m_source);
    if (m_target >= 0)
        m_calls.close(m_target);
}
