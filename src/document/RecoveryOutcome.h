#pragma once

/// How a document took over recovered changes.
enum class RecoveryOutcome {
    Shown,
    SameAsFile,  ///< the file has these bytes already: there is nothing to be recovered
    Failed       ///< without a message; the document shows what it showed before
};

/// What a document becomes that takes over recovered changes.
enum class RecoveredAs {
    Document,  ///< the document that was changed, of its file if it had one
    Version    ///< untitled, because another document of the file has other unsaved changes
};
