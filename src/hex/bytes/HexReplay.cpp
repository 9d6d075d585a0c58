#include "hex/bytes/HexReplay.h"

#include "hex/bytes/HexBlock.h"
#include "hex/bytes/HexEdits.h"

#include <cerrno>
#include <utility>

namespace {

/// The watch is called once for so many edits.
constexpr int EditsOfAWatch = 256;

}  // namespace

HexReplay::HexReplay(HexEdits& edits, ByteStore& bytes, Watch watch)
    : m_edits(edits), m_bytes(bytes), m_watch(std::move(watch)) {}

/// Whether the next edit is to be made.
bool HexReplay::begin() {
    if (!goesOn() || ++m_sinceWatch < EditsOfAWatch)
        return goesOn();
    m_sinceWatch = 0;
    if (m_watch && !m_watch())
        m_error = SystemError::fromErrno(ECANCELED);
    return goesOn();
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
    bool isEnded = false;
    const HexBlock::Filled filled = block.fill(m_bytes, byte, [&](int) {
        isEnded = m_watch && !m_watch();
        return !isEnded;
    });
    m_error = isEnded ? SystemError::fromErrno(ECANCELED) : filled.error;
}
