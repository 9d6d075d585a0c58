#include "hex/bytes/HexReplay.h"

#include "hex/bytes/HexBlock.h"
#include "hex/bytes/HexEdits.h"
#include "platform/FileReader.h"

#include <QByteArray>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace {

/// The watch is called once for so many edits.
constexpr int EditsOfAWatch = 256;
/// Compared at once.
constexpr qint64 BlockSize = 256 * 1024;

}  // namespace

HexReplay::HexReplay(HexEdits& edits, ByteStore& bytes, Watch watch)
    : m_edits(edits), m_bytes(bytes), m_watch(std::move(watch)) {}

/// Whether the next edit is to be made.
bool HexReplay::begin() {
    if (!goesOn() || ++m_sinceWatch < EditsOfAWatch)
        return goesOn();
    m_sinceWatch = 0;
    return !isWatchEnding();
}

bool HexReplay::isWatchEnding() {
    const bool isEnding = m_watch && !m_watch();
    if (isEnding)
        m_error = SystemError::fromErrno(ECANCELED);
    return isEnding;
}

void HexReplay::refuse() {
    m_error = SystemError::fromErrno(EINVAL);
}

void HexReplay::type(FilePosition page, HexCell cell, quint8 byte) {
    if (!begin())
        return;
    if (!HexPaging::isByte(page, cell, m_bytes.length()))
        return refuse();
    m_error = m_edits.overwrite(page, cell, byte);
}

void HexReplay::takeBack() {
    if (begin())
        m_edits.takeBack(m_error);
}

void HexReplay::write(FilePosition at, std::string_view bytes) {
    if (!begin())
        return;
    if (at.number() < 1 || at.number() > m_bytes.length())
        return refuse();
    m_error = m_bytes.write(at, bytes);
}

void HexReplay::fill(const HexBlock& block, quint8 byte) {
    if (!begin())
        return;
    if (block.first.number() < 1 || block.last < block.first || block.last.number() > m_bytes.length())
        return refuse();
    const HexBlock::Filled filled = block.fill(m_bytes, byte, [this](int) { return !isWatchEnding(); });
    if (filled.error)
        m_error = filled.error;
}

bool HexReplay::isSameAs(const QString& path) {
    FileReader reader;
    if (!goesOn() || reader.open(path) || reader.size() != m_bytes.length())
        return false;
    QByteArray there(BlockSize, Qt::Uninitialized);
    QByteArray here(BlockSize, Qt::Uninitialized);
    for (FilePosition at; !isWatchEnding(); at = at + BlockSize) {
        const qint64 count = reader.read(there.data(), BlockSize);
        if (count <= 0)
            return count == 0 && Offset(at).number() >= m_bytes.length();
        if (m_bytes.read(at, here.data(), count) != count ||
            !std::equal(there.cbegin(), there.cbegin() + count, here.cbegin()))
            return false;
        if (count < BlockSize)
            return Offset(at).number() + count == m_bytes.length();
    }
    return false;
}
