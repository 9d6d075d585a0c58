#include "recovery/journals/Payload.h"

namespace {

constexpr int BitsOfByte = 7;
constexpr quint8 MoreFollows = 0x80;

}  // namespace

void PayloadWriter::number(quint64 value) {
    while (value >= MoreFollows) {
        byte(static_cast<quint8>(value) | MoreFollows);
        value >>= BitsOfByte;
    }
    byte(static_cast<quint8>(value));
}

void PayloadWriter::bytes(std::string_view bytes) {
    number(quint64(bytes.size()));
    m_payload.append(bytes);
}

void PayloadReader::fail() {
    m_valid = false;
    m_rest = {};
}

quint8 PayloadReader::byte() {
    if (m_rest.empty()) {
        m_valid = false;
        return 0;
    }
    const auto value = static_cast<quint8>(m_rest.front());
    m_rest.remove_prefix(1);
    return value;
}

quint64 PayloadReader::number() {
    constexpr int Bits = std::numeric_limits<quint64>::digits;
    quint64 value = 0;
    for (int shift = 0; shift < Bits; shift += BitsOfByte) {
        const quint8 next = byte();
        const quint64 part = next & ~MoreFollows & 0xff;
        if (part > std::numeric_limits<quint64>::max() >> shift)
            break;
        value |= part << shift;
        if ((next & MoreFollows) == 0)
            return m_valid ? value : 0;
    }
    fail();
    return 0;
}

qint64 PayloadReader::numberUpTo(qint64 largest) {
    const quint64 value = number();
    if (value <= static_cast<quint64>(largest))
        return static_cast<qint64>(value);
    fail();
    return 0;
}

std::string_view PayloadReader::bytes() {
    const quint64 length = number();
    if (!m_valid || length > m_rest.size()) {
        fail();
        return {};
    }
    const std::string_view found = m_rest.substr(0, static_cast<std::size_t>(length));
    m_rest.remove_prefix(found.size());
    return found;
}
