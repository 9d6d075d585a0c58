#pragma once

#include "platform/FileSystemCalls.h"
#include "recovery/journals/JournalBase.h"
#include "recovery/journals/JournalEntry.h"
#include "recovery/journals/JournalFrame.h"

#include <functional>
#include <optional>
#include <vector>

/// A journal as it is read, up to its last valid frame. Nothing of it is trusted. A plain value; the handle stays the
/// caller's, and the journal is not changed while it is read.
class JournalContents {
 public:
    enum class Reading { Done, Damaged, OfAnother, Impossible };  ///< OfAnother: of another version of the program

    /// The base only; it costs little.
    Reading readHead(FileSystemCalls& calls, int handle);
    /// After readHead().
    Reading readEntries(FileSystemCalls& calls, int handle);

    const JournalBase& base() const { return m_base; }
    const JournalEnd& end() const { return m_end; }
    /// Of the last edit, in milliseconds since 1970.
    qint64 time() const { return m_time; }
    bool hasEdits() const { return m_hasEdits; }
    /// What is known of the base, as of the end of the journal.
    const std::optional<StoredBase>& storedBase() const { return m_stored; }
    /// Whether the text does not depend on the base any more.
    bool hasWhole() const { return m_hasWhole; }

    /// Calls `take` with the entries that count, in their order, until it returns false. Returns whether it never did,
    /// and all entries could be read.
    bool forEachEntry(const std::function<bool(const JournalEntry&)>& take) const;

 private:
    void note(const JournalEntry& entry, std::size_t frame, std::size_t number);

    JournalBase m_base;
    JournalEnd m_end;
    std::vector<JournalFrame> m_frames;
    std::optional<StoredBase> m_stored;
    qint64 m_time = 0;
    bool m_hasEdits = false;
    bool m_hasWhole = false;
    /// The first entry that counts: those before it were replaced.
    std::size_t m_firstFrame = 0;
    std::size_t m_firstEntry = 0;
};
