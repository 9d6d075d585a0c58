#pragma once

#include <QString>

/// For the status bar: the changes of a document left it without being saved or given up, and their journal stays.
inline QString keptChangesSentence(const QString& caption) {
    return u"The unsaved changes of '%1' come back at the next start."_qs.arg(caption);
}
