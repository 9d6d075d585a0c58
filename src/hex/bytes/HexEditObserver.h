#pragma once

#include "hex/bytes/HexPaging.h"

#include <string_view>

struct HexBlock;
struct HexUndoEntry;

/// Is notified of each change of a working copy since it was loaded, once it is made: typed, undone, replaced, filled.
/// Whoever repeats the same changes in the same order on the same bytes has the same bytes, marks and undo log (see
/// HexReplay). Called in the window's thread; does not run the event loop and does not change the view.
class HexEditObserver {
 public:
    virtual ~HexEditObserver() = default;

    /// The working copy is given up for another one: no change that was reported is in the next.
    virtual void unloaded() = 0;
    /// The first of the two digits of a byte was typed, which is `byte` if it stays the only one. The working copy is
    /// unchanged; the next call is about the complete byte.
    virtual void halfTyped(FilePosition page, HexCell cell, quint8 byte) = 0;
    virtual void typed(FilePosition page, HexCell cell, quint8 byte) = 0;
    /// With the byte that was written again.
    virtual void tookBack(const HexUndoEntry& entry) = 0;
    /// Bytes were replaced, which leaves no mark and no undo. None of them is behind the end of the file.
    virtual void wrote(FilePosition at, std::string_view bytes) = 0;
    /// The same for a block of equal bytes.
    virtual void filled(const HexBlock& block, quint8 byte) = 0;
};
