#include "recovery/journals/JournalFrame.h"

#include "recovery/saves/SaveRecord.h"

#include <xxhash.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <new>

using namespace JournalFormat;

namespace {

constexpr std::size_t HashedHead = offsetof(FrameHead, checksum);
/// So much is read before it is known whether the bytes are there at all.
constexpr qint64 ReadSize = 16LL * 1024 * 1024;

/// The checksum of a frame, part by part.
class FrameHash {
 public:
    FrameHash(const FrameHead& head, quint64 seed) : m_state(XXH3_createState()) {
        XXH3_64bits_reset_withSeed(m_state, seed);
        XXH3_64bits_update(m_state, &head, HashedHead);
    }
    ~FrameHash() { XXH3_freeState(m_state); }
    Q_DISABLE_COPY_MOVE(FrameHash)

    void add(std::string_view bytes) { XXH3_64bits_update(m_state, bytes.data(), bytes.size()); }
    quint64 sum() const { return XXH3_64bits_digest(m_state); }

 private:
    XXH3_state_t* m_state;
};

}  // namespace

SystemError writeExactly(FileSystemCalls& calls, int handle, std::string_view bytes, qint64 offset) {
    // The system would end the process by a signal.
    if (static_cast<quint64>(offset) + bytes.size() > calls.sizeLimit())
        return SystemError::fromErrno(EFBIG);
    while (!bytes.empty()) {
        const iovec part{const_cast<char*>(bytes.data()), bytes.size()};
        const ssize_t count = uninterrupted([&] { return calls.pwritev(handle, &part, 1, offset); });
        if (count <= 0)
            return SystemError::fromErrno(count < 0 ? errno : EIO);
        offset += count;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

SystemError writeFrame(FileSystemCalls& calls, int handle, JournalEnd& end, quint32 tag, qint64 time,
                       std::span<const std::string> parts) {
    FrameHead head{tag, 0, 0, time, 0};
    for (const std::string& part : parts)
        head.length += part.size();
    FrameHash hash(head, end.checksum);
    for (const std::string& part : parts)
        hash.add(part);
    head.checksum = hash.sum();
    // A frame of a few bytes is one write.
    constexpr std::size_t Small = 65'536;
    std::string start(reinterpret_cast<const char*>(&head), sizeof head);
    std::size_t first = 0;
    for (; first < parts.size() && parts[first].size() <= Small; ++first)
        start += parts[first];
    qint64 at = end.offset;
    SystemError error = writeExactly(calls, handle, start, at);
    at += static_cast<qint64>(start.size());
    for (std::size_t i = first; i < parts.size() && !error; ++i) {
        error = writeExactly(calls, handle, parts[i], at);
        at += static_cast<qint64>(parts[i].size());
    }
    if (!error)
        end = {at, head.checksum};
    return error;
}

bool readFrame(FileSystemCalls& calls, int handle, qint64 size, JournalEnd& end, JournalFrame& frame,
               SystemError& error) {
    FrameHead head{};
    const qint64 begin = end.offset + static_cast<qint64>(sizeof head);
    if (begin > size)
        return false;
    error = readExactly(calls, handle, reinterpret_cast<char*>(&head), sizeof head, end.offset);
    if (error || head.length > static_cast<quint64>(size - begin))
        return false;
    frame.tag = head.tag;
    frame.time = head.time;
    frame.length = static_cast<qint64>(head.length);
    frame.bytes.reset(new (std::nothrow) char[static_cast<std::size_t>(frame.length) + 1]);
    if (frame.bytes == nullptr) {
        error = SystemError::fromErrno(ENOMEM);
        return false;
    }
    FrameHash hash(head, end.checksum);
    for (qint64 at = 0; at < frame.length && !error; at += ReadSize) {
        const qint64 part = std::min(ReadSize, frame.length - at);
        error = readExactly(calls, handle, frame.bytes.get() + at, part, begin + at);
        hash.add(frame.payload().substr(static_cast<std::size_t>(at), static_cast<std::size_t>(part)));
    }
    if (error || hash.sum() != head.checksum)
        return false;
    end = {begin + frame.length, head.checksum};
    return true;
}
