#pragma once

#include "hex/bytes/HexChanges.h"
#include "hex/bytes/HexUndoLog.h"
#include "platform/SystemError.h"

class ByteStore;

/// The bytes that a user typed over those of one file. Writes each into the store, keeps what was there so that it can
/// be taken back, and knows whether there is something to save. Replacing and filling write to the store directly: they
/// leave no undo and do not count as modified. Belongs to the view, like the store, which outlives it. Errors are the
/// system's.
class HexEdits {
 public:
    explicit HexEdits(ByteStore& bytes) : m_bytes(bytes) {}

    /// The store holds another file.
    void clear();

    /// A byte of the page that begins at `page`. After an error nothing has changed.
    SystemError overwrite(FilePosition page, HexCell cell, quint8 byte);

    /// The newest edit, with its byte as it was before. Nothing when there is none; nothing, and `error`, when the byte
    /// cannot be written: the edit is kept then.
    std::optional<HexUndoEntry> takeBack(SystemError& error);

    /// Whether a byte was written since the last load or save. Taking it back does not change the answer.
    bool modified() const { return m_modified; }

    /// Whether the byte that is there now is to be marked as typed.
    bool isChanged(FilePosition at, quint8 now) const { return m_changes.isMarked(at, now); }

    /// Before and after a save. What is typed in between may miss the file, so it counts as modified afterwards.
    void beginSave();
    void endSave(bool isSaved);

 private:
    ByteStore& m_bytes;
    HexUndoLog m_undoLog;
    HexChanges m_changes;
    bool m_modified = false;
    bool m_wasModified = false;  ///< before the save that is under way
};
