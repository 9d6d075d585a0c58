#include "hex/bytes/HexEdits.h"

#include "hex/bytes/ByteStore.h"
#include "hex/bytes/HexEditObserver.h"

#include <cerrno>
#include <utility>

void HexEdits::clear() {
    m_undoLog.clear();
    m_changes.clear();
    m_modified = false;
}

SystemError HexEdits::overwrite(FilePosition page, HexCell cell, quint8 byte) {
    const FilePosition position = HexPaging::positionOf(page, cell);
    const char now = static_cast<char>(byte);
    char before = 0;
    if (m_bytes.read(position, &before, 1) != 1)
        return SystemError::fromErrno(EIO);
    if (SystemError error = m_bytes.write(position, {&now, 1}))
        return error;
    m_undoLog.add({page, cell, static_cast<quint8>(before)});
    m_changes.type(position, static_cast<quint8>(before), byte);
    m_modified = true;
    if (m_observer != nullptr)
        m_observer->typed(page, cell, byte);
    return {};
}

std::optional<HexUndoEntry> HexEdits::takeBack(SystemError& error) {
    const std::optional<HexUndoEntry> entry = m_undoLog.take();
    if (!entry)
        return std::nullopt;
    const char byte = static_cast<char>(entry->value);
    const FilePosition position = HexPaging::positionOf(entry->pointer, entry->cell);
    error = m_bytes.write(position, {&byte, 1});
    if (error) {
        m_undoLog.add(*entry);
        return std::nullopt;
    }
    m_changes.restore(position, entry->value);
    if (m_observer != nullptr)
        m_observer->tookBack(*entry);
    return entry;
}

void HexEdits::beginSave() {
    m_wasModified = std::exchange(m_modified, false);
}

void HexEdits::endSave(bool isSaved) {
    if (!isSaved)
        m_modified = m_modified || m_wasModified;
    else if (!m_modified)
        m_changes.clear();
}

HexEdits::State HexEdits::state() const {
    return {m_undoLog.entries(), m_changes.all(), m_modified};
}
