#include "recovery/saves/RecordOutput.h"

#include "recovery/saves/RecordFormat.h"

#include <xxhash.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr qsizetype BufferSize = 262'144;
/// So much of a large piece is written at once, and the disk begins with it while it is hashed and the rest is copied.
constexpr std::size_t PartSize = 1'048'576;

}  // namespace

quint32 RecordFormat::blockHash(const char* bytes, qint64 length) {
    return static_cast<quint32>(XXH3_64bits(bytes, static_cast<std::size_t>(length)));
}

RecordOutput::RecordOutput(FileSystemCalls& calls, int handle)
    : m_calls(calls), m_handle(handle), m_hash(XXH3_createState()) {
    XXH3_128bits_reset(m_hash);
    m_buffer.reserve(BufferSize);
}

RecordOutput::~RecordOutput() {
    XXH3_freeState(m_hash);
}

void RecordOutput::write(std::string_view bytes) {
    if (m_error || bytes.empty())
        return;
    const auto length = static_cast<qsizetype>(bytes.size());
    if (m_buffer.size() + length > BufferSize)
        writeOut();
    if (length < BufferSize) {
        XXH3_128bits_update(m_hash, bytes.data(), bytes.size());
        m_buffer.append(bytes.data(), length);
        return;
    }
    for (; !bytes.empty(); bytes.remove_prefix(std::min(PartSize, bytes.size()))) {
        const std::string_view part = bytes.substr(0, PartSize);
        writeToFile(part);
        XXH3_128bits_update(m_hash, part.data(), part.size());
    }
}

void RecordOutput::fill(qint64 multiple) {
    const qint64 excess = length() % multiple;
    const QByteArray zeros(excess > 0 ? multiple - excess : 0, '\0');
    writeOut();
    writeToFile({zeros.constData(), static_cast<std::size_t>(zeros.size())});
}

void RecordOutput::writeOut() {
    writeToFile({m_buffer.constData(), static_cast<std::size_t>(m_buffer.size())});
    m_buffer.resize(0);
}

void RecordOutput::writeToFile(std::string_view bytes) {
    while (!m_error && !bytes.empty()) {
        const iovec part{const_cast<char*>(bytes.data()), bytes.size()};
        const ssize_t count = uninterrupted([&] { return m_calls.pwritev(m_handle, &part, 1, m_length); });
        if (count <= 0) {
            m_error = SystemError::fromErrno(count < 0 ? errno : EIO);
            return;
        }
        if (count >= BufferSize)
            m_calls.startFlush(m_handle, m_length, count);
        m_length += count;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

QByteArray RecordOutput::checksum() const {
    XXH128_canonical_t sum;
    XXH128_canonicalFromHash(&sum, XXH3_128bits_digest(m_hash));
    return {reinterpret_cast<const char*>(sum.digest), sizeof sum.digest};
}
