#include "hex/HexNeedle.h"

#include "hex/HexText.h"
#include "platform/Windows1252.h"

#include <QChar>

#include <array>
#include <cstring>
#include <utility>

namespace {

using FoldTable = std::array<char, 256>;

FoldTable makeFoldTable() {
    FoldTable table;
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        const char16_t lower = QChar::toLower(Windows1252::characterOf(static_cast<quint8>(byte)));
        const int folded = Windows1252::byteOf(lower);
        table[byte] = static_cast<char>(folded < 0 ? static_cast<int>(byte) : folded);
    }
    return table;
}

void fold(QByteArray& bytes) {
    static const FoldTable table = makeFoldTable();
    for (char& byte : bytes)
        byte = table[static_cast<quint8>(byte)];
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
