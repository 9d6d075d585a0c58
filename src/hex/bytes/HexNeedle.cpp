#include "hex/bytes/HexNeedle.h"

#include "hex/bytes/HexText.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr qsizetype Chunk = 128;
/// Bytes compared per byte of the block before a search for a needle that nearly matches everywhere changes to one
/// whose time does not depend on the needle.
constexpr qsizetype Patience = 4;

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

/// The compiler produces fast code for chunks of one fixed length.
void fold(QByteArray& bytes) {
    auto* at = reinterpret_cast<quint8*>(bytes.data());
    quint8* const end = at + bytes.size();
    for (; end - at >= Chunk; at += Chunk) {
        for (qsizetype i = 0; i < Chunk; ++i)
            at[i] = folded(at[i]);
    }
    std::transform(at, end, at, folded);
}

HexNeedle::Letter letterOf(char byte) {
    const quint8 lower = folded(static_cast<quint8>(byte));
    for (int other = 0; other < 256; ++other) {
        if (other != lower && folded(static_cast<quint8>(other)) == lower)
            return {lower, static_cast<quint8>(other)};
    }
    return {lower, lower};
}

/// Whether the first letter is at one of a chunk of places, with the last one as far after it as in the needle.
bool mayBeginIn(const quint8* firsts, const quint8* lasts, HexNeedle::Letter first, HexNeedle::Letter last) {
    quint8 any = 0;
    for (qsizetype i = 0; i < Chunk; ++i) {
        const quint8 begins = (firsts[i] == first.lower ? 0xFF : 0) | (firsts[i] == first.upper ? 0xFF : 0);
        const quint8 ends = (lasts[i] == last.lower ? 0xFF : 0) | (lasts[i] == last.upper ? 0xFF : 0);
        any |= begins & ends;
    }
    return any != 0;
}

/// How many bytes at the front of a place are those of a needle in lower case.
qsizetype sameAnyCase(const quint8* place, QByteArrayView needle) {
    qsizetype same = 0;
    while (same < needle.size() && folded(place[same]) == static_cast<quint8>(needle[same]))
        ++same;
    return same;
}

qsizetype firstAsItIs(QByteArrayView block, QByteArrayView needle, qsizetype from) {
    const auto* found = static_cast<const char*>(::memmem(block.data() + from, static_cast<size_t>(block.size() - from),
                                                          needle.data(), static_cast<size_t>(needle.size())));
    return found == nullptr ? -1 : found - block.data();
}

qsizetype firstInFolded(QByteArrayView block, QByteArrayView needle, qsizetype from) {
    QByteArray rest = block.sliced(from).toByteArray();
    fold(rest);
    const qsizetype found = firstAsItIs(rest, needle, 0);
    return found < 0 ? -1 : from + found;
}

}  // namespace

HexNeedle::HexNeedle(QByteArray bytes, qsizetype overlap, bool ignoresCase)
    : m_bytes(std::move(bytes)),
      m_overlap(overlap),
      m_ignoresCase(ignoresCase),
      m_first(letterOf(m_bytes.front())),
      m_last(letterOf(m_bytes.back())) {
    if (m_ignoresCase)
        fold(m_bytes);
}

std::optional<HexNeedle> HexNeedle::make(const QString& text, HexFindType type) {
    const bool isSequence = type == HexFindType::Bytes;
    const std::optional<QByteArray> bytes = isSequence ? HexText::bytesOfTypedHex(text) : HexText::bytesOfText(text);
    if (!bytes || bytes->isEmpty())
        return std::nullopt;
    return HexNeedle(*bytes, bytes->size() - (isSequence ? 1 : 0), type == HexFindType::AnyCase);
}

qsizetype HexNeedle::firstIn(QByteArrayView block, qsizetype from) const {
    if (from > block.size())
        return -1;
    return m_ignoresCase ? firstAnyCase(block, from) : firstAsItIs(block, m_bytes, from);
}

/// The block is not folded: few places of it need a comparison, and folding all of it costs more than reading it.
qsizetype HexNeedle::firstAnyCase(QByteArrayView block, qsizetype from) const {
    const auto* const bytes = reinterpret_cast<const quint8*>(block.data());
    const qsizetype toLast = size() - 1;
    const qsizetype places = block.size() - toLast;
    qsizetype patience = Patience * block.size();
    for (qsizetype chunk = from; chunk < places; chunk += Chunk) {
        const qsizetype end = std::min(chunk + Chunk, places);
        if (end - chunk == Chunk && !mayBeginIn(bytes + chunk, bytes + chunk + toLast, m_first, m_last))
            continue;
        for (qsizetype at = chunk; at < end; ++at) {
            const qsizetype same = sameAnyCase(bytes + at, m_bytes);
            if (same == size())
                return at;
            patience -= same;
            if (patience < 0)
                return firstInFolded(block, m_bytes, at + 1);
        }
    }
    return -1;
}

/// Forwards, as matches are few and the way forwards is the fast one.
qsizetype HexNeedle::lastIn(QByteArrayView block) const {
    qsizetype last = -1;
    for (qsizetype at = firstIn(block); at >= 0; at = firstIn(block, at + 1))
        last = at;
    return last;
}
