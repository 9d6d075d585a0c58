#pragma once

/// How a file stands to a write of it that was recorded.
enum class WriteState {
    Whole,    ///< it has the new contents
    Partial,  ///< it is as it was recorded, or each of its blocks is an old or a new one, as an interrupted write
              ///< leaves it
    Torn,     ///< as Partial, but that the end of a block is not known: it has old bytes, or somebody else's
    Old,    ///< it has the old contents, and was written since: somebody restored them, or no new byte reached the disk
    Other,  ///< it is missing, another file, or was changed by somebody else
    Away,   ///< its folder is not there now: perhaps the file system is not mounted
    Unknown  ///< it cannot be read now
};
