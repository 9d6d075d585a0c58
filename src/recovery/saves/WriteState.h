#pragma once

/// How a file stands to a write of it that was recorded.
enum class WriteState {
    Whole,    ///< it has the new contents
    Partial,  ///< each of its blocks is an old or a new one, as an interrupted write leaves it
    Other,    ///< it is missing, another file, or was changed by somebody else
    Unknown   ///< it cannot be read now
};
