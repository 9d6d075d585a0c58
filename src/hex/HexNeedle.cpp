#include "hex/HexNeedle.h"

#include "hex/HexText.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr qsizetype Chunk = 64;

/// The lower case of a character of Windows-1252; by sums of bytes and without branches, so that many are done at once.
constexpr quint8 folded(quint8 byte) {
    const quint8 letter = static_cast<quint8>(byte - 'A') < 26 ? 0x20 : 0;
    const quint8 accented = static_cast<quint8>(byte - 0xC0) < 31 ? 0x20 : 0;
    const quint8 multiplication = byte == 0xD7 ? 0x20 : 0;  // no letter among those
    const quint8 sCaron = byte == 0x8A ? 0x10 : 0;
    const quint8 ligature = byte == 0x8C ? 0x10 : 0;
    const quint8 zCaron = byte == 0x8E ? 0x10 : 0;
    const quint8 yDiaeresis = byte == 0x9F ? 0x60 : 0;
    return static_cast<quint8>(byte + letter + accented - multiplication + sCaron + ligature + zCaron + yDiaeresis);
}

/// Chunks of one fixed length are what the compiler makes fast.
void fold(QByteArray& bytes) {
    auto* at = reinterpret_cast<quint8*>(bytes.data());
    quint8* const end = at + bytes.size();
    for (; end - at >= Chunk; at += Chunk) {
        for (qsizetype i = 0; i < Chunk; ++i)
            at[i] = folded(at[i]);
    }
    std::transform(at, end, at, folded);
}

}  // namespace

HexNeedle::HexNeedle(QByteArray bytes, qsizetype overlap, bool ignoresCase)
    : m_bytes(std::move(bytes)), m_overlap(overlap), m_ignoresCase(ignoresCase) {
    prepare(m_bytes);
}

std::optional<HexNeedle> HexNeedle::make(const QString& text, HexFindType type) {
    const bool isSequence = type == HexFindType::Bytes;
    const std::optional<QByteArray> bytes = isSequence ? HexText::bytesOfHexText(text) : HexText::bytesOfText(text);
    if (!bytes || bytes->isEmpty())
        return std::nullopt;
    return HexNeedle(*bytes, bytes->size() - (isSequence ? 1 : 0), type == HexFindType::AnyCase);
}

void HexNeedle::prepare(QByteArray& block) const {
    if (m_ignoresCase)
        fold(block);
}

qsizetype HexNeedle::firstIn(QByteArrayView block, qsizetype from) const {
    if (from > block.size())
        return -1;
    const auto* found = static_cast<const char*>(::memmem(block.data() + from, static_cast<size_t>(block.size() - from),
                                                          m_bytes.constData(), static_cast<size_t>(m_bytes.size())));
    return found == nullptr ? -1 : found - block.data();
}

/// Forwards, as matches are few and the way forwards is the fast one.
qsizetype HexNeedle::lastIn(QByteArrayView block) const {
    qsizetype last = -1;
    for (qsizetype at = firstIn(block); at >= 0; at = firstIn(block, at + 1))
        last = at;
    return last;
}
