#pragma once

/// How a document took over recovered changes.
enum class RecoveryOutcome {
    Shown,
    SameAsFile,  ///< the file has these bytes already: there is nothing to be recovered
    Failed       ///< without a message; the document shows what it showed before
};
