#pragma once

#include "hex/bytes/HexPaging.h"

#include <array>
#include <optional>
#include <vector>

/// The value of a byte before an edit, and the page on which it was edited.
struct HexUndoEntry {
    FilePosition pointer;
    HexCell cell;
    quint8 value = 0;

    bool operator==(const HexUndoEntry&) const = default;
};

/// The last edits of a hex view, no more than Capacity: one more drops the oldest.
class HexUndoLog {
 public:
    static constexpr int Capacity = 31;

    void clear() { m_count = 0; }
    bool isEmpty() const { return m_count == 0; }
    void add(const HexUndoEntry& entry);
    /// Removes and returns the newest; nothing when there is none.
    std::optional<HexUndoEntry> take();
    /// Oldest first.
    std::vector<HexUndoEntry> entries() const;

 private:
    std::array<HexUndoEntry, Capacity> m_entries;  ///< a ring
    int m_next = 0;
    int m_count = 0;
};
