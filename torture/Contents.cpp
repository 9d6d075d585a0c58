#include "Contents.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

namespace {

constexpr mode_t PlainMode = 0644;

}  // namespace

QByteArray noise(qsizetype length, quint64 seed) {
    QByteArray bytes(length, Qt::Uninitialized);
    quint64 state = (seed + 1) * 0x9E37'79B9'7F4A'7C15U;
    for (qsizetype at = 0; at < length; at += qsizetype(sizeof state)) {
        state ^= state << 13U;
        state ^= state >> 7U;
        state ^= state << 17U;
        std::memcpy(bytes.data() + at, &state,
                    static_cast<std::size_t>(std::min<qsizetype>(sizeof state, length - at)));
    }
    return bytes;
}

std::optional<QByteArray> bytesOf(const QByteArray& name) {
    const int handle = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status {};
    if (handle < 0)
        return {};
    std::optional<QByteArray> bytes;
    if (::fstat(handle, &status) == 0 && S_ISREG(status.st_mode)) {
        bytes = QByteArray(status.st_size, Qt::Uninitialized);
        if (::read(handle, bytes->data(), static_cast<std::size_t>(bytes->size())) != bytes->size())
            bytes.reset();
    }
    ::close(handle);
    return bytes;
}

void putBytes(const QByteArray& name, const QByteArray& bytes) {
    const int handle = ::open(name.constData(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, PlainMode);
    const bool done = handle >= 0 &&
                      ::pwrite(handle, bytes.constData(), static_cast<std::size_t>(bytes.size()), 0) == bytes.size() &&
                      ::ftruncate(handle, bytes.size()) == 0;
    mustWork(done && ::close(handle) == 0, "cannot write " + name);
}

void mustWork(bool done, const QByteArray& what) {
    if (done)
        return;
    std::fprintf(stderr, "quillmark-torture: %s: %s\n", what.constData(), std::strerror(errno));
    // By one thread only: what is done at the exit would be cut short by the exit of another one.
    static std::mutex ending;
    ending.lock();
    std::exit(2);
}

SystemError Parts::next(BytePieces& pieces) {
    const qsizetype part = std::min(m_partLength, m_bytes.size() - m_at);
    m_piece = std::string_view(m_bytes.constData() + m_at, static_cast<std::size_t>(part));
    m_at += part;
    pieces = BytePieces(&m_piece, 1);
    return {};
}
