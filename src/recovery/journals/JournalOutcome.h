#pragma once

/// How the file of a document is now, compared with what was loaded or saved.
enum class JournalFileNow {
    None,  ///< the document had no file
    AsItWas,
    Changed,
    Missing,     ///< its folder is there, and the file is not
    Unreachable  ///< its folder or file system is not there, or does not let it be read: perhaps just now
};

/// What became of bringing back a journal.
enum class JournalOutcome {
    Restored,
    SameAsFile,  ///< the file holds it already, or there is nothing in it: it may be removed. Of the bytes of a hex
                 ///< document this is not found out.
    Lost,        ///< damaged, or its base was changed or removed and there is no copy: it is to be set aside
    Failed       ///< it, or the base that it needs, could not be read or written now: it is left for the next start
};
