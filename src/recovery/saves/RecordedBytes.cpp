#include "recovery/saves/RecordedBytes.h"

#include <algorithm>
#include <cerrno>

namespace {

constexpr qint64 PartSize = 1'048'576;

}  // namespace

RecordedBytes::RecordedBytes(FileSystemCalls& calls, int record, const RecordedFile& file, int base)
    : m_calls(calls), m_record(record), m_file(file), m_base(base) {
    m_buffer.resize(std::min(PartSize, length()));
}

bool RecordedBytes::needsBase(const RecordedFile& file) {
    return !file.isWhole() || file.finalSize() > file.newSize;
}

bool RecordedBytes::rewind(Reading /*next*/) {
    m_at = 0;
    m_range = 0;
    return true;
}

SystemError RecordedBytes::next(BytePieces& pieces) {
    const qint64 part = std::min<qint64>(m_buffer.size(), length() - m_at);
    SystemError error = readBase(part);
    if (!error)
        error = readRanges(part);
    m_at += part;
    m_piece = std::string_view(m_buffer.constData(), static_cast<std::size_t>(part));
    pieces = BytePieces(&m_piece, 1);
    return error;
}

SystemError RecordedBytes::readBase(qint64 length) {
    qint64 got = 0;
    while (m_base >= 0 && got < length) {
        const ssize_t count = uninterrupted([&] {
            return m_calls.pread(m_base, m_buffer.data() + got, static_cast<std::size_t>(length - got), m_at + got);
        });
        if (count < 0)
            return SystemError::fromErrno(errno);
        if (count == 0)
            break;
        got += count;
    }
    std::fill(m_buffer.begin() + got, m_buffer.begin() + length, '\0');
    return {};
}

SystemError RecordedBytes::readRanges(qint64 length) {
    const std::vector<RecordedRange>& ranges = m_file.ranges;
    const auto begin = static_cast<quint64>(m_at);
    const quint64 end = begin + static_cast<quint64>(length);
    while (m_range < ranges.size() && ranges[m_range].offset + ranges[m_range].length <= begin)
        ++m_range;
    for (std::size_t i = m_range; i < ranges.size() && ranges[i].offset < end; ++i) {
        const quint64 from = std::max(begin, ranges[i].offset);
        const quint64 to = std::min(end, ranges[i].offset + ranges[i].length);
        SystemError error =
            readExactly(m_calls, m_record, m_buffer.data() + (from - begin), static_cast<qint64>(to - from),
                        ranges[i].inRecord + static_cast<qint64>(from - ranges[i].offset));
        if (error)
            return error;
    }
    return {};
}
