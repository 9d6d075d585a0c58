#pragma once

#include "hex/bytes/ByteStore.h"
#include "hex/bytes/HexNeedle.h"

#include <QByteArray>

#include <functional>
#include <optional>
#include <utility>

/// The watch of a search: called often, with the place of the search in the file in whole percent. Returning false ends
/// the search, which then touches nothing any more.
using ScanWatch = std::function<bool(int percent)>;

/// Searches a file block by block and overwrites what it finds; the file is never in memory as a whole and never
/// changes its length. Yields only if its watch does; the bytes may be destroyed then, if the watch returns false. A
/// search that was ended returns what it had found. A file that can't be read any further has no more matches.
///
/// Two oddities are intended: a match of a text that is just the last bytes of a block is found again at the start of
/// the next, and the upward search leaves gaps once it has continued from the end.
class HexSearch {
 public:
    static constexpr qint64 BlockSize = 32'000;

    /// `bytes` outlive it.
    explicit HexSearch(ByteStore& bytes, qint64 blockSize = BlockSize, ScanWatch watch = {})
        : m_bytes(bytes), m_blockSize(blockSize), m_watch(std::move(watch)) {}

    /// The first match from `start` on; with `goesOn` once more from the top of the file. A start after the end finds
    /// nothing.
    std::optional<FilePosition> findDown(const HexNeedle& needle, FilePosition start, bool goesOn) const;
    /// The last match before the byte at `cursor`; with `goesOn` once more from the end of the file.
    std::optional<FilePosition> findUp(const HexNeedle& needle, FilePosition cursor, bool goesOn) const;

    /// Each match from the top, overlapping ones too.
    void forEachMatch(const HexNeedle& needle, const std::function<void(FilePosition)>& visit) const;
    qint64 count(const HexNeedle& needle) const;
    /// Matches that were overwritten, and why others were not.
    struct Replaced {
        qint64 matches = 0;
        SystemError error;
    };
    /// Writes the replacement over each match, whatever its length. A match is one in the bytes as they were when its
    /// block was read.
    Replaced replaceAll(const HexNeedle& needle, const QByteArray& replacement);

 private:
    qint64 blockFor(const HexNeedle& needle) const;
    bool read(qint64 at, qint64 size, QByteArray& block) const;
    bool mayContinue(qint64 at, qint64 length) const;
    /// Visits the matches of a block that begins at `at`. False when the watch ends the search.
    bool visitMatches(const HexNeedle& needle, const QByteArray& block, qint64 at, qint64 length,
                      const std::function<void(FilePosition)>& visit) const;
    /// False when a block can't be read, or the watch ends the search.
    bool scanDown(const HexNeedle& needle, qint64 start, std::optional<FilePosition>& found) const;

    ByteStore& m_bytes;
    qint64 m_blockSize;
    ScanWatch m_watch;
};
