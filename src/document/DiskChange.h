#pragma once

#include <QString>

#include <functional>

/// What somebody else did to a document's file since the document last looked.
enum class DiskChange {
    None,       ///< nothing, or nothing that has not been told already
    Rewritten,  ///< it is there, with another time
    Deleted,
};

/// Compares modification times as texts, so to the second. `now` is the file's present one, `lastUpdate` that of the
/// last load or save; `knownUpdate`, the last one looked at, becomes `now`, so that one state of the file is told once.
inline DiskChange checkDiskChange(const QString& now, const QString& lastUpdate, QString& knownUpdate,
                                  const std::function<bool()>& exists) {
    if (now == knownUpdate)
        return DiskChange::None;
    knownUpdate = now;
    if (now == lastUpdate)
        return DiskChange::None;
    return exists() ? DiskChange::Rewritten : DiskChange::Deleted;
}
