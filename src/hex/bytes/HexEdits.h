#pragma once

#include "hex/bytes/HexChanges.h"
#include "hex/bytes/HexUndoLog.h"
#include "platform/SystemError.h"

#include <utility>
#include <vector>

class ByteStore;
class HexEditObserver;

/// The bytes that a user typed over those of one file. Writes each into the store, keeps the old byte for undo, and
/// reports whether there is something to save. Replacing and filling write to the store directly: they leave no undo
/// and do not count as modified. Owned by the view, like the store, which outlives it. Errors are the system's.
class HexEdits {
 public:
    /// All that it keeps beside the bytes.
    struct State {
        std::vector<HexUndoEntry> undo;                      ///< oldest first
        std::vector<std::pair<FilePosition, quint8>> marks;  ///< as HexChanges::all()
        bool modified = false;

        bool operator==(const State&) const = default;
    };

    explicit HexEdits(ByteStore& bytes) : m_bytes(bytes) {}

    /// Is notified of each byte that is typed or undone. Null: none. It must outlive this object or be removed.
    void setObserver(HexEditObserver* observer) { m_observer = observer; }

    /// The store holds another file.
    void clear();

    /// A byte of the page that begins at `page`. After an error nothing has changed.
    SystemError overwrite(FilePosition page, HexCell cell, quint8 byte);

    /// Undoes the newest edit and returns it, with its old byte. Nothing when there is none; nothing, and `error`, when
    /// the byte cannot be written: the edit is kept then.
    std::optional<HexUndoEntry> takeBack(SystemError& error);

    /// Whether a byte was written since the last load or save. Undoing it does not change the result.
    bool modified() const { return m_modified; }

    /// Whether the current byte is to be marked as typed.
    bool isChanged(FilePosition at, quint8 now) const { return m_changes.isMarked(at, now); }

    /// Called before and after a save. Bytes typed in between are not in the file, so they count as modified
    /// afterwards.
    void beginSave();
    void endSave(bool isSaved);

    State state() const;
    /// The bytes differ from those of the file, whether by typing or not.
    void setModified() { m_modified = true; }

 private:
    ByteStore& m_bytes;
    HexUndoLog m_undoLog;
    HexChanges m_changes;
    HexEditObserver* m_observer = nullptr;
    bool m_modified = false;
    bool m_wasModified = false;  ///< before the save that is under way
};
