#pragma once

/// How many journals a start could not read. A plain value.
struct PassedJournals {
    int damaged = 0;    ///< set aside
    int ofAnother = 0;  ///< of another version of the program: they stay for that one
};
