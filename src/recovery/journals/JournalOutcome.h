#pragma once

/// How the file of a document is now, compared with what was loaded or saved.
enum class JournalFileNow {
    None,  ///< the document had no file
    AsItWas,
    Changed,
    Missing
};

/// What became of bringing back a journal.
enum class JournalOutcome {
    Restored,
    SameAsFile,  ///< the file holds it already, or there is nothing in it: it may be removed. Of the bytes of a hex
                 ///< document this is not found out.
    Lost,        ///< damaged, or its base was changed or removed and there is no copy: it is to be set aside
    Failed       ///< it could not be read or written now: it is left for the next start
};
