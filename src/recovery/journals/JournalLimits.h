#pragma once

#include <QtGlobal>

#include <chrono>

/// When and how much is written of journals. Sizes are bytes.
struct JournalLimits {
    std::chrono::milliseconds afterLast{1'000};       ///< from the last edit until it is on its way to the disk
    std::chrono::milliseconds whileEditing{5'000};    ///< the same from the first one, while more follow
    std::chrono::milliseconds longestRetry{300'000};  ///< after which a copy of many bytes that failed is tried again
    std::chrono::milliseconds atEnd{4'000};           ///< for which the end of the program waits for copies of bases
    qint64 copied = 64LL * 1024 * 1024;               ///< a larger base is not copied where it cannot be cloned
    qint64 compacted = 1024LL * 1024;                 ///< fewer bytes of entries are never compacted
};
