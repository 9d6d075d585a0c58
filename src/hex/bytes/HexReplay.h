#pragma once

#include "hex/bytes/HexPaging.h"
#include "platform/SystemError.h"

#include <QString>

#include <functional>
#include <string_view>

class ByteStore;
class HexEdits;
struct HexBlock;

/// Makes edits again that a HexEditObserver has seen, on bytes as they were before them: with the same bytes, marks,
/// undo log and modified flag at the end. The edits may come from a file that anybody wrote: places that the working
/// copy does not have are refused. Has no owner; made for one replay, on the stack. Runs the event loop only if its
/// watch does.
class HexReplay {
 public:
    /// Called often. Returns false when the replay is to end; bytes and edits may be destroyed by then.
    using Watch = std::function<bool()>;

    /// Edits and bytes outlive its last use.
    explicit HexReplay(HexEdits& edits, ByteStore& bytes, Watch watch = {});

    void type(FilePosition page, HexCell cell, quint8 byte);
    /// The newest of the typed bytes that were not undone yet.
    void takeBack();
    void write(FilePosition at, std::string_view bytes);
    void fill(const HexBlock& block, quint8 byte);

    /// Whether a file has these bytes now. False as well when that cannot be found out, or the watch ended it.
    bool isSameAs(const QString& path);

    /// Whether more edits are made: none are after an error.
    bool goesOn() const { return !m_error; }
    /// ECANCELED when the watch has ended it; EINVAL for an edit that the file has no place for.
    const SystemError& error() const { return m_error; }

 private:
    bool begin();
    bool isWatchEnding();
    void refuse();

    HexEdits& m_edits;
    ByteStore& m_bytes;
    Watch m_watch;
    SystemError m_error;
    int m_sinceWatch = 0;
};
